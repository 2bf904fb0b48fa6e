// Who meets whom.
#include "solsys/sky/conjunctions.h"

#include <cstdio>

#include "solsys/sky/occultations.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Zone utc;
    const Span span{*parse_time("2026"), *parse_time("2029")};
    for (const Conjunction& c : conjunctions(*model, *find_body("venus"), *find_body("jupiter"),
                                             span, ConjunctionWay::kClosest))
        std::printf("%s  Venus %.2f degrees from Jupiter, %.0f from the Sun\n",
                    utc.date_time(c.at).c_str(), c.separation_deg, c.elongation_deg);

    const std::vector<Body> three = {*find_body("mercury"), *find_body("venus"),
                                     *find_body("jupiter")};
    for (const Gathering& g : gatherings(*model, three, span, 8))
        std::printf("%s  three planets in a circle of %.1f degrees\n",
                    utc.date_time(g.at).c_str(), 2 * g.radius_deg);

    model->observe_from(*find_city("Madrid"));
    const Span winter{*parse_time("2026-12-01"), *parse_time("2027-03-01")};
    for (const LunarOccultation& o : lunar_occultations(*model, winter, {.faintest_star = 4.5}))
        std::printf("%s  %s %s behind the Moon\n", utc.date_time(o.at).c_str(),
                    o.body.name.c_str(), to_string(o.contact));
}
