// The solvers of Kepler's equation against bisection in extended precision, branch by branch,
// over a dense grid of eccentricity and anomaly.
#include "ephemeris/two_body/kepler_equation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "core/constants.h"
#include "ephemeris/two_body/orbit_plane.h"
#include "tests/ephemeris/two_body/exact_kepler.h"

namespace solsys {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// Mean anomalies from 1e-9 to pi of either sign: half of them even, half by their logarithm,
// since all trouble is near perihelion.
class Anomalies {
  public:
    double next(double least = 1.001e-9, double greatest = kPi - 1.001e-9) {
        const double sign = unit_(random_) < 0.5 ? -1 : 1;
        if (even_ = !even_; even_) return sign * (least + (greatest - least) * unit_(random_));
        return sign * least * std::pow(greatest / least, unit_(random_));
    }

  private:
    std::mt19937_64 random_{20260101};
    std::uniform_real_distribution<double> unit_{0, 1};
    bool even_ = false;
};

double rounded(long double x) { return static_cast<double>(x); }

constexpr int kSamples = 4000;

class EllipticEquation : public testing::TestWithParam<double> {};

TEST_P(EllipticEquation, SteffensenWithinItsStepRule) {
    const double e = GetParam();
    Anomalies anomalies;
    for (int k = 0; k < kSamples; ++k) {
        const double M = anomalies.next();
        const Anomaly E = ellipse_by_steffensen(e, M);
        ASSERT_TRUE(E.converged) << M;
        const double expected = rounded(exact_eccentric_anomaly(e, M));
        // The step rule; the rounding of d is passed on with the slope, squared.
        const double slope = 1 - e * std::cos(expected);
        ASSERT_NEAR(E.value, expected, 1.1e-10 + 4e-16 * std::fabs(expected) / (slope * slope))
            << M;
    }
}

TEST_P(EllipticEquation, NewtonOnTheFastCosine) {
    const double e = GetParam();
    Anomalies anomalies;
    int failures = 0;
    for (int k = 0; k < kSamples; ++k) {
        const double signed_M = anomalies.next();
        const double M = signed_M < 0 ? signed_M + kTwoPi : signed_M;
        const double expected = rounded(exact_eccentric_anomaly(e, M));
        const Anomaly E = ellipse_by_newton(e, M, e > 0.8 ? kPi : M);
        // A sine from its cosine is wrong by up to eps / |sin E| (1.5e-8 at the axis), which
        // the equation passes on with e / (1 - e cos E); the step rule adds 1e-10.
        const double sine = std::fabs(std::sin(expected));
        const double slope = 1 - e * std::cos(expected);
        const double sine_error = std::fmin(1.5e-8, 4e-16 / std::fmax(sine, 1e-9));
        if (!E.converged) {
            // Only where the staircase of that sine is coarser than the step rule.
            ASSERT_GT(sine_error * e / slope, 2e-12) << M;
            ++failures;
            continue;
        }
        ASSERT_NEAR(E.value, expected, 1e-10 + 4 * sine_error * e / slope) << M;
    }
    EXPECT_LT(failures, kSamples / 5);
}

INSTANTIATE_TEST_SUITE_P(Shapes, EllipticEquation,
                         testing::Values(0.0, 0.01, 0.1, 0.3, 0.5, 0.7, 0.8, 0.80001, 0.9,
                                         0.967, 0.99, 0.995, 0.999, 0.9999, 0.99995));

class NearParabolicEquation : public testing::TestWithParam<double> {};

TEST_P(NearParabolicEquation, AgreesWithBisectionUpToAphelion) {
    const double e = GetParam();
    const double q = 0.7, a = q / (1 - e);
    const double n = std::sqrt(kGaussSquared / a) / a;
    Anomalies anomalies;
    for (int k = 0; k < kSamples; ++k) {
        const double M = anomalies.next(1e-13, kPi);
        const double expected = rounded(exact_eccentric_anomaly(e, M));
        const double E = near_parabolic_anomaly(kGaussSquared, q, e, M / n);
        // c3 is summed to 1e-10 of 1/6, which is 6e-10 of E^2 at most in the cubic term; beyond
        // one radian the 15 passes, each gaining a constant factor, are what limits.
        ASSERT_NEAR(E, expected,
                    std::fabs(expected) < 1 ? 6e-10 * std::fabs(expected) + 1e-17 : 2e-7)
            << M;
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, NearParabolicEquation,
                         testing::Values(0.9999500001, 0.99996, 0.99999, 0.999998));

class HyperbolicEquation : public testing::TestWithParam<double> {};

TEST_P(HyperbolicEquation, AgreesWithBisection) {
    const double e = GetParam();
    Anomalies anomalies;
    for (int k = 0; k < kSamples; ++k) {
        const double M = anomalies.next(1e-13, 1e5);
        const double expected = rounded(exact_hyperbolic_anomaly(e, M));
        // Newton's last step is at most 1e-10 and the error after it of the order of its
        // square; what remains is rounding, passed on with 1 / (e cosh H - 1).
        const double slope = e * std::cosh(expected) - 1;
        const double rounding =
            4 * std::numeric_limits<double>::epsilon() *
            (std::fabs(expected) + (std::fabs(M) + std::fabs(expected)) / slope);
        const double start = hyperbola_start(e, M);
        const Anomaly strict = hyperbola_by_newton(e, M, start, Stop::absolute);
        ASSERT_TRUE(strict.converged) << M;
        ASSERT_NEAR(strict.value, expected, rounding + 1e-19 / slope) << M;
        const Anomaly relative = hyperbola_by_newton(e, M, start, Stop::relative);
        ASSERT_TRUE(relative.converged) << M;
        const double step = 1e-10 * (1 + std::fabs(expected + M));
        ASSERT_NEAR(relative.value, expected, rounding + 1e-19 / slope + step * step) << M;
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, HyperbolicEquation,
                         testing::Values(1 + 1.1e-6, 1.00001, 1.001, 1.2, 3.36, 20.0));

TEST(ParabolicEquation, BothSolutionsAgreeWithBisection) {
    Anomalies anomalies;
    for (int k = 0; k < kSamples; ++k) {
        const double W = anomalies.next(1e-13, 1e8);
        const double expected = rounded(exact_barker_root(W));
        const double tolerance = 1e-15 * (1 + std::fabs(expected));
        const Anomaly s = barker_by_newton(W);
        ASSERT_TRUE(s.converged) << W;
        ASSERT_NEAR(s.value, expected, tolerance) << W;
        const BarkerRoot root = barker_root(W);
        ASSERT_NEAR(root.s, expected, 2 * tolerance) << W;
        ASSERT_NEAR(root.slope * (1 + expected * expected), 1, 1e-14) << W;
    }
}

TEST(KeplerEquation, EndsOnAnything) {
    const double wild[] = {kNan, kInfinity, -kInfinity, 1e308, -1e308, 1e17};
    for (const double x : wild) {
        EXPECT_FALSE(ellipse_by_steffensen(0.5, x).converged && !std::isfinite(x)) << x;
        EXPECT_FALSE(ellipse_by_newton(0.5, x, x).converged && !std::isfinite(x)) << x;
        EXPECT_FALSE(
            hyperbola_by_newton(1.5, x, hyperbola_start(1.5, x), Stop::absolute).converged &&
            !std::isfinite(x))
            << x;
        EXPECT_FALSE(barker_by_newton(x).converged && !std::isfinite(x)) << x;
        EXPECT_FALSE(std::isfinite(near_parabolic_anomaly(kGaussSquared, 1, 0.99999, x)) &&
                     !std::isfinite(x))
            << x;
    }
}

TEST(KeplerEquation, ApsidesAreNotIterated) {
    for (const double turn : {0.0, kTwoPi}) {
        for (const double off : {-0.99e-9, 0.0, 0.99e-9}) {
            const Apsis apsis = apsis_of(reduced_mean_anomaly(turn + off));
            EXPECT_TRUE(apsis.at) << turn << off;
            EXPECT_EQ(apsis.E, 0.0);
        }
        EXPECT_FALSE(apsis_of(reduced_mean_anomaly(turn + 1.1e-9)).at);
    }
    EXPECT_TRUE(apsis_of(kPi + 0.99e-9).at);
    EXPECT_EQ(apsis_of(kPi).E, kPi);
    EXPECT_FALSE(apsis_of(kPi + 1.1e-9).at);
}

}  // namespace
}  // namespace solsys
