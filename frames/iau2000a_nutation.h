// IAU 2000A nutation, complete: 678 luni-solar and 687 planetary terms (Mathews, Herring &
// Buffett 2002, J. Geophys. Res. 107 (B4); Souchay et al. 1999), 0.2 to 0.4 mas from the
// observed pole, whose free motion no model foresees.
#pragma once

#include "core/instant.h"

namespace solsys {

// [rad]
struct NutationOffsets {
    double d_psi, d_epsilon;
};

// The series as published.
NutationOffsets nutation_iau2000a(Instant tt);

// Fitted to the IAU 2006 precession: its obliquity and the secular change of J2 (Wallace &
// Capitaine 2006, Astron. Astrophys. 459, 981). Worth 0.03 mas in 1960..2059.
NutationOffsets nutation_iau2006(Instant tt);

}  // namespace solsys
