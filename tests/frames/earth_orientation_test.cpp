// Precession, nutation, obliquity and sidereal time: reference values, invariants, and the two
// evaluations of the series against each other.
#include "solsys/earth_orientation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

#include "solsys/time_scales.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kTwoPi = 6.283185307179586476925;
constexpr double kArcsec = 4.84813681109536e-6;

struct NutationCase {
    int day;
    double fraction, d_psi, d_epsilon, obliquity;
};
class FullNutation : public testing::TestWithParam<NutationCase> {};

// Values of a separate evaluation of the published table, itself within 6e-17 rad of ERFA
// nut80.
TEST_P(FullNutation, BothEvaluationsGiveTheReferenceValues) {
    const auto& c = GetParam();
    for (auto* nutation : {&NutationSeidelman, &NutationSeidelmanBest}) {
        double obliquity = 0;
        double d_psi = 0;
        double d_epsilon = 0;
        nutation(c.day, c.fraction, obliquity, d_psi, d_epsilon);
        EXPECT_NEAR(d_psi, c.d_psi, 5e-17 + 1e-13 * std::fabs(c.d_psi));
        EXPECT_NEAR(d_epsilon, c.d_epsilon, 5e-17 + 1e-13 * std::fabs(c.d_epsilon));
        EXPECT_NEAR(obliquity, c.obliquity, 2e-16);
    }
}

INSTANTIATE_TEST_SUITE_P(
    TwoCenturies, FullNutation,
    testing::Values(NutationCase{2451545, 0.0, -6.7502476175325e-05, -2.7992212383770e-05,
                                 4.0909280422232897e-01},
                    NutationCase{2415020, 0.0, 8.4063802103872e-05, -1.1127148444138e-05,
                                 4.0931975809706767e-01},
                    NutationCase{2433282, 0.42345905, -1.6064043116154e-05, 4.0329939004613e-05,
                                 4.0920628564652944e-01},
                    NutationCase{2446895, 0.5, -1.8363890684754e-05, 4.5778364005103e-05,
                                 4.0912169604580345e-01},
                    NutationCase{2457754, 0.5, -3.1285630023184e-05, -4.3867521622200e-05,
                                 4.0905421849013335e-01},
                    NutationCase{2461000, 0.25, 1.4837886574240e-05, 4.0994375442933e-05,
                                 4.0903404947324196e-01},
                    NutationCase{2488069, 0.5, 1.5924045265337e-05, 4.1487352018823e-05,
                                 4.0886584773349494e-01}));

TEST(FullNutationSeries, EvaluationsAgreeAtAnyDate) {
    std::mt19937_64 engine(80);
    std::uniform_int_distribution<int> day(625673, 3182030);  // 3000 BC to AD 4000
    std::uniform_real_distribution<double> fraction(0, 1);
    double worst = 0;
    for (int i = 0; i < 20000; ++i) {
        const int d = day(engine);
        const double f = fraction(engine);
        double e1 = 0, psi1 = 0, eps1 = 0, e2 = 0, psi2 = 0, eps2 = 0;
        NutationSeidelman(d, f, e1, psi1, eps1);
        NutationSeidelmanBest(d, f, e2, psi2, eps2);
        ASSERT_EQ(e1, e2);
        worst = std::max({worst, std::fabs(psi1 - psi2), std::fabs(eps1 - eps2)});
    }
    // 17.2" times a few roundings of the leading term.
    EXPECT_LT(worst, 1e-19 + 4 * 1.1e-16 * 17.2 * kArcsec);
}

