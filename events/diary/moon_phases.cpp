// The phases of the Moon.
#include <cmath>

#include "core/angles.h"
#include "core/constants.h"
#include "ephemeris/lunation.h"
#include "events/diary/eclipse_events.h"
#include "events/diary/moon_apsides.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"

using solsys::kHalfPi;
using solsys::Vec3;
using solsys::diary::Diary;
using solsys::diary::Difference;
using solsys::diary::GeocentricSky;

namespace {

constexpr double kRate = 0.21277;       // rad/day: mean motion of the Moon from the Sun
constexpr double kPhaseSettled = 1e-6;  // day: the step after is below a millisecond
constexpr int kMostPhaseSteps = 20;
// No eclipse comes with a greater latitude of the Moon (1.72 degrees; the limits are near 1.6).
constexpr double kEclipseLatitude = 0.030;  // rad

// The instant near t at which the Moon is so far ahead of the Sun. It gains 0.18 to 0.26 rad a
// day, so that there is one such instant in a month, and the secant through the last two
// instants closes in. The frames are those of t: between the two longitudes nutation does not
// count, and precession is common to both.
double instant_of_phase(GeocentricSky& sky, double ahead, double t) {
    const auto behind = [&](double at) {
        sky.at_in_same_frames(at);
        const Difference d = solsys::diary::difference(
            sky.ecliptic(), sky.apparent({solsys::diary::kMoon}).direction,
            sky.sun().direction);
        return solsys::diary::turn(ahead, std::atan2(d.sine, d.cosine));
    };
    sky.at(t);
    double f = behind(t);
    double step = f / kRate;
    for (int i = 0; i < kMostPhaseSteps && std::fabs(step) > kPhaseSettled; ++i) {
        t += step;
        const double last = f;
        f = behind(t);
        const double slope = (last - f) / step;
        step = f / (slope > 0.1 && slope < 0.4 ? slope : kRate);
    }
    return std::isfinite(step) ? t + step : std::nan("");
}

SKYEVENT_PHASE detail_of(GeocentricSky& sky, double t,
                         const solsys::diary::ApsisWalk::Nearest& apsides) {
    sky.at_in_same_frames(t);
    const Vec3 moon = sky.ecliptic() * sky.apparent({solsys::diary::kMoon}).direction;
    SKYEVENT_PHASE detail;
    detail.longitude = solsys::longitude_of(moon.x, moon.y);
    detail.latitude = solsys::latitude_of(moon);
    detail.distance =
        solsys::kAuKm * norm(sky.heliocentric(solsys::diary::kMoon).r - sky.earth().r);
    if (std::isfinite(apsides.perigee)) detail.hours_to_perigee = 24 * apsides.perigee;
    if (std::isfinite(apsides.apogee)) detail.hours_to_apogee = 24 * apsides.apogee;
    return detail;
}

}  // namespace

bool Diary::find_phases() {
    GeocentricSky sky(*model);
    solsys::diary::ApsisWalk apsides(*model, span.start);
    solsys::search::Span walk = span;
    const auto quarter_after = [](double t, double days) {
        return std::floor(4 * solsys::lunation_of(t + days));
    };
    const double last = quarter_after(span.end, solsys::kLargestPhaseInequality) + 1;
    for (double quarter = quarter_after(span.start, -solsys::kLargestPhaseInequality);
         quarter <= last && control.go_on(walk); ++quarter) {
        const auto phase = static_cast<int>(quarter - 4 * std::floor(quarter / 4));
        const double t =
            instant_of_phase(sky, phase * kHalfPi, solsys::mean_phase(quarter / 4));
        if (!within(t)) continue;
        walk.cursor = t;
        SKYEVENT_PHASE detail = detail_of(sky, t, apsides.nearest(t));
        if (phase % 2 == 0 && std::fabs(detail.latitude) < kEclipseLatitude)
            detail.eclipse = solsys::diary::eclipse_at(*model, t, phase == 2);
        horizontal({solsys::diary::kMoon}, t, detail.azimuth, detail.altitude);
        if (!add(t, SKYEVENT_NEW_MOON + phase, detail)) return false;
    }
    return !control.stopped();
}
