/// \file
/// Risings, culminations, settings and twilight at a site, none missed.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/model.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {

/// An altitude that a body passes: geometric, of the centre or of the upper limb.
struct Level {
    double altitude_deg = -34.0 / 60;
    bool upper_limb = false;
};
/// Rising and setting as almanacs have them: 34 arcmin of refraction, the dip of the site, the
/// upper limb of the Sun and the Moon, the centre of others.
[[nodiscard]] SOLSYS_API Level horizon_level(const Body& body, const Site& site);

struct AltitudeEvent {
    Instant at;
    int level = 0;        ///< which of the levels asked for
    bool rising = false;  ///< upwards through it
    double azimuth_deg = 0;
};
struct AltitudeEvents {
    std::vector<AltitudeEvent> events;  ///< in order of time
    /// Of each level, whether the body is above it at the start of the span; empty: it cannot
    /// be computed there.
    std::vector<std::optional<bool>> above_at_start;
};
/// Every passage of a body through the levels (at most 16) in a span, for the model's site, to
/// 0.1 s of the altitudes that the model gives: the second derivative of the sine of the
/// altitude is bounded, so none is missed. Empty without a site. Moves the model's instant.
SOLSYS_API AltitudeEvents altitude_events(Model& model, const Body& body, const Span& span,
                                          const std::vector<Level>& levels);

struct Transit {
    Instant at;
    double altitude_deg = 0;  ///< geometric
};
/// The upper transits of the meridian in a span, in order, to 0.1 s. Moves the model's instant.
SOLSYS_API std::vector<Transit> transits(Model& model, const Body& body, const Span& span);

/// Rising or setting, as an instant and an azimuth.
struct HorizonEvent {
    Instant at;
    double azimuth_deg = 0;
};

enum class DayState { kRisesOrSets, kUpAllDay, kDownAllDay };
/// "", "up all day", "down all day".
SOLSYS_API const char* to_string(DayState state);

/// A civil day of a body, all that happens in it: usually one of each, sometimes none or two.
struct RiseSetDay {
    CivilDate date;
    DayState state = DayState::kRisesOrSets;
    std::vector<HorizonEvent> rises, sets;
    std::vector<Transit> transits;
    /// The Sun's centre at -6, -12 and -18 degrees: civil, nautical, astronomical twilight, the
    /// first beginning and the last end in the day; for other bodies empty.
    std::array<std::optional<Instant>, 3> dawn, dusk;
};
/// The civil days from one date to another (both included) at the model's site by a clock.
/// Empty without a site. Moves the model's instant.
///
/// \code
///     for (const Site& site : sites) {
///         model.observe_from(site);
///         const Zone zone = Zone::find(site.zone).value_or(Zone());
///         for (const RiseSetDay& day : rise_set_days(model, sun(), zone, first, last))
///             for (const HorizonEvent& rise : day.rises) print(site.name,
///             zone.clock(rise.at));
///     }
/// \endcode
SOLSYS_API std::vector<RiseSetDay> rise_set_days(Model& model, const Body& body,
                                                 const Zone& zone, const CivilDate& first,
                                                 const CivilDate& last);

}  // namespace solsys::sky
