// Built with the flags of SOLSYS_AVX512_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx512() says so.
#include "ephemeris/survey/orbit_kernel.inl"

namespace solsys {

void orbit_places_avx512(const OrbitBlock* blocks, long count, double days,
                         OrbitPlaces* places) {
    places_of_blocks(blocks, count, days, places);
}

}  // namespace solsys
