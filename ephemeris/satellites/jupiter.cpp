// Io, Europa, Ganymede, Callisto by the theory L1.2: Lainey, Duriez & Vienne 2006, Astron.
// Astrophys. 456, 783; the inner satellites by ellipses; the others by table rows.
#include <array>
#include <iterator>
#include <span>

#include "core/chebyshev.h"
#include "ephemeris/satellites/precessing_ellipse.h"
#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"
#include "solsys/satellite_theory.h"

namespace solsys::satellites {
namespace {

constexpr SeriesRow kRows[] = {
#include "jupiter_l12.inc"
};
static_assert(std::size(kRows) == 490);
constexpr auto kTable = by_columns(kRows);

// Corrections of very long period: Chebyshev coefficients of degree 0 to 8.
struct ChebyshevRow {
    int body, j;
    double l, re_z, im_z, re_zeta, im_zeta;
};
constexpr ChebyshevRow kChebyshev[] = {
#include "jupiter_l12_chebyshev.inc"
};
constexpr std::size_t kDegrees = 9;
static_assert(std::size(kChebyshev) == 4 * kDegrees);
static_assert(kChebyshev[kDegrees].body == 502 && kChebyshev[4 * kDegrees - 1].j == 8);

// Span of those polynomials, years from kEpoch: about 1130 to 2762.
constexpr double kSpanBegin = -819.727638594856;
constexpr double kSpanEnd = 812.721806990360;

struct Satellite {
    ElementSeries series;
    double gm;     // of Jupiter and the satellite [au^3/day^2]
    double l0, n;  // mean longitude [rad, rad/day], t in days from kEpoch
};
constexpr double kEpoch = 2433282.5;
constexpr Satellite kSatellites[] = {
    {series_of(kRows, kTable, 501), 0.2824894284338140E-06, 0.1446213296021224E+01,
     0.3551552286182400E+01},
    {series_of(kRows, kTable, 502), 0.2824832743928930E-06, -0.3735263437471362E+00,
     0.1769322711123470E+01},
    {series_of(kRows, kTable, 503), 0.2824981841847230E-06, 0.2874089391143348E+00,
     0.8782079235893280E+00},
    {series_of(kRows, kTable, 504), 0.2824921448899090E-06, -0.3620341291375704E+00,
     0.3764862334338280E+00},
};

// From the theory's frame: its node on the J2000 equator and its inclination [rad].
constexpr Mat3 kEquatorFromJovian =
    turn_z(0.6249501830657150E+01) * turn_x(0.4450947364976650E+00);

// The five corrections of one satellite; the coefficients of degree 0 count half.
struct LongPeriod {
    std::array<double, kDegrees> l{}, re_z{}, im_z{}, re_zeta{}, im_zeta{};
};
constexpr auto kLongPeriod = [] {
    std::array<LongPeriod, 4> all;
    for (const ChebyshevRow& row : kChebyshev) {
        LongPeriod& moon = all[static_cast<std::size_t>(row.body - 501)];
        const auto j = static_cast<std::size_t>(row.j);
        const double weight = j == 0 ? 0.5 : 1;
        moon.l[j] = weight * row.l;
        moon.re_z[j] = weight * row.re_z;
        moon.im_z[j] = weight * row.im_z;
        moon.re_zeta[j] = weight * row.re_zeta;
        moon.im_zeta[j] = weight * row.im_zeta;
    }
    return all;
}();

// Their place in the span, -1 to 1 inside.
double in_span(double days) {
    return (days / kDaysPerJulianYear - (kSpanBegin + kSpanEnd) / 2) /
           ((kSpanEnd - kSpanBegin) / 2);
}

}  // namespace

int galilean_state(int moon, Instant t, State& state) {
    const Satellite& satellite = kSatellites[moon - 1];
    const double days = days_since(kEpoch, t);
    const ElementSums sums = sum_series(satellite.series, days);
    const LongPeriod& slow = kLongPeriod[static_cast<std::size_t>(moon - 1)];
    // Outside the span the polynomials mean nothing and are left out.
    const double x = in_span(days);
    const auto long_period = [x](const std::array<double, kDegrees>& c) {
        return std::fabs(x) <= 1 ? chebyshev_sum<false>(std::span<const double>(c), x).value
                                 : 0;
    };

    const double a = sums.size.c;
    State jovian;
    const int code = state_of(
        {.a = a,
         .n = std::sqrt(satellite.gm / (a * a * a)),
         .l = satellite.l0 + satellite.n * days + sums.longitude.s + long_period(slow.l),
         .k = sums.z.c + long_period(slow.re_z),
         .h = sums.z.s + long_period(slow.im_z),
         .q = sums.zeta.c + long_period(slow.re_zeta),
         .p = sums.zeta.s + long_period(slow.im_zeta)},
        jovian);
    if (code == kOk) state = kEquatorFromJovian * jovian;
    return code;
}

}  // namespace solsys::satellites

using namespace solsys;
using namespace solsys::satellites;

namespace {

constexpr int kSystem = 5;

enum class Source { none, galilean, ellipse, table };

Source source_of(int moon) {
    if (moon < 1) return Source::none;
    if (moon <= 4) return Source::galilean;
    if (moon == 5 || (moon >= 14 && moon <= 16)) return Source::ellipse;
    return moon <= 80 ? Source::table : Source::none;
}

// Table rows are the moons 6 to 13, then those from 17 on.
int row_of(int moon) { return moon <= 13 ? moon - 6 : moon - 9; }

}  // namespace

// Jupiter with its satellites, 126712767 km^3/s^2.
JupiterSat::JupiterSat() : primary_gm_(2.8253458898878094e-07) {}

int JupiterSat::GetSatVector(int day, double fraction, int moonNumber,
                             unsigned char velocityWanted, double* out) const {
    switch (source_of(moonNumber)) {
        case Source::galilean:
            return answer({day, fraction}, out, [&](Instant t, State& state) {
                return galilean_state(moonNumber, t, state);
            });
        case Source::ellipse:
            return answer({day, fraction}, out, [&](Instant t, State& state) {
                return ellipse_state(*find_ellipse(kSystem * 100 + moonNumber), t, state);
            });
        case Source::table:
            return EvalMeanElements(kSystem, day, fraction, row_of(moonNumber), velocityWanted,
                                    out);
        case Source::none:
            break;
    }
    return SAT_NOT_COVERED;
}

double JupiterSat::GetPrimaryGM(int moonNumber) const {
    switch (source_of(moonNumber)) {
        case Source::galilean:
        case Source::ellipse:
            return primary_gm_;
        case Source::table:
            return MeanElementsGM(kSystem, row_of(moonNumber));
        case Source::none:
            break;
    }
    return -1.0;
}
