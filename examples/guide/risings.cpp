// Sunrise and sunset where there are some, and where there are none.
#include "solsys/sky/risings.h"

#include <cstdio>

#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Zone utc;
    for (const char* city : {"Quito", "London", "Tromso"}) {
        const Site site = *find_city(city);
        const Zone zone = *Zone::find(site.zone);
        const auto clock = [&](const std::optional<Instant>& t) {
            return t ? zone.clock(*t) : std::string("-");
        };
        const Risings found = risings(*model, site, sun(), zone.day({2026, 12, 1}));
        for (const Rising& day : found.rows)
            std::printf("%-7s dawn %5s  rise %5s  noon %5s at %5.1f  set %5s  dusk %5s\n", city,
                        clock(day.civil_dawn).c_str(), clock(day.rise).c_str(),
                        clock(day.transit).c_str(), day.transit_altitude_deg,
                        clock(day.set).c_str(), clock(day.civil_dusk).c_str());
    }

    // Any altitude of any body: when is Rigel more than 20 degrees up?
    const Site london = *find_city("London");
    const Span night = {*parse_time("2026-12-01T12:00Z"), *parse_time("2026-12-02T12:00Z")};
    const Altitude twenty{20, false};
    for (const Span& s : times_above(*model, london, *find_body("rigel"), twenty, night))
        std::printf("Rigel above 20 degrees from %s to %s\n", utc.date_time(s.from).c_str(),
                    utc.date_time(s.to).c_str());
}
