/// \file
/// How far the planets stand from the Sun, day by day: what a year's chart of them draws.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// A planet's way beside the Sun.
struct ElongationCurve {
    /// One day of it.
    struct Point {
        Instant at;  ///< when
        /// Difference of the apparent ecliptic longitudes of date, planet less Sun, in (-180,
        /// 180]: positive in the evening sky, negative in the morning sky.
        double elongation_deg = 0;
    };
    Body planet;                ///< whose way
    std::vector<Point> points;  ///< in order of time
};

/// Mercury to Neptune and Pluto over a span, a point every `step_days` (at least 0.01). Points
/// that cannot be computed are left out. Geocentric; the model's observer and instant come
/// back.
SOLSYS_API std::vector<ElongationCurve> elongation_curves(Model& model, const Span& span,
                                                          double step_days = 2);

}  // namespace solsys::sky
