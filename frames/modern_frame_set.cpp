#include "frames/modern_frame_set.h"

#include "frames/cio_locator.h"
#include "frames/iau2006_precession.h"
#include "frames/precession.h"

namespace solsys {
namespace {

// B1875.0.
constexpr Instant kB1875{2405889, 0.25855047488585114};

}  // namespace

FrameSet modern_frames_at(Instant tt, bool observer_on_earth, PrecessionSource precession,
                          NutationSource nutation, PoleNodes& nodes) {
    FrameSet f;
    double m[9];
    const FukushimaWilliams angles = fukushima_williams(tt);
    const PoleSeries pole = nodes.at(tt);

    if (nutation != nullptr &&
        nutation(tt.day, tt.fraction, m, &f.obliquity, &f.d_epsilon, &f.d_psi)) {
        f.tod_from_mod = load_matrix(m);
    } else {
        f.obliquity = angles.epsilon;
        f.d_epsilon = pole.d_epsilon;
        f.d_psi = pole.d_psi;
        f.tod_from_mod = tod_from_mod_2006(angles.epsilon, pole.d_psi, pole.d_epsilon);
    }
    f.mod_from_j2000 = precession != nullptr && precession(tt.day, tt.fraction, m)
                           ? load_matrix(m)
                           : equator_from_gcrs(angles);

    const Mat3 tod_from_gcrs = f.tod_from_mod * f.mod_from_j2000;
    f.equation_of_origins = equation_of_origins(tod_from_gcrs, pole.locator);
    f.cur_from_j2000 = observer_on_earth ? tod_from_gcrs : f.mod_from_j2000;
    f.ecl_from_tod = rotate_x(observer_on_earth ? f.obliquity + f.d_epsilon : f.obliquity);
    f.ecl_from_j2000 = f.ecl_from_tod * f.cur_from_j2000;
    return f;
}

Mat3 ecl2k_from_gcrs() {
    return rotate_x(kObliquity2006) * equator_from_gcrs(fukushima_williams(kJ2000));
}

Mat3 b1875_from_gcrs() { return equator_from_gcrs(fukushima_williams(kB1875)); }

}  // namespace solsys
