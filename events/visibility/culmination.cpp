// Culminations between two instants: by the hour angle, and of spacecraft by the altitude.
#include <algorithm>
#include <cmath>
#include <limits>

#include "events/search/scan.h"
#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::search::is_instant;
using solsys::search::kSecond;
using solsys::visibility::SkyAt;

namespace {

constexpr double kMinute = 0.0006944444444444445;  // day
constexpr double kLongestSpan = 366;               // day, of a walk by minutes
// Below any altitude.
constexpr double kNoAltitude = -10.0;

bool wants_maximum(double hour_angle) { return std::cos(hour_angle) > 0; }

// The altitude times `sense` (1: a maximum is wanted, -1: a minimum), so that the extremum
// wanted is a maximum.
auto height_of(SkyAt& sky, const SSO_ID& id, double sense) {
    return [&sky, id, sense](double t) {
        const auto place = sky.apparent(id, t);
        return place ? sense * sky.horizontal(*place).altitude
                     : std::numeric_limits<double>::quiet_NaN();
    };
}

}  // namespace

bool CSWVisibility::GetCulmination(SSO_ID* id, double from, double to, double* time,
                                   double* altitude, double hourAngle) {
    if (id == nullptr || time == nullptr || altitude == nullptr || !state_->model) return false;
    if (id->type == SSO_FSCO || id->type == SSO_USCO)
        return GetCulmination4Spacecraft2(id, from, to, time, altitude, hourAngle);
    if (!is_instant(from) || !is_instant(to) || !std::isfinite(hourAngle)) return false;

    SkyAt sky(*state_->model);
    const double start = from + (to - from) * (hourAngle > 0 ? 0.75 : 0.25);
    // Sidereal time plus the angle given equals the right ascension: an hour angle of its
    // negative.
    const auto found = solsys::visibility::passage(sky, *id, start, -hourAngle);
    if (!found) return false;
    *time = found->time;
    *altitude = sky.horizontal(found->place).altitude;
    return from <= *time && *time <= to;
}

bool CSWVisibility::GetCulmination4Spacecraft(SSO_ID* id, double from, double to, double* time,
                                              double* altitude, double hourAngle) {
    if (id == nullptr || time == nullptr || altitude == nullptr || !state_->model ||
        !is_instant(from) || !is_instant(to))
        return false;
    SkyAt sky(*state_->model);
    const double sense = hourAngle == 0 ? 1.0 : -1.0;
    const auto height = height_of(sky, *id, sense);

    const bool backwards = hourAngle < 0;
    const double start = backwards ? to : from;
    const double span = std::min(std::fabs(to - from), kLongestSpan);
    double t = start;
    double step = backwards ? -kMinute : kMinute;
    double previous = kNoAltitude;
    while (std::fabs(step) > kSecond) {
        const double here = height(t);
        if (std::fabs(t - start) > span + kMinute || std::isnan(here)) return false;
        if (here > previous) {
            previous = here;
            t += step;
        } else {
            // The extremum is within a step of the last improvement, on either side.
            t -= 2 * step;
            step /= 3;
            previous = kNoAltitude;
        }
    }
    const double best = height(t);
    if (std::isnan(best)) return false;
    *time = t;
    *altitude = sense * best;
    return std::min(from, to) <= t && t <= std::max(from, to);
}

bool CSWVisibility::GetCulmination4Spacecraft2(SSO_ID* id, double from, double to, double* time,
                                               double* altitude, double hourAngle) {
    using namespace solsys::search;
    if (id == nullptr || time == nullptr || altitude == nullptr || !state_->model ||
        !is_instant(from) || !is_instant(to) || !(from < to))
        return false;
    SkyAt sky(*state_->model);
    const double sense = wants_maximum(hourAngle) ? 1.0 : -1.0;
    const auto height = height_of(sky, *id, sense);

    // From the end that the walk starts from, in its direction, and a step beyond both ends.
    const double origin = hourAngle < 0 ? to : from;
    const double direction = hourAngle < 0 ? -1.0 : 1.0;
    const double length = std::min(to - from, kLongestSpan);
    const auto walked = [&](double x) { return height(origin + direction * x); };
    Span walk{-kMinute, length + kMinute, -kMinute};
    Sample top;
    const bool none = scan_maxima(
        walk, Control{}, walked, [](const Sample&) { return kMinute; },
        [&](const Bracket& x) {
            top = maximum(walked, x.a.t, x.b.t, 0.1 * kSecond);
            return top.t < -kSecond || top.t > length + kSecond;
        });
    if (none) return false;
    *time = std::clamp(origin + direction * top.t, from, to);
    *altitude = sense * top.f;
    return true;
}
