#include "ephemeris/analytic/series_kernel.h"

#include <gtest/gtest.h>

#include <cmath>

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

template <int kDegree, std::size_t kCount>
void compare_with_plain_sum(const std::array<SeriesTerm<kDegree>, kCount>& terms,
                            const solsys::SeriesView& view) {
    constexpr long double kTurn = 6.28318530717958647692528676655900577L;
    for (const double t : kTimes) {
        long double sum[3]{}, rate[3]{}, sum_error[3]{}, rate_error[3]{};
        for (const auto& term : terms) {
            long double turns = term.phase, speed = 0, t_k = 1;  // t^k
            for (int k = 1; k <= kDegree; ++k) {
                const long double c = term.c[static_cast<std::size_t>(k - 1)];
                speed += k * c * t_k;
                t_k *= t;
                turns += c * t_k;
            }
            long double power = term.amplitude, slope = 0;  // A t^n and its derivative
            for (int n = 1; n <= term.power; ++n) slope = n * power, power *= t;
            const long double a = kTurn * (turns - std::floor(turns));
            const long double along = slope * std::cos(a);
            const long double across = power * kTurn * speed * std::sin(a);
            sum[term.coordinate] += power * std::cos(a);
            rate[term.coordinate] += along - across;

            // Turns, and whatever is made of them, are rounded a few times.
            const long double shift = 3e-16L * (1 + kTurn * (std::fabs(turns) + 1));
            sum_error[term.coordinate] += shift * std::fabs(power);
            rate_error[term.coordinate] +=
                shift * (std::fabs(slope) + std::fabs(power * kTurn * speed));
        }

        double kernel_sum[3], kernel_rate[3];
        solsys::sum_series_baseline(view, t, kernel_sum, kernel_rate);
        for (int i = 0; i < 3; ++i) {
            EXPECT_LE(std::fabs(kernel_sum[i] - sum[i]), sum_error[i]) << t;
            EXPECT_LE(std::fabs(kernel_rate[i] - rate[i]), rate_error[i]) << t;
        }
    }
}

TEST(SeriesKernel, IsThePlainSum) {
    compare_with_plain_sum(kLinear, kLinearTable.view());
    compare_with_plain_sum(kQuartic, kQuarticTable.view());
    compare_with_plain_sum(kOne, kOneTable.view());
}

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
