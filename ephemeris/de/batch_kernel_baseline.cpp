// Built for every processor of its kind (ephemeris/CMakeLists.txt).
#include "ephemeris/de/batch_kernel.inl"

namespace solsys {

void sum_batch_baseline(const SeriesBatch& batch, const SeriesRow* rows, int count,
                        SeriesSums& out) {
    sum_batch(batch, rows, count, out);
}

}  // namespace solsys
