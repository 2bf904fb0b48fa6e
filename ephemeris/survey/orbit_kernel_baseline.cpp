// Built for every processor.
#include "ephemeris/survey/orbit_kernel.inl"

namespace solsys {

void orbit_places_baseline(const OrbitBlock* blocks, long count, double days,
                           OrbitPlaces* places) {
    places_of_blocks(blocks, count, days, places);
}

}  // namespace solsys
