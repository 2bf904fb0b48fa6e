#include "core/root_finder.h"

#include <gtest/gtest.h>

#include <cmath>

#include "solsys/toolkit.h"

namespace {

using Function = double (*)(double);

TEST(Root, IsFoundToTheToleranceInFewCalls) {
    const struct {
        Function f;
        double a, b, root;
    } cases[] = {{[](double x) { return std::cos(x); }, 1, 2, 1.5707963267948966},
                 // Wallis's example
                 {[](double x) { return x * x * x - 2 * x - 5; }, 2, 3, 2.0945514815423265},
                 {[](double x) { return std::exp(x) - 1e6; }, 0, 40, 13.815510557964274},
                 {[](double x) { return x < 0.3 ? -1.0 : 1.0; }, 0, 1, 0.3},
                 {[](double x) { return x - 1.0; }, 1, 4, 1}};
    for (const auto& [f, a, b, root] : cases) {
        for (const double tol : {1e-3, 1e-9, 0.0}) {
            int calls = 0;
            const auto counted = [&, g = f](double x) { return ++calls, g(x); };
            const double found = solsys::zeroin(a, b, counted, tol);
            // The bracket's last half-width and the spacing of doubles.
            const double near = tol + 4.5e-16 * std::fabs(root);
            EXPECT_NEAR(found, root, near);
            // Bisection alone would need 51 calls for the full precision of a unit interval;
            // the steps, which no interpolation helps, may take some times that.
            EXPECT_LE(calls, 160);
            EXPECT_EQ(Zeroin(a, b, f, tol), found);
            EXPECT_NEAR(Zeroin(b, a, f, tol), root, near);
        }
    }
}

TEST(Root, EndsWhateverTheFunctionAnswers) {
    const Function nan = [](double) { return std::nan(""); };
    const Function infinity = [](double) { return HUGE_VAL; };
    const Function one = [](double) { return 1.0; };
    const Function line = [](double x) { return x - 0.25; };
    EXPECT_TRUE(std::isfinite(Zeroin(-1, 0, nan, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(0, 1, infinity, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(0, 1, one, 0)));
    EXPECT_TRUE(std::isfinite(Zeroin(0, 1, line, -1)));
    EXPECT_TRUE(std::isfinite(Zeroin(0, 1, line, std::nan(""))));
    // The interval's width overflows: any answer, but an answer.
    EXPECT_NE(Zeroin(-1.7e308, 1.7e308, line, 0), 0);
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        EXPECT_TRUE(std::isnan(Zeroin(bad, 1, line, 1e-9)));
        EXPECT_TRUE(std::isnan(Zeroin(-1, bad, line, 1e-9)));
    }
}

}  // namespace
