// Selects and packs the rows of a rectangular planetary series (VSOP87A and the Sun's series
// of the same form), while compiling.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "ephemeris/analytic/analytic_selection.h"
#include "ephemeris/analytic/series_table.h"

namespace solsys {

// A row as published: amplitude * T^t_power * cos(phase + frequency T), T in Julian millennia
// TDB since J2000.
struct Vsop87Row {
    char coordinate;  // 'x', 'y' or 'z'
    int t_power;
    double amplitude;  // au
    double phase;      // rad
    double frequency;  // rad per millennium
};

// True if the row is kept by `selection`.
constexpr bool selected(const Vsop87Row& row, PlanetSelection selection) {
    double near_size = row.amplitude;
    double long_size = row.amplitude;
    for (int n = 0; n < row.t_power; ++n) {
        near_size *= kNearSpan;
        long_size *= kLongSpan;
    }
    return near_size >= selection.near_span || long_size >= selection.long_span;
}

constexpr std::size_t count_selected(std::span<const Vsop87Row> rows,
                                     PlanetSelection selection) {
    std::size_t count = 0;
    for (const Vsop87Row& row : rows) count += selected(row, selection) ? 1 : 0;
    return count;
}

// The selected rows.
template <std::size_t kCount>
constexpr std::array<SeriesTerm<1>, kCount> select_terms(std::span<const Vsop87Row> rows,
                                                         PlanetSelection selection) {
    std::array<SeriesTerm<1>, kCount> terms{};
    std::size_t i = 0;
    for (const Vsop87Row& row : rows) {
        if (!selected(row, selection)) continue;
        terms[i++] = forwards(cosine_term(row.coordinate - 'x', row.t_power, row.amplitude,
                                          row.phase, row.frequency));
    }
    return terms;
}

// The packed selection of kRows, a constexpr array of Vsop87Row.
template <const auto& kRows, PlanetSelection kSelection>
struct Vsop87Table {
    static constexpr auto kTerms =
        select_terms<count_selected(kRows, kSelection)>(kRows, kSelection);
    static constexpr auto kPacked = pack_series<1, kTerms>();
};

}  // namespace solsys
