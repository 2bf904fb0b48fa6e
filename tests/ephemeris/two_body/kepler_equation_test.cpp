// The solvers of Kepler's equation against bisection in extended precision, branch by branch,
// over a dense grid of eccentricity and anomaly.
#include "ephemeris/two_body/kepler_equation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>

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
    double next(double least, double greatest) {
        const double sign = unit_(random_) < 0.5 ? -1 : 1;
        if (even_ = !even_; even_) return sign * (least + (greatest - least) * unit_(random_));
        return sign * least * std::pow(greatest / least, unit_(random_));
    }

  private:
    std::mt19937_64 random_{20260101};
    std::uniform_real_distribution<double> unit_{0, 1};
    bool even_ = false;
};

constexpr int kSamples = 4000;

using Exact = long double (*)(long double e, long double M);
using Check = std::function<void(double e, double M, double expected)>;

void over(std::initializer_list<double> eccentricities, double least, double greatest,
          Exact exact, const Check& check) {
    for (const double e : eccentricities) {
        Anomalies anomalies;
        for (int k = 0; k < kSamples && !testing::Test::HasFailure(); ++k) {
            const double M = anomalies.next(least, greatest);
            SCOPED_TRACE(std::to_string(e) + " " + std::to_string(M));
            check(e, M, static_cast<double>(exact(e, M)));
        }
    }
}
constexpr auto kShapes = {0.0, 0.01,  0.1,  0.3,   0.5,   0.7,    0.8,    0.80001,
                          0.9, 0.967, 0.99, 0.995, 0.999, 0.9999, 0.99995};

TEST(EllipticEquation, SteffensenWithinItsStepRule) {
    over(kShapes, 1.001e-9, kPi - 1.001e-9, exact_eccentric_anomaly,
         [](double e, double M, double expected) {
             const Anomaly E = ellipse_by_steffensen(e, M);
             ASSERT_TRUE(E.converged);
             // The step rule; the rounding of d is passed on with the slope, squared.
             const double slope = 1 - e * std::cos(expected);
             ASSERT_NEAR(E.value, expected,
                         1.1e-10 + 4e-16 * std::fabs(expected) / (slope * slope));
         });
}

TEST(EllipticEquation, NewtonOnTheFastCosine) {
    for (const double shape : kShapes) {
        int failures = 0;
        over({shape}, 1.001e-9, kPi - 1.001e-9, exact_eccentric_anomaly,
             [&](double e, double M, double expected) {
                 const double turn = M < 0 ? kTwoPi : 0;
                 const Anomaly E = ellipse_by_newton(e, M + turn, e > 0.8 ? kPi : M + turn);
                 // A sine from its cosine is wrong by up to eps / |sin E| (1.5e-8 at the axis),
                 // which the equation passes on with e / (1 - e cos E); the step rule adds
                 // 1e-10.
                 const double sine = std::fmax(std::fabs(std::sin(expected)), 1e-9);
                 const double passed_on =
                     std::fmin(1.5e-8, 4e-16 / sine) * e / (1 - e * std::cos(expected));
                 if (E.converged) {
                     ASSERT_NEAR(E.value, expected + turn, 1e-10 + 4 * passed_on);
                 } else {
                     // Only where the staircase of that sine is coarser than the step rule.
                     ASSERT_GT(passed_on, 2e-12);
                     ++failures;
                 }
             });
        EXPECT_LT(failures, kSamples / 5);
    }
}

TEST(NearParabolicEquation, AgreesWithBisectionUpToAphelion) {
    over({0.9999500001, 0.99996, 0.99999, 0.999998}, 1e-13, kPi, exact_eccentric_anomaly,
         [](double e, double M, double expected) {
             const double q = 0.7, a = q / (1 - e), n = std::sqrt(kGaussSquared / a) / a;
             // c3 is summed to 1e-10 of 1/6, which is 6e-10 of E^2 at most in the cubic term;
             // beyond one radian the 15 passes, each gaining a constant factor, are what
             // limits.
             const double size = std::fabs(expected);
             ASSERT_NEAR(near_parabolic_anomaly(kGaussSquared, q, e, M / n), expected,
                         size < 1 ? 6e-10 * size + 1e-17 : 2e-7);
         });
}

TEST(HyperbolicEquation, AgreesWithBisection) {
    over({1 + 1.1e-6, 1.00001, 1.001, 1.2, 3.36, 20.0}, 1e-13, 1e5, exact_hyperbolic_anomaly,
         [](double e, double M, double expected) {
             // Newton's last step is at most 1e-10 and the error after it of the order of its
             // square; what remains is rounding, passed on with 1 / (e cosh H - 1).
             const double slope = e * std::cosh(expected) - 1, size = std::fabs(expected);
             const double rounding = 4 * std::numeric_limits<double>::epsilon() *
                                     (size + (std::fabs(M) + size) / slope);
             const double start = hyperbola_start(e, M);
             const Anomaly strict = hyperbola_by_newton(e, M, start, Stop::absolute);
             const Anomaly relative = hyperbola_by_newton(e, M, start, Stop::relative);
             ASSERT_TRUE(strict.converged && relative.converged);
             ASSERT_NEAR(strict.value, expected, rounding + 1e-19 / slope);
             const double step = 1e-10 * (1 + std::fabs(expected + M));
             ASSERT_NEAR(relative.value, expected, rounding + 1e-19 / slope + step * step);
         });
}

TEST(ParabolicEquation, BothSolutionsAgreeWithBisection) {
    const Exact exact = [](long double, long double W) { return exact_barker_root(W); };
    over({1.0}, 1e-13, 1e8, exact, [](double, double W, double expected) {
        const double tolerance = 1e-15 * (1 + std::fabs(expected));
        const Anomaly s = barker_by_newton(W);
        ASSERT_TRUE(s.converged);
        ASSERT_NEAR(s.value, expected, tolerance);
        const BarkerRoot root = barker_root(W);
        ASSERT_NEAR(root.s, expected, 2 * tolerance);
        ASSERT_NEAR(root.slope * (1 + expected * expected), 1, 1e-14);
    });
}

}  // namespace
}  // namespace solsys
