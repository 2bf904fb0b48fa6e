#include "solsys/modern_star.h"

#include <cmath>

namespace solsys {
namespace {

double or_zero(double value) { return value > kUnknownOfStar ? 0.0 : value; }

}  // namespace

StarPlace modern_star_place(const StarObject& star, Instant tdb,
                            const BarycentricObserver& observer) {
    const double sin_ra = std::sin(star.ra), cos_ra = std::cos(star.ra);
    const double sin_dec = std::sin(star.dec), cos_dec = std::cos(star.dec);
    const Vec3 u{cos_dec * cos_ra, cos_dec * sin_ra, sin_dec};
    const Vec3 east{-sin_ra, cos_ra, 0};
    const Vec3 north{-sin_dec * cos_ra, -sin_dec * sin_ra, cos_dec};

    const double parallax =
        star.parallax > 0 && !(star.parallax > kUnknownOfStar) ? double{star.parallax} : 0.0;
    const double radial = kAuPerYearPerKmS * or_zero(star.radial_velocity) * parallax;
    const Vec3 motion =
        or_zero(star.pm_ra) * cos_dec * east + or_zero(star.pm_dec) * north + radial * u;
    const double years = (days_since_j2000(tdb) + dot(u, observer.position) * kLightDayPerAu) /
                         kDaysPerJulianYear;
    const Vec3 p = u + years * motion - parallax * observer.position;

    const Vec3 bent =
        deflected(unit(p), {}, kStarLightTime, observer.bodies, SSO_ID(SSO_STAR, 0));
    const Vec3 seen = unit(aberrated(bent, observer.beta, observer.reciprocal_lorentz));
    const double distance = parallax > 0 ? norm(p) / parallax : -1.0;
    return {distance > 0 ? distance * seen : seen, distance};
}

}  // namespace solsys
