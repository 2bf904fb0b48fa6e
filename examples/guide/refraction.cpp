// How far the air lifts what stands low.
#include "solsys/sky/refraction.h"

#include <cstdio>
using namespace solsys::sky;

int main() {
    Atmosphere winter;
    winter.air = {1020, -15, 0.8, 0.574};  // hPa, Celsius, humidity, micrometres
    winter.latitude_deg = 60;
    std::printf("true altitude   short formula   1010 hPa, 10 C   winter   (arcmin)\n");
    for (const double altitude : {-0.5, 0.0, 1.0, 5.0, 15.0, 45.0})
        std::printf(
            "%13.1f %15.2f %16.2f %8.2f\n", altitude, *refraction_of_true_short(altitude) * 60,
            *refraction_of_true(altitude, {}) * 60, *refraction_of_true(altitude, winter) * 60);
    std::printf("dip of the horizon from a lighthouse of 60 m: %.1f arcmin\n",
                *dip_of_horizon(60, {}) * 60);
}
