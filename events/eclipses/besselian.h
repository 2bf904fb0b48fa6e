// Besselian elements: the shadow's axis and cones on the plane through the Earth's centre at
// right angles to the axis. Lengths in equatorial radii of the Earth.
// Source: Explanatory Supplement to the Astronomical Almanac (1992), on eclipses; Chauvenet
// 1891, A Manual of Spherical and Practical Astronomy.
#pragma once

#include "core/linalg.h"

namespace solsys::eclipses {

// The bodies behind the cones [km].
struct Radii {
    double sun;
    double moon_penumbra;
    double moon_umbra;
    double earth;  // equatorial
    double flattening;
};

struct Axis {
    double x, y, z;  // the Moon: the axis meets the plane at (x, y)
    double sin_d, cos_d;
    double right_ascension;  // (-pi, pi]
    double l1, l2;           // cones on the plane; l2 negative: the umbra reaches it
    double tan_f1, tan_f2;
};

// From the places of Moon and Sun: geocentric, apparent, true equator of date [au].
Axis shadow_axis(Vec3 moon, Vec3 sun, const Radii& radii);

// The Moon against the axis of the Earth's own shadow: x, y as above, z towards the Moon.
Vec3 moon_in_shadow(Vec3 moon, Vec3 sun, double earth_km);

// The flattened Earth seen along the axis.
struct Flattening {
    double rho1, rho2;
    double sin_d1, cos_d1;
    double sin_d1_d2, cos_d1_d2;  // of the difference d1 - d2
};
Flattening flattened(double sin_d, double cos_d, double flattening);

}  // namespace solsys::eclipses
