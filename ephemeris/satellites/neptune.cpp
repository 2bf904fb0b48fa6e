// Nereid by a series fitted to a numerical ephemeris over 1858-2049 (see
// data/satellites/neptune_nereid.csv); Triton and the inner satellites by ellipses; the outer
// ones by table rows.
#include <iterator>
#include <string_view>

#include "ephemeris/satellites/precessing_ellipse.h"
#include "ephemeris/satellites/theories.h"
#include "ephemeris/satellites/turns.h"
#include "solsys/satellite_theory.h"

namespace solsys::satellites {
namespace {

struct Row {
    std::string_view fun;
    int power, j, m;
    double a, dl, re_z, im_z, re_zeta, im_zeta;
};
constexpr Row kRows[] = {
#include "neptune_nereid.inc"
};
static_assert(std::size(kRows) == 21);

// Mean longitudes of the Sun (period in days) and of Nereid; days from J2000.
constexpr double kSun0 = 304.88 * kDegree;
constexpr double kSunRate = kTwoPi / 60190.03;
constexpr double kNereid0 = 9.004663144790422e+02;
constexpr double kNereidRate = 1.744679648204496e-02;

constexpr double kGm = gm_in_au(6836527.10, kAuKm);  // of Neptune and Triton

}  // namespace

int nereid_state(Instant t, State& state) {
    const double days = days_since_j2000(t);
    const double centuries = centuries_since_j2000(t);
    const double sun = kSun0 + kSunRate * days;
    const double longitude = kNereid0 + kNereidRate * days;

    EquinoctialElements elements{};
    elements.l = longitude;
    for (const Row& row : kRows) {
        double f = 1;
        if (row.fun == "poly") {
            for (int power = 0; power < row.power; ++power) f *= centuries;
        } else {
            const SinCos value = sin_cos(row.j * sun + row.m * longitude);
            f = row.fun == "cos" ? value.cos : value.sin;
        }
        elements.a += f * row.a;
        elements.l += f * row.dl;
        elements.k += f * row.re_z;
        elements.h += f * row.im_z;
        elements.q += f * row.re_zeta;
        elements.p += f * row.im_zeta;
    }
    elements.n = std::sqrt(kGm / (elements.a * elements.a * elements.a));

    State ecliptic;
    const int code = state_of(elements, ecliptic);
    if (code == kOk) state = kEquatorFromEcliptic * ecliptic;
    return code;
}

}  // namespace solsys::satellites

using namespace solsys;
using namespace solsys::satellites;

namespace {
constexpr int kSystem = 8;
constexpr int kFirstTableMoon = 9;
constexpr int kLastMoon = 14;
constexpr int kNereid = 2;
}  // namespace

// About 6828018 km^3/s^2.
NepSat::NepSat() : primary_gm_(1.5224600230409344e-08) {}

int NepSat::GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                         double* out) const {
    const int moon = moonNumber % 100;
    if (moon < 1 || moon > kLastMoon) return SAT_NOT_COVERED;
    if (moon >= kFirstTableMoon)
        return EvalMeanElements(kSystem, day, fraction, moon - kFirstTableMoon, velocityWanted,
                                out);
    return answer({day, fraction}, out, [&](Instant t, State& state) {
        return moon == kNereid ? nereid_state(t, state)
                               : ellipse_state(*find_ellipse(kSystem * 100 + moon), t, state);
    });
}

double NepSat::GetPrimaryGM(int moonNumber) const {
    if (moonNumber < 1) return -1.0;
    if (moonNumber < kFirstTableMoon) return primary_gm_;
    return MeanElementsGM(kSystem, moonNumber - kFirstTableMoon);
}
