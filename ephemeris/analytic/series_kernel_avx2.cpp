// Built with the flags of SOLSYS_AVX2_FLAGS (cmake/SolsysTargets.cmake); called only where
// cpu_has_avx2() says so.
#include "ephemeris/analytic/series_kernel.inl"

namespace solsys {

void sum_series_avx2(const SeriesView& series, double t, double* sum, double* rate) {
    sum_series_of_any_shape(series, t, sum, rate);
}

}  // namespace solsys
