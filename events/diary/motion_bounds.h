// How fast the functions of the diary can bend: what its certified searches stand on.
#pragma once

#include "events/diary/geocentric_sky.h"

namespace solsys::diary {

// Bounds on derivatives of a body's geocentric apparent place, per day.
struct MotionBounds {
    double ra1, ra2, ra3;     // of the right ascension [rad]
    double lon1, lon2, lon3;  // of the ecliptic longitude [rad]
    double distance3;         // third, of the light-time distance [au]
    double cosine3;           // third, of the cosine of the angle from the Sun
    double radial2;           // second, of r . dr/dt, heliocentric [au^2/day]
};

// Half as much again as the largest values met from 1600 to 2200. A star's follow from its
// declination; bodies other than the Sun, the Moon and the planets get generous ones, which
// hold for whatever moves by less than 28 degrees a day.
MotionBounds bounds_of(const Target& target);

// Bound on the second derivative of the sine of the difference of two longitudes whose rates
// and accelerations are bounded: |(sin d)''| <= d'^2 + |d''|.
constexpr double sine_bound(double rate1, double acceleration1, double rate2,
                            double acceleration2) {
    return (rate1 + rate2) * (rate1 + rate2) + acceleration1 + acceleration2;
}

}  // namespace solsys::diary
