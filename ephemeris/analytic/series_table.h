// Packs the terms of a trigonometric series for the kernel, while compiling.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/sin_cos.h"
#include "ephemeris/analytic/series_kernel.h"

namespace solsys {

// t^power (p cos 2 pi a + q sin 2 pi a) of one coordinate, a = c[0] + c[1] t + ... [turn].
template <int kDegree>
struct SeriesTerm {
    using Argument = std::array<double, kDegree + 1>;

    int coordinate;  // from 0
    int power;       // 0 to kSeriesPowers - 1
    double p, q;
    Argument c;
};

// amplitude * t^power * cos 2 pi (phase + frequency t), phase and frequency in radians and rad
// per unit of t.
constexpr SeriesTerm<1> cosine_term(int coordinate, int power, double amplitude, double phase,
                                    double frequency) {
    constexpr long double kTurn = 6.28318530717958647692528676655900577L;  // rad
    const SinCos angle = sin_cos(phase);
    return {coordinate,
            power,
            amplitude * angle.cos,
            -amplitude * angle.sin,
            {0, static_cast<double>(frequency / kTurn)}};
}

// The same term with an argument whose first rate that is not zero is positive, so that an
// argument and its opposite count as one.
template <int kDegree>
constexpr SeriesTerm<kDegree> forwards(SeriesTerm<kDegree> term) {
    const double* const c = term.c.data();
    int first = 1;
    while (first < kDegree && c[first] == 0) ++first;
    if (c[first] >= 0) return term;
    for (double& coefficient : term.c) coefficient = -coefficient;
    term.q = -term.q;
    return term;
}

// The distinct arguments of some terms, sorted by the highest power of t they occur with.
template <int kDegree, std::size_t kCount>
struct SeriesArguments {
    struct Entry {
        typename SeriesTerm<kDegree>::Argument c{};
        int highest = 0;
    };
    std::array<Entry, kCount> all{};
    std::size_t count = 0;
    std::size_t with_power[kSeriesPowers] = {};  // those of t^n or more
    int coordinates = 0;
    std::array<std::size_t, kCount> of_term{};  // argument of each term
};

constexpr bool same(const double* a, const double* b, int size) {
    for (int k = 0; k < size; ++k)
        if (a[k] != b[k]) return false;
    return true;
}

template <int kDegree, std::size_t kCount>
constexpr auto arguments_of(const std::array<SeriesTerm<kDegree>, kCount>& terms) {
    SeriesArguments<kDegree, kCount> arguments;
    std::array<std::size_t, kCount> order{};  // terms by argument, then by power
    for (std::size_t i = 0; i < kCount; ++i) order[i] = i;
    // Over plain pointers and by loops: to the compiler every operator of an array is a call.
    const SeriesTerm<kDegree>* const term_of = terms.data();
    std::sort(order.data(), order.data() + kCount, [term_of](std::size_t a, std::size_t b) {
        const double* const x = term_of[a].c.data();
        const double* const y = term_of[b].c.data();
        for (int k = 0; k <= kDegree; ++k)
            if (x[k] != y[k]) return x[k] < y[k];
        const int power = term_of[a].power - term_of[b].power;
        return power != 0 ? power > 0 : a < b;
    });
    auto* const all = arguments.all.data();
    std::size_t* const of_term = arguments.of_term.data();
    const std::size_t* const sorted_term = order.data();
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::size_t at = sorted_term[i];
        const SeriesTerm<kDegree>& term = term_of[at];
        if (i == 0 || !same(term.c.data(), all[arguments.count - 1].c.data(), kDegree + 1))
            all[arguments.count++] = {term.c, term.power};
        of_term[at] = arguments.count - 1;
        if (term.coordinate >= arguments.coordinates)
            arguments.coordinates = term.coordinate + 1;
    }

    // Sorted by power; `place` is where each has gone.
    std::array<std::size_t, kCount> place{};
    auto sorted = arguments.all;
    auto* const by_power = sorted.data();
    std::size_t* const new_place = place.data();
    std::size_t next = 0;
    for (int power = kSeriesPowers - 1; power >= 0; --power) {
        for (std::size_t i = 0; i < arguments.count; ++i) {
            if (all[i].highest != power) continue;
            by_power[next] = all[i];
            new_place[i] = next++;
        }
        arguments.with_power[power] = next;
    }
    arguments.all = sorted;
    for (std::size_t i = 0; i < kCount; ++i) of_term[i] = new_place[of_term[i]];
    return arguments;
}

