// Phoebe: a series fitted to a numerical integration over 1900-2100, about the barycentre of
// the Saturn system. See data/satellites/saturn_phoebe.csv.
#include <array>
#include <iterator>
#include <string_view>

#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"

namespace solsys::satellites {
namespace {

struct Row {
    std::string_view variable, kind;
    int power, j, m, n;
    double c1, c2;
};
constexpr Row kRows[] = {
#include "saturn_phoebe.inc"
};
constexpr std::size_t kRowCount = std::size(kRows);
static_assert(kRowCount == 102);

// Mean longitude of the satellite, its pericentre and node, mean longitude of the Sun, in the
// frame of the series [rad; rad/day from J2000].
struct Linear {
    double at_epoch, rate;
    [[nodiscard]] constexpr double at(double days) const { return at_epoch + rate * days; }
};
constexpr Linear kLongitude{4.172911896315264e+02, 1.141764606396806e-02};
constexpr Linear kPericentre{1.673273572021578e+00, 1.350040013861232e-05};
constexpr Linear kNode{-1.431998962947166e+00, -1.599607528512413e-05};
constexpr Linear kSun{-8.716928266696543e-01, -5.839814881728960e-04};

constexpr double kGm = gm_in_au(37940585.0, kAuKm);  // of the Saturn system

// The series' axes: J2000 ecliptic with y and z reversed, where the orbit is direct.
constexpr Mat3 kEquatorFromSeries =
    kEquatorFromEcliptic * Mat3{{1, 0, 0}, {0, -1, 0}, {0, 0, -1}};

// Argument j (S - W) + m (L - W) + n (W - N) of each row, worked out at compile time; zero in
// the polynomial rows.
constexpr auto kArguments = [] {
    std::array<Linear, kRowCount> arguments{};
    for (std::size_t k = 0; k < kRowCount; ++k) {
        const Row& row = kRows[k];
        const auto combined = [&](double Linear::*part) {
            return row.j * (kSun.*part - kPericentre.*part) +
                   row.m * (kLongitude.*part - kPericentre.*part) +
                   row.n * (kPericentre.*part - kNode.*part);
        };
        arguments[k] = {combined(&Linear::at_epoch), combined(&Linear::rate)};
    }
    return arguments;
}();

}  // namespace

int phoebe_state(Instant t, State& state) {
    const double days = days_since_j2000(t);
    const double centuries = centuries_since_j2000(t);
    const std::array<double, 4> powers{1, centuries, centuries * centuries,
                                       centuries * centuries * centuries};

    std::array<double, kRowCount> arguments, sines, cosines;
    for (std::size_t k = 0; k < kRowCount; ++k) arguments[k] = kArguments[k].at(days);
    sines_and_cosines(kRowCount, arguments.data(), sines.data(), cosines.data());

    // a and l are sums of c1 cos + c2 sin, z and zeta of (c1 + i c2) exp(i argument).
    double a = 0, l = kLongitude.at(days);
    Phasor z, zeta;
    for (std::size_t k = 0; k < kRowCount; ++k) {
        const Row& row = kRows[k];
        const double factor = powers[static_cast<std::size_t>(row.power)];
        const double c = factor * cosines[k], s = factor * sines[k];
        switch (variable_index(row.variable)) {
            case 0:
                a += row.c1 * c + row.c2 * s;
                break;
            case 1:
                l += row.c1 * c + row.c2 * s;
                break;
            case 2:
                z.c += row.c1 * c - row.c2 * s;
                z.s += row.c1 * s + row.c2 * c;
                break;
            default:
                zeta.c += row.c1 * c - row.c2 * s;
                zeta.s += row.c1 * s + row.c2 * c;
        }
    }
    const SinCos w = sin_cos(kPericentre.at(days));
    const SinCos n = sin_cos(kNode.at(days));

    State in_series;
    const int code = state_of({.a = a,
                               .n = std::sqrt(kGm / (a * a * a)),
                               .l = l,
                               .k = z.c * w.cos - z.s * w.sin,
                               .h = z.c * w.sin + z.s * w.cos,
                               .q = zeta.c * n.cos - zeta.s * n.sin,
                               .p = zeta.c * n.sin + zeta.s * n.cos},
                              in_series);
    if (code == kOk) state = kEquatorFromSeries * in_series;
    return code;
}

}  // namespace solsys::satellites
