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

// T_j(tc) up to j < terms. Those already there are kept: they belong to the same tc.
inline void extend_polynomials(DE_EvalState& state, int terms) {
    double before = state.pc[state.np - 2], last = state.pc[state.np - 1];
    for (int j = state.np; j < terms; ++j) {
        const double next = state.two_tc * last - before;
        state.pc[j] = next;
        before = last;
        last = next;
    }
    if (terms > state.np) state.np = static_cast<std::int16_t>(terms);
}

// T_j'(tc) up to j < terms; T_j must be there.
inline void extend_derivatives(DE_EvalState& state, int terms) {
    state.vc[2] = 2.0 * state.two_tc;
    double before = state.vc[state.nv - 2], last = state.vc[state.nv - 1];
    for (int j = state.nv; j < terms; ++j) {
        const double next = state.two_tc * last + (2.0 * state.pc[j - 1] - before);
        state.vc[j] = next;
        before = last;
        last = next;
    }
    if (terms > state.nv) state.nv = static_cast<std::int16_t>(terms);
}

// Three sums of products of rows of terms coefficients with polynomials first to terms - 1. The
// small terms of high degree go first, which keeps their digits; three running sums keep the
// processor busy.
inline void sum_series(const double* coefficients, const double* polynomials, int first,
                       int terms, double factor, double out[3]) {
    const double *a = coefficients, *b = a + terms, *c = b + terms;
    double x = 0, y = 0, z = 0;
    for (int j = terms - 1; j >= first; --j) {
        x += a[j] * polynomials[j];
        y += b[j] * polynomials[j];
        z += c[j] * polynomials[j];
    }
    out[0] = x * factor;
    out[1] = y * factor;
    out[2] = z * factor;
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
    extend_polynomials(state, terms);
    sum_series(coefficients, state.pc, 0, terms, units.per_au, out);
    if (velocity) {
        extend_derivatives(state, terms);
        const double factor = 2.0 * subs * units.per_span * units.per_au;
        sum_series(coefficients, state.vc, 1, terms, factor, out + 3);
    }
}

}  // namespace solsys
