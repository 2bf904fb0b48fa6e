// IAU 1980 theory of nutation (Seidelmann 1982, Celest. Mech. 27, 79).
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "core/sin_cos.h"
#include "frames/nutation.h"
#include "solsys/earth_orientation.h"

namespace solsys {
namespace {

constexpr double kTenthMilliarcsec = 4.84813681109536e-10;  // rad

struct Term {
    int multiple[5];  // of l, l', F, D, Omega
    double psi_sin, psi_sin_t, eps_cos, eps_cos_t;
};
struct Row {
    int n_l, n_lp, n_f, n_d, n_om;
    double psi_sin, psi_sin_t, eps_cos, eps_cos_t;
};
constexpr Row kRows[] = {
#include "nutation_iau1980.inc"
};
constexpr std::size_t kTermCount = std::size(kRows);
static_assert(kTermCount == 106);
constexpr auto kTerms = [] {
    std::array<Term, kTermCount> terms{};
    for (std::size_t i = 0; i < kTermCount; ++i) {
        const Row& r = kRows[i];
        terms[i] = {{r.n_l, r.n_lp, r.n_f, r.n_d, r.n_om},
                    r.psi_sin,
                    r.psi_sin_t,
                    r.eps_cos,
                    r.eps_cos_t};
    }
    return terms;
}();

// l, l', F, D, Omega [rad]: powers of Julian centuries, arcseconds.
std::array<double, 5> delaunay_arguments(double T) {
    constexpr double c[5][4] = {{485866.733, 1717915922.633, 31.31, 0.064},
                                {1287099.804, 129596581.224, -0.577, -0.012},
                                {335778.877, 1739527263.137, -13.257, 0.011},
                                {1072261.307, 1602961601.328, -6.891, 0.019},
                                {450160.28, -6962890.539, 7.455, 0.008}};
    constexpr double kTurn = 1296000;  // arcsec
    std::array<double, 5> arguments{};
    for (std::size_t i = 0; i < 5; ++i) {
        const double arcsec = c[i][0] + T * (c[i][1] + T * (c[i][2] + T * c[i][3]));
        // Whole turns leave before the conversion, exactly.
        arguments[i] = (arcsec - kTurn * std::trunc(arcsec / kTurn)) * kArcsec;
    }
    return arguments;
}

double mean_obliquity(double T) {
    return (84381.448 + T * (-46.815 + T * (-0.00059 + T * 0.001813))) * kArcsec;
}

NutationAngles angles_of(double T, double psi, double eps) {
    return {mean_obliquity(T), psi * kTenthMilliarcsec, eps * kTenthMilliarcsec};
}

constexpr int kLargestMultiple = [] {
    int largest = 0;
    for (const Term& term : kTerms)
        for (const int n : term.multiple) largest = std::max(largest, n < 0 ? -n : n);
    return largest;
}();

// Sine and cosine of n a for n = -largest .. largest.
class Multiples {
  public:
    explicit Multiples(double a) {
        const SinCos first = library_sin_cos(a);
        SinCos multiple{0, 1};
        for (int n = 0; n <= kLargestMultiple; ++n) {
            at(n) = multiple;
            at(-n) = -multiple;
            multiple = multiple + first;
        }
    }
    SinCos operator[](int n) const {
        return phases_[static_cast<unsigned>(kLargestMultiple + n)];
    }

  private:
    SinCos& at(int n) { return phases_[static_cast<unsigned>(kLargestMultiple + n)]; }
    std::array<SinCos, 2 * kLargestMultiple + 1> phases_;
};

// The distinct combinations of some of the arguments that occur in the series, and which of
// them each term has.
template <std::size_t N>
struct Combinations {
    std::array<std::array<int, N>, kTermCount> multiples{};
    std::size_t count = 0;
    std::array<std::uint8_t, kTermCount> of_term{};
};
template <std::size_t... Argument>
constexpr auto combinations_of() {
    Combinations<sizeof...(Argument)> all;
    for (std::size_t term = 0; term < kTermCount; ++term) {
        const std::array<int, sizeof...(Argument)> wanted{kTerms[term].multiple[Argument]...};
        std::size_t i = 0;
        while (i < all.count && all.multiples[i] != wanted) ++i;
        if (i == all.count) all.multiples[all.count++] = wanted;
        all.of_term[term] = static_cast<std::uint8_t>(i);
    }
    return all;
}
constexpr auto kAnomalies = combinations_of<0, 1>();  // of l and l'
constexpr auto kNodal = combinations_of<2, 3, 4>();   // of F, D and Omega
static_assert(kAnomalies.count == 14 && kNodal.count == 29);

}  // namespace

NutationAngles nutation_iau1980(Instant t) {
    const double T = centuries_since_j2000(t);
    const auto arguments = delaunay_arguments(T);
    double psi = 0;
    double eps = 0;
    // The leading term last, so that the small ones are not lost in it.
    for (auto term = kTerms.rbegin(); term != kTerms.rend(); ++term) {
        double argument = 0;
        for (std::size_t i = 0; i < 5; ++i) argument += term->multiple[i] * arguments[i];
        psi += (term->psi_sin + term->psi_sin_t * T) * std::sin(argument);
        eps += (term->eps_cos + term->eps_cos_t * T) * std::cos(argument);
    }
    return angles_of(T, psi, eps);
}

NutationAngles nutation_iau1980_by_recurrence(Instant t) {
    const double T = centuries_since_j2000(t);
    const auto arguments = delaunay_arguments(T);
    const Multiples l(arguments[0]);
    const Multiples lp(arguments[1]);
    const Multiples F(arguments[2]);
    const Multiples D(arguments[3]);
    const Multiples Om(arguments[4]);

    std::array<SinCos, kAnomalies.count> anomalies;
    for (std::size_t i = 0; i < anomalies.size(); ++i) {
        const auto& n = kAnomalies.multiples[i];
        anomalies[i] = l[n[0]] + lp[n[1]];
    }
    std::array<SinCos, kNodal.count> nodal;
    for (std::size_t i = 0; i < nodal.size(); ++i) {
        const auto& n = kNodal.multiples[i];
        nodal[i] = F[n[0]] + D[n[1]] + Om[n[2]];
    }

    double psi = 0;
    double eps = 0;
    for (std::size_t i = kTermCount; i-- > 0;) {
        const SinCos argument = anomalies[kAnomalies.of_term[i]] + nodal[kNodal.of_term[i]];
        psi += (kTerms[i].psi_sin + kTerms[i].psi_sin_t * T) * argument.sin;
        eps += (kTerms[i].eps_cos + kTerms[i].eps_cos_t * T) * argument.cos;
    }
    return angles_of(T, psi, eps);
}

}  // namespace solsys

void NutationSeidelman(int day, double fraction, double& obliquity, double& d_psi,
                       double& d_epsilon) {
    const auto angles = solsys::nutation_iau1980({day, fraction});
    obliquity = angles.obliquity;
    d_psi = angles.d_psi;
    d_epsilon = angles.d_epsilon;
}

void NutationSeidelmanBest(int day, double fraction, double& obliquity, double& d_psi,
                           double& d_epsilon) {
    const auto angles = solsys::nutation_iau1980_by_recurrence({day, fraction});
    obliquity = angles.obliquity;
    d_psi = angles.d_psi;
    d_epsilon = angles.d_epsilon;
}
