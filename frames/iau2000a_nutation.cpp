#include "frames/iau2000a_nutation.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "frames/fundamental_arguments.h"

namespace solsys {
namespace {

constexpr double kTenthMicroarcsec = kArcsec * 1e-7;  // unit of both tables [rad]

// e^(i k a) as {cos, sin}: two numbers that the processor works on at once.
using Pair = double __attribute__((vector_size(16)));

// What a phasor is multiplied by: re {cos, cos}, im {-sin, sin}.
struct Factor {
    Pair re, im;
};
inline Factor factor_of(Pair a) { return {Pair{a[0], a[0]}, Pair{-a[1], a[1]}}; }
inline Pair operator*(Pair a, const Factor& b) { return a * b.re + Pair{a[1], a[0]} * b.im; }
inline Pair phasor_of(const Factor& f) { return Pair{f.re[0], f.im[1]}; }

struct LunisolarRow {
    int term, n_l, n_lp, n_f, n_d, n_om;
    double psi_sin, psi_sin_t, psi_cos, eps_cos, eps_cos_t, eps_sin, period_days, weight;
};
constexpr LunisolarRow kLunisolarRows[] = {
#include "nutation_iau2000a_lunisolar.inc"
};
struct PlanetaryRow {
    int term;
    int n[13];  // l F D Omega, Mercury to Neptune, p_A
    double psi_sin, psi_cos, eps_sin, eps_cos, period_days, weight;
};
constexpr PlanetaryRow kPlanetaryRows[] = {
#include "nutation_iau2000a_planetary.inc"
};
constexpr std::size_t kLunisolarCount = std::size(kLunisolarRows);
constexpr std::size_t kPlanetaryCount = std::size(kPlanetaryRows);
static_assert(kLunisolarCount == 678 && kPlanetaryCount == 687);

// Multiples of the arguments stand in one table of phasors, each argument's from -most to +most
// around its own middle.
constexpr FundamentalArgument kPlanetaryArguments[13] = {kArgL,  kArgF,  kArgD,  kArgOm, kArgMe,
                                                         kArgVe, kArgE,  kArgMa, kArgJ,  kArgSa,
                                                         kArgU,  kArgNe, kArgPa};
constexpr int kMost[kArgumentCount] = {5, 3, 4, 6, 4, 1, 21, 21, 21, 10, 10, 3, 2, 2};

constexpr std::array<int, kArgumentCount + 1> kOffsets = [] {
    std::array<int, kArgumentCount + 1> offsets{};
    for (std::size_t i = 0; i < kArgumentCount; ++i)
        offsets[i + 1] = offsets[i] + 2 * kMost[i] + 1;
    return offsets;
}();
constexpr int index_of(int argument, int multiple) {
    return kOffsets[argument] + kMost[argument] + multiple;
}
static_assert(kOffsets.back() < 256, "an index fits in a byte");

using Multiples = std::array<Factor, kOffsets.back()>;

// Two products per term: l with l', F with Omega are multiplied beforehand.
constexpr int kLSpan = 2 * kMost[kArgL] + 1, kLpSpan = 2 * kMost[kArgLp] + 1;
constexpr int kFSpan = 2 * kMost[kArgF] + 1, kOmSpan = kMost[kArgOm] + 1;
struct Weights {
    double psi_cos, psi_sin, eps_cos, eps_sin;
};
struct LunisolarTerm {
    std::uint8_t l_lp, f_om, d;
    Weights weights;
};
constexpr auto kLunisolar = [] {
    std::array<LunisolarTerm, kLunisolarCount> terms{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const LunisolarRow& r = kLunisolarRows[i];
        terms[i] = {static_cast<std::uint8_t>((r.n_l + kMost[kArgL]) * kLpSpan + r.n_lp +
                                              kMost[kArgLp]),
                    static_cast<std::uint8_t>((r.n_f + kMost[kArgF]) * kOmSpan + r.n_om),
                    static_cast<std::uint8_t>(index_of(kArgD, r.n_d)),
                    {r.psi_cos, r.psi_sin, r.eps_cos, r.eps_sin}};
    }
    return terms;
}();

// The few terms that grow with time, by their place among all.
struct SecularTerm {
    std::size_t place;
    double psi_sin_t, eps_cos_t;
};
constexpr bool is_secular(const LunisolarRow& r) {
    return r.psi_sin_t != 0 || r.eps_cos_t != 0;
}
constexpr std::size_t kSecularCount = [] {
    std::size_t count = 0;
    for (const LunisolarRow& r : kLunisolarRows) count += is_secular(r);
    return count;
}();
constexpr auto kSecular = [] {
    std::array<SecularTerm, kSecularCount> terms{};
    std::size_t used = 0;
    for (std::size_t i = 0; i < kLunisolarCount; ++i) {
        const LunisolarRow& r = kLunisolarRows[i];
        if (is_secular(r)) terms.at(used++) = {i, r.psi_sin_t, r.eps_cos_t};
    }
    return terms;
}();

// At most six arguments take part in a planetary term. Terms with as many stand together, so
// that no product is by 1.
constexpr std::size_t kFactors = 6;
struct PlanetaryTerm {
    std::array<std::uint8_t, kFactors> factor;
    std::uint8_t factors;
    Weights weights;
};
constexpr auto kPlanetary = [] {
    std::array<PlanetaryTerm, kPlanetaryCount> terms{};
    std::size_t next = 0;
    for (std::size_t wanted = 1; wanted <= kFactors; ++wanted) {
        for (const PlanetaryRow& r : kPlanetaryRows) {
            PlanetaryTerm t{{}, 0, {r.psi_cos, r.psi_sin, r.eps_cos, r.eps_sin}};
            for (std::size_t a = 0; a < std::size(r.n); ++a) {
                if (r.n[a] == 0) continue;
                t.factor.at(t.factors++) =
                    static_cast<std::uint8_t>(index_of(kPlanetaryArguments[a], r.n[a]));
            }
            if (t.factors == wanted) terms.at(next++) = t;
        }
    }
    return terms;
}();
static_assert(kPlanetary.back().factors > 0, "every term has a place");
// Where the terms with so many factors begin.
constexpr auto kPlanetaryBegin = [] {
    std::array<std::size_t, kFactors + 2> begin{};
    for (const PlanetaryTerm& t : kPlanetary)
        for (std::size_t n = t.factors + 1U; n < begin.size(); ++n) ++begin[n];
    return begin;
}();

// All multiples of the arguments of a set, by repeated multiplication.
Multiples multiples(ArgumentSet set, double T) {
    const auto angles = fundamental_arguments(set, T);
    Multiples p{};
    for (int a = 0; a < kArgumentCount; ++a) {
        const double angle = angles[static_cast<std::size_t>(a)];
        const int middle = index_of(a, 0);
        const Factor one = factor_of(Pair{std::cos(angle), std::sin(angle)});
        Pair power{1, 0};
        p[middle] = factor_of(power);
        for (int k = 1; k <= kMost[a]; ++k) {
            power = power * one;
            p[middle + k] = factor_of(power);
            p[middle - k] = factor_of(Pair{power[0], -power[1]});
        }
    }
    return p;
}

// Sums of cosines and of sines, apart until the end.
struct Sums {
    Pair psi{0, 0}, epsilon{0, 0};

