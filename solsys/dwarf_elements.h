// Built-in heliocentric orbits of Pluto and the dwarf planets.
#pragma once

#include "solsys/kepler.h"

namespace solsys {

// Elements of 9 Pluto, 11 Ceres, 12 Eris, 13 Makemake or 14 Haumea on the J2000 ecliptic, to be
// moved as two-body orbits with the mean motion they carry. False, and *out left alone, for any
// other number.
//
// Measured as the angle at the Sun against a numerical integration, over 1950-2050 (worst):
// Pluto 57 arcsec, Ceres 2029, Eris 18, Makemake 35, Haumea 35.
bool dwarf_planet_elements(int number, Elements* out);

}  // namespace solsys
