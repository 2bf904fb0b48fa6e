#include "frames/precession.h"

#include "core/fast_trig.h"
#include "solsys/earth_orientation.h"

namespace solsys {

// IAU 1976: Lieske, Lederle, Fricke & Morando 1977, Astron. Astrophys. 58, 1.
PrecessionAngles precession_angles(Instant from, Instant to) {
    const double T = centuries_since_j2000(from);
    const double t = days_between(from, to) / kDaysPerJulianCentury;
    const double t2 = t * t;
    const double t3 = t2 * t;

    // [arcsec]
    const double rate = 2306.2181 + 1.39656 * T - 0.000139 * T * T;
    const double zeta = rate * t + (0.30188 - 0.000344 * T) * t2 + 0.017998 * t3;
    const double z = rate * t + (1.09468 + 0.000066 * T) * t2 + 0.018203 * t3;
    const double theta = (2004.3109 - 0.8533 * T - 0.000217 * T * T) * t -
                         (0.42665 + 0.000217 * T) * t2 - 0.041833 * t3;
    return {zeta * kArcsec, z * kArcsec, theta * kArcsec};
}

Mat3 precession_matrix(const PrecessionAngles& angles) {
    const SinCos zeta = fast_sincos(angles.zeta);
    const SinCos z = fast_sincos(angles.z);
    const SinCos theta = fast_sincos(angles.theta);
    // R3(-z) R2(theta) R3(-zeta)
    return {{theta.cos * z.cos * zeta.cos - z.sin * zeta.sin,
             -theta.cos * z.cos * zeta.sin - z.sin * zeta.cos, -z.cos * theta.sin},
            {theta.cos * z.sin * zeta.cos + z.cos * zeta.sin,
             z.cos * zeta.cos - theta.cos * z.sin * zeta.sin, -theta.sin * z.sin},
            {theta.sin * zeta.cos, -theta.sin * zeta.sin, theta.cos}};
}

}  // namespace solsys

void Precession(int day0, double fraction0, int day1, double fraction1, double* matrix,
                double* zeta, double* z, double* theta) {
    const auto angles = solsys::precession_angles({day0, fraction0}, {day1, fraction1});
    *zeta = angles.zeta;
    *z = angles.z;
    *theta = angles.theta;
    solsys::store(solsys::precession_matrix(angles), matrix);
}
