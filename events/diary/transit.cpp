#include "events/diary/transit.h"

#include <cmath>

#include "core/constants.h"
#include "events/diary/quantities.h"
#include "events/search/scan.h"

namespace solsys::diary {

namespace {

constexpr double kSunRadius = 959.63 * kArcsec;  // at 1 au (Auwers 1891)
constexpr double kLongest = 0.6;                 // day: half a transit takes less
constexpr double kTransitPrecision = 0.1 * search::kSecond;
constexpr double kFarAway = 0.02;          // rad at conjunction: no transit comes of it
constexpr double kTransitRateStep = 0.02;  // day

struct Disks {
    double separation, sun, planet;  // rad
};

Disks disks_at(GeocentricSky& sky, const SSO_ID& planet, double t) {
    sky.at_in_same_frames(t);
    const Apparent body = sky.apparent({planet});
    const Apparent sun = sky.sun();
    const double radius = sky.model().GetRadiEq(planet) / kAuKm;
    return {separation(body.direction, sun.direction), std::asin(kSunRadius / sun.distance),
            std::asin(radius / body.distance)};
}

}  // namespace

Transit transit_near(GeocentricSky& sky, const SSO_ID& planet, double conjunction) {
    Transit transit;
    if (!(disks_at(sky, planet, conjunction).separation < kFarAway)) return transit;
    const auto closing = [&](double t) {
        return rate(
            [&](double at) {
                const double s = disks_at(sky, planet, at).separation;
                return s * s;
            },
            t, kTransitRateStep, plain);
    };
    const auto sample = [](const auto& f, double t) { return search::Sample{t, f(t)}; };
    const search::Bracket around{sample(closing, conjunction - kLongest),
                                 sample(closing, conjunction + kLongest)};
    if (!changes_sign(around)) return transit;
    transit.greatest = search::root(closing, around, kTransitPrecision).t;
    const Disks least = disks_at(sky, planet, transit.greatest);
    transit.exists = least.separation < least.sun + least.planet;
    if (!transit.exists) return transit;

    for (int i = 0; i < 4; ++i) {
        const double sign = i == 0 || i == 3 ? 1 : -1;
        const auto gap = [&](double t) {
            const Disks d = disks_at(sky, planet, t);
            return d.separation - (d.sun + sign * d.planet);
        };
        const search::Sample greatest = sample(gap, transit.greatest);
        const search::Sample outside =
            sample(gap, transit.greatest + (i < 2 ? -kLongest : kLongest));
        if (greatest.f >= 0 || outside.f < 0) continue;
        transit.contact[i] = (i < 2 ? search::root(gap, {outside, greatest}, kTransitPrecision)
                                    : search::root(gap, {greatest, outside}, kTransitPrecision))
                                 .t;
    }
    return transit;
}

}  // namespace solsys::diary
