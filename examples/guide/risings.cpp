// Sunrises and sunsets at a site, as the guide shows them.
// Run as: risings LATITUDE LONGITUDE JD_UT DAYS; degrees, north and east positive.
#include <cstdio>
#include <cstdlib>

#include "solsys/solar_system.h"
#include "solsys/visibility.h"

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    constexpr double kDegree = 0.017453292519943295;
    const double latitude = std::atof(argv[1]) * kDegree;
    const double longitude = std::atof(argv[2]) * kDegree;
    const double start = std::atof(argv[3]);
    const double end = start + std::atof(argv[4]);
    CSWSolSys model;
    model.InitSys("");

    // [guide]
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[0] = 0;  // height in km here, in au for the model itself
    site.location[1] = longitude;
    site.location[2] = latitude;

    CSWVisibility visibility(&model);
    visibility.InitSearch(start, end, SSO_ID(SSO_PLNT, 10), &site);  // Julian dates in UT
    visibility.SearchCrossings(-34 / 60.0 * kDegree, true);          // of the upper limb
    for (const CROSSING& c : visibility.GetCrossings())
        std::printf("%.5f the Sun %s\n", c.time, c.sense > 0 ? "rises" : "sets");

    VISIBILITY day;
    while (visibility.SearchNext(&day))
        std::printf("%.5f transit, %.1f degrees up\n", day.transit,
                    day.transit_altitude / kDegree);
    // [guide]
    return 0;
}
