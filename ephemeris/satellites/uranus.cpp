// Miranda to Oberon by the theory GUST86: Laskar & Jacobson 1987, Astron. Astrophys. 188, 212;
// the inner satellites by ellipses; the others by table rows.
#include <iterator>

#include "ephemeris/satellites/precessing_ellipse.h"
#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"
#include "solsys/satellite_theory.h"

namespace solsys::satellites {
namespace {

constexpr double kEpoch = 2444239.5;

// The theory's order: Miranda, Ariel, Umbriel, Titania, Oberon. Mean longitudes [rad, rad/day],
// pericentres and nodes [rad, degrees per year of 365.25 days], as arguments of the series; and
// the mean values of the elements.
struct Constants {
    double n_phase, n_rate, e_phase, e_rate, i_phase, i_rate;
    double n0, l0, l1;
    double gm;  // km^3/s^2
};
constexpr Constants kConstants[5] = {
    {-0.238051, 4.44519055, 0.611392, 20.082, 5.702313, -20.309, 4.44352267, -0.23805158,
     4.44519055, 4.4},
    {3.098046, 2.492952519, 2.408974, 6.217, 0.395757, -6.288, 2.49254257, 3.09804641,
     2.49295252, 86.1},
    {2.285402, 1.516148111, 2.067774, 2.865, 0.589326, -2.836, 1.5159549, 2.28540169,
     1.51614811, 84.0},
    {0.856359, 0.721718509, 0.735131, 2.078, 1.746237, -1.843, 0.72166316, 0.85635879,
     0.72171851, 230.0},
    {-0.915592, 0.46669212, 0.426767, 0.386, 4.206896, -0.259, 0.46658054, -0.9155918,
     0.46669212, 200.0},
};

constexpr double kUranusGm = 5794554.5 - 604.5;  // km^3/s^2: the system less its satellites

// From the theory's frame, the equator of Uranus with its pole given at B1950, to J2000.
constexpr Mat3 kEquatorFromUranus{
    {0.9753205572598290957, 0.06194437810676107434, 0.2119261772583629030},
    {-0.2207428547845518695, 0.2529905336992995280, 0.9419492459363773150},
    {0.004733143558215848563, -0.9654836528287313313, 0.2604206471702025216}};

struct Row {
    int body;
    std::string_view variable;
    double amplitude;
    int n[5], e[5], i[5];
};
constexpr Row kRows[] = {
#include "uranus_gust86.inc"
};
constexpr std::size_t kRowCount = std::size(kRows);
static_assert(kRowCount == 195);

// All arguments are linear in time: phase and frequency of each term, at compile time.
constexpr auto kTable = [] {
    constexpr double kPerYear = kDegree / kDaysPerJulianYear;
    TermTable<kRowCount> table;
    for (std::size_t k = 0; k < kRowCount; ++k) {
        const Row& row = kRows[k];
        table.amplitude[k] = row.amplitude;
        for (int b = 0; b < 5; ++b) {
            const Constants& c = kConstants[b];
            table.phase[k] +=
                row.n[b] * c.n_phase + row.e[b] * c.e_phase + row.i[b] * c.i_phase;
            table.frequency[k] += row.n[b] * c.n_rate + row.e[b] * (c.e_rate * kPerYear) +
                                  row.i[b] * (c.i_rate * kPerYear);
        }
    }
    return table;
}();

// By the number of the moon.
constexpr ElementSeries kSeries[] = {
    series_of(kRows, kTable, 701), series_of(kRows, kTable, 702), series_of(kRows, kTable, 703),
    series_of(kRows, kTable, 704), series_of(kRows, kTable, 705)};

}  // namespace

int gust_state(int moon, Instant t, State& state) {
    const Constants& constants = kConstants[moon % 5];  // Miranda, moon 5, comes first
    const double days = days_since(kEpoch, t);
    const ElementSums sums = sum_series(kSeries[moon - 1], days);

    const double n = constants.n0 + sums.size.c;
    const double gm = gm_in_au(kUranusGm + constants.gm, kUranianAuKm);
    State in_equator;
    const int code = state_of({.a = std::cbrt(gm / (n * n)),
                               .n = n,
                               .l = constants.l0 + constants.l1 * days + sums.longitude.s,
                               .k = sums.z.c,
                               .h = sums.z.s,
                               .q = sums.zeta.c,
                               .p = sums.zeta.s},
                              in_equator);
    if (code == kOk) state = kEquatorFromUranus * in_equator;
    return code;
}

}  // namespace solsys::satellites

using namespace solsys;
using namespace solsys::satellites;

namespace {
constexpr int kSystem = 7;
constexpr int kFirstTableMoon = 16;
constexpr int kLastMoon = 27;
}  // namespace

// Uranus alone, 5793964 km^3/s^2.
UraSat::UraSat() : primary_gm_(5793964.0 * kSecondsPerDay * kSecondsPerDay * km3ToAU3) {}

int UraSat::GetSatVector(int day, double fraction, int moonNumber, unsigned char velocityWanted,
                         double* out) const {
    const int moon = moonNumber % 100;
    if (moon < 1 || moon > kLastMoon) return SAT_NOT_COVERED;
    if (moon >= kFirstTableMoon)
        return EvalMeanElements(kSystem, day, fraction, moon - kFirstTableMoon, velocityWanted,
                                out);
    return answer({day, fraction}, out, [&](Instant t, State& state) {
        return moon <= 5 ? gust_state(moon, t, state)
                         : ellipse_state(*find_ellipse(kSystem * 100 + moon), t, state);
    });
}

double UraSat::GetPrimaryGM(int moonNumber) const {
    if (moonNumber < 1) return -1.0;
    if (moonNumber < kFirstTableMoon) return primary_gm_;
    return MeanElementsGM(kSystem, moonNumber - kFirstTableMoon);
}
