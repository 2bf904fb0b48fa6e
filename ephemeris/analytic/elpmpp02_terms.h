// The terms of ELP/MPP02 in the form the kernel sums, computed while compiling: amplitudes
// corrected for the constants fitted to DE405, the combinations of the arguments joined into
// one polynomial per term.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "core/constants.h"
#include "ephemeris/analytic/analytic_selection.h"
#include "ephemeris/analytic/series_table.h"

namespace solsys {

// Mean argument c0 + c1 T + ... + c4 T^4 [arcsec], T in Julian centuries TDB since J2000.
struct MoonArgument {
    const char* name;
    double c[5];
};

// A row of the main problem: multiples of D, F, l, l'; amplitude a and its derivatives by the
// constants of the theory, arcsec (longitude, latitude: sine) or km (distance: cosine).
struct MoonMainRow {
    int d, f, l, lp;
    double a, b1, b2, b3, b4, b5, b6;
    double weight;  // arcsec
};

// A row of the perturbations: T^t_power (s sin arg + c cos arg).
struct MoonPerturbationRow {
    int t_power;
    int multiple[13];  // of D, F, l, l', Mercury to Neptune, zeta
    double s, c;       // arcsec or km
    double weight;     // arcsec
};

using MoonTerm = SeriesTerm<4>;

namespace elpmpp02 {

// Ratios of the mean motions of the Sun and the Moon, and of the distances of the Moon and the
// Sun.
constexpr double kM = 0.074801329;
constexpr double kAlpha = 0.002571881;
// Constants of the main problem against those it was computed with [arcsec, arcsec/century].
constexpr double kDeltaNu = 0.55604;
constexpr double kDeltaE = 0.01789;
constexpr double kDeltaGamma = -0.08066;
constexpr double kDeltaNPrime = -0.06424;
constexpr double kDeltaEPrime = -0.12879;
// Further corrections, fitted to DE405.
constexpr double kW11Correction = -0.35106;  // arcsec/century, mean motion of the Moon
constexpr double kT1Correction = 0.00732;    // arcsec/century, mean motion of the Sun
constexpr double kGammaCorrection = 0.00085;
constexpr double kECorrection = -0.00006;
constexpr double kEPrimeCorrection = 0.00224;
// Mean motion of the Moon [arcsec/century].
constexpr double kW11 = 1732559343.73604 + kW11Correction;
// Semi-major axis of DE405 over that of the theory, by which distances are scaled.
constexpr double kDistanceScale = 384747.9613701725 / 384747.980674318;

// What multiplies a (distance only) and b1 to b5.
constexpr double kNu = (kDeltaNu + kW11Correction) / kW11;
constexpr double kNPrime = (kDeltaNPrime + kT1Correction) / kW11;
constexpr double kFA = 1 - 2 * kNu / 3;
constexpr double kFB1 = kNPrime - kM * kNu;
constexpr double kFB2 = (kDeltaGamma + kGammaCorrection) * kArcsec;
constexpr double kFB3 = (kDeltaE + kECorrection) * kArcsec;
constexpr double kFB4 = (kDeltaEPrime + kEPrimeCorrection) * kArcsec;
constexpr double kFB5 = 2 * kAlpha / (3 * kM) * kFB1;

constexpr long double kArcsecPerTurn = 1296000;

// The combination of `arguments` by `multiples`, in turns, its constant part reduced.
constexpr std::array<long double, 5> combination(std::span<const MoonArgument> arguments,
                                                 std::span<const int> multiples) {
    // Over plain pointers: to the compiler every operator of an array is a call.
    std::array<long double, 5> sums{};
    long double* const c = sums.data();
    const MoonArgument* const argument = arguments.data();
    const int* const multiple = multiples.data();
    const std::size_t size = multiples.size();
    for (std::size_t i = 0; i < size; ++i) {
        if (multiple[i] == 0) continue;
        for (std::size_t k = 0; k < 5; ++k)
            c[k] += multiple[i] * (argument[i].c[k] / kArcsecPerTurn);
    }
    return sums;
}

// T^power (s sin a + c cos a), a the argument of `turns`.
constexpr MoonTerm make_term(int coordinate, int power, double s, double c,
                             const std::array<long double, 5>& turns) {
    const long double phase =
        turns[0] - static_cast<long double>(static_cast<long long>(turns[0]));
    return forwards<4>({coordinate,
                        power,
                        c,
                        s,
                        {static_cast<double>(phase), static_cast<double>(turns[1]),
                         static_cast<double>(turns[2]), static_cast<double>(turns[3]),
                         static_cast<double>(turns[4])}});
}

}  // namespace elpmpp02

// The tables of one coordinate. `unit` is what a table's unit is worth in the result.
struct MoonCoordinate {
    std::span<const MoonMainRow> main;
    std::span<const MoonPerturbationRow> perturbations;
    bool is_distance;
    double unit;

    [[nodiscard]] constexpr std::size_t count_selected() const {
        std::size_t count = 0;
        for (const auto& row : main) count += row.weight >= kMoonSelection ? 1 : 0;
        for (const auto& row : perturbations) count += row.weight >= kMoonSelection ? 1 : 0;
        return count;
    }
};

// All selected terms of some coordinates; `arguments` are those of the perturbations, in the
// order of their columns.
template <std::size_t kCount>
constexpr std::array<MoonTerm, kCount> moon_terms(std::span<const MoonCoordinate> coordinates,
                                                  std::span<const MoonArgument> arguments) {
    using namespace elpmpp02;
    std::array<MoonTerm, kCount> terms{};
    std::size_t i = 0;
    for (std::size_t k = 0; k < coordinates.size(); ++k) {
        const auto coordinate = static_cast<int>(k);
        const MoonCoordinate& tables = coordinates[k];
        for (const MoonMainRow& row : tables.main) {
            if (row.weight < kMoonSelection) continue;
            const double amplitude =
                tables.unit * ((tables.is_distance ? kFA : 1.0) * row.a + kFB1 * row.b1 +
                               kFB2 * row.b2 + kFB3 * row.b3 + kFB4 * row.b4 + kFB5 * row.b5);
            const int multiples[]{row.d, row.f, row.l, row.lp};
            terms[i++] = make_term(coordinate, 0, tables.is_distance ? 0 : amplitude,
                                   tables.is_distance ? amplitude : 0,
                                   combination(arguments, multiples));
        }
        for (const MoonPerturbationRow& row : tables.perturbations) {
            if (row.weight < kMoonSelection) continue;
            terms[i++] = make_term(coordinate, row.t_power, tables.unit * row.s,
                                   tables.unit * row.c, combination(arguments, row.multiple));
        }
    }
    return terms;
}

}  // namespace solsys
