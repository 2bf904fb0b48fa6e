// Helene, Telesto, Calypso, which librate about the Lagrange points of Dione and Tethys, by the
// theory HTC2.0: Oberti & Vienne 2003, Astron. Astrophys. 397, 353.
//
// Velocities are the derivatives of the positions. The velocity series printed with the theory
// take the third argument to turn by one radian a day, which it does not, and are up to 4 per
// cent away.
#include <array>
#include <iterator>
#include <string_view>

#include "ephemeris/satellites/series.h"
#include "ephemeris/satellites/theories.h"

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

// amplitude times the cosine of (phase + frequency t); a sine is a cosine a quarter turn late.
struct Term {
    Vec3 amplitude;
    double phase, frequency;
};
constexpr auto kTerms = [] {
    std::array<Term, std::size(kRows)> terms{};
    for (std::size_t k = 0; k < terms.size(); ++k) {
        const Row& row = kRows[k];
        const Arguments& f = kArguments[row.body - 612];
        const auto combined = [&](const double(&v)[4]) {
            return row.n1 * v[0] + row.n2 * v[1] + row.n3 * v[2] + row.n4 * v[3];
        };
        terms[k] = {{row.x, row.y, row.z},
                    combined(f.phase) - (row.fun == "sin" ? kHalfPi : 0),
                    combined(f.rate)};
    }
    return terms;
}();

}  // namespace

int htc_state(int moon, Instant t, State& state) {
    const double days = days_since_j2000(t);
    State ecliptic{};
    for (std::size_t k = 0; k < kTerms.size(); ++k) {
        if (kRows[k].body != 600 + moon) continue;
        const Term& term = kTerms[k];
        const SinCos value = sin_cos(term.phase + term.frequency * days);
        ecliptic.r += value.cos * term.amplitude;
        ecliptic.v += (-term.frequency * value.sin) * term.amplitude;
    }
    state = kEquatorFromEcliptic * ecliptic;
    return kOk;
}

}  // namespace solsys::satellites
