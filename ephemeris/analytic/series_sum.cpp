#include "ephemeris/analytic/series_sum.h"

#include "platform/cpu_features.h"

namespace solsys {

SeriesSum sum_series(const SeriesView& series, double t, bool with_rate) {
    SeriesSum sum;
    double* rate = with_rate ? sum.rate : nullptr;
    if (cpu_has_avx512()) {
        sum_series_avx512(series, t, sum.value, rate);
    } else if (cpu_has_avx2()) {
        sum_series_avx2(series, t, sum.value, rate);
    } else {
        sum_series_baseline(series, t, sum.value, rate);
    }
    return sum;
}

}  // namespace solsys
