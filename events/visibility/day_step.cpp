#include "events/visibility/day_step.h"

#include <cmath>

#include "core/constants.h"
#include "events/visibility/hour_angle.h"

namespace solsys::visibility {
namespace {

// Depression of the horizon [degrees per square root of a metre] of the observer's height.
constexpr double kDip = 0.0353;
constexpr double kStandardRefractionDeg = -0.5666666666666667;

bool is_sun(const SSO_ID& id) { return id.type == SSO_PLNT && id.number == 10; }
bool is_moon(const SSO_ID& id) { return id.type == SSO_MOON && id.number == 301; }

Level rise_level(const SSO_ID& id, double height_km) {
    const double height_m = height_km > 0 ? 1000 * height_km : 0;
    const double altitude = (kStandardRefractionDeg - kDip * std::sqrt(height_m)) * kDegree;
    return {altitude, is_sun(id) || is_moon(id)};
}

struct Transit {
    double time = 0;
    double dec = 0;
    double altitude = 0;
};

// What the object looks like at its transit; the model stands there.
void describe(Track& track, VISIBILITY& day) {
    float magnitude = 0;
    track.model().GetMagnitude(track.id(), &magnitude);
    day.magnitude = magnitude;
    track.model().PhaseElongation(track.id(), &day.phase_angle, &day.illuminated,
                                  &day.elongation, &day.bright_limb, &day.age);
    day.distance = track.distance();
    day.diameter = 2 * track.semidiameter();
}

// The rising and the setting at a level into the record, and into the Sun's slots for that
// level. False when the object does not come up to the level at all.
bool rise_and_set(Track& track, const Level& level, const Transit& transit, double level_there,
                  VISIBILITY& day, double& rise_slot, double& set_slot) {
    const double transit_ut = day.transit;
    rise_slot = set_slot = transit_ut;
    if (level_there >= transit.altitude) return false;

    const auto before =
        level_crossing(track, level, Side::kBefore, transit.time, transit.dec, level_there);
    if (before && before->crosses) {
        day.rise = rise_slot = ut_from_et(before->time);
        day.rise_azimuth = before->at.azimuth;
    } else if (before) {
        day.no_rise_time = ut_from_et(before->time);
        day.no_rise_altitude = before->at.altitude;
    }
    const auto after =
        level_crossing(track, level, Side::kAfter, transit.time, transit.dec, level_there);
    if (after && after->crosses) {
        day.set = set_slot = ut_from_et(after->time);
        day.set_azimuth = after->at.azimuth;
    } else if (after) {
        day.no_set_time = ut_from_et(after->time);
        day.no_set_altitude = after->at.altitude;
    }
    return true;
}

}  // namespace

bool day_step(Track& track, double height_km, double& cursor, VISIBILITY& day) {
    constexpr double half_a_day = 0.5;
    const bool sun = is_sun(track.id());

    const auto time = passage(track, cursor, 0);
    if (!time) {
        cursor += half_a_day;
        return false;
    }
    const Transit transit{*time, track.dec(),
                          at_hour_angle(0, track.dec(), track.latitude()).altitude};
    const double transit_ut = ut_from_et(transit.time);
    describe(track, day);
    day.transit_altitude = transit.altitude;
    if (transit.altitude <= (sun ? kTwilight : kStandardRefraction)) {
        day.dawn = day.dusk = day.sunrise = day.sunset = transit_ut;
        cursor += half_a_day;
        return false;
    }
    day.transit = transit_ut;
    const Level horizon = rise_level(track.id(), height_km);
    const double horizon_there = horizon.of_centre(track);

    // The Sun's twilight first: sunrise and sunset then take the place of dawn and dusk.
    if (sun) {
        const Level twilight{kTwilight, false};
        rise_and_set(track, twilight, transit, kTwilight, day, day.dawn, day.dusk);
        rise_and_set(track, horizon, transit, horizon_there, day, day.sunrise, day.sunset);
    } else {
        double no_slot_before = 0, no_slot_after = 0;
        if (!rise_and_set(track, horizon, transit, horizon_there, day, no_slot_before,
                          no_slot_after)) {
            day.dawn = day.dusk = day.sunrise = day.sunset = transit_ut;
        }
    }
    cursor = transit.time + 1;
    return true;
}

}  // namespace solsys::visibility
