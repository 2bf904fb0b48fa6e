// The builds of the kernel for different processors: which one runs must not show. What they
// sum is tested with the theories.
#include "ephemeris/analytic/series_kernel.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "ephemeris/analytic/series_table.h"
#include "platform/cpu_features.h"

namespace {

using solsys::SeriesTerm;

// Terms scattered over coordinates and powers, so that most groups end in a partial block.
template <int kDegree, std::size_t kCount>
constexpr std::array<SeriesTerm<kDegree>, kCount> scattered_terms() {
    std::array<SeriesTerm<kDegree>, kCount> terms{};
    unsigned long long seed = 20;
    const auto uniform = [&seed] {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(seed >> 11) / 9007199254740992.0;
    };
    for (auto& term : terms) {
        term.coordinate = static_cast<int>(3 * uniform());
        term.power = static_cast<int>(6 * uniform());
        term.amplitude = 2 * uniform() - 1;
        term.phase = 4 * uniform() - 2;
        double size = 60000;
        for (double& c : term.c) c = size * (2 * uniform() - 1), size /= 1000;
    }
    return terms;
}
constexpr auto kLinear = scattered_terms<1, 157>();
constexpr auto kQuartic = scattered_terms<4, 157>();
constexpr auto kOne = scattered_terms<1, 1>();
constexpr auto kLinearTable = solsys::pack_series<1, kLinear>();
constexpr auto kQuarticTable = solsys::pack_series<4, kQuartic>();
constexpr auto kOneTable = solsys::pack_series<1, kOne>();

constexpr double kTimes[] = {-5, -1.25, -0.3, 0, 1e-9, 0.25, 1};

TEST(SeriesKernel, GivesTheSameBitsFromEveryBuild) {
    if (!solsys::cpu_has_avx2()) GTEST_SKIP() << "no AVX2 here";
    for (const auto& view : {kLinearTable.view(), kQuarticTable.view(), kOneTable.view()}) {
        for (const double t : kTimes) {
            double sum[4][3], rate[2][3];
            solsys::sum_series_baseline(view, t, sum[0], rate[0]);
            solsys::sum_series_avx2(view, t, sum[1], rate[1]);
            solsys::sum_series_baseline(view, t, sum[2], nullptr);
            solsys::sum_series_avx2(view, t, sum[3], nullptr);
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(sum[0][i], sum[1][i]);
                EXPECT_EQ(sum[0][i], sum[2][i]);
                EXPECT_EQ(sum[0][i], sum[3][i]);
                EXPECT_EQ(rate[0][i], rate[1][i]);
            }
        }
    }
}

}  // namespace
