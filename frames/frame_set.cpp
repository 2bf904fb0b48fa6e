#include "frames/frame_set.h"

#include "solsys/earth_orientation.h"

namespace solsys {

FrameSet frames_at(Instant t, bool observer_on_earth, PrecessionSource precession,
                   NutationSource nutation) {
    FrameSet f;
    double m[9];

    if (nutation == nullptr ||
        !nutation(t.day, t.fraction, m, &f.obliquity, &f.d_epsilon, &f.d_psi))
        Nutation(t.day, t.fraction, m, &f.obliquity, &f.d_epsilon, &f.d_psi);
    f.tod_from_mod = load_matrix(m);

    if (precession == nullptr || !precession(t.day, t.fraction, m)) {
        double zeta = 0, z = 0, theta = 0;
        Precession(kJ2000Day, 0.0, t.day, t.fraction, m, &zeta, &z, &theta);
    }
    f.mod_from_j2000 = load_matrix(m);

    // The Earth's nutation is of no use to an observer who stands elsewhere.
    f.cur_from_j2000 = observer_on_earth ? f.tod_from_mod * f.mod_from_j2000 : f.mod_from_j2000;
    f.ecl_from_tod = rotate_x(f.obliquity + f.d_epsilon);
    f.ecl_from_j2000 = f.ecl_from_tod * f.mod_from_j2000;
    f.gal_from_j2000 = kGalFromJ2000;
    f.gal_from_cur = kGalFromJ2000 * transpose(f.cur_from_j2000);
    return f;
}

}  // namespace solsys
