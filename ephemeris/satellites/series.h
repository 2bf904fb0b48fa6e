// Trigonometric series of orbital elements, as the theories of the large satellites have them:
// for each body four variables, a size of the orbit (semi-major axis or mean motion), the mean
// longitude, z = e exp(i varpi) and zeta = sin(I/2) exp(i Omega), each a sum of terms
// A exp(i (phase + frequency t)).
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string_view>

#include "ephemeris/satellites/turns.h"

namespace solsys::satellites {

// The sums of A cos(argument) and A sin(argument) over some terms.
struct Phasor {
    double c = 0, s = 0;
};

struct ElementSums {
    Phasor size, longitude, z, zeta;
};

// One row of a table as it stands in data/.
struct SeriesRow {
    int body;
    std::string_view variable;
    double amplitude, phase, frequency;
};

// The same rows by columns, which is what vector instructions want.
template <std::size_t N>
struct TermTable {
    std::array<double, N> amplitude{}, phase{}, frequency{};
};

// The terms of one body inside a table: variable v has the terms bounds[v] to bounds[v + 1].
struct ElementSeries {
    const double* amplitude = nullptr;
    const double* phase = nullptr;
    const double* frequency = nullptr;
    std::array<std::size_t, 5> bounds{};

    [[nodiscard]] constexpr std::size_t size() const { return bounds[4]; }
};

// No body has more; the sums keep their arguments on the stack.
constexpr std::size_t kMaxTerms = 608;

constexpr std::size_t variable_index(std::string_view variable) {
    if (variable == "a" || variable == "p" || variable == "n") return 0;
    if (variable == "l") return 1;
    if (variable == "z") return 2;
    if (variable == "zeta") return 3;
    throw std::logic_error("unknown variable");  // at compile time
}

template <std::size_t N, class Row>
constexpr TermTable<N> by_columns(const Row (&rows)[N]) {
    TermTable<N> table;
    for (std::size_t k = 0; k < N; ++k) {
        table.amplitude[k] = rows[k].amplitude;
        table.phase[k] = rows[k].phase;
        table.frequency[k] = rows[k].frequency;
    }
    return table;
}

// Rows are ordered by body, then by variable; an offender stops the build. Rows of the variable
// `skipped` come first within a body and are left out.
template <std::size_t N, class Row>
consteval ElementSeries series_of(const Row (&rows)[N], const TermTable<N>& table, int body,
                                  std::string_view skipped = {}) {
    std::size_t first = 0;
    while (first < N && (rows[first].body != body || rows[first].variable == skipped)) ++first;
    ElementSeries series{
        &table.amplitude[first], &table.phase[first], &table.frequency[first], {}};
    std::size_t k = first;
    for (std::size_t v = 0; v < 4; ++v) {
        series.bounds[v] = k - first;
        while (k < N && rows[k].body == body && variable_index(rows[k].variable) == v) ++k;
    }
    series.bounds[4] = k - first;
    for (; k < N; ++k)
        if (rows[k].body == body) throw std::logic_error("rows out of order");
    if (series.size() == 0 || series.size() > kMaxTerms)
        throw std::logic_error("no such series");
    return series;
}

// The four sums at time t.
ElementSums sum_series(const ElementSeries& series, double t);

// The four sums for arguments that the caller has worked out, one for each term.
ElementSums sum_series(const ElementSeries& series, std::span<const double> arguments);

// Sines and cosines of n arguments. The arrays do not overlap.
void sines_and_cosines(std::size_t n, const double* arguments, double* sines, double* cosines);

}  // namespace solsys::satellites
