#include "frames/nutation.h"

#include <cmath>

#include "core/fast_trig.h"
#include "solsys/earth_orientation.h"

namespace solsys {

// Bretagnon & Simon 1986, Planetary Programs and Tables; the obliquity of Laskar 1986, Astron.
// Astrophys. 157, 59. [rad, and 1e-7 rad]
NutationAngles short_nutation(Instant t) {
    const double T = days_since_j2000(t) / 3652500;  // 10,000 Julian years

    const double node = 2.18 + T * (-3375.7 + T * 0.36);        // of the Moon's orbit
    const double twice_sun = 3.51 + T * (125666.39 + T * 0.1);  // mean longitude
    const double obliquity =
        0.4090928 + 1e-7 * T * (-226938 + T * (-75 + T * (96926 + T * (-2491 - 12104 * T))));

    const SinCos n = fast_sincos(node);
    const SinCos s = fast_sincos(twice_sun);
    return {obliquity, (-834 * n.sin - 64 * s.sin) * 1e-7, (446 * n.cos + 28 * s.cos) * 1e-7};
}

// R1(-true obliquity) R3(-d_psi) R1(mean obliquity), written out.
Mat3 nutation_matrix(double mean_obliquity, SinCos true_obliquity, double d_psi) {
    const SinCos mean = library_sin_cos(mean_obliquity), psi = library_sin_cos(d_psi);
    const auto& [s, c] = true_obliquity;
    return {{psi.cos, -psi.sin * mean.cos, -psi.sin * mean.sin},
            {c * psi.sin, c * psi.cos * mean.cos + s * mean.sin,
             c * psi.cos * mean.sin - s * mean.cos},
            {s * psi.sin, s * psi.cos * mean.cos - c * mean.sin,
             s * psi.cos * mean.sin + c * mean.cos}};
}

Mat3 nutation_matrix(const NutationAngles& angles) {
    return nutation_matrix(angles.obliquity, library_sin_cos(angles.true_obliquity()),
                           angles.d_psi);
}

}  // namespace solsys

using solsys::NutationAngles;

void NutBretagnon(int day, double fraction, double* obliquity, double* d_psi,
                  double* d_epsilon) {
    const NutationAngles angles = solsys::short_nutation({day, fraction});
    *obliquity = angles.obliquity;
    *d_psi = angles.d_psi;
    *d_epsilon = angles.d_epsilon;
}

double EclipseAngle(int day, double fraction) {
    return solsys::short_nutation({day, fraction}).true_obliquity();
}

void GetMtrxEcl2Eq(int day, double fraction, double* matrix) {
    solsys::store(solsys::rotate_x(-EclipseAngle(day, fraction)), matrix);
}

void Nutation(int day, double fraction, double* matrix, double* obliquity, double* d_epsilon,
              double* d_psi) {
    const NutationAngles angles = solsys::short_nutation({day, fraction});
    *obliquity = angles.obliquity;
    *d_epsilon = angles.d_epsilon;
    *d_psi = angles.d_psi;
    solsys::store(solsys::nutation_matrix(angles), matrix);
}
