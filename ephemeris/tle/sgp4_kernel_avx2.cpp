// Built with the flags of SOLSYS_AVX2_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx2() says so.
#include "ephemeris/tle/sgp4_kernel.inl"

namespace solsys {

void sgp4_lanes_avx2(Sgp4Kind kind, const Sgp4Block& block,
                     ResonanceState<Sgp4Lanes>& resonance, Sgp4Work& work) {
    states_of_lanes(kind, block, resonance, work);
}

}  // namespace solsys
