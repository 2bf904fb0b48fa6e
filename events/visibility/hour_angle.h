// The instants at which an object stands at a wanted hour angle: its culminations, and where it
// crosses a level. Instants are JD TT; the observer is the model's, on the Earth.
//
// Source: the altitude equation sin h = sin lat sin dec + cos lat cos dec cos H of spherical
// astronomy, iterated on the hour angle H (e.g. Meeus 1998, Astronomical Algorithms, chapters
// 13 and 15).
#pragma once

#include <optional>

#include "events/search/sky_at.h"

namespace solsys::visibility {

using search::Horizontal;
using search::Place;
using search::SkyAt;

constexpr double kStandardRefraction = -0.009890199094634533;  // rad: -34 arcmin
constexpr double kTwilight = -0.3141592653589793;              // rad: -18 degrees
// Days of mean solar time in a turn of the hour angle.
constexpr double kSolarPerSidereal = 0.997269566329084;

// What is looked for, and its radius, where it has one.
struct Target {
    SSO_ID id;
    double radius_km = 0;  // not above 0: unknown
    Target(CSWSolSys& model, const SSO_ID& object)
        : id(object), radius_km(model.GetRadiEq(object)) {}
    [[nodiscard]] double semidiameter(const Place& place) const {
        return search::semidiameter(radius_km, place.distance);
    }
};

// Direction of an object of declination `dec` at an hour angle, for latitude `lat`.
Horizontal at_hour_angle(double hour_angle, double dec, double lat);

// Hour angle at which a declination stands at an altitude, seen from a latitude.
struct LevelHourAngle {
    double hour_angle = 0;  // [0, pi]; pi, the lower culmination, when there is no crossing
    bool crosses = false;
};
LevelHourAngle level_hour_angle(double level, double lat, double dec);

// What to add to the instant of the sky [day] for an object at `place` to stand at an hour
// angle: to the nearest such instant, as far as sidereal time alone goes.
double time_to_hour_angle(const SkyAt& sky, const Place& place, double hour_angle);

// An instant and the last place looked at on the way, within 10 s of it, where the sky stands.
struct Passage {
    double time = 0;
    Place place;
};
// The passage of the hour angle given that is nearest to `start`. Nothing when the object
// cannot be computed or the iteration does not settle.
std::optional<Passage> passage(SkyAt& sky, const SSO_ID& id, double start, double hour_angle);

// The altitude at which an object rises and sets, or at which twilight begins and ends.
struct Level {
    double altitude = kStandardRefraction;  // of the centre, or of the upper limb [rad]
    bool upper_limb = false;
    [[nodiscard]] double of_centre(const Target& target, const Place& place) const {
        return upper_limb ? altitude - target.semidiameter(place) : altitude;
    }
};

// Where an object crosses a level on one side of a transit; without a crossing, the lower
// culmination on that side.
struct Crossing {
    double time = 0;
    bool crosses = false;
    Horizontal at;
};
enum class Side { kBefore = -1, kAfter = 1 };
// The transit is above the level.
std::optional<Crossing> level_crossing(SkyAt& sky, const Target& target, const Level& level,
                                       Side side, const Passage& transit);

}  // namespace solsys::visibility
