// Greenwich sidereal time.
#pragma once

#include "core/instant.h"
#include "frames/nutation.h"

namespace solsys {

// Mean sidereal angle [rad, 0 to 2 pi) at an instant of dynamical time (IAU 1982; Aoki et al.
// 1982, Astron. Astrophys. 105, 359).
double mean_sidereal_time(Instant t);

// Apparent: with the equation of the equinoxes of the nutation given.
double apparent_sidereal_time(Instant t, const NutationAngles& nutation);

}  // namespace solsys
