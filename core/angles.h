// The vocabulary of angles and directions [rad].
#pragma once

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"

namespace solsys {

// An angle brought into [0, 2 pi). Not a number, or infinite: NaN.
inline double wrap_turn(double angle) {
    const double a = std::fabs(angle) < kTwoPi ? angle : std::fmod(angle, kTwoPi);
    if (!(a < 0)) return a;
    // A tiny negative angle rounds to a whole turn, which is none.
    return a + kTwoPi < kTwoPi ? a + kTwoPi : 0;
}

// An angle brought into (-pi, pi]: what a difference of two angles means.
inline double wrap_half_turn(double angle) {
    const double a = std::remainder(angle, kTwoPi);
    return a <= -kPi ? a + kTwoPi : a;
}

// The unit vector of a longitude and a latitude (or right ascension and declination).
inline Vec3 direction(double lon, double lat) {
    const double cos_lat = std::cos(lat);
    return {cos_lat * std::cos(lon), cos_lat * std::sin(lon), std::sin(lat)};
}

// The longitude of a vector in [0, 2 pi); on the z axis 0.
inline double longitude_of(double x, double y) { return wrap_turn(std::atan2(y, x)); }

// The latitude of a vector, with all its digits at the poles too.
inline double latitude_of(Vec3 v) { return std::atan2(v.z, std::hypot(v.x, v.y)); }

// The angle between two vectors of any length, in [0, pi]: as good for a microsecond of arc as
// for a right angle or opposite directions. A zero vector gives 0.
inline double separation(Vec3 a, Vec3 b) { return std::atan2(norm(cross(a, b)), dot(a, b)); }

// The position angle of direction b seen at direction a, from north through east in [0, 2 pi);
// north is +z of their frame. Unit vectors.
inline double position_angle(Vec3 a, Vec3 b) {
    const double east = a.x * b.y - a.y * b.x;
    const double north = b.z - a.z * dot(a, b);
    return wrap_turn(std::atan2(east, north));
}

}  // namespace solsys
