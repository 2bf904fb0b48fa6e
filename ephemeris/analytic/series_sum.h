// Sums a trigonometric series with the fastest kernel of this processor.
#pragma once

#include "ephemeris/analytic/series_kernel.h"

namespace solsys {

// The sums of the coordinates and, if asked for, their derivatives by t (zero without).
struct SeriesSum {
    double value[3] = {};
    double rate[3] = {};
};
SeriesSum sum_series(const SeriesView& series, double t, bool with_rate);

}  // namespace solsys
