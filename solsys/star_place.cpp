#include "solsys/star_place.h"

#include <cmath>

#include "core/fast_trig.h"

namespace solsys {
namespace {

constexpr double kSunCentre = 1e-10;            // au: nearer, there is no deflection
constexpr double kTwiceSolarRadius = 1.974e-8;  // 2 GM/c^2 of the Sun [au]
constexpr double kBehindSun = 1e-13;            // least 1 + cosine to the Sun's far side
constexpr double kBehindSunCosine = -0.9999999999999;

bool known(double value) { return !(value > kUnknownOfStar); }

}  // namespace

StarMotion moved_star(const StarCoordinates& star, double years, Vec3 observer_position) {
    const auto [sin_ra, cos_ra] = fast_sincos(star.ra);
    const auto [sin_dec, cos_dec] = fast_sincos(star.dec);
    const Vec3 u{cos_dec * cos_ra, cos_dec * sin_ra, sin_dec};

    const double pm_ra = known(star.pm_ra) ? star.pm_ra : 0.0;
    const double pm_dec = known(star.pm_dec) ? star.pm_dec : 0.0;
    Vec3 p = u + years * Vec3{-pm_ra * cos_dec * sin_ra - pm_dec * sin_dec * cos_ra,
                              pm_ra * cos_dec * cos_ra - pm_dec * sin_dec * sin_ra,
                              pm_dec * cos_dec};

    if (!(star.parallax > 0 && star.parallax < kUnknownOfStar)) return {p, 0.0};
    if (known(star.radial_velocity))
        p += kAuPerYearPerKmS * star.radial_velocity * star.parallax * years * u;
    return {p - star.parallax * observer_position, star.parallax};
}

Vec3 deflected_by_sun(Vec3 p, Vec3 observer_position) {
    const double R = norm(observer_position);
    if (!(R > kSunCentre)) return p;
    const Vec3 e = (1 / R) * observer_position;
    double x = dot(e, p);
    if (std::fabs(x + 1) < kBehindSun) x = kBehindSunCosine;
    const double f = kTwiceSolarRadius / ((x + 1) * R);
    return p + f * (e - x * p);
}

StarPlace star_place(const StarObject& star, double years, const StarObserver& observer,
                     const std::optional<Mat3>& cur_from_2k) {
    const StarMotion moved = moved_star(
        {star.ra, star.dec, star.pm_ra, star.pm_dec, star.parallax, star.radial_velocity},
        years, observer.position);
    const double distance = moved.parallax > 0 ? norm(moved.p) / moved.parallax : -1.0;

    const Vec3 bent = deflected_by_sun(unit(moved.p), observer.position);
    Vec3 seen = unit(aberrated(bent, observer.beta, observer.reciprocal_lorentz));
    if (cur_from_2k) seen = *cur_from_2k * seen;
    return {distance > 0 ? distance * seen : seen, distance};
}

}  // namespace solsys
