// Culminations between two instants: by the hour angle, and of spacecraft by the altitude.
#include <algorithm>
#include <cmath>
#include <utility>

#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::visibility::Horizontal;
using solsys::visibility::passage;
using solsys::visibility::Track;
using solsys::visibility::usable;

namespace {

constexpr double kMinute = 0.0006944444444444445;   // day
constexpr double kSecond = 1.1574074074074073e-05;  // day
constexpr double kLongestSpan = 366;                // day, of a walk by minutes
// Below any altitude.
constexpr double kNoAltitude = -10.0;

// The altitude, or what is below it, so that the extremum wanted is a maximum.
struct Height {
    Track& track;
    double sense;  // 1 a maximum is wanted, -1 a minimum
    bool at(double t, double& height) {
        if (!track.at(t)) return false;
        height = sense * track.horizontal().altitude;
        return true;
    }
};

bool wants_maximum(double hour_angle) { return std::cos(hour_angle) > 0; }

// Maximum of the height between two instants around it, by golden sections.
bool refine(Height& height, double a, double b, double& t, double& best) {
    constexpr double golden = 0.6180339887498949;
    double left = b - golden * (b - a), right = a + golden * (b - a);
    double at_left = 0, at_right = 0;
    if (!height.at(left, at_left) || !height.at(right, at_right)) return false;
    while (b - a > kSecond) {
        if (at_left >= at_right) {
            b = right, right = left, at_right = at_left;
            left = b - golden * (b - a);
            if (!height.at(left, at_left)) return false;
        } else {
            a = left, left = right, at_left = at_right;
            right = a + golden * (b - a);
            if (!height.at(right, at_right)) return false;
        }
    }
    t = a + (b - a) / 2;
    return height.at(t, best);
}

}  // namespace

bool CSWVisibility::GetCulmination(SSO_ID* id, double from, double to, double* time,
                                   double* altitude, double hourAngle) {
    if (id == nullptr || !state_->model) return false;
    if (id->type == SSO_FSCO || id->type == SSO_USCO)
        return GetCulmination4Spacecraft2(id, from, to, time, altitude, hourAngle);
    if (!usable(from) || !usable(to) || !std::isfinite(hourAngle)) return false;

    Track track(*state_->model, *id);
    const double start = from + (to - from) * (hourAngle > 0 ? 0.75 : 0.25);
    const auto t = passage(track, start, hourAngle);
    if (!t) return false;
    *time = *t;
    *altitude = track.horizontal().altitude;
    return from <= *t && *t <= to;
}

bool CSWVisibility::GetCulmination4Spacecraft(SSO_ID* id, double from, double to, double* time,
                                              double* altitude, double hourAngle) {
    if (id == nullptr || !state_->model || !usable(from) || !usable(to)) return false;
    Track track(*state_->model, *id);
    Height height{track, hourAngle == 0 ? 1.0 : -1.0};

    const bool backwards = hourAngle < 0;
    const double start = backwards ? to : from;
    const double span = std::min(std::fabs(to - from), kLongestSpan);
    double t = start;
    double step = backwards ? -kMinute : kMinute;
    double previous = kNoAltitude;
    double best = 0;
    while (std::fabs(step) > kSecond) {
        double here = 0;
        if (std::fabs(t - start) > span + kMinute || !height.at(t, here)) return false;
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
    if (!height.at(t, best)) return false;
    *time = t;
    *altitude = height.sense * best;
    return std::min(from, to) <= t && t <= std::max(from, to);
}

bool CSWVisibility::GetCulmination4Spacecraft2(SSO_ID* id, double from, double to, double* time,
                                               double* altitude, double hourAngle) {
    if (id == nullptr || !state_->model || !usable(from) || !usable(to) || !(from < to))
        return false;
    Track track(*state_->model, *id);
    Height height{track, wants_maximum(hourAngle) ? 1.0 : -1.0};

    // Three instants a step apart: the middle one the highest is what is looked for.
    const double step = hourAngle < 0 ? -kMinute : kMinute;
    double t = hourAngle < 0 ? to : from;
    double first = 0, second = 0;
    if (!height.at(t, first) || !height.at(t += step, second)) return false;
    const double span = std::min(to - from, kLongestSpan);
    for (double passed = 2 * kMinute; passed <= span; passed += kMinute) {
        double third = 0;
        if (!height.at(t + step, third)) return false;
        if (second >= first && second > third) {
            double best = 0;
            if (!refine(height, t - kMinute, t + kMinute, *time, best)) return false;
            *altitude = height.sense * best;
            return true;
        }
        t += step;
        first = std::exchange(second, third);
    }
    return false;
}
