#include "ephemeris/tle/teme.h"

#include <cmath>

#include "frames/nutation.h"
#include "frames/precession.h"

namespace solsys {

Mat3 j2000_from_teme(Instant tt) {
    const NutationAngles nutation = short_nutation(tt);
    const Mat3 tod_from_teme = rotate_z(-nutation.d_psi * std::cos(nutation.true_obliquity()));
    const Mat3 tod_from_j2000 = nutation_matrix(nutation) * precession_matrix(kJ2000, tt);
    return transpose(tod_from_j2000) * tod_from_teme;
}

}  // namespace solsys
