// The satellites' own theories: states relative to the planet (Phoebe: to the barycentre of the
// Saturn system), J2000 equator [au, au/day]. Callers have checked the moon's number and that
// the instant is in reach.
#pragma once

#include "ephemeris/satellites/equinoctial.h"

namespace solsys::satellites {

int mars_state(int moon, Instant t, State& state);      // 1 and 2
int galilean_state(int moon, Instant t, State& state);  // 1 to 4
int tass_state(int moon, Instant t, State& state);      // Saturn 1 to 8
int phoebe_state(Instant t, State& state);              // Saturn 9
int htc_state(int moon, Instant t, State& state);       // Saturn 12 to 14
int gust_state(int moon, Instant t, State& state);      // Uranus 1 to 5
int nereid_state(Instant t, State& state);              // Neptune 2

// The frame of every exported operation: refuse, compute, store.
template <class Theory>
int answer(Instant t, double* out, const Theory& theory) {
    if (!in_reach(t)) return kInvalid;
    State state;
    const int code = theory(t, state);
    if (code == kOk) store(state, out);
    return code;
}

}  // namespace solsys::satellites
