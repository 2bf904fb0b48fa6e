// The smallest host program: where Jupiter stands in the sky of Greenwich at an instant.
#include <cmath>
#include <cstdio>

#include "solsys/solsys.h"

int main() {
    const double degree = std::acos(-1.0) / 180;

    CSWSolSys model;
    model.InitSys("");  // no ephemeris file: the built-in theory serves

    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT;
    site.body_number = 3;
    site.location[2] = 51.4779 * degree;  // longitude 0, height 0
    model.SetObserver(&site);

    // 2024 January 1, 0h UT, as an instant in dynamical time.
    int day = 0;
    double fraction = 0;
    ET_UT::UT2ET(2460310.5, day, fraction);
    model.UpdateSys(day, fraction);

    double place[3];  // distance [au], right ascension, declination
    if (!model.GetRADecVis(SSO_ID(SSO_PLNT, 5), place, 0.0)) return 1;
    double azimuth = 0;
    double altitude = 0;
    model.FromRAToAzm(false, &place[1], &place[2], &azimuth, &altitude);

    std::printf("Jupiter: distance %.4f au, azimuth %.2f deg, altitude %.2f deg\n", place[0],
                azimuth / degree, altitude / degree);
    return 0;
}