// The model keeps two of the terms; those left out add up to what its header says.
TEST(ShortNutation, StaysCloseToTheFullSeries) {
    double worst_psi = 0, worst_eps = 0, worst_obliquity = 0;
    for (int day = 2415020; day < 2488070; day += 3) {
        double o1 = 0, psi1 = 0, eps1 = 0, o2 = 0, psi2 = 0, eps2 = 0;
        NutBretagnon(day, 0.25, &o1, &psi1, &eps1);
        NutationSeidelmanBest(day, 0.25, o2, psi2, eps2);
        worst_psi = std::max(worst_psi, std::fabs(psi1 - psi2));
        worst_eps = std::max(worst_eps, std::fabs(eps1 - eps2));
        worst_obliquity = std::max(worst_obliquity, std::fabs(o1 - o2));
        ASSERT_EQ(EclipseAngle(day, 0.25), o1 + eps1);
    }
    EXPECT_LT(worst_psi, 0.72 * kArcsec);
    EXPECT_LT(worst_eps, 0.27 * kArcsec);
    EXPECT_LT(worst_obliquity, 0.007 * kArcsec);
}

using Matrix = std::array<double, 9>;

void expect_near(const Matrix& a, const Matrix& b, double tolerance) {
    for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "element " << i;
}
void expect_rotation(const Matrix& m, double tolerance) {
    Matrix t{};
    Matrix product{};
    Mtrans(m.data(), t.data(), 3, 3);
    M3prod(m.data(), t.data(), product.data());
    expect_near(product, {1, 0, 0, 0, 1, 0, 0, 0, 1}, tolerance);
}

// Nutation moves the equinox along the ecliptic: seen from the ecliptic of date, the mean and
// the true frame differ by a turn of d_psi about the ecliptic's pole.
TEST(NutationMatrix, TurnsAboutThePoleOfTheEcliptic) {
    for (const int day : {2415020, 2446895, 2461000}) {
        Matrix true_from_mean{};
        Matrix true_from_ecliptic{};
        double obliquity = 0, d_epsilon = 0, d_psi = 0;
        Nutation(day, 0.5, true_from_mean.data(), &obliquity, &d_epsilon, &d_psi);
        GetMtrxEcl2Eq(day, 0.5, true_from_ecliptic.data());
        expect_rotation(true_from_mean, 1e-15);

        const double pole_ecliptic[3] = {0, 0, 1};
        const double pole_mean[3] = {0, -std::sin(obliquity), std::cos(obliquity)};
        const double star_mean[3] = {1, 0, 0};  // the mean equinox
        double from_mean[3];
        double from_ecliptic[3];
        MV3prod(true_from_mean.data(), pole_mean, from_mean);
        MV3prod(true_from_ecliptic.data(), pole_ecliptic, from_ecliptic);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(from_mean[i], from_ecliptic[i], 3e-16);
        MV3prod(true_from_mean.data(), star_mean, from_mean);
        V3Mprod(from_mean, true_from_ecliptic.data(), from_ecliptic);
        EXPECT_NEAR(std::atan2(from_ecliptic[1], from_ecliptic[0]), d_psi, 3e-16);
        EXPECT_NEAR(from_ecliptic[2], 0, 2e-16);
    }
}

struct PrecessionResult {
    Matrix matrix{};
    double zeta = 7, z = 7, theta = 7;
};
PrecessionResult precession(int day0, double f0, int day1, double f1) {
    PrecessionResult p;
    Precession(day0, f0, day1, f1, p.matrix.data(), &p.zeta, &p.z, &p.theta);
    return p;
}

TEST(PrecessionMatrix, EqualEpochsGiveTheIdentity) {
    const auto p = precession(2433282, 0.42345905, 2433282, 0.42345905);
    EXPECT_EQ(p.matrix, (Matrix{1, 0, 0, 0, 1, 0, 0, 0, 1}));
    EXPECT_EQ(p.zeta, 0);
    EXPECT_EQ(p.z, 0);
    EXPECT_EQ(p.theta, 0);
}

TEST(PrecessionMatrix, OneCenturyHasThePublishedAngles) {
    const auto p = precession(2451545, 0.0, 2451545 + 36525, 0.0);
    EXPECT_NEAR(p.zeta / kArcsec, 2306.2181 + 0.30188 + 0.017998, 1e-12);
    EXPECT_NEAR(p.z / kArcsec, 2306.2181 + 1.09468 + 0.018203, 1e-12);
    EXPECT_NEAR(p.theta / kArcsec, 2004.3109 - 0.42665 - 0.041833, 1e-12);
}

