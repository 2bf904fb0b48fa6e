// Spherical and planetographic coordinates: round trips, axes, and what has no direction.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/fast_trig.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FastTrig, AgreesWithExtendedPrecisionOverManyTurns) {
    double worst_near = 0;
    double worst_far = 0;  // relative to the argument
    for (int i = -200000; i <= 200000; ++i) {
        const double x = i * 6.2831e-3;
        const double error = std::max(
            std::fabs(static_cast<double>(fmSin(x) - std::sin(static_cast<long double>(x)))),
            std::fabs(static_cast<double>(fmCos(x) - std::cos(static_cast<long double>(x)))));
        double& worst = std::fabs(x) < 2 * kPi ? worst_near : worst_far;
        worst = std::max(worst, std::fabs(x) < 2 * kPi ? error : error / std::fabs(x));
    }
    // The reduction rounds the octant's multiple of pi/4 once: 1.1e-16 of the argument.
    EXPECT_LT(worst_near, 4e-16);
    EXPECT_LT(worst_far, 2.5e-16);
}

TEST(FastTrig, TheDerivedFunctionHasTheSignOfEveryQuadrant) {
    for (double x = -9.9; x < 10; x += 0.01) {
        // Off the axes the lost digits are those of 1/s.
        const double s = std::sin(x);
        const double c = std::cos(x);
        EXPECT_NEAR(solsys::sin_from_cos(x, c), s, 4e-16 / std::fabs(s)) << x;
        EXPECT_NEAR(solsys::cos_from_sin(x, s), c, 4e-16 / std::fabs(c)) << x;
    }
    EXPECT_EQ(solsys::sin_from_cos(0.0, 1 + 1e-15), 0);  // a cosine rounded beyond 1
}

TEST(Spherical, RoundTripInEveryOctant) {
    for (double lon = 0.05; lon < 2 * kPi; lon += 0.1) {
        for (double lat = -1.55; lat < 1.56; lat += 0.1) {
            const double sph[3] = {2.5, lon, lat};
            double xyz[3];
            sfp(sph, xyz);
            // One function of each pair is derived from the other and loses digits by 1/it.
            const double lost = 1e-15 / std::min({std::fabs(std::sin(lon)), std::cos(lat)});
            double one[3], back[3];
            sfp1(sph, one);
            psf(xyz, 2.5, back);
            EXPECT_EQ(xyz[0], one[0]);
            EXPECT_NEAR(back[1], lon, lost);
            EXPECT_NEAR(back[2], lat, lost);
            psf1(xyz, 2.5, xyz);  // in place
            EXPECT_NEAR(xyz[1], lon, lost);
            EXPECT_NEAR(xyz[2], lat, lost);
            EXPECT_NEAR(Vmod(one, 3), 2.5, 2e-15);
        }
    }
}

TEST(Spherical, EveryAxisHasItsOwnAngles) {
    const struct {
        double xyz[3], lon, lat;
    } cases[] = {{{1, 0, 0}, 0, 0},
                 {{-1, 9e-14, 0}, kPi, 0},
                 {{0, 1, 0}, kPi / 2, 0},
                 {{9e-14, -1, 0}, -kPi / 2, 0},
                 {{0, -9e-14, 1}, 0, kPi / 2},
                 {{0, 0, -1}, 0, -kPi / 2},
                 // off the axis by more than the tolerance: the ordinary formula
                 {{2e-13, -1, 0}, 1.5 * kPi + 2e-13, 0}};
    for (const auto& [xyz, lon, lat] : cases) {
        double out[3];
        psf(xyz, 1, out);
        EXPECT_NEAR(out[1], lon, 5e-16);
        EXPECT_NEAR(out[2], lat, 5e-16);
    }
    // Longitudes stay below a whole turn.
    const double just_below[3] = {1, -1e-18, 0.5};
    double out[3];
    psf1(just_below, Vmod(just_below, 3), out);
    EXPECT_TRUE(out[1] >= 0 && out[1] < 2 * kPi) << out[1];
}

TEST(Spherical, WhatHasNoDirectionHasNoAngles) {
    const double tiny[3] = {0, -5e-14, 5e-14};
    double out[3] = {7, 7, 7};
    psf(tiny, 7.1e-14, out);
    EXPECT_EQ(out[0], 7.1e-14);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[2], 0);
    psf1(tiny, 0, out);
    EXPECT_EQ(out[1], 0);
    psf1(tiny, 7.1e-14, out);
    EXPECT_NEAR(out[2], kPi / 4, 1e-15);
}

TEST(CartesianToSpherical, GivesTheReciprocalOfTheModulus) {
    const double w[3] = {1, -1, -std::sqrt(2.0)}, tiny[3] = {9e-14, 0, 0};
    double out[3];
    cartesianToSpherical(w, out);
    EXPECT_NEAR(out[0], 0.5, 1e-16);
    EXPECT_NEAR(out[1], 1.75 * kPi, 1e-15);
    EXPECT_NEAR(out[2], -kPi / 4, 1e-15);

    testing::internal::CaptureStdout();
    double left[3] = {7, 8, 9};
    cartesianToSpherical(tiny, left);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Vector module is too small to convert to spherical coordinates");
    EXPECT_TRUE(left[0] == 7 && left[2] == 9);
}

TEST(Planetographic, EquatorAndPolesNeedNoIteration) {
    double out[3];
    const double equator[3] = {-7000, 0, 0};
    EXPECT_EQ(Plc2Plg(6000, 0.1, equator, out), 0);
    EXPECT_EQ(out[0], 1000);
    EXPECT_DOUBLE_EQ(out[1], kPi);
    for (const double side : {1.0, -1.0}) {
        const double pole[3] = {0, 0, side * 7000};
        EXPECT_EQ(Plc2Plg(6000, 0.1, pole, out), 0);
        EXPECT_DOUBLE_EQ(out[0], 1600);
        EXPECT_DOUBLE_EQ(out[2], side * kPi / 2);
    }
}

TEST(Planetographic, EndsForWhatIsNoPosition) {
    const double nan[3] = {1, kNan, 2};
    double out[3] = {0, 0, 0};
    Plc2Plg(6000, 0.1, nan, out);
    EXPECT_TRUE(std::isnan(out[2]));
    const double near_centre[3] = {1, 0, 1};  // inside the evolute: no single normal
    Plc2Plg(6000, 0.3, near_centre, out);
    EXPECT_TRUE(std::isfinite(out[2]));
}

}  // namespace
