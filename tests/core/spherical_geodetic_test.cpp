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

TEST(FastTrig, AnswersArgumentsOfAnySize) {
    // Some systems' own sine reduces by a 66-bit pi: 1e-12 at 1e9.
    EXPECT_NEAR(fmSin(1e9), 0.54584344944869956, 3e-12);
    EXPECT_NEAR(fmCos(-1e9), 0.83788718136390239, 3e-12);
    for (const double x : {9.99e8, -3e9, 1e18, 1e300})
        EXPECT_NEAR(fmSin(x) * fmSin(x) + fmCos(x) * fmCos(x), 1, 1e-15) << x;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double x : {infinity, -infinity, kNan}) {
        EXPECT_TRUE(std::isnan(fmSin(x)));
        EXPECT_TRUE(std::isnan(fmCos(x)));
        EXPECT_TRUE(std::isnan(solsys::sin_from_cos(x, fmCos(x))));
    }
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

TEST(Planetographic, RoundTripFromTheSurfaceToFarAbove) {
    const std::pair<double, double> ellipsoids[] = {// radius, flattening
                                                    {6378.137, 1 / 298.257223563},
                                                    {60268, 0.09796},
                                                    {1737.4, 0}};
    for (const auto& [a, f] : ellipsoids) {
        for (const double height : {-0.002 * a, 0.0, 0.01 * a, 3 * a}) {
            for (double lat = -1.49; lat < 1.5; lat += 0.06) {
                const double geo[3] = {height, 0.7, lat};
                double xyz[3], back[3];
                Plg2Plc(a, f, geo, xyz);
                EXPECT_GT(Plc2Plg(a, f, xyz, back), 0);
                // The latitude's sine and the rest come from cosines, whose digits 1/sin loses.
                const double lost = 4e-16 / std::fabs(std::sin(lat));
                EXPECT_NEAR(back[2], lat, 1e-14 + lost);
                EXPECT_NEAR(back[1], 0.7, 1e-14);
                EXPECT_NEAR(back[0], height, (a + height) * (1e-14 + 2 * lost) / std::cos(lat));
            }
        }
    }
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
