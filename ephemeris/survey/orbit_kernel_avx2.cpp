// Built with the flags of SOLSYS_AVX2_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx2() says so.
#include "ephemeris/survey/orbit_kernel.inl"

namespace solsys {

void orbit_places_avx2(const OrbitBlock* blocks, long count, double days, OrbitPlaces* places) {
    places_of_blocks(blocks, count, days, places);
}

}  // namespace solsys
