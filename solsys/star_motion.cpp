// Directions of stars in bulk, for a host's own drawing of a catalogue.
#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/star_place.h"
#include "solsys/stars.h"

namespace solsys {
namespace {

constexpr double kAuPerParsec = 206264.8062471;
constexpr double kParsecPerLightYear = 0.3066;

// Packed records.
constexpr unsigned char kDirectionOnly = 7;  // class: neither motion nor parallax
constexpr unsigned char kMotionBelow = 4;
constexpr unsigned char kParallaxBelow = 2;
constexpr double kWholeOffset = 32767.0;
constexpr double kZoneOffset = 1e-5;
constexpr double kMotionUnit = 1.862645149230957e-9;  // per year: 2^-29
constexpr double kParallaxUnit = 4.848136811095e-10;  // rad: 0.1 mas
constexpr double kLeastParallax = 1e-6;               // rad

Vec3 aberrated_for(const double observer[6], Vec3 p) {
    const Vec3 beta = kLightDayPerAuOfStars * load(observer + 3);
    return aberrated(p, beta, std::sqrt(1 - dot(beta, beta)));
}

}  // namespace
}  // namespace solsys

void CalcProperMotion(double years, const double observer[6], double out[3],
                      const double base[3], const Tycho2SphRecord* star,
                      unsigned char precision, double& distance) {
    using namespace solsys;
    // A copy: its members are unaligned.
    const Tycho2SphRecord record = *star;
    const Vec3 offset{static_cast<double>(record.offset[0]),
                      static_cast<double>(record.offset[1]),
                      static_cast<double>(record.offset[2])};
    const Vec3 motion{static_cast<double>(record.proper_motion[0]),
                      static_cast<double>(record.proper_motion[1]),
                      static_cast<double>(record.proper_motion[2])};

    distance = -1.0;
    Vec3 p = load(base);
    if (precision == kDirectionOnly) {
        p += (1 / kWholeOffset) * offset;
    } else {
        p += kZoneOffset * offset;
        if (precision < kMotionBelow) p += kMotionUnit * years * motion;
        const double parallax = record.parallax * kParallaxUnit;
        if (precision < kParallaxBelow && parallax > kLeastParallax) {
            p -= parallax * load(observer);
            distance = norm(p) / parallax;
        }
    }
    store(aberrated_for(observer, p), out);
}

void CalcProperMotionD(double years, const double observer[6], double out[3], double ra,
                       double dec, double pm_ra, double pm_dec, double parallax,
                       double radial_velocity, double& distance) {
    using namespace solsys;
    const StarMotion moved =
        moved_star({ra, dec, pm_ra, pm_dec, parallax, radial_velocity}, years, load(observer));
    distance = moved.parallax > 0
                   ? norm(moved.p) / (moved.parallax * kAuPerParsec * kParsecPerLightYear)
                   : -1.0;
    store(aberrated_for(observer, unit(moved.p)), out);
}
