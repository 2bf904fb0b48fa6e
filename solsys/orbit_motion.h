// Two-body motion as the model takes it.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/kepler.h"

namespace solsys {

// The state on an orbit by its elements, in their own frame. As `Kepler` has it, except within
// 1e-9 rad of mean anomaly about an elliptic perihelion: `Kepler` halts there, for days and by
// hundredths of an au on a nearly parabolic orbit; here the equation is solved all the same.
// False, with the last iterate, when an iteration reached its limit.
bool state_on_orbit(const Elements& elements, double mu, Instant t, bool velocity, State& out);

// A state `days` later on the orbit that it defines about a centre of mass mu, in universal
// variables: one formula for ellipses, parabolas and hyperbolas, circular and equatorial ones
// included. At 0 days the state itself, to the last digit. False, and `out` left alone, when a
// number is not finite or the state is at the centre.
//
// Source: Battin 1999, An Introduction to the Mathematics and Methods of Astrodynamics,
// sections 4.5 (universal functions) and 4.6 (Lagrangian coefficients).
bool moved_state(const State& start, double mu, double days, State& out);

}  // namespace solsys
