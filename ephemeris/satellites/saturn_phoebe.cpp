// Phoebe: a series fitted to a numerical integration over 1900-2100, about the barycentre of
// the Saturn system. See data/satellites/saturn_phoebe.csv.
#include <array>
#include <iterator>
#include <string_view>

#include "ephemeris/analytic/series_sum.h"
#include "ephemeris/analytic/series_table.h"
#include "ephemeris/satellites/theories.h"
#include "ephemeris/satellites/turns.h"

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

// The row t^power (p cos argument + q sin argument) of a coordinate, t in centuries; argument
// j (S - W) + m (L - W) + n (W - N), zero in the polynomial rows.
constexpr SeriesTerm<1> term_of(const Row& row, int coordinate, double p, double q) {
    const auto combined = [&](double Linear::*part) {
        return row.j * (kSun.*part - kPericentre.*part) +
               row.m * (kLongitude.*part - kPericentre.*part) +
               row.n * (kPericentre.*part - kNode.*part);
    };
    return forwards<1>({coordinate,
                        row.power,
                        p,
                        q,
                        {combined(&Linear::at_epoch) / kTwoPi,
                         combined(&Linear::rate) * kDaysPerJulianCentury / kTwoPi}});
}

constexpr std::size_t rows_of(std::string_view variable) {
    std::size_t count = 0;
    for (const Row& row : kRows) count += row.variable == variable;
    return count;
}

// c1 cos + c2 sin: the semi-major axis [au] and the periodic part of the mean longitude [rad].
constexpr auto kInPlaneTerms = [] {
    std::array<SeriesTerm<1>, rows_of("a") + rows_of("l")> terms{};
    std::size_t k = 0;
    for (const Row& row : kRows)
        if (row.variable == "a" || row.variable == "l")
            terms[k++] = term_of(row, row.variable == "l" ? 1 : 0, row.c1, row.c2);
    return terms;
}();

// Real and imaginary part of (c1 + i c2) exp(i argument).
template <bool kOfNode>
constexpr auto kComplexTerms = [] {
    constexpr std::string_view kVariable = kOfNode ? "zeta" : "z";
    std::array<SeriesTerm<1>, 2 * rows_of(kVariable)> terms{};
    std::size_t k = 0;
    for (const Row& row : kRows) {
        if (row.variable != kVariable) continue;
        terms[k++] = term_of(row, 0, row.c1, -row.c2);
        terms[k++] = term_of(row, 1, row.c2, row.c1);
    }
    return terms;
}();

constexpr auto kPackedInPlane = pack_series<1, kInPlaneTerms>();
constexpr auto kPackedZ = pack_series<1, kComplexTerms<false>>();
constexpr auto kPackedZeta = pack_series<1, kComplexTerms<true>>();

std::array<double, 2> two_sums(const SeriesView& series, double centuries) {
    const SeriesSum sum = sum_series(series, centuries, false);
    return {sum.value[0], sum.value[1]};
}

}  // namespace

int phoebe_state(Instant t, State& state) {
    const double days = days_since_j2000(t);
    const double t_cy = centuries_since_j2000(t);
    const auto [a, periodic] = two_sums(kPackedInPlane.view(), t_cy);
    const auto [z_re, z_im] = two_sums(kPackedZ.view(), t_cy);
    const auto [zeta_re, zeta_im] = two_sums(kPackedZeta.view(), t_cy);
    const SinCos w = sin_cos(kPericentre.at(days));
    const SinCos n = sin_cos(kNode.at(days));

    State in_series;
    const int code = state_of({.a = a,
                               .n = std::sqrt(kGm / (a * a * a)),
                               .l = kLongitude.at(days) + periodic,
                               .k = z_re * w.cos - z_im * w.sin,
                               .h = z_re * w.sin + z_im * w.cos,
                               .q = zeta_re * n.cos - zeta_im * n.sin,
                               .p = zeta_re * n.sin + zeta_im * n.cos},
                              in_series);
    if (code == kOk) state = kEquatorFromSeries * in_series;
    return code;
}

}  // namespace solsys::satellites
