// Uranus, Neptune and Pluto from Chebyshev series fitted to DE431.
#pragma once

#include "core/linalg.h"

namespace solsys {

// Span of the tables in days from J2000 TDB: -3000 to +3000.
constexpr double kChebyshevStart = -1826250.0;
constexpr double kChebyshevEnd = 365250.0;

// Barycentric state of planet 7, 8 or 9 with its satellites, equatorial J2000 [au, au/day];
// `days` counts from J2000 TDB and must lie in the span. The velocity is zero if not asked for.
State chebyshev_planet(int planet, double days, bool with_velocity);

}  // namespace solsys
