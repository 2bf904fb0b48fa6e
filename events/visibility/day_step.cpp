#include "events/visibility/day_step.h"

#include <cmath>

#include "core/constants.h"
#include "events/search/span.h"

namespace solsys::visibility {
namespace {

// Depression of the horizon [degrees per square root of a metre] of the observer's height.
constexpr double kDip = 0.0353;
constexpr double kStandardRefractionDeg = -0.5666666666666667;
constexpr double kHalfADay = 0.5;

// What the object looks like at its transit, where the model stands.
void describe(SkyAt& sky, const Target& target, const Passage& transit, VISIBILITY& day) {
    float magnitude = 0;
    sky.model().GetMagnitude(target.id, &magnitude);
    day.magnitude = magnitude;
    sky.model().PhaseElongation(target.id, &day.phase_angle, &day.illuminated, &day.elongation,
                                &day.bright_limb, &day.age);
    day.distance = transit.place.distance;
    day.diameter = 2 * target.semidiameter(transit.place);
    day.transit_altitude = at_hour_angle(0, transit.place.dec, sky.latitude()).altitude;
}

// The rising and the setting at a level into the record, and into the Sun's slots for that
// level: there the transit when the object does not come up to the level at all.
void rise_and_set(SkyAt& sky, const Target& target, const Level& level, const Passage& transit,
                  VISIBILITY& day, double& rise_slot, double& set_slot) {
    rise_slot = set_slot = day.transit;
    if (level.of_centre(target, transit.place) >= day.transit_altitude) return;

    const auto before = level_crossing(sky, target, level, Side::kBefore, transit);
    if (before && before->crosses) {
        day.rise = rise_slot = search::ut_from_tt(before->time);
        day.rise_azimuth = before->at.azimuth;
    } else if (before) {
        day.no_rise_time = search::ut_from_tt(before->time);
        day.no_rise_altitude = before->at.altitude;
    }
    const auto after = level_crossing(sky, target, level, Side::kAfter, transit);
    if (after && after->crosses) {
        day.set = set_slot = search::ut_from_tt(after->time);
        day.set_azimuth = after->at.azimuth;
    } else if (after) {
        day.no_set_time = search::ut_from_tt(after->time);
        day.no_set_altitude = after->at.altitude;
    }
}

}  // namespace

bool is_sun(const SSO_ID& id) { return id.type == SSO_PLNT && id.number == 10; }

bool rises_with_its_limb(const SSO_ID& id) {
    return is_sun(id) || (id.type == SSO_MOON && id.number == 301);
}

double horizon_altitude(double height_km) {
    const double height_m = height_km > 0 ? 1000 * height_km : 0;
    return (kStandardRefractionDeg - kDip * std::sqrt(height_m)) * kDegree;
}

Day day_step(SkyAt& sky, const Target& target, double height_km, double& cursor,
             VISIBILITY& day) {
    const bool sun = is_sun(target.id);
    const auto transit = passage(sky, target.id, cursor, 0);
    if (!transit) {
        cursor += kHalfADay;
        return Day::kUnknown;
    }
    const double transit_ut = search::ut_from_tt(transit->time);
    describe(sky, target, *transit, day);
    if (day.transit_altitude <= (sun ? kTwilight : kStandardRefraction)) {
        day.dawn = day.dusk = day.sunrise = day.sunset = transit_ut;
        cursor += kHalfADay;
        return Day::kNotUp;
    }
    day.transit = transit_ut;

    // The Sun's twilight first: sunrise and sunset then take the place of dawn and dusk.
    const Level horizon{horizon_altitude(height_km), rises_with_its_limb(target.id)};
    if (sun) {
        rise_and_set(sky, target, {kTwilight, false}, *transit, day, day.dawn, day.dusk);
        rise_and_set(sky, target, horizon, *transit, day, day.sunrise, day.sunset);
    } else {
        double rise = 0, set = 0;
        rise_and_set(sky, target, horizon, *transit, day, rise, set);
        if (horizon.of_centre(target, transit->place) >= day.transit_altitude)
            day.dawn = day.dusk = day.sunrise = day.sunset = transit_ut;
    }
    cursor = transit->time + 1;
    return Day::kUp;
}

double next_computable(SkyAt& sky, const search::Span& span) {
    if (span.over() || sky.at(span.cursor)) return span.cursor;
    if (span.cursor >= kJ2000Day) return span.end;
    double outside = span.cursor;
    double inside = kJ2000Day;
    if (!sky.at(inside)) return span.cursor;
    while (inside - outside > kHalfADay) {
        const double middle = outside + (inside - outside) / 2;
        (sky.at(middle) ? inside : outside) = middle;
    }
    return inside;
}

}  // namespace solsys::visibility
