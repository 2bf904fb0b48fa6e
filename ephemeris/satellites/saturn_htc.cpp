// Helene, Telesto, Calypso, which librate about the Lagrange points of Dione and Tethys, by the
// theory HTC2.0: Oberti & Vienne 2003, Astron. Astrophys. 397, 353.
//
// Velocities are the derivatives of the positions. The velocity series printed with the theory
// take the third argument to turn by one radian a day, which it does not, and are up to 4 per
// cent away.
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
    int body;
    std::string_view fun;
    int n1, n2, n3, n4;
    double x, y, z;  // au, J2000 ecliptic
};
constexpr Row kRows[] = {
#include "saturn_htc20.inc"
};
static_assert(std::size(kRows) == 47);

// The four arguments of each satellite [rad/day; rad at J2000].
struct Arguments {
    double rate[4], phase[4];
};
constexpr Arguments kArguments[] = {
    {{2.29427177, -0.00802443, 2.29714724, 2.29571726},
     {3.27342548, 1.30770422, 0.77232982, 3.07410251}},
    {{3.32489098, -0.00948045, 3.33170385, 3.32830561},
     {6.24233590, 4.62624497, 0.04769409, 3.24465053}},
    {{-3.32489617, 0.00946761, -3.33170262, 3.32830561},
     {5.41384760, 1.36874776, 5.64157287, 3.25074880}},
};

// The terms of one satellite, three coordinates a row; a sine is a cosine a quarter turn late.
template <int kBody>
struct Table {
    static constexpr std::size_t kRowCount = [] {
        std::size_t count = 0;
        for (const Row& row : kRows) count += row.body == kBody;
        return count;
    }();
    static constexpr auto kTerms = [] {
        std::array<SeriesTerm<1>, 3 * kRowCount> terms{};
        std::size_t k = 0;
        for (const Row& row : kRows) {
            if (row.body != kBody) continue;
            const Arguments& f = kArguments[kBody - 612];
            const auto combined = [&](const double(&v)[4]) {
                return row.n1 * v[0] + row.n2 * v[1] + row.n3 * v[2] + row.n4 * v[3];
            };
            const double phase = combined(f.phase) - (row.fun == "sin" ? kHalfPi : 0);
            const double amplitudes[] = {row.x, row.y, row.z};
            for (int i = 0; i < 3; ++i)
                terms[k++] =
                    forwards(cosine_term(i, 0, amplitudes[i], phase, combined(f.rate)));
        }
        return terms;
    }();
    static constexpr auto kPacked = pack_series<1, kTerms>();
};
constexpr SeriesView kSeries[] = {Table<612>::kPacked.view(), Table<613>::kPacked.view(),
                                  Table<614>::kPacked.view()};

}  // namespace

int htc_state(int moon, Instant t, State& state) {
    const SeriesSum sum = sum_series(kSeries[moon - 12], days_since_j2000(t), true);
    state = kEquatorFromEcliptic * State{{sum.value[0], sum.value[1], sum.value[2]},
                                         {sum.rate[0], sum.rate[1], sum.rate[2]}};
    return kOk;
}

}  // namespace solsys::satellites
