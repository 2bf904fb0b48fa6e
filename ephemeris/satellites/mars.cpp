// Phobos and Deimos. Lainey, Dehant & Paetzold 2007, Astron. Astrophys. 465, 1075.
#include <iterator>

#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"
#include "solsys/satellite_theory.h"

namespace solsys::satellites {
namespace {

constexpr SeriesRow kRows[] = {
#include "mars_lainey2007.inc"
};
static_assert(std::size(kRows) == 201);
constexpr auto kTable = by_columns(kRows);

// Constant and secular parts. t in days from kEpoch.
struct Satellite {
    ElementSeries series;
    double gm;         // of Mars and the satellite [au^3/day^2]
    double a0;         // au
    double l0, n, l2;  // l = l0 + n t + l2 t^2 [rad]
    double k0, h0;     // of z
    double q0, p0;     // of zeta
};
constexpr double kEpoch = 2445053.5;
constexpr Satellite kSatellites[] = {
    {series_of(kRows, kTable, 401), 9.549547741038312e-11, 0.0000626916188000,
     2.0912973926417302, 1.970205562831390e+01, 1.657852042683113e-10, -0.0000005774003141,
     0.0000006185052790, -0.0000575018919826, -0.0000540676493351},
    {series_of(kRows, kTable, 402), 9.549547622768120e-11, 0.0001568134086700,
     -1.9167537810740201, 4.977013889652300e+00, -2.331793571572226e-14, -0.0000239579419518,
     0.0000257893300229, -0.0056443721379635, -0.0053121806978560},
};

// Mean equator of Mars of date, from its node on the J2000 equator [deg, deg per century].
constexpr double kNode = 47.68143, kNodeRate = -0.1061;
constexpr double kInclination = 37.1135, kInclinationRate = 0.0609;

}  // namespace

int mars_state(int moon, Instant t, State& state) {
    const Satellite& satellite = kSatellites[moon - 1];
    const double days = days_since(kEpoch, t);
    const ElementSums sums = sum_series(satellite.series, days);

    const double a = satellite.a0 + sums.size.c;
    State in_equator;
    // The series of the longitude is one of cosines here.
    const int code = state_of(
        {.a = a,
         .n = std::sqrt(satellite.gm / (a * a * a)),
         .l = satellite.l0 + satellite.n * days + satellite.l2 * days * days + sums.longitude.c,
         .k = satellite.k0 + sums.z.c,
         .h = satellite.h0 + sums.z.s,
         .q = satellite.q0 + sums.zeta.c,
         .p = satellite.p0 + sums.zeta.s},
        in_equator);
    if (code != kOk) return code;

    const double centuries = centuries_since_j2000(t);
    const double node = (kNode + kNodeRate * centuries) * kDegree;
    const double inclination = (kInclination + kInclinationRate * centuries) * kDegree;
    state = turn_z(node) * (turn_x(inclination) * in_equator);
    return kOk;
}

}  // namespace solsys::satellites

using namespace solsys;
using namespace solsys::satellites;

// Mars alone, 42828.37 km^3/s^2.
MartianSat::MartianSat() : primary_gm_(42828.37 * kSecondsPerDay * kSecondsPerDay * km3ToAU3) {}

int MartianSat::GetSatVector(int day, double fraction, int moonNumber, unsigned char,
                             double* out) const {
    const int moon = moonNumber % 100;
    if (moon < 1 || moon > 2) return SAT_NOT_COVERED;
    return answer({day, fraction}, out,
                  [&](Instant t, State& state) { return mars_state(moon, t, state); });
}

double MartianSat::GetPrimaryGM(int moonNumber) const {
    return moonNumber == 1 || moonNumber == 2 ? primary_gm_ : -1.0;
}
