// Jupiter from Greenwich with the classic interface: split Julian dates, radians, output
// arguments.
#include <cstdio>

#include "solsys/solsys.h"

int main() {
    constexpr double kDegree = 0.017453292519943295;
    CSWSolSys model;
    model.InitSys("");  // no ephemeris file: the built-in theory serves

    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[2] = 51.4779 * kDegree;  // longitude 0, height 0
    model.SetObserver(&site);

    int day = 0;
    double fraction = 0;
    ET_UT::UT2ET(2460310.5, day, fraction);  // 2024 January 1, 0h UT, as dynamical time
    model.UpdateSys(day, fraction);

    const SSO_ID jupiter(SSO_PLNT, 5);
    double place[3];  // distance [au], right ascension, declination [rad]
    if (!model.GetRADecVis(jupiter, place, 0.0)) return 1;
    double azimuth = 0;
    double altitude = 0;
    model.FromRAToAzm(false, &place[1], &place[2], &azimuth, &altitude);
    std::printf("ra %.4f  dec %.4f  %.4f au\n", place[1] / kDegree, place[2] / kDegree,
                place[0]);
    std::printf("azimuth %.2f  altitude %.2f\n", azimuth / kDegree, altitude / kDegree);
}
