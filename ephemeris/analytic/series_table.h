// Packs the terms of a trigonometric series for the kernel, while compiling.
#pragma once

#include <array>
#include <cstddef>

#include "ephemeris/analytic/series_kernel.h"

namespace solsys {

// amplitude * t^power * cos 2 pi (phase + c[0] t + c[1] t^2 + ...), one coordinate of three.
template <int kDegree>
struct SeriesTerm {
    int coordinate;  // 0 to 2
    int power;       // 0 to kSeriesPowers - 1
    double amplitude;
    double phase;                   // turn
    std::array<double, kDegree> c;  // turn per unit of t^k
};

// A packed series; `view` is what the kernel takes.
template <int kDegree, std::size_t kBlocks>
struct SeriesTable {
    int block_count[3][kSeriesPowers];
    std::array<double, kBlocks*(2 + kDegree) * kSeriesLanes> blocks;

    [[nodiscard]] constexpr SeriesView view() const {
        SeriesView v{blocks.data(), kDegree, {}};
        for (int i = 0; i < 3; ++i)
            for (int n = 0; n < kSeriesPowers; ++n) v.block_count[i][n] = block_count[i][n];
        return v;
    }
};

// Rows of each coordinate and power in whole blocks.
struct SeriesLayout {
    int block_count[3][kSeriesPowers] = {};
    std::size_t blocks = 0;
};

template <class Terms>
constexpr SeriesLayout series_layout(const Terms& terms) {
    SeriesLayout layout;
    for (const auto& term : terms) ++layout.block_count[term.coordinate][term.power];
    for (auto& coordinate : layout.block_count) {
        for (int& count : coordinate) {
            count = (count + kSeriesLanes - 1) / kSeriesLanes;
            layout.blocks += static_cast<std::size_t>(count);
        }
    }
    return layout;
}

// The packed form of `kTerms`, a constexpr std::array of SeriesTerm<kDegree>.
template <int kDegree, const auto& kTerms>
constexpr auto pack_series() {
    constexpr SeriesLayout kLayout = series_layout(kTerms);
    SeriesTable<kDegree, kLayout.blocks> table{};
    std::size_t block = 0;  // first block of the group
    for (int coordinate = 0; coordinate < 3; ++coordinate) {
        for (int power = kSeriesPowers - 1; power >= 0; --power) {
            std::size_t row = 0;
            for (const SeriesTerm<kDegree>& term : kTerms) {
                if (term.coordinate != coordinate || term.power != power) continue;
                const std::size_t start =
                    (block + row / kSeriesLanes) * (2 + kDegree) * kSeriesLanes;
                double* cell = &table.blocks[start + row % kSeriesLanes];
                cell[0] = term.amplitude;
                cell[kSeriesLanes] = term.phase;
                for (std::size_t k = 0; k < kDegree; ++k)
                    cell[(2 + k) * kSeriesLanes] = term.c[k];
                ++row;
            }
            const int count = kLayout.block_count[coordinate][power];
            table.block_count[coordinate][power] = count;
            block += static_cast<std::size_t>(count);
        }
    }
    return table;
}

}  // namespace solsys
