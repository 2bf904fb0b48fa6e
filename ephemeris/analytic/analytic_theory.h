// The built-in theory of the planets, the Moon and Pluto: what the model stands on when no
// ephemeris file is open, or when the open one does not reach an instant.
//
// Sources: VSOP87A for Mercury to Saturn (Bretagnon & Francou 1988, Astron. Astrophys. 202,
// 309); Chebyshev series fitted to DE431 for Uranus, Neptune and Pluto; ELP/MPP02 with the
// constants fitted to DE405 for the Moon (Chapront & Francou 2003, Astron. Astrophys. 404,
// 735). How many terms are kept, and what that costs, stands in analytic_selection.h.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// All functions: mean equator and equinox of J2000 (ICRS within 0.03 arcsec), au and au/day,
// geometric; t is TDB (TT serves as well: 2 ms moves the Moon by 0.001 arcsec). They answer
// false and leave `out` alone outside JD 625295.0 .. 2816795.0 (-3000 to +3000, both ends
// included) and for times that are not finite. No allocation, no lock, no state: any number
// of threads may call them.

// The heliocentric state of planet 1 (Mercury) to 9 (Pluto); 3 is the Earth itself, the
// planets from Mars outwards stand for their systems. False for any other number. Without
// velocity, in 0.6 of the time, out.v is zero and out.r the same bits.
bool analytic_planet(int planet, Instant t, bool with_velocity, State& out);

// Whether they reach that far.
bool analytic_covers(Instant t);

// The geocentric state of the Moon; velocity as above.
bool analytic_moon(Instant t, bool with_velocity, State& out);

// The Sun relative to the barycentre of the solar system, with velocity; good to 2e-6 au.
bool analytic_sun_barycentric(Instant t, State& out);

}  // namespace solsys
