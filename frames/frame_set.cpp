#include "frames/frame_set.h"

#include "frames/nutation.h"
#include "frames/precession.h"

namespace solsys {

FrameSet frames_at(Instant t, bool observer_on_earth, PrecessionSource precession,
                   NutationSource nutation) {
    FrameSet f;
    double m[9];

    if (nutation != nullptr &&
        nutation(t.day, t.fraction, m, &f.obliquity, &f.d_epsilon, &f.d_psi)) {
        f.tod_from_mod = load_matrix(m);
    } else {
        const NutationAngles angles = short_nutation(t);
        f.obliquity = angles.obliquity;
        f.d_epsilon = angles.d_epsilon;
        f.d_psi = angles.d_psi;
        f.tod_from_mod = nutation_matrix(angles);
    }
    f.mod_from_j2000 = precession != nullptr && precession(t.day, t.fraction, m)
                           ? load_matrix(m)
                           : precession_matrix(kJ2000, t);

    // The Earth's nutation is of no use to an observer who stands elsewhere.
    f.cur_from_j2000 = observer_on_earth ? f.tod_from_mod * f.mod_from_j2000 : f.mod_from_j2000;
    f.ecl_from_tod = rotate_x(f.obliquity + f.d_epsilon);
    f.ecl_from_j2000 = f.ecl_from_tod * f.mod_from_j2000;
    f.gal_from_j2000 = kGalFromJ2000;
    f.gal_from_cur = kGalFromJ2000 * transpose(f.cur_from_j2000);
    return f;
}

}  // namespace solsys
