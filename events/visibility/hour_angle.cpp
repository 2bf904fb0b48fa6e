#include "events/visibility/hour_angle.h"

#include <cmath>

#include "core/constants.h"

namespace solsys::visibility {
namespace {

constexpr double kTolerance = 1.1574074074074075e-4;  // day: 10 s
constexpr double kRefined = 0.1 / kSecondsPerDay;     // day: what may remain
constexpr int kMostPasses = 1001;
// Near a level that is barely reached the crossing converges too slowly to be of use; the
// bracket serves then.
constexpr int kMostCrossingPasses = 30;
// What a first correction leaves behind, of itself, for an object that moves as fast as the
// Moon does.
constexpr double kFirstRatio = 0.1;

// Whether what remains after the last correction is small: corrections shrink by an even ratio.
bool settled(double correction, double previous) {
    const double c = std::fabs(correction);
    if (c <= kRefined) return true;
    if (c > kTolerance) return false;
    const double ratio = previous != 0 ? c / std::fabs(previous) : kFirstRatio;
    return c * ratio <= kRefined * (1 - ratio);
}

// Moves `t` until the hour angle is the one that `wanted` gives for the place at `t`.
template <class Wanted>
bool walk(Track& track, double& t, int most, Wanted&& wanted) {
    double previous = 0;
    for (int pass = 0; pass < most; ++pass) {
        if (!track.at(t)) return false;
        const double ahead = wrapped(track.ra() + wanted() - track.sidereal_time());
        const double correction = ahead / kTwoPi * kSolarPerSidereal;
        if (!std::isfinite(correction)) return false;
        t += correction;
        if (settled(correction, previous)) return true;
        previous = correction;
    }
    return false;
}

// Height of the centre above the level.
double above(const Track& track, const Level& level) {
    return track.horizontal().altitude - level.of_centre(track);
}

// The crossing between an instant below the level and one above it.
std::optional<Crossing> bracketed(Track& track, const Level& level, double below,
                                  double higher) {
    while (std::fabs(higher - below) > kRefined) {
        const double middle = below + (higher - below) / 2;
        if (!track.at(middle)) return std::nullopt;
        (above(track, level) < 0 ? below : higher) = middle;
    }
    return Crossing{higher, true, track.horizontal()};
}

}  // namespace

LevelHourAngle level_hour_angle(double level, double lat, double dec) {
    const double ratio =
        (std::sin(level) - std::sin(lat) * std::sin(dec)) / (std::cos(lat) * std::cos(dec));
    // At a pole the ratio is infinite or no number.
    if (!(std::fabs(ratio) <= 1)) return {kPi, false};
    return {std::acos(ratio), true};
}

std::optional<double> passage(Track& track, double start, double hour_angle) {
    double t = start;
    if (!walk(track, t, kMostPasses, [=] { return hour_angle; })) return std::nullopt;
    return t;
}

std::optional<Crossing> level_crossing(Track& track, const Level& level, Side side,
                                       double transit, double transit_dec,
                                       double transit_level) {
    const double sense = static_cast<double>(side);
    const double lat = track.latitude();
    LevelHourAngle wanted = level_hour_angle(transit_level, lat, transit_dec);
    const double start = transit + sense * wanted.hour_angle / kTwoPi;

    double t = start;
    bool found = walk(track, t, kMostCrossingPasses, [&] {
        wanted = level_hour_angle(level.of_centre(track), lat, track.dec());
        return sense * wanted.hour_angle;
    });
    if (found && wanted.crosses) {
        return Crossing{t, true, at_hour_angle(sense * wanted.hour_angle, track.dec(), lat)};
    }
    if (!found) {
        t = transit + sense * 0.5;
        found = walk(track, t, kMostCrossingPasses, [=] { return sense * kPi; });
        if (!found) return std::nullopt;
    }
    // Above the level at the lower culmination, or else it crosses on the way, however little.
    const Horizontal lowest = at_hour_angle(sense * kPi, track.dec(), lat);
    if (lowest.altitude >= level.of_centre(track)) return Crossing{t, false, lowest};
    return bracketed(track, level, t, transit);
}

}  // namespace solsys::visibility
