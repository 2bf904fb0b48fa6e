// Sexagesimal records, rounding, powers, decimal text.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <utility>

#include "solsys/toolkit.h"

namespace {

constexpr double kDegree = 0.017453292519943295;

constexpr double kSecond = 1 / 3600.0;

TEST(Sexagesimal, Splits) {
    const struct {
        double degrees;
        short mode;
        int whole, minutes;
        double seconds;
        char sign;
    } cases[] = {{12.5125, 0, 12, 30, 45, '+'},
                 {-0.5, 0, 359, 30, 0, '+'},
                 {725, 0, 5, 0, 0, '+'},
                 {725, 9, 5, 0, 0, '+'},
                 {-12.5, -1, 347, 30, 0, '+'},
                 // carries of the seconds into the minute, the degree, and the whole turn
                 {59.9999999 * kSecond, 0, 0, 1, 0, '+'},
                 {1 - 1e-7 * kSecond, 0, 1, 0, 0, '+'},
                 {360 - 1e-3 * kSecond, 0, 0, 0, 0, '+'},
                 // the turn is not taken off in the other modes
                 {-1e-3 * kSecond, 3, 24, 0, 0, '+'},
                 {180, 1, 180, 0, 0, '+'},
                 {181, 1, 179, 0, 0, '-'},
                 {-181, 1, 179, 0, 0, '+'},
                 {-12.5125, 1, 12, 30, 45, '-'},
                 {0, 1, 0, 0, 0, '-'},
                 {-45.25, 2, 45, 15, 0, '-'},
                 {100, 2, 80, 0, 0, '+'},
                 {-100, 2, 80, 0, 0, '-'},
                 {0, 2, 0, 0, 0, '+'},
                 {187.5, 3, 12, 30, 0, '+'},
                 {-15, 3, 23, 0, 0, '+'},
                 {270, 4, 6, 0, 0, 'p'},
                 {180, 4, 12, 0, 0, 'a'},
                 {7.5, 4, 0, 30, 0, 'a'}};
    for (const auto& c : cases) {
        GMSAngle a{};
        Rad2GMS(c.degrees * kDegree, &a, c.mode);
        const auto shown = std::tuple(a.degrees, a.minutes, a.sign);
        EXPECT_EQ(shown, std::tuple(c.whole, c.minutes, c.sign)) << c.degrees << " " << c.mode;
        // 5e-8 of the unit is added before the cut: 1.8e-4 seconds.
        EXPECT_NEAR(a.seconds, c.seconds, 2e-4) << c.degrees << " " << c.mode;
    }
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        GMSAngle a{1, 2, 3, '-'};
        Rad2GMS(bad, &a, 1);
        EXPECT_TRUE(a.degrees == 0 && a.minutes == 0 && a.seconds == 0) << bad;
    }
}

TEST(Sexagesimal, JoinsToTheAngleThatWasSplit) {
    for (short mode = 0; mode <= 4; ++mode) {
        for (double degrees = -359.3; degrees < 360; degrees += 0.7) {
            if (mode == 2 && std::fabs(degrees) > 90) continue;  // folded: not to be undone
            GMSAngle a{};
            Rad2GMS(degrees * kDegree, &a, mode);
            if (mode == 4 && a.degrees == 12) continue;  // half past noon is shown as 12 a
            double back = 0;
            EXPECT_EQ(GMS2Rad(&a, &back, mode), a.sign);
            // 5e-8 of a degree or an hour, and single-precision seconds (2e-6 of them).
            EXPECT_NEAR(std::remainder(back / kDegree - degrees, 360), 0, 15 * 5.1e-8);
        }
    }
}

// Joining must not lose or add a turn, which the round trip does not see.
TEST(Sexagesimal, TheTwelveHourClockStartsAtMidnightAndAtNoon) {
    for (const auto& [record, degrees] : {std::pair{GMSAngle{12, 30, 0, 'a'}, 7.5},
                                          {GMSAngle{12, 0, 0, 'p'}, 180.0},
                                          {GMSAngle{6, 0, 0, 'p'}, 270.0}}) {
        double radians = -1;
        GMS2Rad(&record, &radians, 4);
        EXPECT_NEAR(radians, degrees * kDegree, 1e-15);
    }
}

TEST(Sexagesimal, RoundingCarriesButKeepsTheTurn) {
    GMSAngle up{359, 59, 59.5F, '+'}, down{1, 2, 30.49F, '-'};
    Round_DMS(&up);
    EXPECT_TRUE(up.degrees == 360 && up.minutes == 0 && up.seconds == 0);
    Round_DMS(&down);
    EXPECT_TRUE(down.minutes == 2 && down.seconds == 30);
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
