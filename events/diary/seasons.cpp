// Equinoxes, solstices, and the Earth's perihelion and aphelion.
#include <cmath>

#include "core/constants.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"

using solsys::kHalfPi;
using solsys::diary::Diary;
using solsys::diary::GeocentricSky;
using solsys::diary::kSunRate;

namespace {

constexpr double kSeasonSettled = 1e-7;  // day

double solar_longitude(GeocentricSky& sky, double t) {
    return longitude_at(sky, {solsys::diary::kSun}, solsys::diary::Circle::kEcliptic, t);
}

double instant_of_season(GeocentricSky& sky, double longitude, double t) {
    const auto at = [&sky](double when) { return solar_longitude(sky, when); };
    return solsys::diary::instant_of_sun(at, longitude, t, kSeasonSettled);
}

}  // namespace

// The longitude only grows: one season follows another, none can be missed.
bool Diary::find_seasons() {
    GeocentricSky sky(*model);
    const double at_start = solar_longitude(sky, span.start);
    if (!std::isfinite(at_start)) return !control.stopped();  // no Sun at that instant
    auto quarter = static_cast<int>(std::floor(at_start / kHalfPi));
    double guess = span.start + solsys::diary::turn(quarter * kHalfPi, at_start) / kSunRate;
    solsys::search::Span walk = span;
    while (control.go_on(walk)) {
        const double t = instant_of_season(sky, quarter * kHalfPi, guess);
        if (!(t < span.end)) break;
        const int season = ((quarter % 4) + 4) % 4;
        if (within(t) && !add(t, SKYEVENT_MARCH_EQUINOX + season, sun_detail(sky, t)))
            return false;
        walk.cursor = t;
        guess = t + kHalfPi / kSunRate;
        ++quarter;
    }
    return !control.stopped();
}

// Zeros of r . dr/dt. Its second derivative: e n^3 a^2 of the orbit and the Moon's pull on the
// Earth, whose monthly wobble of 3.1e-5 au is too small to make a second zero.
bool Diary::find_earth_apsides() {
    constexpr double bound = 1.5e-6;      // au^2/day^3
    constexpr double amplitude = 2.8e-4;  // au^2/day: e n a^2
    GeocentricSky sky(*model);
    const auto radial = [&sky](double t) {
        sky.at_in_same_frames(t);
        return dot(sky.earth().r, sky.earth().v);
    };
    return zeros(radial, bound, amplitude, [&](double t, bool rises) {
        return add(t, rises ? SKYEVENT_EARTH_PERIHELION : SKYEVENT_EARTH_APHELION,
                   sun_detail(sky, t));
    });
}
