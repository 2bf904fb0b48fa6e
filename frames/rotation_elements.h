// Pole and prime meridian of the catalogue's bodies: a function per planet, one for the Moon,
// and one per family of satellites, all of the type RotationElementsFn. A function answers
// false for a body of another family.
//
// The elements are those of the working group report of 2015 (Archinal et al. 2018, Celest.
// Mech. Dyn. Astron. 130, 22) with all periodic terms and their rates per Julian century.
// Jupiter's W is that of System III. The Earth's W follows sidereal time, so that it holds
// Delta T. Eris, Makemake, Haumea, Hyperion and the satellites without a determined pole have
// no elements.
#pragma once

#include "solsys/body_rotation.h"

namespace solsys {

// The elements of a body whose number must lie in first..last, the range of its family; false,
// and three zeros, for one outside or without elements and for an instant that is not finite.
bool rotation_elements(int first, int last, int day, double fraction, int body, double* ra,
                       double* dec, double* w);

template <int kFirst, int kLast>
bool rotation_of(int day, double fraction, int body, double* ra, double* dec, double* w) {
    return rotation_elements(kFirst, kLast, day, fraction, body, ra, dec, w);
}

inline constexpr RotationElementsFn mercury_rotation = rotation_of<1, 1>;
inline constexpr RotationElementsFn venus_rotation = rotation_of<2, 2>;
inline constexpr RotationElementsFn mars_rotation = rotation_of<4, 4>;
inline constexpr RotationElementsFn jupiter_rotation = rotation_of<5, 5>;
inline constexpr RotationElementsFn saturn_rotation = rotation_of<6, 6>;
inline constexpr RotationElementsFn uranus_rotation = rotation_of<7, 7>;
inline constexpr RotationElementsFn neptune_rotation = rotation_of<8, 8>;
inline constexpr RotationElementsFn pluto_rotation = rotation_of<9, 9>;
inline constexpr RotationElementsFn sun_rotation = rotation_of<10, 10>;
inline constexpr RotationElementsFn ceres_rotation = rotation_of<11, 11>;
inline constexpr RotationElementsFn moon_rotation = rotation_of<301, 301>;
inline constexpr RotationElementsFn martian_rotation = rotation_of<401, 402>;
inline constexpr RotationElementsFn jovian_rotation = rotation_of<501, 580>;
inline constexpr RotationElementsFn saturnian_rotation = rotation_of<601, 683>;
inline constexpr RotationElementsFn uranian_rotation = rotation_of<701, 727>;
inline constexpr RotationElementsFn neptunian_rotation = rotation_of<801, 814>;
inline constexpr RotationElementsFn plutonian_rotation = rotation_of<901, 905>;
// Eris, Makemake, Haumea and their satellites: false, and three zeros.
inline constexpr RotationElementsFn no_rotation = rotation_of<1, 0>;

bool earth_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);

}  // namespace solsys
