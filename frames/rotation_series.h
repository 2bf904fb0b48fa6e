// Sums of published rotation elements and their periodic terms.
#pragma once

#include <optional>

namespace solsys {

// Pole and prime meridian as published [deg], not reduced to a revolution.
struct RotationAngles {
    double alpha;  // right ascension of the pole, J2000 equator
    double delta;  // its declination
    double w;      // prime meridian from the ascending node on the J2000 equator
};

// The elements of a catalogue body and their periodic terms; nothing for a body without.
// t is the argument of the secular and periodic terms: Julian centuries from J2000 in the
// published form. d is days from J2000 [TDB].
std::optional<RotationAngles> rotation_series(int body, double t, double d);

}  // namespace solsys