    void add(Pair a, const Weights& w) {
        psi += a * Pair{w.psi_cos, w.psi_sin};
        epsilon += a * Pair{w.eps_cos, w.eps_sin};
    }
    [[nodiscard]] NutationOffsets total() const {
        return {psi[0] + psi[1], epsilon[0] + epsilon[1]};
    }
};

// Both sums run from the smallest terms to the largest, that is from the end.
NutationOffsets lunisolar(double T) {
    const Multiples p = multiples(ArgumentSet::kLunisolar, T);
    std::array<Pair, kLSpan * kLpSpan> l_lp;
    for (int l = 0; l < kLSpan; ++l) {
        for (int k = 0; k < kLpSpan; ++k)
            l_lp[l * kLpSpan + k] = phasor_of(p[kOffsets[kArgL] + l]) * p[kOffsets[kArgLp] + k];
    }
    std::array<Factor, kFSpan * kOmSpan> f_om;
    for (int f = 0; f < kFSpan; ++f) {
        for (int k = 0; k < kOmSpan; ++k)
            f_om[f * kOmSpan + k] =
                factor_of(phasor_of(p[kOffsets[kArgF] + f]) * p[index_of(kArgOm, k)]);
    }
    const auto phasor = [&](const LunisolarTerm& t) {
        return l_lp[t.l_lp] * f_om[t.f_om] * p[t.d];
    };
    Sums sums;
    for (std::size_t i = kLunisolarCount; i-- > 0;)
        sums.add(phasor(kLunisolar[i]), kLunisolar[i].weights);
    NutationOffsets rate{0, 0};
    for (std::size_t i = kSecularCount; i-- > 0;) {
        const Pair a = phasor(kLunisolar[kSecular[i].place]);
        rate.d_psi += kSecular[i].psi_sin_t * a[1];
        rate.d_epsilon += kSecular[i].eps_cos_t * a[0];
    }
    const NutationOffsets total = sums.total();
    return {total.d_psi + rate.d_psi * T, total.d_epsilon + rate.d_epsilon * T};
}

template <std::size_t N>
void add_planetary(const Multiples& p, Sums& sums) {
    for (std::size_t i = kPlanetaryBegin[N + 1]; i-- > kPlanetaryBegin[N];) {
        const PlanetaryTerm& t = kPlanetary[i];
        Pair a = phasor_of(p[t.factor[0]]);
        for (std::size_t k = 1; k < N; ++k) a = a * p[t.factor[k]];
        sums.add(a, t.weights);
    }
}

NutationOffsets planetary(double T) {
    const Multiples p = multiples(ArgumentSet::kPlanetary, T);
    Sums sums;
    add_planetary<6>(p, sums);
    add_planetary<5>(p, sums);
    add_planetary<4>(p, sums);
    add_planetary<3>(p, sums);
    add_planetary<2>(p, sums);
    add_planetary<1>(p, sums);
    return sums.total();
}

}  // namespace

NutationOffsets nutation_iau2000a(Instant tt) {
    const double T = centuries_since_j2000(tt);
    const NutationOffsets moon_and_sun = lunisolar(T);
    const NutationOffsets planets = planetary(T);
    return {kTenthMicroarcsec * (moon_and_sun.d_psi + planets.d_psi),
            kTenthMicroarcsec * (moon_and_sun.d_epsilon + planets.d_epsilon)};
}

NutationOffsets nutation_iau2006(Instant tt) {
    const NutationOffsets n = nutation_iau2000a(tt);
    const double j2_rate = -2.7774e-6 * centuries_since_j2000(tt);
    return {n.d_psi * (1 + 0.4697e-6 + j2_rate), n.d_epsilon * (1 + j2_rate)};
}

}  // namespace solsys
