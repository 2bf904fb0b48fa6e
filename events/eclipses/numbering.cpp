// Lunation and Saros numbers.
#include <cmath>

#include "core/constants.h"
#include "solsys/eclipses.h"

namespace {

// Mean new Moon of lunation 0 [JD TT] and mean synodic month [day] (Meeus 1998, Astronomical
// Algorithms, chapter 49), with the quadratic term that long spans need.
double lunations_since_2000(double jd) {
    constexpr double kEpoch = 2451550.09766, kMonth = 29.530588861;
    const double t = (jd - solsys::kJ2000Day) / solsys::kDaysPerJulianCentury;
    return (jd - kEpoch - 0.00015437 * t * t) / kMonth;
}

int modulo(int a, int b) { return (a % b + b) % b; }

}  // namespace

int EclipseLunation(double jd, short kind) {
    const double k = lunations_since_2000(jd) - (kind == ECLIPSE_LUNAR ? 0.5 : 0.0);
    return std::fabs(k) < 1e9 ? static_cast<int>(std::lround(k)) : 0;
}

// The series that passes this lunation nearest to its middle. Two eclipses of one series are
// 223 lunations apart, two of neighbouring series 358, and 38 * 358 = 61 * 223 + 1.
int EclipseSaros(int lunation, short kind) {
    const bool lunar = kind == ECLIPSE_LUNAR;
    const int n = lunar ? lunation : lunation % 1000000 + 105;
    const int r = modulo(lunar ? 38 * (n % 223) + 124 : 136 + 38 * (n % 223), 223);
    const double middle = lunar ? 129 + (n + 217) / 358.0 : 136 + n / 358.0;
    return r + 223 * static_cast<int>(std::lround((middle - r) / 223));
}
