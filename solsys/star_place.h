// Apparent place of a star for one observer and instant.
#pragma once

#include <optional>

#include "core/linalg.h"
#include "solsys/stars.h"

namespace solsys {

// What the place of a star needs of its observer.
struct StarObserver {
    Vec3 position;              // heliocentric, J2000 equator [au]
    Vec3 beta;                  // velocity over that of light
    double reciprocal_lorentz;  // sqrt(1 - |beta|^2)
};

struct StarPlace {
    Vec3 vector;      // unit direction, times the distance when that is known
    double distance;  // [au]; -1: no parallax
};

inline constexpr double kUnknownOfStar = 999998.0;     // a value above is unknown
inline constexpr double kAuPerYearPerKmS = 0.2109495;  // 1 km/s in au per Julian year

// Place and motion of a star at J2000.0, as in StarObject; above 999998: unknown.
struct StarCoordinates {
    double ra, dec;          // [rad]
    double pm_ra, pm_dec;    // d(ra)/dt, d(dec)/dt [rad/year]; an unknown one counts as zero
    double parallax;         // [rad]; used when positive and known
    double radial_velocity;  // [km/s]; used when known, with the parallax
};

// Source of the chain (space motion, parallax, deflection by the Sun, aberration): Explanatory
// Supplement to the Astronomical Almanac 1992, chapter 3; Murray 1981, Mon. Not. R. Astron.
// Soc. 195, 639.

// The star's direction after `years` of proper motion and radial velocity, from the
// heliocentric position of its observer; of about unit length.
struct StarMotion {
    Vec3 p;
    double parallax;  // the one used [rad]; 0: none
};
StarMotion moved_star(const StarCoordinates& star, double years, Vec3 observer_position);

// Gravitational deflection of a unit direction by the Sun, for an observer at a heliocentric
// position; not normalised. At the Sun's centre there is none.
Vec3 deflected_by_sun(Vec3 direction, Vec3 observer_position);

// Relativistic aberration. A unit direction gives a unit one; another length is not normalised.
constexpr Vec3 aberrated(Vec3 p, Vec3 beta, double reciprocal_lorentz) {
    const double f = dot(p, beta);
    return (1.0 / (1.0 + f)) *
           (reciprocal_lorentz * p + (1.0 + f / (1.0 + reciprocal_lorentz)) * beta);
}

// Apparent place: motion, parallax, deflection and aberration, in the J2000 equator or, given
// the matrix, in the true equator of date. `years`: Julian years since J2000.0.
StarPlace star_place(const StarObject& star, double years, const StarObserver& observer,
                     const std::optional<Mat3>& cur_from_2k = std::nullopt);

}  // namespace solsys
