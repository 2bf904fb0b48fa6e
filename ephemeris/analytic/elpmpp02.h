// ELP/MPP02: the Moon, with the constants fitted to DE405.
#pragma once

#include "core/linalg.h"

namespace solsys {

// Geocentric state in the equatorial frame of J2000 [au, au/day]; `days` counts from J2000 TDB.
// The velocity is zero if not asked for. No check of the span.
State elpmpp02_moon(double days, bool with_velocity);

}  // namespace solsys
