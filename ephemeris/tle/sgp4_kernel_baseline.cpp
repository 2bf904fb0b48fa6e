// Built for every processor; states of one satellite too.
#include "ephemeris/tle/sgp4_kernel.inl"

namespace solsys {

void sgp4_lanes_baseline(Sgp4Kind kind, const Sgp4Block& block,
                         ResonanceState<Sgp4Lanes>& resonance, Sgp4Work& work) {
    states_of_lanes(kind, block, resonance, work);
}

int sgp4_state(Sgp4Kind kind, const Sgp4Coefficients<double>& set, double t,
               ResonanceState<double>& resonance, double state[6]) {
    return static_cast<int>(state_of<double>(kind, set, t, resonance, state));
}

}  // namespace solsys
