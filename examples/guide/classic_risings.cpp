// Sunrises and sunsets with the classic interface: a spring in London, a polar night in Tromso.
#include <cstdio>

#include "solsys/solar_system.h"
#include "solsys/visibility.h"

namespace {

constexpr double kDegree = 0.017453292519943295;

void search(CSWSolSys& model, double latitude, double longitude, double start, double end) {
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
        std::printf("%.4f the Sun %s\n", c.time, c.sense > 0 ? "rises" : "sets");

    VISIBILITY day;
    while (visibility.SearchNext(&day))
        std::printf("%.4f transit, %.1f degrees up\n", day.transit,
                    day.transit_altitude / kDegree);
}

}  // namespace

int main() {
    CSWSolSys model;
    model.InitSys("");
    std::printf("London, two days\n");
    search(model, 51.5 * kDegree, 0, 2453449.5, 2453451.5);
    std::printf("Tromso, five days\n");
    search(model, 69.65 * kDegree, 18.96 * kDegree, 2453720.5, 2453725.5);
}
