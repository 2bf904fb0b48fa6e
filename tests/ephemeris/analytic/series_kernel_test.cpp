// The kernel of the series against plain sums of its terms, and its builds for different
// processors against each other: which one runs must not show.
#include "ephemeris/analytic/series_kernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ephemeris/analytic/series_table.h"
#include "platform/cpu_features.h"

namespace {

using solsys::SeriesTerm;
using solsys::SeriesView;

constexpr double kTimes[] = {-1.25, -0.3, 0, 1e-9, 0.25, 1};

// Terms scattered over coordinates and powers. Arguments are fewer than terms, so that they are
// shared, and, of the large tables, more than go in a chunk.
template <int kDegree, int kCoordinates, std::size_t kCount>
constexpr std::array<SeriesTerm<kDegree>, kCount> scattered_terms() {
    std::array<SeriesTerm<kDegree>, kCount> terms{};
    unsigned long long seed = 20;
    const auto uniform = [](unsigned long long& state) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(state >> 11) / 9007199254740992.0;
    };
    for (auto& term : terms) {
        term.coordinate = static_cast<int>(kCoordinates * uniform(seed));
        term.power = static_cast<int>(6 * uniform(seed));
        term.p = 2 * uniform(seed) - 1;
        term.q = 2 * uniform(seed) - 1;
        auto argument = static_cast<unsigned long long>(kCount / 2 * uniform(seed));
        double size = 1;
        for (double& c : term.c) {
            c = size * (2 * uniform(argument) - 1);
            size = &c == term.c.data() ? 600 : size / 100;
        }
        term = solsys::forwards(term);
    }
    return terms;
}

// Term by term in extended precision.
template <class Terms>
void plain_sum(const Terms& terms, long double t, long double sum[3], long double rate[3]) {
    std::fill_n(sum, 3, 0.0L), std::fill_n(rate, 3, 0.0L);
    const long double turn = 2 * std::acos(-1.0L);
    for (const auto& term : terms) {
        long double a = 0, speed = 0;
        for (std::size_t k = term.c.size(); k-- > 0;) {
            speed = speed * t + a;
            a = a * t + term.c[k];
        }
        const long double c = std::cos(turn * a), s = std::sin(turn * a), n = term.power;
        sum[term.coordinate] += std::pow(t, n) * (term.p * c + term.q * s);
        rate[term.coordinate] +=
            turn * speed * std::pow(t, n) * (term.q * c - term.p * s) +
            (n > 0 ? n * std::pow(t, n - 1) : 0) * (term.p * c + term.q * s);
    }
}

template <class Terms>
void expect_plain_sums(const Terms& terms, const SeriesView& view) {
    for (const double t : kTimes) {
        double sum[4][3] = {}, rate[2][3] = {};
        solsys::sum_series_baseline(view, t, sum[0], rate[0]);
        solsys::sum_series_baseline(view, t, sum[1], nullptr);
        long double exact[3], exact_rate[3];
        plain_sum(terms, t, exact, exact_rate);
        for (int i = 0; i < 3; ++i) {
            // Each of 750 turns is rounded to 6e-14 turn; up to 400 terms, random, and t^5.
            const double size = 3.1 * std::max(1.0, std::fabs(t * t * t * t * t));
            EXPECT_NEAR(sum[0][i], static_cast<double>(exact[i]), 4e-12 * size) << t;
            EXPECT_NEAR(rate[0][i], static_cast<double>(exact_rate[i]), 4e-12 * 3800 * size);
            EXPECT_EQ(sum[0][i], sum[1][i]);
        }
        const auto expect_same = [&](auto kernel) {
            kernel(view, t, sum[2], rate[1]);
            kernel(view, t, sum[3], nullptr);
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(sum[0][i], sum[2][i]);
                EXPECT_EQ(sum[0][i], sum[3][i]);
                EXPECT_EQ(rate[0][i], rate[1][i]);
            }
        };
        if (solsys::cpu_has_avx2()) expect_same(solsys::sum_series_avx2);
        if (solsys::cpu_has_avx512()) expect_same(solsys::sum_series_avx512);
    }
}

constexpr auto kLinear = scattered_terms<1, 3, 400>();
constexpr auto kQuartic = scattered_terms<4, 2, 157>();
constexpr auto kSingle = scattered_terms<4, 1, 100>();
constexpr auto kOne = scattered_terms<1, 1, 2>();
constexpr auto kLinearTable = solsys::pack_series<1, kLinear>();
constexpr auto kQuarticTable = solsys::pack_series<4, kQuartic>();
constexpr auto kSingleTable = solsys::pack_series<4, kSingle>();
constexpr auto kOneTable = solsys::pack_series<1, kOne>();
static_assert(kLinearTable.blocks[0] > solsys::kSeriesChunk && kSingleTable.coordinates == 1);

TEST(SeriesKernel, GivesThePlainSumsAndTheSameBitsFromEveryBuild) {
    expect_plain_sums(kLinear, kLinearTable.view());
    expect_plain_sums(kQuartic, kQuarticTable.view());
    expect_plain_sums(kSingle, kSingleTable.view());
    expect_plain_sums(kOne, kOneTable.view());
}

}  // namespace
