// Angles, directions, ellipsoids and instants as values.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "core/angles.h"
#include "core/calendar.h"
#include "core/ellipsoid.h"
#include "core/instant.h"

namespace solsys {
namespace {

TEST(Angles, AreBroughtIntoATurn) {
    for (const double a : {0.0, 1.0, 3.0, -3.0, 6.28, -1e-300, -1e-17, 100.0, -100.0, kTwoPi}) {
        const double turn = wrap_turn(a), half = wrap_half_turn(a);
        EXPECT_TRUE(turn >= 0 && turn < kTwoPi) << a;
        EXPECT_TRUE(half > -kPi && half <= kPi) << a;
        // The modulus is the double nearest 2 pi, so up to 16 turns lose 16 x 2.5e-16.
        for (const double wrapped : {turn, half}) {
            EXPECT_NEAR(std::sin(wrapped), std::sin(a), 5e-15) << a;
            EXPECT_NEAR(std::cos(wrapped), std::cos(a), 5e-15) << a;
        }
    }
    EXPECT_EQ(wrap_half_turn(-kPi), kPi);
    EXPECT_TRUE(std::isnan(wrap_turn(HUGE_VAL)) && std::isnan(wrap_half_turn(std::nan(""))));
}

// A step of known length and position angle from a place must be found again, whatever its
// size.
TEST(Angles, SeparationAndPositionAngleUndoAStep) {
    for (const double size : {1e-12, 1e-5, 0.3, 1.5, 3.1, kPi - 1e-9}) {
        for (double angle = 0.05; angle < kTwoPi; angle += 0.4) {
            for (const double dec : {-1.2, 0.0, 0.9}) {
                const Vec3 a = direction(2.0, dec);
                const Vec3 east{-std::sin(2.0), std::cos(2.0), 0}, north = cross(a, east);
                const Vec3 way = std::sin(angle) * east + std::cos(angle) * north;
                const Vec3 b = std::cos(size) * a + std::sin(size) * way;
                // Rounding of the unit vectors, over the sine of the step for the angle, and of
                // an angle below 2 pi.
                EXPECT_NEAR(separation(a, b), size, 4e-16);
                EXPECT_NEAR(wrap_half_turn(position_angle(a, b) - angle), 0,
                            9e-16 / std::sin(size));
            }
        }
    }
    EXPECT_NEAR(longitude_of(std::cos(4.0), std::sin(4.0)), 4.0, 1e-15);
    EXPECT_NEAR(latitude_of(1e8 * direction(1, 1.57079632)), 1.57079632, 1e-15);
}

TEST(Ellipsoid, NormalsStandOnTheSurface) {
    const Ellipsoid figure{60268, 0.09796};
    for (double lat = -1.5; lat < 1.5; lat += 0.25) {
        const Vec3 foot = cartesian(figure, {0, 0.7, lat});
        const double b = figure.polar_radius();
        // On the surface, and the normal is the gradient of its equation.
        const double equation =
            (foot.x * foot.x + foot.y * foot.y) / (figure.radius * figure.radius) +
            foot.z * foot.z / (b * b);
        EXPECT_NEAR(equation, 1, 1e-15);
        EXPECT_NEAR(geocentric_latitude(figure, lat), latitude_of(foot), 4e-16);
        EXPECT_NEAR(geodetic_latitude(figure, latitude_of(foot)), lat, 4e-16);
        const Vec3 above = cartesian(figure, {500, 0.7, lat});
        EXPECT_NEAR(separation(above - foot, direction(0.7, lat)), 0, 2e-13);
        const auto [place, iterations] = geodetic(figure, above);
        EXPECT_NEAR(place.lat, lat, 1e-14);
        // The height is a difference along the normal: the latitude's error times its tangent.
        EXPECT_NEAR(place.height, 500, 1e-14 * figure.radius / std::cos(lat));
    }
}

TEST(Instant, SplitsAndMovesTowardsZero) {
    const struct {
        Instant t;
        double days;
        int day;
        double fraction;
    } cases[] = {{{2451545, 0.25}, 0.5, 2451545, 0.75},
                 {{2451545, 0.25}, -0.5, 2451544, 0.75},
                 {{2451545, 0.25}, 400000, 2851545, 0.25},
                 {{0, 0.25}, -1.5, -1, -0.25},
                 {{7, 0.5}, 1e300, 7, 1e300},
                 {{2147483647, 0.5}, 1, 2147483647, 1.5}};
    for (const auto& c : cases) {
        const Instant moved = plus(c.t, c.days);
        EXPECT_EQ(moved.day, c.day) << c.days;
        EXPECT_DOUBLE_EQ(moved.fraction, c.fraction) << c.days;
    }
    EXPECT_EQ(split(-1.25).day, -1);
    EXPECT_EQ(split(1e10).day, 0);
    EXPECT_TRUE(std::isnan(split(std::nan("")).fraction));
    // A nanosecond survives where the Julian date as one double has lost it.
    EXPECT_NEAR(days_between({2451545, 0.1}, plus({2451545, 0.1}, 1e-14)), 1e-14, 2e-17);
}

TEST(CivilDate, AgreesWithTheStandardLibraryAndWithItself) {
    using namespace std::chrono;
    for (std::int64_t number = -13'000'000; number < 13'000'000; number += 379) {
        const CivilDate date = civil_date(number, Calendar::gregorian);
        EXPECT_EQ(day_number(date, Calendar::gregorian), number);
        EXPECT_EQ(day_number(civil_date(number, Calendar::julian), Calendar::julian), number);
        EXPECT_EQ(day_number(civil_date(number)), number);
        if (date.year < -32000 || date.year > 32000) continue;
        const year_month_day theirs{sys_days{days{number - 2440588}}};
        EXPECT_TRUE(static_cast<int>(theirs.year()) == date.year &&
                    static_cast<int>(unsigned{theirs.month()}) == date.month &&
                    static_cast<int>(unsigned{theirs.day()}) == date.day)
            << number;
    }
    EXPECT_TRUE(exists({1582, 10, 4}) && exists({1500, 2, 29}) && exists({2000, 2, 29}));
    EXPECT_FALSE(exists({1582, 10, 5}) || exists({1900, 2, 29}) || exists({2026, 13, 1}));
    EXPECT_FALSE(exists({1500, 2, 29}, Calendar::gregorian) || exists({2026, 4, 31}));
}

}  // namespace
}  // namespace solsys
