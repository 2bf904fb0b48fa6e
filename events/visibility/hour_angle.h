// The instants at which an object stands at a wanted hour angle: its culminations, and where it
// crosses a level.
#pragma once

#include <optional>

#include "events/visibility/track.h"

namespace solsys::visibility {

constexpr double kStandardRefraction = -0.009890199094634533;  // rad: -34 arcmin
constexpr double kTwilight = -0.3141592653589793;              // rad: -18 degrees
// Days of mean solar time in a turn of the hour angle.
constexpr double kSolarPerSidereal = 0.997269566329084;
constexpr double kArcsec10 = 4.84813681109536e-05;  // rad

// Hour angle at which a declination stands at an altitude, seen from a latitude.
struct LevelHourAngle {
    double hour_angle = 0;  // [0, pi]; pi, the lower culmination, when there is no crossing
    bool crosses = false;
};
LevelHourAngle level_hour_angle(double level, double lat, double dec);

// The passage of the hour angle given that is nearest to `start`; the track then stands within
// 10 s of it. Nothing when the object cannot be computed or the iteration does not settle.
std::optional<double> passage(Track& track, double start, double hour_angle);

// The altitude at which an object rises and sets, or at which twilight begins and ends.
struct Level {
    double altitude = kStandardRefraction;  // of the centre, or of the upper limb [rad]
    bool upper_limb = false;
    [[nodiscard]] double of_centre(const Track& track) const {
        return upper_limb ? altitude - track.semidiameter() : altitude;
    }
};

// Where an object crosses a level on one side of a transit; without a crossing, the lower
// culmination on that side.
struct Crossing {
    double time = 0;  // JD, dynamical
    bool crosses = false;
    Horizontal at;
};
enum class Side { kBefore = -1, kAfter = 1 };
// `transit` is above the level; `transit_dec` the declination and `transit_level` the level of
// the centre there.
std::optional<Crossing> level_crossing(Track& track, const Level& level, Side side,
                                       double transit, double transit_dec,
                                       double transit_level);

}  // namespace solsys::visibility
