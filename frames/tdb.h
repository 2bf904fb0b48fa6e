// Barycentric dynamical time.
#pragma once

#include "core/instant.h"

namespace solsys {

// TDB - TT at the geocentre [s]: the seven largest terms of the series of Fairhead & Bretagnon
// 1990, Astron. Astrophys. 229, 240. Within 8.7 microseconds of all 787 terms in 1600..2200
// (2.5 rms), 83 in -2000..3000: 0.006 mas of the Moon, 0.001 of Mercury.
double tdb_minus_tt(Instant tt);

// The instant on the scale of the ephemerides.
Instant tdb_from_tt(Instant tt);

}  // namespace solsys
