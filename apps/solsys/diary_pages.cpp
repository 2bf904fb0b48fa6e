#include "apps/solsys/diary_pages.h"

#include <fmt/format.h>

#include "solsys/sky/rise_set_days.h"

namespace app {
namespace {

const char* month_name(int month) {
    static constexpr const char* names[] = {"January",   "February", "March",    "April",
                                            "May",       "June",     "July",     "August",
                                            "September", "October",  "November", "December"};
    return names[month - 1];
}

const char* weekday(const sky::CivilDate& date) {
    static constexpr const char* names[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    const int day = sky::julian_day_number(date) % 7;
    return names[day < 0 ? day + 7 : day];
}

// "08:03 - 15:53", or what there is of it on a civil day.
std::string rise_and_set(const sky::RiseSetDay& day, const sky::Zone& zone) {
    const auto clock = [&](const std::vector<sky::HorizonEvent>& events) {
        return events.empty() ? std::string("--:--") : zone.clock(events.front().at);
    };
    if (day.state != sky::DayState::kRisesOrSets)
        return fmt::format("{:13}", sky::to_string(day.state));
    return clock(day.rises) + " - " + clock(day.sets);
}

// The first, eleventh and twenty-first of a month.
void print_risings(sky::Model& model, const sky::CivilDate& month, const Setting& setting) {
    if (!setting.site || LongSearch::interrupted()) return;
    fmt::print("  {}: sunrise and sunset, moonrise and moonset\n", setting.site->name);
    for (const int day : {1, 11, 21}) {
        const sky::CivilDate date{month.year, month.month, day};
        const auto of = [&](const sky::Body& body) {
            const auto days =
                sky::rise_set_days(model, *setting.site, body, setting.zone, date, date);
            return days.empty() ? std::string("-") : rise_and_set(days.front(), setting.zone);
        };
        fmt::print("    {:2}   Sun {}   Moon {}\n", day, of(sky::sun()), of(sky::moon()));
    }
    fmt::print("\n");
}

}  // namespace

void print_diary_pages(sky::Model& model, const std::vector<sky::DiaryEvent>& events,
                       const Setting& setting, LongSearch& search) {
    const sky::Zone& zone = setting.zone;
    sky::CivilDate last{0, 0, 0};
    for (const sky::DiaryEvent& event : events) {
        const sky::CivilDate date = zone.date(event.at.plus_seconds(30));  // as the clock shows
        if (date.year != last.year || date.month != last.month) {
            fmt::print("{}{} {} (times: {})\n\n", last.month == 0 ? "" : "\n",
                       month_name(date.month), date.year, zone.name());
            search.go_on(static_cast<double>(&event - events.data()) /
                         static_cast<double>(events.size()));
            print_risings(model, date, setting);
        }
        const std::string label = date == last
                                      ? std::string(6, ' ')
                                      : fmt::format("{:2} {}", date.day, weekday(date));
        last = date;
        std::string where;
        if (event.altitude_deg)
            where = *event.altitude_deg > 0
                        ? fmt::format("  (altitude {:.0f}\u00b0)", *event.altitude_deg)
                        : "  (below the horizon)";
        fmt::print("  {}  {}  {}{}\n", label, zone.clock(event.at), event.text, where);
    }
}

}  // namespace app
