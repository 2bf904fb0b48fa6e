// States from the open DE file with the instant in two parts.
#pragma once

#include <array>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

// As DE_Ephemeris::getState, by the same bodies and codes, but day and fraction are never
// added: the place in the record keeps the digits of the fraction, where the sum of both
// resolves 40 microseconds (the Moon 4e-11 au, Mercury 2e-11 au). For batches, numerical
// integration and the modern reduction. A state may serve both forms in turn; neither takes up
// what the other cached of the Sun and the Moon.
int de_state(DE_EvalState& state, Instant t, short body, bool velocity, double* out);

// The heliocentric positions of the planets at one instant, Mercury to Pluto, the third the
// barycentre of Earth and Moon [au], equator of the file; what they share is worked out once.
// False, and `out` untouched, as above.
constexpr int kPlanetsInFile = 9;
bool de_planet_positions(DE_EvalState& state, Instant t, std::array<Vec3, kPlanetsInFile>& out);

}  // namespace solsys
