// VSOP87A: heliocentric rectangular coordinates of Mercury to Saturn, and the Sun's offset from
// the barycentre in the same form.
#pragma once

#include "core/linalg.h"

namespace solsys {

// States in the equatorial frame of J2000 [au, au/day]; `days` counts from J2000 TDB. The
// velocity is zero if not asked for. No check of the span.
State vsop87a_planet(int planet, double days, bool with_velocity);  // 1 to 6
State sun_from_barycentre(double days, bool with_velocity);

}  // namespace solsys
