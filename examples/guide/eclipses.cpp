// The eclipses of two years, and what one of them is like at a place.
#include "solsys/sky/eclipses.h"

#include <cstdio>

#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Span years{*parse_time("2026"), *parse_time("2028")};
    for (const EclipseKind kind : {EclipseKind::kSolar, EclipseKind::kLunar})
        for (const Eclipse& e : find_eclipses(*model, kind, years))
            std::printf("%s  %-5s %-9s magnitude %.4f  greatest at %5.1f %6.1f\n",
                        e.greatest.iso(0).c_str(), to_string(kind), e.type.c_str(), e.magnitude,
                        e.nearest.latitude_deg, e.nearest.longitude_deg);

    const Site luxor = *find_city("Luxor");
    for (const Eclipse& e : find_eclipses(*model, EclipseKind::kSolar, years)) {
        const auto seen = eclipse_at(*model, e, luxor);
        if (!seen || !seen->visible) continue;
        std::printf("Luxor sees a %s eclipse, magnitude %.3f\n", seen->type.c_str(),
                    seen->magnitude);
        if (seen->second && seen->third)
            std::printf("from %s to %s, the Sun %.0f degrees up\n",
                        seen->second->at.iso(0).c_str(), seen->third->at.iso(0).c_str(),
                        seen->maximum->altitude_deg);
    }
}
