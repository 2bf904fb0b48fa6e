// Planetographic and planetocentric coordinates on an ellipsoid of revolution.
#include <cmath>

#include "core/constants.h"
#include "core/fast_trig.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kLatitudeTolerance = 1e-14;

}  // namespace

void Plg2Plc(double a, double f, const double* geo, double* out) {
    const double height = geo[0];
    const solsys::SinCos lon = solsys::fast_sincos(geo[1]);
    const solsys::SinCos lat = solsys::fast_sincos(geo[2]);
    const double e2 = (2 - f) * f;
    const double N = a / std::sqrt(1 - e2 * lat.sin * lat.sin);
    out[0] = (N + height) * lat.cos * lon.cos;
    out[1] = (N + height) * lat.cos * lon.sin;
    out[2] = ((1 - e2) * N + height) * lat.sin;
}

int Plc2Plg(double a, double f, const double* xyz, double* out) {
    const double x = xyz[0];
    const double y = xyz[1];
    const double z = xyz[2];
    const double p = std::sqrt(x * x + y * y);
    out[1] = std::atan2(y, x);
    if (p == 0 && z != 0) {  // at the pole the normal is the axis
        out[0] = std::fabs(z) - a * (1 - f);
        out[2] = z > 0 ? solsys::kHalfPi : -solsys::kHalfPi;
        return 0;
    }
    double lat = std::atan2(z, p);
    if (std::fabs(lat) <= kLatitudeTolerance) {
        out[0] = std::sqrt(x * x + y * y + z * z) - a;
        out[2] = lat;
        return 0;
    }

    const double e2 = (2 - f) * f;
    double previous_step = std::fabs(lat);
    for (int iterations = 0;;) {
        const double cos_lat = std::cos(lat);
        const double N = a / std::sqrt(1 - (1 - cos_lat * cos_lat) * e2);
        const double to_axis = p / cos_lat;  // along the normal
        const double next = std::atan2(z * to_axis, (to_axis - N * e2) * p);
        const double step = std::fabs(next - lat);
        out[0] = to_axis - N;
        out[2] = next;
        if (step >= previous_step) return -1;
        ++iterations;
        if (!(step > kLatitudeTolerance)) return iterations;
        previous_step = step;
        lat = next;
    }
}
