#include "frames/earth_rotation.h"

#include <cmath>

#include "core/angles.h"
#include "frames/iau2006_precession.h"

namespace solsys {
namespace {

constexpr double kLocatorRate = -47e-6 * kArcsec;  // of s' [rad per century]

}  // namespace

double earth_rotation_angle(Instant ut1) {
    const double turns = std::fmod(ut1.fraction, 1.0) + 0.7790572732640 +
                         0.00273781191135448 * days_since_j2000(ut1);
    return wrap_turn(kTwoPi * std::fmod(turns, 1.0));
}

double greenwich_sidereal_time(Instant ut1, double equation_of_origins) {
    return wrap_turn(earth_rotation_angle(ut1) - equation_of_origins);
}

double mean_sidereal_time_2006(Instant ut1, Instant tt) {
    return wrap_turn(earth_rotation_angle(ut1) + gmst_minus_era(tt));
}

Mat3 polar_motion_matrix(PolarMotion pole, Instant tt) {
    return rotate_x(-pole.y) * rotate_y(-pole.x) *
           rotate_z(kLocatorRate * centuries_since_j2000(tt));
}

}  // namespace solsys
