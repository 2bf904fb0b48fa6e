// Evaluation of the Chebyshev series of one body in one record.
// Newhall 1989, Celest. Mech. 45, 305.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "solsys/de_ephemeris.h"

namespace solsys {

// Units of a file's series.
struct SeriesUnits {
    double per_span;  // 1/day: records per day
    double per_au;    // 1/km
};

// Makes T_j(tc), and with velocity T_j'(tc), up to j < terms; what is there is kept, for it
// belongs to the same tc.
template <bool velocity>
void extend_polynomials(DE_EvalState& state, int terms) {
    const double two_tc = state.two_tc;
    int j = state.np;
    double t1 = state.pc[j - 1], t2 = state.pc[j - 2];
    if constexpr (velocity) {
        state.vc[2] = 2.0 * two_tc;
        double d1 = state.vc[state.nv - 1], d2 = state.vc[state.nv - 2];
        int k = state.nv;
        const auto next_derivative = [&](double polynomial) {
            const double next = two_tc * d1 + (2.0 * polynomial - d2);
            state.vc[k++] = next;
            d2 = d1;
            d1 = next;
        };
        // Derivatives that positions alone have not asked for.
        for (int i = k; i < j && i < terms; ++i) next_derivative(state.pc[i - 1]);
        for (; j < terms; ++j) {
            const double next = two_tc * t1 - t2;
            state.pc[j] = next;
            if (j >= k) next_derivative(t1);
            t2 = t1;
            t1 = next;
        }
        if (terms > state.nv) state.nv = static_cast<std::int16_t>(terms);
    } else {
        for (; j < terms; ++j) {
            const double next = two_tc * t1 - t2;
            state.pc[j] = next;
            t2 = t1;
            t1 = next;
        }
    }
    if (terms > state.np) state.np = static_cast<std::int16_t>(terms);
}

// Three sums of products of rows of terms coefficients with the polynomials, and with velocity
// three more with their derivatives. The small terms of high degree go first, which keeps their
// digits; even and odd degrees have sums of their own, which do not wait for each other.
template <bool velocity>
void sum_series(const DE_EvalState& state, const double* coefficients, int terms, double per_au,
                double velocity_factor, double* out) {
    const double* rows[3] = {coefficients, coefficients + terms, coefficients + 2 * terms};
    double p[3][2] = {}, v[3][2] = {};
    int j = terms;
    if (terms % 2 != 0) {
        --j;
        for (int i = 0; i < 3; ++i) {
            p[i][0] = rows[i][j] * state.pc[j];
            if constexpr (velocity) v[i][0] = rows[i][j] * state.vc[j];
        }
    }
    while (j > 0) {
        j -= 2;
        for (int i = 0; i < 3; ++i) {
            const double even = rows[i][j], odd = rows[i][j + 1];
            p[i][0] += even * state.pc[j];
            p[i][1] += odd * state.pc[j + 1];
            if constexpr (velocity) {
                v[i][0] += even * state.vc[j];
                v[i][1] += odd * state.vc[j + 1];
            }
        }
    }
    for (int i = 0; i < 3; ++i) {
        out[i] = (p[i][0] + p[i][1]) * per_au;
        if constexpr (velocity) out[i + 3] = (v[i][0] + v[i][1]) * velocity_factor;
    }
}

// Position, and velocity if asked for, at position within (0 to 1) of the record. The block
// holds subs sub-intervals of 3 x terms coefficients; 2 <= terms <= 20.
inline void evaluate_series(DE_EvalState& state, const double* block, int terms, int subs,
                            double within, bool velocity, const SeriesUnits& units,
                            double* out) {
    // The very end of a record belongs to its last sub-interval, at normalised time +1.
    const double scaled = within * subs;
    const int sub = std::min(static_cast<int>(scaled), subs - 1);
    state.tc = 2.0 * (scaled - sub) - 1.0;
    if (state.tc != state.pc[1]) {
        state.pc[1] = state.tc;
        state.two_tc = 2.0 * state.tc;
        state.np = 2;
        state.nv = 3;
    }

    const double* coefficients = block + static_cast<std::ptrdiff_t>(sub) * 3 * terms;
    const double velocity_factor = 2.0 * subs * units.per_span * units.per_au;
    if (velocity) {
        extend_polynomials<true>(state, terms);
        sum_series<true>(state, coefficients, terms, units.per_au, velocity_factor, out);
    } else {
        extend_polynomials<false>(state, terms);
        sum_series<false>(state, coefficients, terms, units.per_au, velocity_factor, out);
    }
}

}  // namespace solsys
