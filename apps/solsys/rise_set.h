// Risings and settings of a span, ready to be shown.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/civil_time.h"
#include "apps/solsys/options.h"
#include "apps/solsys/site.h"
#include "apps/solsys/zone.h"
#include "solsys/visibility.h"

namespace app {

// One day of a body, by its transit; what falls outside the span or does not happen is empty.
struct RiseSetDay {
    std::optional<Utc> dawn, rise, transit, set, dusk;
    double rise_azimuth_deg = 0, set_azimuth_deg = 0, transit_altitude_deg = 0;
    Utc anchor;  // the transit, inside the span or not
    [[nodiscard]] bool empty() const { return !dawn && !rise && !transit && !set && !dusk; }
};
std::vector<RiseSetDay> rise_set_days(CSWVisibility& visibility, const SSO_ID& id,
                                      const Site& site, const Span& span);

// The stretches of a span in which a body is above the horizon.
std::vector<Span> up_times(CSWVisibility& visibility, const SSO_ID& id, const Site& site,
                           const Span& span);

// The observer's record for CSWVisibility, which takes the height in kilometres.
OBSERVER visibility_observer(const Site& site);

// The instant of a local clock reading, given as if it were UTC.
Utc from_local(const Zone& zone, Utc local);
Utc to_local(const Zone& zone, Utc utc);
// "2026-11-21" of a clock reading.
std::string date_of(Utc local);

// Geocentric ecliptic longitude of the Moon less the Sun's, in [0, 360) degrees; and the
// illuminated fraction of the Moon.
struct MoonPhase {
    double angle_deg = 0, illuminated = 0;
};
MoonPhase moon_phase(CSWSolSys& model, Utc utc);
// The principal phase between two instants, if there is one: 0 new Moon to 3 last quarter.
std::optional<int> principal_phase(CSWSolSys& model, Utc from, Utc to);
std::string phase_name(int quarter);

// The year's chart of night, twilight and Moon: a drawing as SVG text.
void draw_year(CSWSolSys& model, const Site& site, const Zone& zone, int year,
               const std::string& path);

}  // namespace app
