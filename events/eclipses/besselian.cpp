#include "events/eclipses/besselian.h"

#include <cmath>

#include "core/angles.h"
#include "core/constants.h"
#include "solsys/earth_orientation.h"
#include "solsys/eclipses.h"

namespace solsys::eclipses {
namespace {

// The unit vector `a` (towards the Sun) as third axis, the first in the equator eastwards.
Mat3 fundamental_frame(Vec3 a) {
    const double rho = std::hypot(a.x, a.y);
    return {{-a.y / rho, a.x / rho, 0}, {-a.z * a.x / rho, -a.z * a.y / rho, rho}, a};
}

}  // namespace

Axis shadow_axis(Vec3 moon, Vec3 sun, const Radii& radii) {
    const Vec3 line = sun - moon;
    const double g = norm(line);
    const Vec3 a = (1 / g) * line;
    const Vec3 m = (kAuKm / radii.earth) * (fundamental_frame(a) * moon);

    const double sin_f1 = (radii.sun + radii.moon_penumbra) / (g * kAuKm);
    const double sin_f2 = (radii.sun - radii.moon_umbra) / (g * kAuKm);
    const double tan_f1 = sin_f1 / std::sqrt(1 - sin_f1 * sin_f1);
    const double tan_f2 = sin_f2 / std::sqrt(1 - sin_f2 * sin_f2);
    return {m.x,
            m.y,
            m.z,
            a.z,
            std::sqrt(1 - a.z * a.z),
            std::atan2(a.y, a.x),
            (m.z + radii.moon_penumbra / radii.earth / sin_f1) * tan_f1,
            (m.z - radii.moon_umbra / radii.earth / sin_f2) * tan_f2,
            tan_f1,
            tan_f2};
}

Vec3 moon_in_shadow(Vec3 moon, Vec3 sun, double earth_km) {
    const Vec3 m = (kAuKm / earth_km) * (fundamental_frame(unit(-sun)) * moon);
    return m;
}

Flattening flattened(double sin_d, double cos_d, double flattening) {
    const double e2 = (2 - flattening) * flattening;
    const double rho1 = std::sqrt(1 - e2 * cos_d * cos_d);
    const double rho2 = std::sqrt(1 - e2 * sin_d * sin_d);
    const double polar = std::sqrt(1 - e2);
    return {rho1,
            rho2,
            sin_d / rho1,
            polar * cos_d / rho1,
            e2 * sin_d * cos_d / (rho1 * rho2),
            polar / (rho1 * rho2)};
}

}  // namespace solsys::eclipses

void BessEl(int day, double fraction, const double* moon, double moonRadius, const double* sun,
            double sunRadius, double earthRadius, BesselElems* elements) {
    using namespace solsys;
    if (!moon || !sun || !elements) return;
    const eclipses::Axis axis = eclipses::shadow_axis(
        load(moon), load(sun), {sunRadius, moonRadius, moonRadius, earthRadius, 0});
    *elements = {axis.x,
                 axis.y,
                 axis.sin_d,
                 axis.cos_d,
                 wrap_turn(SiderialTime(true, day, fraction) - axis.right_ascension),
                 axis.l2,
                 axis.l1,
                 axis.tan_f1,
                 axis.tan_f2};
}
