// The sine and cosine that kernels have, alone and eight together, and what they round with.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/sin_cos.h"

#pragma GCC diagnostic ignored "-Wpsabi"  // vectors stay within this file
#include "ephemeris/lanes.inl"

namespace {

TEST(Lanes, SinesAreThoseOfTheStandardLibrary) {
    std::mt19937_64 random(85);
#ifdef _WIN32
    constexpr double kFar = 4;  // its library reduces larger angles by a pi too short
#else
    constexpr double kFar = 1e6;
#endif
    std::uniform_real_distribution<double> near(-4, 4), far(-kFar, kFar);
    constexpr double kTolerance = 2.3e-16 + 1.2e-16;  // and the library's own
    for (int i = 0; i < 5000; ++i) {
        solsys::Vector x;
        for (int k = 0; k < solsys::kLanes; ++k) x[k] = k % 2 ? near(random) : far(random);
        const auto eight = solsys::sines(x);
        for (int k = 0; k < solsys::kLanes; ++k) {
            const auto one = solsys::sines(double{x[k]});
            ASSERT_EQ(one.sin, eight.sin[k]);
            ASSERT_EQ(one.cos, eight.cos[k]);
            ASSERT_NEAR(one.sin, std::sin(x[k]), kTolerance) << x[k];
            ASSERT_NEAR(one.cos, std::cos(x[k]), kTolerance) << x[k];
            const solsys::SinCos plain = solsys::sin_cos(x[k]);
            ASSERT_NEAR(plain.sin, std::sin(x[k]), kTolerance) << x[k];
            ASSERT_NEAR(plain.cos, std::cos(x[k]), kTolerance) << x[k];
        }
    }
}

}  // namespace
