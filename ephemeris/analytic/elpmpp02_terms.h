// The terms of ELP/MPP02 in the form the kernel sums, computed while compiling: amplitudes
// corrected for the constants fitted to DE405, the combinations of the arguments joined into
// one polynomial per term, sines and cosine pairs turned into one cosine.
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

// Newton's method from above; good to the last bit or two. 0 for x = 0.
constexpr long double square_root(long double x) {
    if (x == 0) return 0;
    long double root = x > 1 ? x : 1;
    for (;;) {
        const long double next = (root + x / root) / 2;
        if (next >= root) return root;
        root = next;
    }
}

// The angle of the direction (x, y) [turn], -1/2 to 1/2. Half angles, by
// tan(a / 2) = tan a / (1 + sqrt(1 + tan^2 a)), until the power series of the arc tangent
// converges at once.
constexpr long double direction_turns(long double y, long double x) {
    constexpr long double kTurn = 6.28318530717958647692528676655900577L;
    const long double size = square_root(x * x + y * y);
    if (size == 0) return 0;
    long double tangent = y / (size + (x < 0 ? -x : x));
    for (int i = 0; i < 3; ++i) tangent /= 1 + square_root(1 + tangent * tangent);
    // |tangent| < 0.1: ten terms leave 1e-22.
    long double series = 0;
    for (int k = 9; k >= 0; --k)
        series = (k % 2 ? -1.0L : 1.0L) / (2 * k + 1) + series * tangent * tangent;
    const long double angle = 16 * tangent * series / kTurn;
    return x >= 0 ? angle : (y < 0 ? -0.5L : 0.5L) - angle;
}

// The combination of `arguments` by `multiples`, in turns, its constant part reduced.
constexpr std::array<long double, 5> combination(std::span<const MoonArgument> arguments,
                                                 std::span<const int> multiples) {
    std::array<long double, 5> c{};
    for (std::size_t i = 0; i < multiples.size(); ++i) {
        if (multiples[i] == 0) continue;
        for (std::size_t k = 0; k < 5; ++k)
            c[k] += multiples[i] * (arguments[i].c[k] / kArcsecPerTurn);
    }
    return c;
}

constexpr MoonTerm make_term(int coordinate, int power, long double amplitude,
                             long double shift, const std::array<long double, 5>& c) {
    long double phase = c[0] + shift;
    phase -= static_cast<long double>(static_cast<long long>(phase));
    return {coordinate,
            power,
            static_cast<double>(amplitude),
            static_cast<double>(phase),
            {static_cast<double>(c[1]), static_cast<double>(c[2]), static_cast<double>(c[3]),
             static_cast<double>(c[4])}};
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

// All selected terms of longitude, latitude and distance; `arguments` are those of the
// perturbations, in the order of their columns.
template <std::size_t kCount>
constexpr std::array<MoonTerm, kCount> moon_terms(
    const std::array<MoonCoordinate, 3>& coordinates, std::span<const MoonArgument> arguments) {
    using namespace elpmpp02;
    std::array<MoonTerm, kCount> terms{};
    std::size_t i = 0;
    for (int coordinate = 0; coordinate < 3; ++coordinate) {
        const MoonCoordinate& tables = coordinates[static_cast<std::size_t>(coordinate)];
        const double unit = tables.unit;
        for (const MoonMainRow& row : tables.main) {
            if (row.weight < kMoonSelection) continue;
            const double amplitude = (tables.is_distance ? kFA : 1.0) * row.a + kFB1 * row.b1 +
                                     kFB2 * row.b2 + kFB3 * row.b3 + kFB4 * row.b4 +
                                     kFB5 * row.b5;
            const int multiples[]{row.d, row.f, row.l, row.lp};
            // sin a = cos(a - 1/4 turn)
            terms[i++] =
                make_term(coordinate, 0, amplitude * unit, tables.is_distance ? 0.0L : -0.25L,
                          combination(arguments, multiples));
        }
        for (const MoonPerturbationRow& row : tables.perturbations) {
            if (row.weight < kMoonSelection) continue;
            // s sin a + c cos a = A cos(a - p), where (c, s) = A (cos p, sin p)
            const long double amplitude = square_root(row.s * row.s + row.c * row.c);
            terms[i++] =
                make_term(coordinate, row.t_power, amplitude * unit,
                          -direction_turns(row.s, row.c), combination(arguments, row.multiple));
        }
    }
    return terms;
}

}  // namespace solsys
