#include "core/ellipsoid.h"

#include "core/fast_trig.h"
#include "solsys/toolkit.h"

namespace solsys {

// Fixed-point iteration for the geodetic latitude: from a latitude to the point where its
// normal meets the axis, and from there to the latitude of the normal through v. It gains a
// factor e^2 per pass at the surface. Heiskanen & Moritz 1967, Physical Geodesy.
GeodeticFix geodetic(const Ellipsoid& figure, Vec3 v) {
    constexpr double kTolerance = 1e-14;  // rad
    const double p = std::sqrt(v.x * v.x + v.y * v.y);
    const double lon = std::atan2(v.y, v.x);
    if (p == 0 && v.z != 0)  // at the pole the normal is the axis
        return {{std::fabs(v.z) - figure.polar_radius(), lon, v.z > 0 ? kHalfPi : -kHalfPi}, 0};

    double lat = std::atan2(v.z, p);
    if (std::fabs(lat) <= kTolerance) return {{norm(v) - figure.radius, lon, lat}, 0};

    const double e2 = figure.eccentricity_squared();
    double previous_step = std::fabs(lat);
    for (int iterations = 1;; ++iterations) {
        const double cos_lat = std::cos(lat);
        const double n = figure.radius / std::sqrt(1 - (1 - cos_lat * cos_lat) * e2);
        const double to_axis = p / cos_lat;  // along the normal
        const double next = std::atan2(v.z * to_axis, (to_axis - n * e2) * p);
        const double step = std::fabs(next - lat);
        const Geodetic place{to_axis - n, lon, next};
        if (step >= previous_step) return {place, -1};
        if (!(step > kTolerance)) return {place, iterations};
        previous_step = step;
        lat = next;
    }
}

}  // namespace solsys

void Plg2Plc(double a, double f, const double* geo, double* out) {
    solsys::store(solsys::cartesian({a, f}, geo[0], solsys::fast_sincos(geo[1]),
                                    solsys::fast_sincos(geo[2])),
                  out);
}

int Plc2Plg(double a, double f, const double* xyz, double* out) {
    const auto [place, iterations] = solsys::geodetic({a, f}, solsys::load(xyz));
    out[0] = place.height, out[1] = place.lon, out[2] = place.lat;
    return iterations;
}
