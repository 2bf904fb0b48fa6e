// solsys diary: the calendar of the sky.
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include "apps/solsys/commands.h"
#include "apps/solsys/diary_pages.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/picture.h"
#include "draw/icalendar.h"
#include "draw/planet_chart.h"
#include "solsys/sky/diary.h"
#include "solsys/sky/names.h"

namespace app {
namespace {

struct DiaryRequest {
    Options options;
    PictureOptions picture;
    std::optional<std::string> kinds, ics;
    double within = 180;
};

BadInput unknown_kind(const std::string& name) {
    std::vector<std::string> names;
    for (int kind = 1; !sky::name_of_kind(kind).empty(); ++kind)
        names.emplace_back(sky::name_of_kind(kind));
    std::string perhaps = sky::suggestion(name, names);
    if (perhaps.empty()) perhaps = "use names such as " + names[4] + " or " + names.back();
    return BadInput(fmt::format("--kinds: no kind '{}': {}", name, perhaps));
}

std::vector<int> chosen_kinds(const std::string& text) {
    std::vector<int> kinds;
    std::istringstream names(text);
    for (std::string name; std::getline(names, name, ',');) {
        const int kind = sky::find_kind(name);
        if (kind == 0) throw BadInput(unknown_kind(name));
        kinds.push_back(kind);
    }
    return kinds;
}

using DiaryRow = sky::DiaryEvent;

std::string objects_of(const DiaryRow& event) {
    std::string objects;
    for (const auto* body : {&event.first, &event.second})
        if (body->has_value()) objects += (objects.empty() ? "" : ", ") + (*body)->name;
    return objects;
}

Column<DiaryRow> number(const char* name, std::optional<double> DiaryRow::*member) {
    return {name, "", nullptr, [member](const DiaryRow& row) { return cell(row.*member); }};
}

std::vector<Column<DiaryRow>> diary_columns(const Setting& setting) {
    std::vector<Column<DiaryRow>> columns{
        {"kind", "", nullptr,
         [](const DiaryRow& r) { return Cell(static_cast<long long>(r.kind)); }},
        {"kind_name", "", nullptr,
         [](const DiaryRow& r) { return Cell(std::string(sky::name_of_kind(r.kind))); }}};
    add_time_columns(columns, setting, "");
    const std::vector<Column<DiaryRow>> more{
        {"delta_t_s", "", nullptr, [](const DiaryRow& r) { return r.at.delta_t_seconds(); }},
        {"event", "", nullptr, [](const DiaryRow& r) { return Cell(r.text); }},
        {"objects", "", nullptr, [](const DiaryRow& r) { return Cell(objects_of(r)); }},
        number("separation_deg", &DiaryRow::separation_deg),
        number("position_angle_deg", &DiaryRow::position_angle_deg),
        number("elongation_deg", &DiaryRow::elongation_deg),
        number("magnitude", &DiaryRow::magnitude),
        number("second_magnitude", &DiaryRow::second_magnitude),
        number("distance_au", &DiaryRow::distance_au),
        number("longitude_deg", &DiaryRow::longitude_deg),
        number("latitude_deg", &DiaryRow::latitude_deg),
        number("hours_to_perigee", &DiaryRow::hours_to_perigee),
        number("hours_to_apogee", &DiaryRow::hours_to_apogee),
        number("zhr_per_hour", &DiaryRow::zhr),
        number("moon_illuminated", &DiaryRow::moon_illuminated),
        {"in_longitude", "", nullptr, [](const DiaryRow& r) { return r.in_longitude; }},
        number("azimuth_deg", &DiaryRow::azimuth_deg),
        number("altitude_deg", &DiaryRow::altitude_deg)};
    columns.insert(columns.end(), more.begin(), more.end());
    for (std::size_t i = 0; i < 4; ++i)
        add_instant_columns(columns, setting, fmt::format("contact{}", i + 1), "",
                            [i](const DiaryRow& r) { return r.contacts[i]; });
    return columns;
}

void draw(sky::Model& model, const std::vector<sky::DiaryEvent>& events, const sky::Span& span,
          const Setting& setting, const PictureOptions& options) {
    // No more points than the picture has room for.
    const double step_days = std::max(2.0, span.days() / 4000);
    write_picture(solsys::draw::planet_chart(
                      sky::elongation_curves(model, span, step_days), events, span,
                      fmt::format("The planets from {} ({})", setting.zone.date_time(span.from),
                                  setting.zone.name()),
                      options.light)
                      .str(),
                  options);
}

void run(const DiaryRequest& request) {
    check_picture_options(request.picture);
    const Setting setting = setting_of(request.options);
    const sky::Span span =
        span_of(request.options, setting, request.picture.wanted() ? 366 : 31);
    sky::DiaryOptions options;
    if (request.kinds) options.kinds = chosen_kinds(*request.kinds);
    options.widest_conjunction_deg = request.within;
    sky::Model model = model_of(request.options, setting);

    LongSearch search;
    const auto events = sky::diary(model, span, options, search.control());
    if (request.ics == "-") {
        fmt::print("{}", solsys::draw::icalendar(events, "The sky"));
        return;
    }
    if (request.ics) {
        write_file(*request.ics, solsys::draw::icalendar(events, "The sky"));
        tell("wrote " + *request.ics);
    }
    if (request.picture.wanted() && !LongSearch::interrupted())
        draw(model, events, span, setting, request.picture);
    if (request.picture.to_output()) return;
    if (setting.format == Format::kTable && !events.empty()) {
        print_diary_pages(model, events, setting, search);
        return;
    }
    Table<DiaryRow> table(setting.format, diary_columns(setting), setting.context(model));
    for (const DiaryRow& event : events) table.add(event);
    table.finish("no event in that span");
}

}  // namespace

void add_diary(CommandLine& main) {
    auto request = std::make_shared<DiaryRequest>();
    Command command =
        main.add("diary", "The calendar of the sky: Moon, planets, conjunctions, meteors");
    command.text("--kinds", request->kinds,
                 "Kinds of events by name or number: full-moon,opposition,30");
    command.number("--within", request->within, {0.0, 180.0},
                   "Conjunctions nearer than this alone [degrees]");
    command.text("--ics", request->ics,
                 "Write a calendar file (iCalendar), too (- for standard output, alone)");
    add_picture_options(command, request->picture,
                        "Draw the planets' elongations over the span (without --to: a year)");
    add_span_options(command, request->options, "31 days on");
    add_site_options(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "Examples:\n"
        "  solsys diary --from 2026-12-01 --city London\n"
        "  solsys diary --from 2026 --to 2027 --within 5 --ics sky.ics\n"
        "  solsys diary --from 2026 --to 2027 --kinds full-moon,new-moon --json");
    command.run([request] { run(*request); });
}

}  // namespace app
