// When an object rises or sets through an altitude.
#include <cmath>
#include <limits>

#include "core/constants.h"
#include "events/search/scan.h"
#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::search::is_instant;
using namespace solsys::visibility;

namespace {

constexpr double kElevationTolerance = 3.8580246913580246e-5;  // turn: 3 1/3 s
constexpr double kSameAltitude = 9.69627362219072e-5;          // rad: 20 arcsec
constexpr double kArcsec10 = 4.84813681109536e-05;             // rad
constexpr int kMostFailures = 4;
constexpr int kMostElevationPasses = 1001;

// The hour angle wanted for a declination: where it never stands at the elevation, that of the
// culmination nearest to it.
struct Wanted {
    double hour_angle = 0;
    bool crosses = false;
};
Wanted nearest_hour_angle(double elevation, double lat, double dec) {
    const auto level = level_hour_angle(elevation, lat, dec);
    const bool too_high = !level.crosses && elevation >= at_hour_angle(0, dec, lat).altitude;
    return {too_high ? 0.0 : level.hour_angle, level.crosses};
}

// The answer at an instant that the iteration came to.
bool answer(SkyAt& sky, const SSO_ID& id, double t, double elevation, bool crosses,
            double& event_time, double& azimuth) {
    const auto place = sky.apparent(id, t);
    if (!place) return false;
    const Horizontal there = sky.horizontal(*place);
    const bool reached = crosses || std::fabs(there.altitude - elevation) <= kSameAltitude;
    event_time = reached ? t : 0.0;
    azimuth = there.azimuth;
    return true;
}

bool converge(SkyAt& sky, const SSO_ID& id, double elevation, double start, double& event_time,
              double& azimuth, short sign) {
    double t = start;
    double correction = 0;  // day
    double previous = std::numeric_limits<double>::infinity();
    int failures = 0;
    for (int pass = 0; pass < kMostElevationPasses; ++pass) {
        t += correction;
        const auto place = sky.apparent(id, t);
        if (!place) return false;
        const Wanted wanted = nearest_hour_angle(elevation, sky.latitude(), place->dec);
        correction = time_to_hour_angle(sky, *place, -sign * wanted.hour_angle);
        if (std::fabs(correction) <= kElevationTolerance * kSolarPerSidereal)
            return answer(sky, id, t + correction, elevation, wanted.crosses, event_time,
                          azimuth);
        // The negation also counts what is not a number.
        if (!(std::fabs(correction) < std::fabs(previous)) && ++failures >= kMostFailures)
            return false;
        previous = correction;
    }
    return false;
}

// Spacecraft: the crossing of a monotonic stretch.
bool bisect(SkyAt& sky, const SSO_ID& id, double elevation, double from, double to,
            double& event_time, double& azimuth, short sign) {
    const auto above = [&](double t) {
        const auto place = sky.apparent(id, t);
        return place ? sky.horizontal(*place).altitude - elevation
                     : std::numeric_limits<double>::quiet_NaN();
    };
    const double s = sign > 0 ? 1 : -1;
    const auto found = solsys::search::bisection(above, {{from, -s}, {to, s}}, kArcsec10, 0);
    if (!(std::fabs(found.f) <= kArcsec10)) return false;
    return answer(sky, id, found.t, elevation, true, event_time, azimuth);
}

}  // namespace

bool CSWVisibility::GetEventsTimeForElevation(SSO_ID* id, double elevation, double time,
                                              double& eventTime, double& azimuth, short sign) {
    eventTime = 0;
    if (id == nullptr || !state_->model || !is_instant(time) || !std::isfinite(elevation))
        return false;
    SkyAt sky(*state_->model);
    return converge(sky, *id, elevation, time, eventTime, azimuth, sign);
}

bool CSWVisibility::GetEventsTimeForElevation(SSO_ID* id, double elevation, double from,
                                              double to, double& eventTime, double& azimuth,
                                              short sign) {
    eventTime = 0;
    if (id == nullptr || !state_->model || !is_instant(from) || !is_instant(to) ||
        !std::isfinite(elevation))
        return false;
    SkyAt sky(*state_->model);
    if (id->type == SSO_FSCO || id->type == SSO_USCO)
        return bisect(sky, *id, elevation, from, to, eventTime, azimuth, sign);
    return converge(sky, *id, elevation, sign > 0 ? from : to, eventTime, azimuth, sign);
}
