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

// The star's J2000 direction moved by `years` of proper motion and radial velocity, seen from
// the heliocentric position (parallax); not normalised, and of length 1 + radial motion.
struct StarMotion {
    Vec3 p;
    double parallax;  // [rad]; 0: none
};
StarMotion moved_star(double ra, double dec, double pm_ra, double pm_dec, double parallax,
                      double radial_velocity, double years, Vec3 observer_position);

// Gravitational deflection of a unit direction by the Sun, for an observer at a heliocentric
// position; not normalised. At the Sun's centre there is none.
Vec3 deflected_by_sun(Vec3 direction, Vec3 observer_position);

// Relativistic aberration of a direction, not normalised for a direction of other than unit
// length.
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
