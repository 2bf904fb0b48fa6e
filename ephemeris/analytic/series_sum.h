// Sums a trigonometric series with the fastest kernel of this processor.
#pragma once

#include "core/linalg.h"
#include "ephemeris/analytic/series_kernel.h"

namespace solsys {

// The three sums and, with `with_rate`, their derivatives by t (zero without).
State sum_series(const SeriesView& series, double t, bool with_rate);

}  // namespace solsys
