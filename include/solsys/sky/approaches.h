/// \file
/// Closest approaches of minor planets and comets to the planets and the Moon.
#pragma once

#include <functional>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A least distance between the centres of a body and a planet, geometric.
struct Approach {
    Body planet;             ///< Mercury to Neptune, or the Moon
    Instant time;            ///< of the least distance, to 1e-5 s
    double distance_au = 0;  ///< between the centres
    double speed_km_s = 0;   ///< of one relative to the other
};

/// What is looked for, and how.
struct ApproachOptions {
    double within_au = 0.1;  ///< the greatest distance told, above 0
    /// On the osculating orbit alone; else integrated among the planets.
    bool two_body = false;
    /// Told what part of the search is done, 0 to 1; false ends it with what was found so far.
    std::function<bool(double)> progress = {};
};

/// All closest approaches within a span, in the order of time. Least distances at its ends that
/// are no turning points are not among them.
///
/// Steps are such that nothing closer than `within_au` can be passed: outside of it, distance
/// changes by no more than the speed of the orbit's perihelion and the planet's together;
/// inside, steps are a tenth of the distance in units of the speed.
///
/// The model keeps its instant, and the body, integrated or not, as in `options`. A failure: a
/// body without an orbit of its own, a span that is empty or not covered by the ephemeris, an
/// integration that ends within the span (a collision).
SOLSYS_API Result<std::vector<Approach>> find_approaches(Model& model, const Body& body,
                                                         const Span& span,
                                                         const ApproachOptions& options = {});

}  // namespace solsys::sky
