// When an object rises or sets through an altitude.
#include <cmath>
#include <limits>

#include "core/constants.h"
#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::visibility::Horizontal;
using solsys::visibility::Track;
using solsys::visibility::usable;

namespace {

constexpr double kTolerance = 3.8580246913580246e-5;   // day: 3 1/3 s
constexpr double kSameAltitude = 9.69627362219072e-5;  // rad: 20 arcsec
constexpr int kMostFailures = 4;
constexpr int kMostPasses = 1001;

bool converge(Track& track, double elevation, double start, double& event_time, double& azimuth,
              short sign) {
    double t = start;
    double correction = 0;  // turns of the hour angle
    double previous = std::numeric_limits<double>::infinity();
    int failures = 0;
    for (int pass = 0; pass < kMostPasses; ++pass) {
        t += correction * solsys::visibility::kSolarPerSidereal;
        if (!track.at(t)) return false;
        const auto wanted =
            solsys::visibility::level_hour_angle(elevation, track.latitude(), track.dec());
        // Above all altitudes it reaches, the level is nearest at the upper culmination.
        const double highest =
            solsys::visibility::at_hour_angle(0, track.dec(), track.latitude()).altitude;
        const double hour_angle =
            !wanted.crosses && elevation >= highest ? 0.0 : wanted.hour_angle;
        correction = solsys::visibility::wrapped(track.ra() - track.sidereal_time() -
                                                 sign * hour_angle) /
                     solsys::kTwoPi;
        if (std::fabs(correction) <= kTolerance) {
            t += correction * solsys::visibility::kSolarPerSidereal;
            if (!track.at(t)) return false;
            const Horizontal there = track.horizontal();
            const bool reached =
                wanted.crosses || std::fabs(there.altitude - elevation) <= kSameAltitude;
            event_time = reached ? t : 0.0;
            azimuth = there.azimuth;
            return true;
        }
        // The negation also counts what is not a number.
        if (!(std::fabs(correction) < std::fabs(previous)) && ++failures >= kMostFailures)
            return false;
        previous = correction;
    }
    return false;
}

// Spacecraft: the crossing of a monotonic stretch.
bool bisect(Track& track, double elevation, double from, double to, double& event_time,
            double& azimuth, short sign) {
    constexpr int most_halvings = 60;
    double low = from, high = to;
    for (int i = 0; i < most_halvings; ++i) {
        const double middle = low + (high - low) / 2;
        if (middle > to || !track.at(middle)) return false;
        const Horizontal there = track.horizontal();
        if (std::fabs(there.altitude - elevation) <= solsys::visibility::kArcsec10) {
            event_time = middle;
            azimuth = there.azimuth;
            return true;
        }
        const bool later = (there.altitude < elevation) == (sign > 0);
        (later ? low : high) = middle;
    }
    return false;
}

}  // namespace

bool CSWVisibility::GetEventsTimeForElevation(SSO_ID* id, double elevation, double time,
                                              double& eventTime, double& azimuth, short sign) {
    eventTime = 0;
    if (id == nullptr || !state_->model || !usable(time) || !std::isfinite(elevation))
        return false;
    Track track(*state_->model, *id);
    return converge(track, elevation, time, eventTime, azimuth, sign);
}

bool CSWVisibility::GetEventsTimeForElevation(SSO_ID* id, double elevation, double from,
                                              double to, double& eventTime, double& azimuth,
                                              short sign) {
    eventTime = 0;
    if (id == nullptr || !state_->model || !usable(from) || !usable(to) ||
        !std::isfinite(elevation))
        return false;
    Track track(*state_->model, *id);
    if (id->type == SSO_FSCO || id->type == SSO_USCO)
        return bisect(track, elevation, from, to, eventTime, azimuth, sign);
    return converge(track, elevation, sign > 0 ? from : to, eventTime, azimuth, sign);
}
