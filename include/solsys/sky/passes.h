/// \file
/// Passes of satellites over a site: none above the altitude asked for is missed.
///
/// \code
///     const auto list = read_satellites("stations.txt");
///     const Instant now = Instant::now();
///     const auto station = find_satellite(list->satellites, "25544", now);
///     const Span span{now, now.plus_days(10)};
///     for (const Pass& pass : passes(*model, *find_city("Oslo"), *station, span))
///         if (pass.best) ...
/// \endcode
#pragma once

#include <optional>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/element_sets.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"
#include "solsys/sky/site.h"

namespace solsys::sky {

/// What of the Sun's disc a satellite sees behind a spherical Earth of the equatorial radius.
enum class Light { sunlit, penumbra, umbra };

/// A satellite over the horizon, in a straight line: without refraction, light time and
/// aberration.
struct SatellitePlace {
    Instant at;                   ///< when
    double azimuth_deg = 0;       ///< from north through east, [0, 360)
    double altitude_deg = 0;      ///< over the ellipsoid's horizon
    double range_km = 0;          ///< from the site
    double height_km = 0;         ///< over the equatorial radius
    Light light = Light::sunlit;  ///< what falls on it
    double sun_visible = 1;       ///< of the Sun's disc, from the satellite: 0 to 1
    double sun_altitude_deg = 0;  ///< at the site
    /// Of a satellite that scatters light as a dull sphere does, from its standard magnitude;
    /// without extinction. Empty: not known, or in the umbra.
    std::optional<double> magnitude;
};

/// A satellite goes into the shadow, or out of it.
struct LightChange {
    SatellitePlace place;  ///< at that instant; its `light` is what begins
};

/// A stretch above the horizon.
struct Pass {
    std::optional<SatellitePlace> rise;  ///< empty: up where the span starts
    SatellitePlace culmination;          ///< highest of the pass; high orbits may have others
    std::optional<SatellitePlace> set;   ///< empty: up where the span, or the orbit, ends
    std::vector<LightChange> light_changes;  ///< in order
    /// Where it is brightest while it is lit and the Sun at least 6 degrees below the horizon.
    /// Empty: not to be seen, or of unknown standard magnitude (then the highest such place).
    std::optional<SatellitePlace> best;
};

/// What counts as a pass.
struct PassLimits {
    double horizon_deg = 0;      ///< rises and sets through this altitude, -10 to 89
    double culmination_deg = 0;  ///< passes that stay below are left out
};

/// The passes of a span, in order; empty for elements out of range. Where the satellite has no
/// state (re-entered) it is not there. Two passages through the horizon less than a second
/// apart are taken for none; all others are found, to 0.01 s, by a bound on the second
/// derivative.
///
/// UT1 is UTC, unless the model was told of the Earth's rotation (earth_rotation.h); the
/// Earth's axis is that of the element sets, without polar motion (10 m). The Sun comes from
/// the model, whose site and instant are left as they are. Spans longer than 100,000 days are
/// cut.
SOLSYS_API std::vector<Pass> passes(Model& model, const Site& site, const Satellite& satellite,
                                    const Span& span, const PassLimits& limits = {},
                                    SearchControl* control = nullptr);

/// Where a satellite stands at an instant. Empty without a state.
SOLSYS_API std::optional<SatellitePlace> satellite_place(Model& model, const Site& site,
                                                         const Satellite& satellite,
                                                         const Instant& t);

/// Where it stands every `step_s` seconds of a span (at most a million), those instants left
/// out at which it has no state.
SOLSYS_API std::vector<SatellitePlace> path_of(Model& model, const Site& site,
                                               const Satellite& satellite, const Span& span,
                                               double step_s);

}  // namespace solsys::sky
