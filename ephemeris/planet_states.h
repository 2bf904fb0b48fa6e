// Where a planet, the Moon or the Sun is at an instant: from the DE file that the process has
// open or, where that does not reach, from the built-in theories.
//
// Everything here is a function of its arguments. A caller that reads the file brings an
// evaluation state of its own (one a thread); one that insists on the built-in theories brings
// none.
#pragma once

#include <cstdint>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

// Body numbers, those of the catalogue. Planets are 1 to 9, the Earth and Pluto among them.
constexpr int kEarthNumber = 3;
constexpr int kPlutoNumber = 9;
constexpr int kSunNumber = 10;
constexpr int kMoonNumber = 301;

// The heliocentric state of a planet (1 to 9), the Sun (10: zero, at any instant) or the Moon
// (301), mean equator and equinox of J2000, au and au/day, geometric; t is TDB. The planets
// from Mars outwards stand for their systems, 3 is the Earth itself.
//
// Without `with_velocity` out.v is zero. False, and `out` left alone, for other numbers and for
// instants that neither source covers (the theories reach from -3000 to +3000).
//
// Accuracy: that of the file (whose instants are formed as one double: 2e-11 rad for planets,
// 2.5e-9 for the Moon), or of the theories (see analytic/analytic_theory.h).
bool planet_state(DE_EvalState* file, int body, Instant t, bool with_velocity, State& out);

// The geocentric state of the Moon, as above.
bool moon_from_earth(DE_EvalState* file, Instant t, bool with_velocity, State& out);

// The two sources of that. In the file: false where it does not reach.
bool moon_in_file(DE_EvalState& file, Instant t, bool with_velocity, State& out);
// By the theory, whose velocity is a forward difference over 0.00027 day:
// 2e-8 au/day (1 part in 30,000) from the derivative.
bool moon_by_theory(Instant t, bool with_velocity, State& out);

// How often the process has opened or closed a DE file: whoever keeps states compares the
// count.
std::uint32_t de_file_changes();

}  // namespace solsys
