// Sexagesimal records, rounding, powers, decimal text.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "solsys/toolkit.h"

namespace {

constexpr double kDegree = 0.017453292519943295;

struct SplitCase {
    double degrees;
    short mode;
    int whole, minutes;
    double seconds;
    char sign;
};
class Sexagesimal : public testing::TestWithParam<SplitCase> {};

TEST_P(Sexagesimal, Splits) {
    const auto& c = GetParam();
    GMSAngle a{};
    Rad2GMS(c.degrees * kDegree, &a, c.mode);
    EXPECT_EQ(a.degrees, c.whole);
    EXPECT_EQ(a.minutes, c.minutes);
    // 5e-8 of the unit is added before the cut: 1.8e-4 seconds.
    EXPECT_NEAR(a.seconds, c.seconds, 2e-4);
    EXPECT_EQ(a.sign, c.sign);
}

constexpr double kSecond = 1 / 3600.0;
INSTANTIATE_TEST_SUITE_P(
    Modes, Sexagesimal,
    testing::Values(SplitCase{12.5125, 0, 12, 30, 45, '+'}, SplitCase{-0.5, 0, 359, 30, 0, '+'},
                    SplitCase{725, 0, 5, 0, 0, '+'}, SplitCase{725, 9, 5, 0, 0, '+'},
                    SplitCase{-12.5, -1, 347, 30, 0, '+'},
                    // carries of the seconds into the minute, the degree, and the whole turn
                    SplitCase{59.9999999 * kSecond, 0, 0, 1, 0, '+'},
                    SplitCase{1 - 1e-7 * kSecond, 0, 1, 0, 0, '+'},
                    SplitCase{360 - 1e-3 * kSecond, 0, 0, 0, 0, '+'},
                    // the turn is not taken off in the other modes
                    SplitCase{-1e-3 * kSecond, 3, 24, 0, 0, '+'},
                    SplitCase{180, 1, 180, 0, 0, '+'}, SplitCase{181, 1, 179, 0, 0, '-'},
                    SplitCase{-181, 1, 179, 0, 0, '+'}, SplitCase{-12.5125, 1, 12, 30, 45, '-'},
                    SplitCase{0, 1, 0, 0, 0, '-'}, SplitCase{-45.25, 2, 45, 15, 0, '-'},
                    SplitCase{100, 2, 80, 0, 0, '+'}, SplitCase{-100, 2, 80, 0, 0, '-'},
                    SplitCase{0, 2, 0, 0, 0, '+'}, SplitCase{187.5, 3, 12, 30, 0, '+'},
                    SplitCase{-15, 3, 23, 0, 0, '+'}, SplitCase{270, 4, 6, 0, 0, 'p'},
                    SplitCase{180, 4, 12, 0, 0, 'a'}, SplitCase{7.5, 4, 0, 30, 0, 'a'}));

class SexagesimalMode : public testing::TestWithParam<short> {};

TEST_P(SexagesimalMode, JoinsToTheAngleThatWasSplit) {
    const short mode = GetParam();
    for (double degrees = -359.3; degrees < 360; degrees += 0.7) {
        if (mode == 2 && std::fabs(degrees) > 90) continue;  // folded: not to be undone
        GMSAngle a{};
        Rad2GMS(degrees * kDegree, &a, mode);
        if (mode == 4 && a.degrees == 12) continue;  // half past noon is shown as 12 a
        double back = 0;
        EXPECT_EQ(GMS2Rad(&a, &back, mode), a.sign);
        // 5e-8 of a degree or an hour, and single-precision seconds (2e-6 of them).
        EXPECT_NEAR(std::remainder(back / kDegree - degrees, 360), 0, 15 * 5.1e-8) << degrees;
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, SexagesimalMode, testing::Values<short>(0, 1, 2, 3, 4));

TEST(Sexagesimal, TheTwelveHourClockStartsAtMidnightAndAtNoon) {
    double radians = -1;
    const GMSAngle midnight{12, 30, 0, 'a'};
    GMS2Rad(&midnight, &radians, 4);
    EXPECT_NEAR(radians, 7.5 * kDegree, 1e-15);
    const GMSAngle noon{12, 0, 0, 'p'};
    GMS2Rad(&noon, &radians, 4);
    EXPECT_NEAR(radians, 180 * kDegree, 1e-15);
}

TEST(Sexagesimal, WhatIsNotFiniteLeavesZeros) {
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        GMSAngle a{1, 2, 3, '-'};
        Rad2GMS(bad, &a, 1);
        EXPECT_EQ(a.degrees, 0);
        EXPECT_EQ(a.minutes, 0);
        EXPECT_EQ(a.seconds, 0);
    }
}

TEST(Sexagesimal, RoundingCarriesButKeepsTheTurn) {
    GMSAngle a{359, 59, 59.5F, '+'};
    Round_DMS(&a);
    EXPECT_EQ(a.degrees, 360);
    EXPECT_EQ(a.minutes, 0);
    EXPECT_EQ(a.seconds, 0);
    GMSAngle b{1, 2, 30.49F, '-'};
    Round_DMS(&b);
    EXPECT_EQ(b.seconds, 30);
    EXPECT_EQ(b.minutes, 2);
}

TEST(Scalars, RoundSignAndPower) {
    EXPECT_EQ(Round_LDouble(2.5), 3);
    EXPECT_EQ(Round_LDouble(-2.5), -3);
    EXPECT_EQ(Round_LDouble(-2.4), -2);
    EXPECT_EQ(Round_LDouble(0), 0);
    EXPECT_EQ(sign(-3, 0), -3);  // the argument itself, not its magnitude
    EXPECT_EQ(sign(-3, -1), 3);
    EXPECT_EQ(sign(3, -0.5), -3);

    EXPECT_NEAR(SafePow(-8, 1 / 3.0), -2, 1e-15);
    EXPECT_NEAR(SafePow(8, 1 / 3.0), 2, 1e-15);
    EXPECT_EQ(SafePow(-8, 2), 64);
    EXPECT_EQ(SafePow(-8, 3), -512);
    EXPECT_TRUE(std::isnan(SafePow(-8, 0.7)));  // rounds up in magnitude: no root
}

TEST(Scalars, DecimalText) {
    for (const std::int32_t value :
         {0, 7, -7, 10, -10, 123456789, 2147483647, std::numeric_limits<std::int32_t>::min()}) {
        char buffer[13] = "xxxxxxxxxxxx";
        const char* end = fast_itoa10(value, buffer);
        EXPECT_EQ(std::string(buffer), std::to_string(value));
        EXPECT_EQ(end, buffer + std::to_string(value).size());
    }
}

}  // namespace
