// States of element sets in lanes: eight satellites at one instant, or one at eight, compiled
// for every x86-64 processor, for those with AVX2 and for those with AVX-512. Every build, and
// a single state, gives the same bits.
//
// This header and the kernel's sources include nothing: a function shared with the rest of
// the library must not be compiled for a processor that may not be there.
#pragma once

#include "ephemeris/tle/sgp4_coefficients.h"

namespace solsys {

constexpr int kSgp4Lanes = 8;
// Minutes from epoch beyond which there is no state: far beyond any meaning of the model.
constexpr double kSgp4Farthest = 1e7;

struct Sgp4Lanes {
    alignas(64) double at[kSgp4Lanes];
};
using Sgp4Block = Sgp4Coefficients<Sgp4Lanes>;

// In: the instants, Julian date UTC. Out: states, TEME [km, km/s]; codes as `sgp4_state`.
struct Sgp4Work {
    Sgp4Lanes day, fraction;
    Sgp4Lanes state[6];
    Sgp4Lanes code;
};

// `resonance` is kept from call to call of one block; zeros to begin with.
void sgp4_lanes_baseline(Sgp4Kind kind, const Sgp4Block& block,
                         ResonanceState<Sgp4Lanes>& resonance, Sgp4Work& work);
void sgp4_lanes_avx2(Sgp4Kind kind, const Sgp4Block& block,
                     ResonanceState<Sgp4Lanes>& resonance, Sgp4Work& work);
void sgp4_lanes_avx512(Sgp4Kind kind, const Sgp4Block& block,
                       ResonanceState<Sgp4Lanes>& resonance, Sgp4Work& work);

// One state, t minutes from epoch: TEME [km, km/s]. The answer is 0 or 6 (below the ground)
// with a state; without one 1 (eccentricity after drag), 2 (mean motion), 3 (perturbed
// eccentricity), 4 (semi-latus rectum), 7 (farther than kSgp4Farthest), 8 (no finite state).
int sgp4_state(Sgp4Kind kind, const Sgp4Coefficients<double>& set, double t,
               ResonanceState<double>& resonance, double state[6]);

}  // namespace solsys
