// Built for every x86-64 processor.
#include "ephemeris/analytic/series_kernel.inl"

namespace solsys {

void sum_series_baseline(const SeriesView& series, double t, double* sum, double* rate) {
    sum_series_of_any_shape(series, t, sum, rate);
}

}  // namespace solsys
