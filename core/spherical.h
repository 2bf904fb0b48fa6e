// Spherical coordinates as values.
#pragma once

#include <cmath>

#include "core/angles.h"
#include "core/fast_trig.h"
#include "core/linalg.h"

namespace solsys {

struct Spherical {
    double r, lon, lat;
};

// With the caller's modulus; modulus 0 gives zeros.
inline Spherical to_spherical(Vec3 v, double modulus) {
    if (modulus == 0) return {0, 0, 0};
    return {modulus, longitude_of(v.x, v.y), std::atan(v.z / std::sqrt(v.x * v.x + v.y * v.y))};
}

// By cosine of the longitude and sine of the latitude; the other two follow from them.
inline Vec3 to_cartesian(Spherical s) {
    const double cos_lon = fm_cos(s.lon);
    const double sin_lon = sin_from_cos(s.lon, cos_lon);
    const double sin_lat = fm_sin(s.lat);
    const double cos_lat = cos_from_sin(s.lat, sin_lat);
    return {s.r * (cos_lat * cos_lon), s.r * (cos_lat * sin_lon), s.r * sin_lat};
}

}  // namespace solsys
