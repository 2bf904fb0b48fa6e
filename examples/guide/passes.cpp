// When a satellite comes over, and when it can be seen.
#include "solsys/sky/passes.h"

#include <cstdio>

#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    const SatelliteList list = parse_satellites(
        "Delta 1 debris\n"
        "1 06251U 62025E   06176.82412014  .00008885  00000-0  12808-3 0  3985\n"
        "2 06251  58.0579  54.0425 0030035 139.1568 221.1854 15.56387291  6774\n");
    for (const std::string& problem : list.problems) std::printf("%s\n", problem.c_str());
    const Satellite& satellite = list.satellites.at(0);
    std::printf("%s: %.1f minutes a revolution, elements of %s\n", satellite.name.c_str(),
                satellite.period_minutes(), satellite.epoch().iso(0).c_str());

    auto model = Model::open();
    const Zone utc;
    const Site hobart = *find_city("Hobart");
    const Span days{*parse_time("2006-06-25"), *parse_time("2006-06-28")};
    for (const Pass& pass : passes(*model, hobart, satellite, days, {.culmination_deg = 15}))
        std::printf("%s, culmination %2.0f degrees up in %3.0f, %4.0f km away%s\n",
                    utc.seconds(pass.culmination.at).c_str(), pass.culmination.altitude_deg,
                    pass.culmination.azimuth_deg, pass.culmination.range_km,
                    pass.best ? ", lit in the dark" : "");
}
