#include "ephemeris/analytic/series_sum.h"

#include "platform/cpu_features.h"

namespace solsys {

State sum_series(const SeriesView& series, double t, bool with_rate) {
    double sum[3];
    double rate[3] = {};
    if (cpu_has_avx2()) {
        sum_series_avx2(series, t, sum, with_rate ? rate : nullptr);
    } else {
        sum_series_baseline(series, t, sum, with_rate ? rate : nullptr);
    }
    return {load(sum), load(rate)};
}

}  // namespace solsys
