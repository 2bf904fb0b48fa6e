#include "apps/solsys/diary_pages.h"

#include <fmt/format.h>

#include "solsys/visibility.h"

namespace app {
namespace {

namespace sky = solsys::sky;

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
std::string rise_and_set(CSWVisibility& visibility, const sky::Site& site, const SSO_ID& id,
                         const sky::Span& day, const sky::Zone& zone) {
    OBSERVER observer = site.visibility_observer();
    visibility.InitSearch(day.from.jd_utc() - 1, day.to.jd_utc() + 1, id, &observer);
    visibility.SearchVisibility();
    std::string rise = "--:--";
    std::string set = rise;
    for (const VISIBILITY& v : visibility.GetResults()) {
        const auto note = [&](double jd, std::string& text) {
            if (jd == 0) return;
            const sky::Instant t = sky::Instant::from_utc(jd);
            if (day.from <= t && t < day.to) text = zone.clock(t);
        };
        note(v.rise, rise);
        note(v.set, set);
    }
    return rise + " - " + set;
}

void print_risings(sky::Model& model, const sky::CivilDate& month, const sky::Zone& zone) {
    if (!model.site()) return;
    const sky::Site site = *model.site();
    CSWVisibility visibility(&model.classic());
    fmt::print("  {}: sunrise and sunset, moonrise and moonset\n", site.name);
    for (const int day : {1, 11, 21}) {
        const sky::Span span = zone.day(sky::CivilDate{month.year, month.month, day});
        fmt::print("    {:2}   Sun {}   Moon {}\n", day,
                   rise_and_set(visibility, site, {SSO_PLNT, 10}, span, zone),
                   rise_and_set(visibility, site, {SSO_MOON, 301}, span, zone));
    }
    fmt::print("\n");
}

}  // namespace

void print_diary_pages(sky::Model& model, const std::vector<sky::DiaryEvent>& events,
                       const sky::Span&, const sky::Zone& zone) {
    int year = 0, month = 0;
    int day = 0;
    for (const sky::DiaryEvent& event : events) {
        const sky::CivilDate date = zone.date(event.at.plus_seconds(30));
        if (date.year != year || date.month != month) {
            fmt::print("{}{} {} (times: {})\n\n", month == 0 ? "" : "\n",
                       month_name(date.month), date.year, zone.name());
            print_risings(model, date, zone);
            year = date.year, month = date.month, day = 0;
        }
        const std::string label = date.day == day
                                      ? std::string(6, ' ')
                                      : fmt::format("{:2} {}", date.day, weekday(date));
        day = date.day;
        std::string where;
        if (event.altitude_deg)
            where = *event.altitude_deg > 0
                        ? fmt::format("  (altitude {:.0f}\u00b0)", *event.altitude_deg)
                        : "  (below the horizon)";
        fmt::print("  {}  {}  {}{}\n", label, zone.clock(event.at), event.text, where);
    }
}

}  // namespace app
