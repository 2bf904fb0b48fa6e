#include "core/root_finder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "solsys/toolkit.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct RootCase {
    double (*f)(double);
    double a, b, root;
};
class Root : public testing::TestWithParam<RootCase> {};

TEST_P(Root, IsFoundToTheToleranceInFewCalls) {
    const auto& c = GetParam();
    for (const double tol : {1e-3, 1e-9, 0.0}) {
        int calls = 0;
        const auto counted = [&](double x) {
            ++calls;
            return c.f(x);
        };
        const double found = solsys::zeroin(c.a, c.b, counted, tol);
        // The bracket's last half-width and the spacing of doubles.
        EXPECT_LE(std::fabs(found - c.root), tol + 4.5e-16 * std::fabs(c.root));
        // Bisection alone would need 51 calls for the full precision of a unit interval; the
        // triple root and the steps, which no interpolation helps, may take some times that.
        EXPECT_LE(calls, 160);
        EXPECT_EQ(Zeroin(c.a, c.b, c.f, tol), found);
        EXPECT_LE(std::fabs(Zeroin(c.b, c.a, c.f, tol) - c.root),
                  tol + 4.5e-16 * std::fabs(c.root));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Functions, Root,
    testing::Values(RootCase{[](double x) { return std::cos(x); }, 1, 2, 1.5707963267948966},
                    RootCase{[](double x) { return x * x * x - 2 * x - 5; }, 2, 3,
                             2.0945514815423265},  // Wallis's example
                    RootCase{[](double x) { return std::exp(x) - 1e6; }, 0, 40,
                             13.815510557964274},
                    RootCase{[](double x) { return x < 0.3 ? -1.0 : 1.0; }, 0, 1, 0.3},
                    RootCase{[](double x) { return x - 1.0; }, 1, 4, 1}));

TEST(Root, EndsWhateverTheFunctionAnswers) {
    const auto nan = [](double) { return kNan; };
    EXPECT_TRUE(std::isfinite(Zeroin(0, 1, nan, 1e-9)));
    EXPECT_TRUE(std::isfinite(Zeroin(-1, 0, nan, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(
        0, 1, [](double) { return 1.0; }, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(
        0, 1, [](double) { return kInfinity; }, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(
        0, 1, [](double x) { return x - 0.5; }, -1)));
    EXPECT_TRUE(std::isfinite(Zeroin(
        0, 1, [](double x) { return x - 0.25; }, kNan)));
    const double sum = Zeroin(
        -1.7e308, 1.7e308, [](double x) { return x - 3; }, 0);
    EXPECT_FALSE(sum == 0);  // the interval's width overflows: any answer, but an answer
}

TEST(Root, EndPointsThatAreNotFiniteGiveNoRoot) {
    for (const double bad : {kNan, kInfinity, -kInfinity}) {
        EXPECT_TRUE(std::isnan(Zeroin(
            bad, 1, [](double x) { return x; }, 1e-9)));
        EXPECT_TRUE(std::isnan(Zeroin(
            -1, bad, [](double x) { return x; }, 1e-9)));
    }
}

}  // namespace
