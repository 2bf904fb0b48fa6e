// One instant on several clocks.
#include <cstdio>

#include "solsys/sky/instant.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    const Zone oslo = *Zone::find("Europe/Oslo");
    const Instant t = *parse_time("2026-12-01 18:00", oslo);  // a reading of Oslo's clock

    std::printf("UTC      %s   JD %.5f\n", t.iso(0).c_str(), t.jd_utc());
    std::printf("TT       %24s JD %.5f\n", "", t.jd_tt());
    std::printf("TT - UTC %.3f s\n", t.delta_t_seconds());
    std::printf("Oslo     %s\n", oslo.iso(t, 0).c_str());

    // A step of a day keeps the hour of UTC; one of the calendar keeps the zone's clock.
    const Instant before = *parse_time("2026-03-28 12:00", oslo);
    std::printf("+1 day   %s\n", oslo.iso(before.plus_days(1), 0).c_str());
    std::printf("+1 month %s\n",
                oslo.iso(after_steps(before, *parse_step("1mo"), 1, oslo), 0).c_str());
    std::printf("that day has %.0f hours\n", 24 * oslo.day(before.plus_days(1)).days());

    // Long ago: the Julian calendar, and a day that was not yet of 86400 seconds.
    for (const char* text : {"1582-10-04T12:00Z", "1582-10-15T12:00Z", "-0584-05-28T12:00Z"}) {
        const Instant then = *parse_time(text);
        std::printf("%-20s JD %.1f  TT - UT %.0f s\n", text, then.jd_utc(),
                    then.delta_t_seconds());
    }
    std::printf("%s\n", parse_time("2026-13-01").message().c_str());
}
