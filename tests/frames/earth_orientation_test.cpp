// Precession, nutation, obliquity and sidereal time: published values, invariants, and what bad
// instants give. The series themselves are held to another program in tests/oracle.
#include "solsys/earth_orientation.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/constants.h"
#include "tests/support/geometry.h"

namespace solsys {
namespace {

// Values of a separate evaluation of the published table, itself within 6e-17 rad of ERFA
// nut80.
TEST(FullNutation, BothEvaluationsGiveTheReferenceValues) {
    constexpr struct {
        int day;
        double fraction, d_psi, d_epsilon, obliquity;
    } kCases[] = {
        {2415020, 0.0, 8.4063802103872e-05, -1.1127148444138e-05, 4.0931975809706767e-01},
        {2446895, 0.5, -1.8363890684754e-05, 4.5778364005103e-05, 4.0912169604580345e-01},
        {2488069, 0.5, 1.5924045265337e-05, 4.1487352018823e-05, 4.0886584773349494e-01}};
    for (const auto& c : kCases)
        for (auto* nutation : {&NutationSeidelman, &NutationSeidelmanBest}) {
            double obliquity = 0, d_psi = 0, d_epsilon = 0;
            nutation(c.day, c.fraction, obliquity, d_psi, d_epsilon);
            EXPECT_NEAR(d_psi, c.d_psi, 5e-17 + 1e-13 * std::fabs(c.d_psi));
            EXPECT_NEAR(d_epsilon, c.d_epsilon, 5e-17 + 1e-13 * std::fabs(c.d_epsilon));
            EXPECT_NEAR(obliquity, c.obliquity, 2e-16);
        }
}

// The model keeps two of the terms; those left out add up to what its header says.
TEST(ShortNutation, StaysCloseToTheFullSeries) {
    for (int day = 2415020; day < 2488070; day += 3) {
        double o1 = 0, psi1 = 0, eps1 = 0, o2 = 0, psi2 = 0, eps2 = 0;
        NutBretagnon(day, 0.25, &o1, &psi1, &eps1);
        NutationSeidelmanBest(day, 0.25, o2, psi2, eps2);
        ASSERT_NEAR(psi1, psi2, 0.72 * kArcsec);
        ASSERT_NEAR(eps1, eps2, 0.27 * kArcsec);
        ASSERT_NEAR(o1, o2, 0.007 * kArcsec);
        ASSERT_EQ(EclipseAngle(day, 0.25), o1 + eps1);
    }
}

// Nutation moves the equinox along the ecliptic: seen from the ecliptic of date, the mean and
// the true frame differ by a turn of d_psi about the ecliptic's pole.
TEST(NutationMatrix, TurnsAboutThePoleOfTheEcliptic) {
    for (const int day : {2415020, 2446895, 2461000}) {
        double m[9], obliquity = 0, d_epsilon = 0, d_psi = 0;
        Nutation(day, 0.5, m, &obliquity, &d_epsilon, &d_psi);
        const Mat3 true_from_mean = load_matrix(m);
        GetMtrxEcl2Eq(day, 0.5, m);
        const Mat3 turn =
            transpose(load_matrix(m)) * true_from_mean * transpose(rotate_x(obliquity));
        EXPECT_LT(test::distance(turn, rotate_z(-d_psi)), 1e-15);
    }
}

double zeta, z, theta;
Mat3 precession(int day0, double f0, int day1, double f1) {
    double m[9];
    Precession(day0, f0, day1, f1, m, &zeta, &z, &theta);
    return load_matrix(m);
}

TEST(PrecessionMatrix, OneCenturyHasThePublishedAnglesAndNoTimeNone) {
    precession(2451545, 0.0, 2451545 + 36525, 0.0);
    EXPECT_NEAR(zeta / kArcsec, 2306.2181 + 0.30188 + 0.017998, 1e-12);
    EXPECT_NEAR(z / kArcsec, 2306.2181 + 1.09468 + 0.018203, 1e-12);
    EXPECT_NEAR(theta / kArcsec, 2004.3109 - 0.42665 - 0.041833, 1e-12);
    const Mat3 none = precession(2433282, 0.42345905, 2433282, 0.42345905);
    EXPECT_EQ(test::distance(none, kIdentity), 0);
    EXPECT_TRUE(zeta == 0 && z == 0 && theta == 0);
}

TEST(SiderealTime, ReferenceInstants) {
    // 1987 April 10, 0h UT: 13h 10m 46.3668s mean; the dynamical instant is 55.184 s later.
    const double mean = SiderialTime(false, 2446895, 0.5 + 55.184 / 86400);
    EXPECT_NEAR(mean, (13 + 10 / 60.0 + 46.3668 / 3600) * kTwoPi / 24,
                5e-5 / 3600 * kTwoPi / 24);
    // 64.184 s of UT before 2000 January 1, 12h UT.
    EXPECT_NEAR(SiderialTime(false, 2451545, 0.0) * 360 / kTwoPi, 280.1925, 5e-5);
}

// A steady turn: over one day, whatever way the instant is split, and through every leap of
// the truncation to midnight.
TEST(SiderealTime, TurnsSteadilyThroughTheDay) {
    for (int k = 0; k < 480; ++k) {
        const double f = -1 + k / 160.0;
        const double now = SiderialTime(false, 2457905, f);
        const double later = SiderialTime(false, 2457905, f + 1 / 160.0);
        EXPECT_TRUE(now >= 0 && now < kTwoPi);
        // The rate within the day is 3.0e-8 turns a day below that from day to day.
        EXPECT_NEAR(std::remainder(later - now - kTwoPi * 1.0027379 / 160, kTwoPi), 0, 2e-7);
        EXPECT_NEAR(std::remainder(SiderialTime(false, 2457906, f - 1) - now, kTwoPi), 0, 2e-7);
    }
}

TEST(EarthOrientation, InstantsThatAreNotFiniteGiveNoNumbers) {
    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        double a = 0, b = 0, c = 0;
        NutationSeidelman(2451545, bad, a, b, c);
        EXPECT_TRUE(std::isnan(b));
        NutationSeidelmanBest(2451545, bad, a, b, c);
        EXPECT_TRUE(std::isnan(b));
        EXPECT_TRUE(std::isnan(EclipseAngle(2451545, bad)));
        EXPECT_TRUE(std::isnan(SiderialTime(true, 2451545, bad)));
        EXPECT_TRUE(std::isnan(precession(2451545, 0.0, 2451545, bad).r0.x));
    }
    constexpr int kFirst = std::numeric_limits<int>::min();
    constexpr int kLast = std::numeric_limits<int>::max();
    EXPECT_TRUE(std::isfinite(SiderialTime(false, kFirst, 0.0)));
    EXPECT_TRUE(std::isfinite(precession(kLast, 0.0, kFirst, 0.0).r0.x));
}

}  // namespace
}  // namespace solsys
