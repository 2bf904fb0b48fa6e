#include "frames/frame_set.h"

#include "frames/nutation.h"
#include "frames/precession.h"

namespace solsys {

FrameSet frames_at(Instant t, bool observer_on_earth, PrecessionSource precession,
                   NutationSource nutation) {
    FrameSet f;
    double m[9];

    const bool of_host = nutation != nullptr &&
                         nutation(t.day, t.fraction, m, &f.obliquity, &f.d_epsilon, &f.d_psi);
    if (!of_host) {
        const NutationAngles angles = short_nutation(t);
        f.obliquity = angles.obliquity;
        f.d_epsilon = angles.d_epsilon;
        f.d_psi = angles.d_psi;
    }
    const SinCos e = library_sin_cos(f.obliquity + f.d_epsilon);  // true obliquity
    f.tod_from_mod = of_host ? load_matrix(m) : nutation_matrix(f.obliquity, e, f.d_psi);
    f.mod_from_j2000 = precession != nullptr && precession(t.day, t.fraction, m)
                           ? load_matrix(m)
                           : precession_matrix(kJ2000, t);

    // The Earth's nutation is of no use to an observer who stands elsewhere.
    f.cur_from_j2000 = observer_on_earth ? f.tod_from_mod * f.mod_from_j2000 : f.mod_from_j2000;
    f.ecl_from_tod = rotation_x(e.cos, e.sin);
    const Mat3& mod = f.mod_from_j2000;
    f.ecl_from_j2000 = {mod.r0, e.cos * mod.r1 + e.sin * mod.r2,
                        -e.sin * mod.r1 + e.cos * mod.r2};
    return f;
}

}  // namespace solsys
