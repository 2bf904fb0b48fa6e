// solsys rise-set: when bodies rise, culminate and set; a month's calendar; a year's chart.
#include <fmt/format.h>

#include <cmath>
#include <memory>

#include "apps/solsys/bodies.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/rise_set.h"

namespace app {
namespace {

struct Request {
    Options options;
    std::vector<std::string> bodies;
    std::string month;
    std::string svg;
};

const SSO_ID kSun(SSO_PLNT, 10), kMoon(SSO_MOON, 301);

Cell utc_cell(const std::optional<Utc>& t) {
    Cell cell;
    if (t) cell = iso_utc(*t);
    return cell;
}

// The clock of the zone to the minute, with the days that lie between the reading and a date
// (both local readings).
std::string clock_text(const Zone& zone, const std::optional<Utc>& t, Utc local_day) {
    if (!t) return "-";
    const Utc local = plus_days(to_local(zone, *t), 0.5 / 1440);
    const auto date_number = [](Utc u) { return std::floor(u.jd() + 0.5); };
    const int aside = static_cast<int>(date_number(local) - date_number(local_day));
    return aside == 0 ? zone.clock(*t) : fmt::format("{} {:+}d", zone.clock(*t), aside);
}

Cell number_cell(bool there, double value) {
    Cell cell;
    if (there) cell = value;
    return cell;
}

void list_days(CSWSolSys& model, const Request& request, const Site& site, const Zone& zone) {
    const Span span = chosen_span(request.options, 1);
    std::vector<Body> bodies;
    for (const std::string& name : request.bodies) bodies.push_back(parse_body(name));
    if (bodies.empty()) bodies = {{kSun, name_of(kSun)}, {kMoon, name_of(kMoon)}};

    Report report({{"id", "", nullptr},
                   {"name", "Body", nullptr},
                   {"date", "Date", nullptr},
                   {"dawn_utc", "", nullptr},
                   {"rise_utc", "", nullptr},
                   {"transit_utc", "", nullptr},
                   {"set_utc", "", nullptr},
                   {"dusk_utc", "", nullptr},
                   {"", "Dawn", nullptr},
                   {"", "Rise", nullptr},
                   {"rise_azimuth_deg", "Azimuth", fixed(1)},
                   {"", "Transit", nullptr},
                   {"transit_altitude_deg", "Altitude", fixed(1)},
                   {"", "Set", nullptr},
                   {"set_azimuth_deg", "Azimuth", fixed(1)},
                   {"", "Dusk", nullptr}});
    CSWVisibility visibility(&model);
    for (const Body& body : bodies) {
        for (const RiseSetDay& day : rise_set_days(visibility, body.id, site, span)) {
            const Utc local = to_local(zone, day.anchor);
            report.add({code_of(body.id), body.name, date_of(local), utc_cell(day.dawn),
                        utc_cell(day.rise), utc_cell(day.transit), utc_cell(day.set),
                        utc_cell(day.dusk), clock_text(zone, day.dawn, local),
                        clock_text(zone, day.rise, local),
                        number_cell(day.rise.has_value(), day.rise_azimuth_deg),
                        clock_text(zone, day.transit, local),
                        number_cell(day.transit.has_value(), day.transit_altitude_deg),
                        clock_text(zone, day.set, local),
                        number_cell(day.set.has_value(), day.set_azimuth_deg),
                        clock_text(zone, day.dusk, local)});
        }
    }
    if (report.empty())
        throw NothingFound("nothing asked for rises, culminates or sets in that span");
    const Format format = request.options.format();
    if (format == Format::kTable)
        fmt::print("Risings and settings at {} (times: {})\n\n", site.name, zone.name());
    report.print(format);
}

// The first of a kind of event on a civil day.
template <class Field>
std::optional<Utc> event_on(const std::vector<RiseSetDay>& days, const Span& day, Field field) {
    for (const RiseSetDay& d : days) {
        const std::optional<Utc>& t = d.*field;
        if (t && days_from(day.from, *t) >= 0 && days_from(*t, day.to) > 0) return t;
    }
    return std::nullopt;
}

void calendar(CSWSolSys& model, const Request& request, const Site& site, const Zone& zone) {
    Utc local = parse_time(request.month + "-01");
    // The first of the next month is 28 to 31 days on.
    std::vector<Span> days;
    for (; date_of(local).substr(0, request.month.size()) == request.month;
         local = plus_days(local, 1))
        days.push_back({from_local(zone, local), from_local(zone, plus_days(local, 1))});

    const Span month{days.front().from, days.back().to};
    CSWVisibility visibility(&model);
    const auto sun = rise_set_days(visibility, kSun, site, month);
    const auto moon = rise_set_days(visibility, kMoon, site, month);
    Report report({{"date", "Date", nullptr},
                   {"dawn_utc", "", nullptr},
                   {"sunrise_utc", "", nullptr},
                   {"sunset_utc", "", nullptr},
                   {"dusk_utc", "", nullptr},
                   {"moonrise_utc", "", nullptr},
                   {"moonset_utc", "", nullptr},
                   {"", "Dawn", nullptr},
                   {"", "Sunrise", nullptr},
                   {"", "Sunset", nullptr},
                   {"", "Dusk", nullptr},
                   {"", "Moonrise", nullptr},
                   {"", "Moonset", nullptr},
                   {"moon_illuminated", "Lit", fixed(2)},
                   {"moon_phase", "Phase", nullptr}});
    for (const Span& day : days) {
        const Utc noon = plus_days(day.from, days_from(day.from, day.to) / 2);
        const Utc local_noon = to_local(zone, noon);
        const std::optional<Utc> events[] = {
            event_on(sun, day, &RiseSetDay::dawn),  event_on(sun, day, &RiseSetDay::rise),
            event_on(sun, day, &RiseSetDay::set),   event_on(sun, day, &RiseSetDay::dusk),
            event_on(moon, day, &RiseSetDay::rise), event_on(moon, day, &RiseSetDay::set)};
        std::vector<Cell> row;
        row.emplace_back(date_of(local_noon));
        for (const auto& t : events) row.push_back(utc_cell(t));
        for (const auto& t : events) row.emplace_back(clock_text(zone, t, local_noon));
        row.emplace_back(moon_phase(model, noon).illuminated);
        const auto phase = principal_phase(model, day.from, day.to);
        Cell name;
        if (phase) name = phase_name(*phase);
        row.push_back(name);
        report.add(row);
    }
    const Format format = request.options.format();
    if (format == Format::kTable)
        fmt::print("Sun and Moon at {}, {} (times: {})\n\n", site.name, request.month,
                   zone.name());
    report.print(format);
}

void run(const Request& request) {
    const std::optional<Site> given = chosen_site(request.options);
    if (!given) throw BadInput("a place is needed: --city NAME or --site LAT,LON");
    const Zone zone = chosen_zone(request.options, given);

    CSWSolSys model;
    open_model(model, request.options);
    if (!request.svg.empty()) {
        const std::string& from = request.options.from;
        const Utc start = parse_time(from.empty() ? "now" : from);
        draw_year(model, *given, zone, std::stoi(date_of(to_local(zone, start)).substr(0, 4)),
                  request.svg);
    } else if (!request.month.empty()) {
        calendar(model, request, *given, zone);
    } else {
        list_days(model, request, *given, zone);
    }
}

}  // namespace

void add_rise_set(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "rise-set", "When bodies rise, culminate and set; a month's calendar; a year's chart");
    command->add_option("bodies", request->bodies, "Bodies (without: the Sun and the Moon)");
    add_span_options(*command, request->options);
    command->add_option("--calendar", request->month,
                        "The Sun and the Moon of a month: YYYY-MM");
    command->add_option("--svg", request->svg,
                        "Draw night, twilight and Moon of the year of --from into a file");
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "Without a span: the next day. A row is a day of a body by its transit; what falls\n"
        "outside the span is left out. Twilight is astronomical (the Sun at -18 degrees).\n"
        "Examples:\n"
        "  solsys rise-set sun moon --city London --from 2026-12-01 --to 2026-12-08\n"
        "  solsys rise-set --calendar 2026-12 --city Oslo\n"
        "  solsys rise-set --svg year.svg --city London --from 2026-01-01");
    command->callback([request] { run(*request); });
}

}  // namespace app