// From a separate program with library sines and cosines. The sine of an angle a made from its
// cosine is uncertain by 1.1e-16 / a: 6e-15 for the smallest angle here, 0.012.
TEST(PrecessionMatrix, BesselianEpochsOfTheOldCatalogues) {
    expect_near(precession(2451545, 0.0, 2405889, 0.258550474886).matrix,
                {0.999535872941871, 0.027936937766810, 0.012147683340704, -0.027936938209874,
                 0.999609673167295, -0.000169687453072, -0.012147682321757, -0.000169760382349,
                 0.999926199774575},
                2e-14);
    expect_near(precession(2451545, 0.0, 2396758, 0.203580949921).matrix,
                {0.999331755887236, 0.033519447677003, 0.014576978519630, -0.033519448595741,
                 0.999438035533591, -0.000244324769819, -0.014576976407012, -0.000244450780940,
                 0.999893720353641},
                2e-14);
}

TEST(PrecessionMatrix, ThereAndBackIsNoMove) {
    for (const int span : {-73050, -3652, 3652, 20000, 73050}) {
        const auto there = precession(2451545, 0.0, 2451545 + span, 0.25);
        const auto back = precession(2451545 + span, 0.25, 2451545, 0.0);
        expect_rotation(there.matrix, 4e-16);
        Matrix both{};
        M3prod(back.matrix.data(), there.matrix.data(), both.data());
        // The theory's polynomials are cut at the third order in the span: the way back does
        // not undo the way out beyond 1e-3 arcsec in two centuries.
        const double centuries = span / 36525.0;
        expect_near(both, {1, 0, 0, 0, 1, 0, 0, 0, 1},
                    2e-13 + 1e-9 * centuries * centuries * std::fabs(centuries));
    }
}

TEST(SiderealTime, ReferenceInstants) {
    // 1987 April 10, 0h UT: 13h 10m 46.3668s mean; the dynamical instant is 55.184 s later.
    const double mean = SiderialTime(false, 2446895, 0.5 + 55.184 / 86400);
    EXPECT_NEAR(mean, (13 + 10 / 60.0 + 46.3668 / 3600) * kTwoPi / 24,
                5e-5 / 3600 * kTwoPi / 24);
    // 64.184 s of UT before 2000 January 1, 12h UT.
    EXPECT_NEAR(SiderialTime(false, 2451545, 0.0) * 360 / kTwoPi, 280.1925, 5e-5);
}

TEST(SiderealTime, ApparentAddsTheEquationOfTheEquinoxes) {
    for (int day = 2415020; day < 2488070; day += 997) {
        double obliquity = 0, d_psi = 0, d_epsilon = 0;
        NutBretagnon(day, 0.125, &obliquity, &d_psi, &d_epsilon);
        const double difference =
            SiderialTime(true, day, 0.125) - SiderialTime(false, day, 0.125);
        EXPECT_NEAR(std::remainder(difference, kTwoPi), d_psi * std::cos(obliquity + d_epsilon),
                    2e-15);
    }
}

// A steady turn: over one day, whatever way the instant is split, and through every leap of
// the truncation to midnight.
TEST(SiderealTime, TurnsSteadilyThroughTheDay) {
    for (int k = 0; k < 480; ++k) {
        const double f = -1 + k / 160.0;
        const double now = SiderialTime(false, 2457905, f);
        const double later = SiderialTime(false, 2457905, f + 1 / 160.0);
        EXPECT_GE(now, 0);
        EXPECT_LT(now, kTwoPi);
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
        EXPECT_TRUE(std::isnan(precession(2451545, 0.0, 2451545, bad).matrix[0]));
    }
    constexpr int kFirst = std::numeric_limits<int>::min();
    constexpr int kLast = std::numeric_limits<int>::max();
    EXPECT_TRUE(std::isfinite(SiderialTime(false, kFirst, 0.0)));
    EXPECT_TRUE(std::isfinite(precession(kLast, 0.0, kFirst, 0.0).matrix[0]));
}

}  // namespace