// Sizes of a packed series.
struct SeriesLayout {
    int blocks[kSeriesPowers] = {};
    std::size_t arguments = 0, weights = 0;  // doubles
};

template <int kDegree, std::size_t kCount>
constexpr SeriesLayout layout_of(const SeriesArguments<kDegree, kCount>& arguments) {
    SeriesLayout layout;
    for (int n = 0; n < kSeriesPowers; ++n) {
        const std::size_t blocks = (arguments.with_power[n] + kSeriesLanes - 1) / kSeriesLanes;
        layout.blocks[n] = static_cast<int>(blocks);
        layout.weights +=
            blocks * kSeriesLanes * 2 * static_cast<std::size_t>(arguments.coordinates);
        if (n == 0) layout.arguments = blocks * kSeriesLanes * (kDegree + 1);
    }
    return layout;
}

// A packed series; `view` is what the kernel takes.
template <std::size_t kArguments, std::size_t kWeights>
struct SeriesTable {
    int degree, coordinates;
    int blocks[kSeriesPowers];
    std::array<double, kArguments> arguments;
    std::array<double, kWeights> weights;

    [[nodiscard]] constexpr SeriesView view() const {
        SeriesView v{arguments.data(), weights.data(), degree, coordinates, {}};
        for (int n = 0; n < kSeriesPowers; ++n) v.blocks[n] = blocks[n];
        return v;
    }
};

// Where the weights of block `block` at t^power begin, in blocks of one power and coordinates.
constexpr std::size_t block_of_weights(const SeriesLayout& layout, int power, int block) {
    const int chunk = block / kSeriesChunk;
    std::size_t before = 0;
    for (int n = 0; n < kSeriesPowers; ++n) {
        before += static_cast<std::size_t>(std::min(layout.blocks[n], chunk * kSeriesChunk));
        const int inside = std::clamp(layout.blocks[n] - chunk * kSeriesChunk, 0, kSeriesChunk);
        if (n < power) before += static_cast<std::size_t>(inside);
    }
    return before + static_cast<std::size_t>(block % kSeriesChunk);
}

// The packed form of `kTerms`, a constexpr std::array of SeriesTerm<kDegree> with its arguments
// `forwards`.
template <int kDegree, const auto& kTerms>
constexpr auto pack_series() {
    constexpr auto kDistinct = arguments_of(kTerms);
    constexpr SeriesLayout kLayout = layout_of(kDistinct);
    SeriesTable<kLayout.arguments, kLayout.weights> table{};
    table.degree = kDegree;
    table.coordinates = kDistinct.coordinates;
    for (int n = 0; n < kSeriesPowers; ++n) table.blocks[n] = kLayout.blocks[n];

    double* const packed = table.arguments.data();
    for (std::size_t i = 0; i < kDistinct.count; ++i) {
        const double* const c = kDistinct.all[i].c.data();
        for (std::size_t k = 0; k <= kDegree; ++k)
            packed[(i / kSeriesLanes * (kDegree + 1) + k) * kSeriesLanes + i % kSeriesLanes] =
                c[k];
    }

    const auto coordinates = static_cast<std::size_t>(kDistinct.coordinates);
    double* const weights = table.weights.data();
    const SeriesTerm<kDegree>* const terms = kTerms.data();
    const std::size_t* const of_term = kDistinct.of_term.data();
    for (std::size_t i = 0; i < kTerms.size(); ++i) {
        const SeriesTerm<kDegree>& term = terms[i];
        const std::size_t argument = of_term[i];
        const std::size_t block =
            block_of_weights(kLayout, term.power, static_cast<int>(argument / kSeriesLanes));
        const std::size_t at =
            (block * coordinates + static_cast<std::size_t>(term.coordinate)) * 2 *
                kSeriesLanes +
            argument % kSeriesLanes;
        weights[at] += term.p;
        weights[at + kSeriesLanes] += term.q;
    }
    return table;
}

}  // namespace solsys
