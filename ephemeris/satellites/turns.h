// Fixed rotations of the satellite theories, computed while compiling.
#pragma once

#include "core/constants.h"
#include "core/linalg.h"
#include "core/sin_cos.h"

namespace solsys::satellites {

// Rotations of a vector (not of the frame) by a positive angle, as the theories give them.
constexpr Mat3 turn_x(double angle) {
    const SinCos a = sin_cos(angle);
    return rotation_x(a.cos, -a.sin);
}
constexpr Mat3 turn_z(double angle) {
    const SinCos a = sin_cos(angle);
    return rotation_z(a.cos, -a.sin);
}

// From the J2000 ecliptic to the equator; obliquity of the IAU 1976 system.
constexpr Mat3 kEquatorFromEcliptic = turn_x(84381.448 * kArcsec);

}  // namespace solsys::satellites
