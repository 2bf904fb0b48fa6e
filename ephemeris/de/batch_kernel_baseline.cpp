// Built for every processor of its kind (ephemeris/CMakeLists.txt).
#include "ephemeris/de/batch_kernel.inl"

namespace solsys {

void sum_batch_baseline(const SeriesBatch& batch, SeriesSums& out) { sum_batch(batch, out); }

}  // namespace solsys
