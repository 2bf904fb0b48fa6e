#include "frames/sidereal_time.h"

#include <cmath>

#include "core/angles.h"
#include "core/fast_trig.h"
#include "solsys/earth_orientation.h"
#include "solsys/time_scales.h"

namespace solsys {
namespace {

double fraction_of(double x) { return x - std::trunc(x); }

}  // namespace

double mean_sidereal_time(Instant t) {
    // Days of UT since the civil midnight with which the Julian day's date starts.
    const double u = t.fraction - 0.5 - ET_UT::Get(t.day, t.fraction) / kSecondsPerDay;
    const double n = std::trunc(u);
    const double T = (days_since_j2000({t.day, n}) + 0.5) / kDaysPerJulianCentury;
    // At 0h UT [turns]: 24110.54841 s + 8640184.812866 s T + 0.093104 s T^2 - 6.2e-6 s T^3
    const double g =
        0.2790572732638889 +
        T * (100.00213903780093 + T * (1.0775925925925926e-6 - T * 7.175925925925926e-11));
    return wrap_turn(kTwoPi * (fraction_of(g) + (u - n) * 1.002737879753));
}

double apparent_sidereal_time(Instant t, const NutationAngles& nutation) {
    const double equation_of_equinoxes = nutation.d_psi * fm_cos(nutation.true_obliquity());
    return wrap_turn(mean_sidereal_time(t) + equation_of_equinoxes);
}

}  // namespace solsys

double SiderialTime(bool apparent, int day, double fraction) {
    const solsys::Instant t{day, fraction};
    return apparent ? solsys::apparent_sidereal_time(t, solsys::short_nutation(t))
                    : solsys::mean_sidereal_time(t);
}
