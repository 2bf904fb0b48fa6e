/// \file
/// When bodies rise, culminate and set, and how dark it is; none is missed, at any latitude.
///
/// \code
///     auto model = Model::open();
///     const Span week{Instant::now(), Instant::now().plus_days(7)};
///     for (const char* city : {"Oslo", "Quito", "Dunedin"}) {
///         const auto site = find_city(city);
///         for (const Rising& day : risings(*model, *site, sun(), week).rows)
///             if (day.rise && day.set)
///                 std::printf("%s: %s to %s\n", city, day.rise->iso(0).c_str(),
///                             day.set->iso(0).c_str());
///     }
/// \endcode
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"
#include "solsys/sky/refraction.h"
#include "solsys/sky/search.h"
#include "solsys/sky/site.h"

namespace solsys::sky {

/// An altitude to go through, of the centre or of the upper limb; without refraction.
struct Altitude {
    double degrees = 0;       ///< above the mathematical horizon
    bool upper_limb = false;  ///< of the upper limb, else of the centre
};
constexpr Altitude kCivilTwilight{-6, false};          ///< of the Sun
constexpr Altitude kNauticalTwilight{-12, false};      ///< of the Sun
constexpr Altitude kAstronomicalTwilight{-18, false};  ///< of the Sun
/// The horizon: 34 arcmin of refraction and the site's dip below zero; the Sun and the Moon
/// rise with their upper limb.
[[nodiscard]] SOLSYS_API Altitude horizon_of(const Site& site, const Body& body);
/// The horizon in the air given, whose refraction and dip take the place of the standard ones.
/// Empty for air out of the range of refraction.h, and for a site more than 10 km above its
/// surroundings.
[[nodiscard]] SOLSYS_API std::optional<Altitude> horizon_of(const Site& site, const Body& body,
                                                            const Air& air);

/// A passage through one of the altitudes asked for.
struct Passage {
    Instant at;              ///< when
    std::size_t which = 0;   ///< of the altitudes
    bool rising = false;     ///< upwards, else downwards
    double azimuth_deg = 0;  ///< of the centre, from north through east, [0, 360)
};

/// All passages of a body through altitudes (at most 16) within a span, in order. Two less than
/// a second apart are taken for none; otherwise every change of side in the altitudes of the
/// model is there, to 0.1 s. Empty for a body that cannot be computed.
///
/// Here and below: the model's own site and instant are left as they are; a body brings its
/// record along.
SOLSYS_API std::vector<Passage> passages(Model& model, const Site& site, const Body& body,
                                         std::span<const Altitude> altitudes, const Span& span);
/// The same, watched and stopped by `control`, if that is not null.
SOLSYS_API std::vector<Passage> passages(Model& model, const Site& site, const Body& body,
                                         std::span<const Altitude> altitudes, const Span& span,
                                         SearchControl* control);

/// The stretches of a span in which a body is above an altitude: all of it, some, or none.
SOLSYS_API std::vector<Span> times_above(Model& model, const Site& site, const Body& body,
                                         const Altitude& altitude, const Span& span);

/// One visit of a body above the horizon, or one day of a body that does not go down: what of
/// it happens, and happens within the span. A visit may have no transit (it grazes the horizon
/// far north or south), a transit no visit around it (the Sun's in twilight).
struct Rising {
    std::optional<Instant> rise;      ///< through the horizon, upwards
    std::optional<Instant> transit;   ///< upper, through the meridian
    std::optional<Instant> set;       ///< through the horizon, downwards
    double rise_azimuth_deg = 0;      ///< with `rise`
    double transit_altitude_deg = 0;  ///< with `transit`: without refraction
    double set_azimuth_deg = 0;       ///< with `set`
    /// \name The Sun's twilights, beginning in the morning and end in the evening
    /// @{
    std::optional<Instant> astronomical_dawn;  ///< -18 degrees, upwards
    std::optional<Instant> nautical_dawn;      ///< -12 degrees, upwards
    std::optional<Instant> civil_dawn;         ///< -6 degrees, upwards
    std::optional<Instant> civil_dusk;         ///< -6 degrees, downwards
    std::optional<Instant> nautical_dusk;      ///< -12 degrees, downwards
    std::optional<Instant> astronomical_dusk;  ///< -18 degrees, downwards
    /// @}

    /// An instant that tells which day it is: the transit, else what stands first.
    [[nodiscard]] SOLSYS_API Instant anchor() const;
};

/// What a body does over a span.
struct Risings {
    std::vector<Rising> rows;  ///< in order
    bool known = false;        ///< whether it can be computed where the span starts
    /// Whether it is then above the horizon. Rows without a rise or a set leave the body on
    /// the side where it is.
    bool up_at_start = false;
};

/// The visits of a body to the sky of a site. Transits are taken down when the body is then
/// above the horizon (the Sun: above 18 degrees below it).
SOLSYS_API Risings risings(Model& model, const Site& site, const Body& body, const Span& span);
/// The same above another horizon.
SOLSYS_API Risings risings(Model& model, const Site& site, const Body& body, const Span& span,
                           const Altitude& horizon);
/// The same, watched and stopped by `control`, if that is not null. The last rows of a search
/// that was stopped may lack their transits.
SOLSYS_API Risings risings(Model& model, const Site& site, const Body& body, const Span& span,
                           const Altitude& horizon, SearchControl* control);

}  // namespace solsys::sky
