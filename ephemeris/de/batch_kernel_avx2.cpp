// Built with the flags of SOLSYS_AVX2_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx2() says so.
#include "ephemeris/de/batch_kernel.inl"

namespace solsys {

void sum_batch_avx2(const SeriesBatch& batch, const SeriesRow* rows, int count,
                    SeriesSums& out) {
    sum_batch(batch, rows, count, out);
}

}  // namespace solsys
