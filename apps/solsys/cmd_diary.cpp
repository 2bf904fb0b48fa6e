// solsys diary: the calendar of the sky.
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include "apps/solsys/commands.h"
#include "apps/solsys/diary_pages.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/typed_options.h"
#include "draw/icalendar.h"
#include "draw/planet_chart.h"
#include "solsys/sky/appearance.h"
#include "solsys/sky/diary.h"

namespace app {
namespace {

namespace sky = solsys::sky;

struct Request {
    Options options;
    std::string kinds;
    std::string ics, svg;
    double within = 180;
};

std::vector<int> chosen_kinds(const std::string& text) {
    std::vector<int> kinds;
    std::istringstream names(text);
    for (std::string name; std::getline(names, name, ',');) {
        const int kind = sky::find_kind(name);
        if (kind == 0) throw BadInput(fmt::format("'{}' is no kind of event", name));
        kinds.push_back(kind);
    }
    return kinds;
}

Cell optional_cell(const std::optional<double>& value) {
    Cell cell;
    if (value) cell = *value;
    return cell;
}
Cell contact_cell(const std::optional<sky::Instant>& at) {
    Cell cell;
    if (at) cell = at->iso(0);
    return cell;
}

std::string objects_of(const sky::DiaryEvent& event) {
    std::string objects;
    for (const auto* body : {&event.first, &event.second})
        if (body->has_value()) objects += (objects.empty() ? "" : ", ") + (*body)->name;
    return objects;
}

Report report_of(const std::vector<sky::DiaryEvent>& events) {
    Report report({{"kind", "", nullptr},
                   {"name", "", nullptr},
                   {"time_utc", "", nullptr},
                   {"delta_t_s", "", nullptr},
                   {"event", "", nullptr},
                   {"objects", "", nullptr},
                   {"separation_deg", "", nullptr},
                   {"position_angle_deg", "", nullptr},
                   {"elongation_deg", "", nullptr},
                   {"magnitude", "", nullptr},
                   {"second_magnitude", "", nullptr},
                   {"distance_au", "", nullptr},
                   {"longitude_deg", "", nullptr},
                   {"latitude_deg", "", nullptr},
                   {"hours_to_perigee", "", nullptr},
                   {"hours_to_apogee", "", nullptr},
                   {"zhr_per_hour", "", nullptr},
                   {"moon_illuminated", "", nullptr},
                   {"contact1_utc", "", nullptr},
                   {"contact2_utc", "", nullptr},
                   {"contact3_utc", "", nullptr},
                   {"contact4_utc", "", nullptr},
                   {"in_longitude", "", nullptr},
                   {"azimuth_deg", "", nullptr},
                   {"altitude_deg", "", nullptr}});
    for (const sky::DiaryEvent& e : events)
        report.add({static_cast<long long>(e.kind),
                    std::string(sky::name_of_kind(e.kind)),
                    e.at.iso(0),
                    e.at.delta_t_seconds(),
                    e.text,
                    objects_of(e),
                    optional_cell(e.separation_deg),
                    optional_cell(e.position_angle_deg),
                    optional_cell(e.elongation_deg),
                    optional_cell(e.magnitude),
                    optional_cell(e.second_magnitude),
                    optional_cell(e.distance_au),
                    optional_cell(e.longitude_deg),
                    optional_cell(e.latitude_deg),
                    optional_cell(e.hours_to_perigee),
                    optional_cell(e.hours_to_apogee),
                    optional_cell(e.zhr),
                    optional_cell(e.moon_illuminated),
                    contact_cell(e.contacts[0]),
                    contact_cell(e.contacts[1]),
                    contact_cell(e.contacts[2]),
                    contact_cell(e.contacts[3]),
                    e.in_longitude,
                    optional_cell(e.azimuth_deg),
                    optional_cell(e.altitude_deg)});
    return report;
}

void run(const Request& request) {
    const Format format = request.options.format();
    const auto site = typed_site(request.options);
    const sky::Zone zone = typed_zone(request.options, site);
    const sky::Span span = typed_span(request.options, zone, request.svg.empty() ? 31 : 366);
    sky::DiaryOptions options;
    options.kinds = chosen_kinds(request.kinds);
    options.widest_conjunction_deg = request.within;
    sky::Model model = open_sky_model(request.options);
    if (site) model.observe_from(*site);

    Interruptible search;
    const auto events = sky::diary(model, span, options, search.control());
    if (events.empty()) throw NothingFound("no event in that span");
    if (!request.ics.empty())
        write_file(request.ics, solsys::draw::icalendar(events, "The sky"));
    if (!request.svg.empty())
        write_file(request.svg,
                   solsys::draw::planet_chart(sky::elongation_curves(model, span), events, span,
                                              "The planets from " + zone.date_time(span.from))
                       .str());
    if (format == Format::kTable) {
        print_diary_pages(model, events, span, zone);
    } else {
        report_of(events).print(format);
    }
}

}  // namespace

void add_diary(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "diary", "The calendar of the sky: Moon, planets, conjunctions, meteors");
    command->add_option("--kinds", request->kinds,
                        "Kinds of events by name or number: full-moon,opposition,30");
    command->add_option("--within", request->within,
                        "Conjunctions nearer than this alone [degrees]");
    command->add_option("--ics", request->ics, "Write a calendar file (iCalendar), too");
    command->add_option("--svg", request->svg,
                        "Draw the planets' elongations over the span (a year), too");
    add_span_options(*command, request->options);
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "A month from --from, unless --to says otherwise.\n"
        "Examples:\n"
        "  solsys diary --from 2026-12-01 --city London\n"
        "  solsys diary --from 2026 --to 2027 --within 5 --ics sky.ics\n"
        "  solsys diary --from 2026 --to 2027 --kinds full-moon,new-moon --json");
    command->callback([request] { run(*request); });
}

}  // namespace app
