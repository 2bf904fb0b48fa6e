// Built with the flags of SOLSYS_AVX512_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx512() says so.
#include "ephemeris/analytic/series_kernel.inl"

namespace solsys {

void sum_series_avx512(const SeriesView& series, double t, double* sum, double* rate) {
    sum_series_of_any_shape(series, t, sum, rate);
}

}  // namespace solsys
