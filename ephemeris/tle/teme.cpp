#include "ephemeris/tle/teme.h"

#include <cmath>

#include "frames/nutation.h"
#include "frames/precession.h"

namespace solsys {

double sidereal_time_1982(Instant ut1) {
    const double T = centuries_since_j2000(ut1);
    const double seconds = 67310.54841 + (876600.0 * 3600 + 8640184.812866) * T +
                           0.093104 * T * T - 0.0000062 * T * T * T;
    const double rest = std::fmod(kPi / 43200 * seconds, kTwoPi);
    return rest < 0 ? rest + kTwoPi : rest;
}

Mat3 j2000_from_teme(Instant tt) {
    const NutationAngles nutation = short_nutation(tt);
    const Mat3 tod_from_teme = rotate_z(-nutation.d_psi * std::cos(nutation.true_obliquity()));
    const Mat3 tod_from_j2000 = nutation_matrix(nutation) * precession_matrix(kJ2000, tt);
    return transpose(tod_from_j2000) * tod_from_teme;
}

}  // namespace solsys
