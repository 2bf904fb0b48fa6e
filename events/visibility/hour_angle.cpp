#include "events/visibility/hour_angle.h"

#include <cmath>

#include "core/angles.h"
#include "events/search/scan.h"

namespace solsys::visibility {
namespace {

constexpr double kRefined = 0.1 / kSecondsPerDay;  // day: what may remain

// A passage: no correction above 10 s is the last. The first one leaves a tenth of itself for
// an object that moves as fast as the Moon does.
constexpr search::Rest kPassage{1.1574074074074075e-4, kRefined, 0.1, 1001};
// Near a level that is barely reached the crossing converges too slowly to be of use; the
// bracket serves then.
constexpr search::Rest kCrossing{kPassage.tolerance, kRefined, kPassage.first_ratio, 30};

// Moves `t` until the hour angle is the one that `wanted` gives for the place at `t`; the place
// is that of the last look.
template <class Wanted>
std::optional<Place> walk(SkyAt& sky, const SSO_ID& id, double& t, const search::Rest& rest,
                          Wanted&& wanted) {
    std::optional<Place> place;
    const auto correction = [&](double jd) {
        place = sky.apparent(id, jd);
        return place ? time_to_hour_angle(sky, *place, wanted(*place)) : search::kNone;
    };
    if (!search::settle(correction, t, rest)) return std::nullopt;
    return place;
}

// The crossing between an instant below the level and one above it.
std::optional<Crossing> between(SkyAt& sky, const Target& target, const Level& level,
                                double below, double above) {
    const auto height = [&](double t) {
        const auto place = sky.apparent(target.id, t);
        if (!place) return search::kNone;
        return sky.horizontal(*place).altitude - level.of_centre(target, *place);
    };
    const auto found = search::bisection(height, {{below, -1}, {above, 1}}, -1, kRefined);
    const auto there = sky.horizontal(target.id);
    if (std::isnan(found.f) || !there) return std::nullopt;
    return Crossing{found.t, true, *there};
}

}  // namespace

Horizontal at_hour_angle(double hour_angle, double dec, double lat) {
    const double north =
        std::sin(dec) * std::cos(lat) - std::cos(dec) * std::sin(lat) * std::cos(hour_angle);
    const double west = std::cos(dec) * std::sin(hour_angle);
    const double up =
        std::sin(dec) * std::sin(lat) + std::cos(dec) * std::cos(lat) * std::cos(hour_angle);
    return {longitude_of(north, -west), latitude_of({north, west, up})};
}

LevelHourAngle level_hour_angle(double level, double lat, double dec) {
    const double ratio =
        (std::sin(level) - std::sin(lat) * std::sin(dec)) / (std::cos(lat) * std::cos(dec));
    // At a pole the ratio is infinite or no number.
    if (!(std::fabs(ratio) <= 1)) return {kPi, false};
    return {std::acos(ratio), true};
}

double time_to_hour_angle(const SkyAt& sky, const Place& place, double hour_angle) {
    const double ahead = wrap_half_turn(place.ra + hour_angle - sky.sidereal_time());
    return ahead / kTwoPi * kSolarPerSidereal;
}

std::optional<Passage> passage(SkyAt& sky, const SSO_ID& id, double start, double hour_angle) {
    double t = start;
    const auto place = walk(sky, id, t, kPassage, [=](const Place&) { return hour_angle; });
    if (!place) return std::nullopt;
    return Passage{t, *place};
}

std::optional<Crossing> level_crossing(SkyAt& sky, const Target& target, const Level& level,
                                       Side side, const Passage& transit) {
    const double sense = static_cast<double>(side);
    const double lat = sky.latitude();
    LevelHourAngle wanted =
        level_hour_angle(level.of_centre(target, transit.place), lat, transit.place.dec);
    double t = transit.time + sense * wanted.hour_angle / kTwoPi;
    auto last = walk(sky, target.id, t, kCrossing, [&](const Place& place) {
        wanted = level_hour_angle(level.of_centre(target, place), lat, place.dec);
        return sense * wanted.hour_angle;
    });
    if (last && wanted.crosses) {
        return Crossing{t, true, at_hour_angle(sense * wanted.hour_angle, last->dec, lat)};
    }
    if (!last) {
        t = transit.time + sense * 0.5;
        last = walk(sky, target.id, t, kCrossing, [=](const Place&) { return sense * kPi; });
        if (!last) return std::nullopt;
    }
    // Above the level at the lower culmination, or else it crosses on the way, however little.
    const Horizontal lowest = at_hour_angle(sense * kPi, last->dec, lat);
    if (lowest.altitude >= level.of_centre(target, *last)) return Crossing{t, false, lowest};
    return between(sky, target, level, t, transit.time);
}

}  // namespace solsys::visibility
