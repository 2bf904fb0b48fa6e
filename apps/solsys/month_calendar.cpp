#include "apps/solsys/month_calendar.h"

#include <fmt/format.h>

#include "apps/solsys/failure.h"
#include "solsys/sky/phases.h"
#include "solsys/sky/rise_set_days.h"

namespace app {
namespace {

struct CalendarRow {
    const sky::RiseSetDay* sun;
    const sky::RiseSetDay* moon;
    double illuminated = 0;  // at noon
    std::optional<sky::PhaseEvent> phase;
    std::size_t turn = 0;  // a second event of the same kind in a day has a row of its own
};

using CalendarColumns = std::vector<Column<CalendarRow>>;

std::optional<sky::Instant> pick(const std::vector<sky::HorizonEvent>& events,
                                 std::size_t turn) {
    return turn < events.size() ? std::optional(events[turn].at) : std::nullopt;
}

CalendarColumns calendar_columns(const Setting& setting, std::size_t twilight) {
    CalendarColumns columns{{"date", "Date", nullptr, [](const CalendarRow& r) {
                                 return Cell(sky::to_string(r.sun->date));
                             }}};
    add_instant_columns(columns, setting, "dawn", "Dawn", [twilight](const CalendarRow& r) {
        return r.turn == 0 ? r.sun->dawn[twilight] : std::nullopt;
    });
    add_instant_columns(columns, setting, "sunrise", "Sunrise",
                        [](const CalendarRow& r) { return pick(r.sun->rises, r.turn); });
    add_instant_columns(columns, setting, "sunset", "Sunset",
                        [](const CalendarRow& r) { return pick(r.sun->sets, r.turn); });
    add_instant_columns(columns, setting, "dusk", "Dusk", [twilight](const CalendarRow& r) {
        return r.turn == 0 ? r.sun->dusk[twilight] : std::nullopt;
    });
    columns.push_back({"sun_state", "Sun", nullptr, [](const CalendarRow& r) {
                           return text_cell(sky::to_string(r.sun->state));
                       }});
    add_instant_columns(columns, setting, "moonrise", "Moonrise",
                        [](const CalendarRow& r) { return pick(r.moon->rises, r.turn); });
    add_instant_columns(columns, setting, "moonset", "Moonset",
                        [](const CalendarRow& r) { return pick(r.moon->sets, r.turn); });
    columns.push_back({"moon_state", "Moon", nullptr, [](const CalendarRow& r) {
                           return text_cell(sky::to_string(r.moon->state));
                       }});
    columns.push_back({"moon_illuminated", "Lit", fixed(2),
                       [](const CalendarRow& r) { return Cell(r.illuminated); }});
    columns.push_back({"moon_phase", "Phase", nullptr, [](const CalendarRow& r) {
                           return r.phase ? Cell(std::string(sky::to_string(r.phase->phase)))
                                          : Cell();
                       }});
    add_instant_columns(columns, setting, "moon_phase", "", [](const CalendarRow& r) {
        return r.phase ? std::optional(r.phase->at) : std::nullopt;
    });
    return columns;
}

sky::CivilDate first_of(const std::string& month) {
    const auto t =
        month.size() == 7 ? sky::parse_time(month) : sky::Result<sky::Instant>(sky::Failure{});
    if (!t)
        throw BadInput(
            fmt::format("--calendar: '{}' is no month: use YYYY-MM such as 2026-12", month));
    return sky::Zone().date(*t);
}

std::size_t index_of(const std::string& twilight) {
    return twilight == "civil" ? 0 : twilight == "nautical" ? 1 : 2;
}

}  // namespace

void print_calendar(sky::Model& model, const std::string& month, const std::string& twilight,
                    const Setting& setting) {
    const sky::CivilDate first = first_of(month);
    const int next = sky::julian_day_number({first.year, first.month + 1, 1});
    const sky::CivilDate last = sky::date_of_julian_day(next - 1);
    const auto days_of = [&](const sky::Body& body) {
        return sky::rise_set_days(model, *setting.site, body, setting.zone, first, last,
                                  setting.refraction.horizon(*setting.site, body));
    };
    const auto sun = days_of(sky::sun());
    const auto moon = days_of(sky::moon());
    const auto phases =
        sky::principal_phases(model, {setting.zone.day(first).from, setting.zone.day(last).to});

    if (setting.format == Format::kTable)
        fmt::print("Sun and Moon at {}, {} (times: {}; dawn and dusk: {})\n\n",
                   setting.site->name, month, setting.zone.name(), twilight);
    Table<CalendarRow> table(setting.format, calendar_columns(setting, index_of(twilight)),
                             setting.context(model));
    for (std::size_t i = 0; i < sun.size(); ++i) {
        const sky::Span day = setting.zone.day(sun[i].date);
        CalendarRow row{&sun[i], &moon[i], 0, {}, 0};
        row.illuminated =
            sky::moon_phase(model, day.from.plus_days(day.days() / 2)).illuminated;
        for (const sky::PhaseEvent& phase : phases)
            if (setting.zone.date(phase.at) == sun[i].date) row.phase = phase;
        table.add(row);
        const std::size_t turns = std::max({sun[i].rises.size(), sun[i].sets.size(),
                                            moon[i].rises.size(), moon[i].sets.size()});
        for (row.turn = 1; row.turn < turns; ++row.turn) table.add(row);
    }
    table.finish();
}

}  // namespace app
