/// \file
/// Risings, culminations, settings and twilights by the days of a clock on the wall.
///
/// \code
///     for (const Site& site : sites) {
///         const Zone zone = Zone::find(site.zone).value_or(Zone());
///         for (const RiseSetDay& day : rise_set_days(model, site, sun(), zone, first, last))
///             for (const HorizonEvent& rise : day.rises) print(site.name,
///             zone.clock(rise.at));
///     }
/// \endcode
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/model.h"
#include "solsys/sky/risings.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {

/// An upper transit of the meridian, above the horizon or not.
struct Transit {
    Instant at;               ///< when
    double altitude_deg = 0;  ///< geometric
};

/// Rising or setting, as an instant and an azimuth (of the centre, from north through east).
struct HorizonEvent {
    Instant at;              ///< when
    double azimuth_deg = 0;  ///< of the centre, from north through east
};

/// What a body does all of a day on which it neither rises nor sets.
enum class DayState { kRisesOrSets, kUpAllDay, kDownAllDay };
/// "", "up all day", "down all day".
SOLSYS_API const char* to_string(DayState state);

/// A civil day of a body, all that happens in it: usually one of each, sometimes none or two.
struct RiseSetDay {
    CivilDate date;                           ///< in the zone
    DayState state = DayState::kRisesOrSets;  ///< whether it is up or down all day
    std::vector<HorizonEvent> rises;          ///< in order
    std::vector<HorizonEvent> sets;           ///< in order
    std::vector<Transit> transits;            ///< in order
    /// The Sun's centre at -6, -12 and -18 degrees: civil, nautical, astronomical twilight, the
    /// first beginning and the last end in the day; for other bodies empty.
    std::array<std::optional<Instant>, 3> dawn;
    std::array<std::optional<Instant>, 3> dusk;  ///< as `dawn`, in the evening
};

/// The civil days of a zone from one date to another (both included) at a site, with the
/// horizon of `horizon_of`; none missed, as in `passages`. Empty for a body that cannot be
/// computed, and for dates in reverse. The model's own site and instant stay as they are.
SOLSYS_API std::vector<RiseSetDay> rise_set_days(Model& model, const Site& site,
                                                 const Body& body, const Zone& zone,
                                                 const CivilDate& first, const CivilDate& last);
/// The same above another horizon.
SOLSYS_API std::vector<RiseSetDay> rise_set_days(Model& model, const Site& site,
                                                 const Body& body, const Zone& zone,
                                                 const CivilDate& first, const CivilDate& last,
                                                 const Altitude& horizon);

}  // namespace solsys::sky
