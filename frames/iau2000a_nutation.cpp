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

// e^(i k a), as plain numbers: the product of two needs no care for infinities.
struct Phasor {
    double cos, sin;
};
constexpr Phasor operator*(Phasor a, Phasor b) {
    return {a.cos * b.cos - a.sin * b.sin, a.sin * b.cos + a.cos * b.sin};
}

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
constexpr int kNoFactor = index_of(kArgL, 0);  // 1
static_assert(kOffsets.back() < 256, "an index fits in a byte");

using Phasors = std::array<Phasor, kOffsets.back()>;

// Two products per term: l with l', F with Omega are multiplied beforehand.
constexpr int kLSpan = 2 * kMost[kArgL] + 1, kLpSpan = 2 * kMost[kArgLp] + 1;
constexpr int kFSpan = 2 * kMost[kArgF] + 1, kOmSpan = kMost[kArgOm] + 1;
struct LunisolarTerm {
    std::uint8_t l_lp, f_om, d;
    double psi_sin, psi_sin_t, psi_cos, eps_cos, eps_cos_t, eps_sin;
};
constexpr auto kLunisolar = [] {
    std::array<LunisolarTerm, kLunisolarCount> terms{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const LunisolarRow& r = kLunisolarRows[i];
        terms[i] = {static_cast<std::uint8_t>((r.n_l + kMost[kArgL]) * kLpSpan + r.n_lp +
                                              kMost[kArgLp]),
                    static_cast<std::uint8_t>((r.n_f + kMost[kArgF]) * kOmSpan + r.n_om),
                    static_cast<std::uint8_t>(index_of(kArgD, r.n_d)),
                    r.psi_sin,
                    r.psi_sin_t,
                    r.psi_cos,
                    r.eps_cos,
                    r.eps_cos_t,
                    r.eps_sin};
    }
    return terms;
}();

// At most six arguments take part in a planetary term; the places left over multiply by 1.
constexpr std::size_t kFactors = 6;
struct PlanetaryTerm {
    std::array<std::uint8_t, kFactors> factor;
    double psi_sin, psi_cos, eps_sin, eps_cos;
};
constexpr auto kPlanetary = [] {
    std::array<PlanetaryTerm, kPlanetaryCount> terms{};
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const PlanetaryRow& r = kPlanetaryRows[i];
        terms[i] = {{}, r.psi_sin, r.psi_cos, r.eps_sin, r.eps_cos};
        terms[i].factor.fill(static_cast<std::uint8_t>(kNoFactor));
        std::size_t used = 0;
        for (std::size_t a = 0; a < std::size(r.n); ++a) {
            if (r.n[a] == 0) continue;
            terms[i].factor.at(used++) =
                static_cast<std::uint8_t>(index_of(kPlanetaryArguments[a], r.n[a]));
        }
    }
    return terms;
}();

// All multiples of the arguments of a set, by repeated multiplication.
Phasors multiples(ArgumentSet set, double T) {
    const auto angles = fundamental_arguments(set, T);
    Phasors p{};
    for (int a = 0; a < kArgumentCount; ++a) {
        const std::size_t i = static_cast<std::size_t>(a);
        const int middle = index_of(a, 0);
        const Phasor one{std::cos(angles[i]), std::sin(angles[i])};
        p[middle] = {1, 0};
        for (int k = 1; k <= kMost[a]; ++k) {
            p[middle + k] = p[middle + k - 1] * one;
            p[middle - k] = {p[middle + k].cos, -p[middle + k].sin};
        }
    }
    return p;
}

// Both sums run from the smallest terms to the largest, that is from the end.
NutationOffsets lunisolar(double T) {
    const Phasors p = multiples(ArgumentSet::kLunisolar, T);
    std::array<Phasor, kLSpan * kLpSpan> l_lp;
    for (int l = 0; l < kLSpan; ++l) {
        for (int k = 0; k < kLpSpan; ++k)
            l_lp[l * kLpSpan + k] = p[kOffsets[kArgL] + l] * p[kOffsets[kArgLp] + k];
    }
    std::array<Phasor, kFSpan * kOmSpan> f_om;
    for (int f = 0; f < kFSpan; ++f) {
        for (int k = 0; k < kOmSpan; ++k)
            f_om[f * kOmSpan + k] = p[kOffsets[kArgF] + f] * p[index_of(kArgOm, k)];
    }
    double psi = 0, epsilon = 0;
    for (std::size_t i = kLunisolarCount; i-- > 0;) {
        const LunisolarTerm& t = kLunisolar[i];
        const Phasor a = l_lp[t.l_lp] * f_om[t.f_om] * p[t.d];
        psi += (t.psi_sin + t.psi_sin_t * T) * a.sin + t.psi_cos * a.cos;
        epsilon += (t.eps_cos + t.eps_cos_t * T) * a.cos + t.eps_sin * a.sin;
    }
    return {psi, epsilon};
}

NutationOffsets planetary(double T) {
    const Phasors p = multiples(ArgumentSet::kPlanetary, T);
    double psi = 0, epsilon = 0;
    for (std::size_t i = kPlanetaryCount; i-- > 0;) {
        const PlanetaryTerm& t = kPlanetary[i];
        const Phasor a = (p[t.factor[0]] * p[t.factor[1]]) * (p[t.factor[2]] * p[t.factor[3]]) *
                         (p[t.factor[4]] * p[t.factor[5]]);
        psi += t.psi_sin * a.sin + t.psi_cos * a.cos;
        epsilon += t.eps_sin * a.sin + t.eps_cos * a.cos;
    }
    return {psi, epsilon};
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
