#include "solsys/modern_magnitude.h"

#include <cmath>

#include "ephemeris/planet_states.h"
#include "solsys/body_frames.h"
#include "solsys/light_time.h"
#include "solsys/planet_magnitude_2018.h"
#include "solsys/reduction.h"

namespace solsys {
namespace {

constexpr int kMarsNumber = 4, kSaturnNumber = 6, kUranusNumber = 7, kNeptuneNumber = 8;
constexpr double kMarsSpringLongitude = 85;  // deg, J2000 ecliptic: where Ls is 0

double degrees(double rad) { return rad * kDegreesPerRadian; }
double latitude(Vec3 body_fixed) { return std::asin(body_fixed.z / norm(body_fixed)); }

double planetographic(double planetocentric, double flattening) {
    const double k = (1 - flattening) * (1 - flattening);
    return std::atan2(std::sin(planetocentric), k * std::cos(planetocentric));
}

// Mean of two west longitudes on the half circle between them.
double mean_meridian(Vec3 sun, Vec3 observer) {
    const double a = -std::atan2(sun.y, sun.x);
    return degrees(a + std::remainder(-std::atan2(observer.y, observer.x) - a, kTwoPi) / 2);
}

}  // namespace

bool modern_magnitude(const Bodies& bodies, int planet, Vec3 body, Vec3 observer, Instant now,
                      float& magnitude) {
    const Vec3 to_observer = observer - body;
    PlanetAspect a;
    a.r = norm(body);
    a.delta = norm(to_observer);
    if (planet == kSunNumber) {
        magnitude = static_cast<float>(kSunMagnitude2018 + 5 * std::log10(a.delta));
        return true;
    }
    if (planet < 1 || planet > kNeptuneNumber || !(a.r > 0 && a.delta > 0)) return false;
    a.phase_deg = degrees(std::atan2(norm(cross(-body, to_observer)), dot(-body, to_observer)));
    a.year = 2000 + (days_since_j2000(now) + 0.5) / kDaysPerJulianYear;

    Mat3 fixed{};
    const double tau = a.delta * kLightDayPerAu;
    if ((planet == kMarsNumber || planet == kSaturnNumber || planet == kUranusNumber) &&
        can_be_earlier(now, tau) &&
        body_frame(bodies, {SSO_PLNT, planet}, earlier(now, tau), fixed)) {
        const Vec3 sun = fixed * -body, there = fixed * to_observer;
        const double flattening =
            planet == kUranusNumber ? bodies.find({SSO_PLNT, planet})->Flattening() : 0.0;
        a.sun_latitude_deg = degrees(planetographic(latitude(sun), flattening));
        a.observer_latitude_deg = degrees(planetographic(latitude(there), flattening));
        a.meridian_deg = mean_meridian(sun, there);
        const Vec3 ecliptic = ecliptic_of(bodies) * body;
        a.season_deg = degrees(std::atan2(ecliptic.y, ecliptic.x)) - kMarsSpringLongitude;
    }
    magnitude = static_cast<float>(planet_magnitude_2018(planet, a));
    return true;
}

}  // namespace solsys
