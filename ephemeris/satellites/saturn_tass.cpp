// Mimas to Iapetus by the theory TASS 1.7: Vienne & Duriez 1995, Astron. Astrophys. 297, 588;
// Hyperion: Duriez & Vienne 1997, Astron. Astrophys. 324, 366.
#include <algorithm>
#include <array>
#include <iterator>

#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"

namespace solsys::satellites {
namespace {

// Mimas, Enceladus, Tethys, Dione, Rhea, Titan, Iapetus: the satellites whose long-period
// inequalities enter the arguments of all.
constexpr std::size_t kSeven = 7;
using Multiples = std::array<int, kSeven>;

struct Row {
    int body;
    std::string_view variable;
    double amplitude, phase, frequency;  // rad, rad/year
    int m[kSeven];
};
constexpr Row kRows[] = {
#include "saturn_tass17.inc"
};
static_assert(std::size(kRows) == 1079);
constexpr auto kTable = by_columns(kRows);

constexpr SeriesRow kHyperionRows[] = {
#include "saturn_tass17_hyperion.inc"
};
static_assert(std::size(kHyperionRows) == 595);
constexpr auto kHyperionTable = by_columns(kHyperionRows);
constexpr ElementSeries kHyperion = series_of(kHyperionRows, kHyperionTable, 607);

constexpr std::size_t index_of(int body) {
    return body == 608 ? kSeven - 1 : static_cast<std::size_t>(body - 601);
}

// The long-period parts dl of the mean longitudes, all satellites in one run of terms.
struct LongPeriodTerms {
    static constexpr std::size_t kCount = 114;
    TermTable<kCount> terms;
    std::array<std::size_t, kSeven + 1> begin{};
};
constexpr LongPeriodTerms kLongPeriod = [] {
    LongPeriodTerms table;
    std::size_t n = 0;
    for (const Row& row : kRows) {
        if (row.variable != "dl") continue;
        table.terms.amplitude[n] = row.amplitude;
        table.terms.phase[n] = row.phase;
        table.terms.frequency[n] = row.frequency;
        ++n;
        for (std::size_t j = index_of(row.body) + 1; j <= kSeven; ++j) table.begin[j] = n;
    }
    return table;
}();
static_assert(kLongPeriod.begin[kSeven] == LongPeriodTerms::kCount);

// The same few combinations of the dl come back in many terms: each is worked out once.
struct Combinations {
    static constexpr std::size_t kMost = 64;
    std::array<std::array<double, kSeven>, kMost> multiples{};
    std::array<unsigned char, kMaxTerms> of_term{};
    std::size_t count = 0;
};
consteval Combinations combinations_of(int body) {
    Combinations result;
    std::size_t term = 0;
    for (const Row& row : kRows) {
        if (row.body != body || row.variable == "dl") continue;
        std::size_t known = 0;
        for (; known < result.count; ++known)
            if (std::equal(row.m, row.m + kSeven, result.multiples[known].begin())) break;
        if (known == result.count)
            std::copy(row.m, row.m + kSeven, result.multiples[result.count++].begin());
        result.of_term[term++] = static_cast<unsigned char>(known);
    }
    return result;
}

struct Satellite {
    ElementSeries series;
    Combinations combinations;
    double inverse_mass;  // Saturn / satellite
    double am;            // mean motion that goes with the size of the orbit [rad/day]
    double l0, n;         // mean longitude [rad, rad/year]
};
consteval Satellite satellite(int body, double inverse_mass, double am, double l0, double n) {
    return {
        series_of(kRows, kTable, body, "dl"), combinations_of(body), inverse_mass, am, l0, n};
}
constexpr Satellite kSatellites[kSeven] = {
    satellite(601, 0.1577287066246E+08, 0.6667061728782E+01, 0.1822484926062486E+00,
              0.2435144296437475E+04),
    satellite(602, 0.6666666666667E+07, 0.4585536751534E+01, 0.7997716657090215E+00,
              0.1674867298497696E+04),
    satellite(603, 0.9433962264151E+06, 0.3328306445055E+01, 0.5239109365414447E+01,
              0.1215663929056177E+04),
    satellite(604, 0.5094243504840E+06, 0.2295717646433E+01, 0.1994592585279060E+01,
              0.8385108703595477E+03),
    satellite(605, 0.2314814814815E+06, 0.1390853715957E+01, 0.6221340947932125E+01,
              0.5080093197533360E+03),
    satellite(606, 0.4225863977890E+04, 0.3940425676910E+00, 0.4936792168079816E+01,
              0.1439240478491399E+03),
    satellite(608, 0.3225806451613E+06, 0.7920197763193E-01, 0.1661250302251527E+00,
              0.2892852233006167E+02),
};
constexpr double kEpoch = 2444240.0;  // TASS counts years from here, Hyperion days from J2000

// Hyperion: relative correction of the mean motion, mean longitude, mean motion, mass.
constexpr double kHyperionP0 = -0.001574686065780747;
constexpr double kHyperionL0 = 4.348683610500939;              // rad
constexpr double kHyperionLongitudeRate = 0.2953088138695055;  // rad/day
constexpr double kHyperionAm = 0.2953088138695;                // rad/day
constexpr double kHyperionInverseMass = 33333333.33333;

// Saturn's mass is 1/3498.790 of the Sun's.
constexpr double kSaturnGm = 0.01720209895 * 0.01720209895 / 3498.790;

// From Saturn's equator, given by its node and inclination on the J2000 ecliptic.
constexpr Mat3 kEquatorFromSaturn =
    kEquatorFromEcliptic * turn_z(169.5291 * kDegree) * turn_x(28.0512 * kDegree);

std::array<double, kSeven> long_period_inequalities(double years) {
    constexpr std::size_t n = LongPeriodTerms::kCount;
    const auto& terms = kLongPeriod.terms;
    std::array<double, n> arguments, sines, cosines;
    for (std::size_t k = 0; k < n; ++k)
        arguments[k] = terms.phase[k] + terms.frequency[k] * years;
    sines_and_cosines(n, arguments.data(), sines.data(), cosines.data());

    std::array<double, kSeven> dl{};
    for (std::size_t j = 0; j < kSeven; ++j)
        for (std::size_t k = kLongPeriod.begin[j]; k < kLongPeriod.begin[j + 1]; ++k)
            dl[j] += terms.amplitude[k] * sines[k];
    return dl;
}

// The last steps are the same for all. p is the relative correction of the mean motion.
int state_from_sums(double inverse_mass, double am, double p, double l, const ElementSums& sums,
                    State& state) {
    const double n = am * (1 + p);
    const double gm = kSaturnGm * (1 + 1 / inverse_mass);
    State in_equator;
    const int code = state_of({.a = std::cbrt(gm / (n * n)),
                               .n = n,
                               .l = l,
                               .k = sums.z.c,
                               .h = sums.z.s,
                               .q = sums.zeta.c,
                               .p = sums.zeta.s},
                              in_equator);
    if (code == kOk) state = kEquatorFromSaturn * in_equator;
    return code;
}

int hyperion_state(Instant t, State& state) {
    const double days = days_since_j2000(t);
    const ElementSums sums = sum_series(kHyperion, days);
    const double l = kHyperionL0 + kHyperionLongitudeRate * days + sums.longitude.s;
    return state_from_sums(kHyperionInverseMass, kHyperionAm, kHyperionP0 + sums.size.c, l,
                           sums, state);
}

}  // namespace

int tass_state(int moon, Instant t, State& state) {
    if (moon == 7) return hyperion_state(t, state);
    const std::size_t index = index_of(600 + moon);
    const Satellite& satellite = kSatellites[index];
    const double years = days_since(kEpoch, t) / kDaysPerJulianYear;
    const std::array<double, kSeven> dl = long_period_inequalities(years);

    // Argument of each term: phase + frequency T + sum of m_j dl_j.
    const Combinations& combinations = satellite.combinations;
    std::array<double, Combinations::kMost> shifts;
    for (std::size_t c = 0; c < combinations.count; ++c) {
        shifts[c] = 0;
        for (std::size_t j = 0; j < kSeven; ++j)
            shifts[c] += combinations.multiples[c][j] * dl[j];
    }
    const ElementSeries& series = satellite.series;
    const std::size_t n = series.size();
    std::array<double, kMaxTerms> arguments;
    for (std::size_t k = 0; k < n; ++k)
        arguments[k] =
            series.phase[k] + series.frequency[k] * years + shifts[combinations.of_term[k]];

    const ElementSums sums = sum_series(series, std::span(arguments).first(n));
    const double l = satellite.l0 + satellite.n * years + dl[index] + sums.longitude.s;
    return state_from_sums(satellite.inverse_mass, satellite.am, sums.size.c, l, sums, state);
}

}  // namespace solsys::satellites
