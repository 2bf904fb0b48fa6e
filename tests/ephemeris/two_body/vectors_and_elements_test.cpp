// Elements from vectors and back, and the routines of satellites and mean ellipses.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/kepler.h"
#include "tests/ephemeris/two_body/exact_kepler.h"
#include "tests/support/geometry.h"

namespace solsys {
namespace {

constexpr int kDay = 2455555;

State state_of(double mu, const Elements& el, int day = kDay) {
    double r[3], v[3];
    EXPECT_TRUE(Kepler(1, mu, day, 0.25, el, r, v));
    return {load(r), load(v)};
}

Elements elements_of(double mu, const State& s) {
    double r[3], v[3];
    store(s.r, r), store(s.v, v);
    Elements el{};
    EXPECT_TRUE(VectorToElements(mu, r, v, &el));
    el.epochDay = kDay, el.epochFraction = 0.25;
    return el;
}

TEST(VectorToElements, GivesBackWhatTheVectorCameFrom) {
    std::mt19937_64 random(8);
    const auto uniform = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int k = 0; k < 20000; ++k) {
        const double mu = kGaussSquared * std::pow(10, uniform(-6, 1)), q = uniform(0.3, 5);
        const double e = k % 3 == 0 ? 1.0 : k % 3 == 1 ? uniform(0.01, 0.9) : uniform(1.05, 3);
        const double a = e == 1 ? 2 * q : q / std::fabs(1 - e);
        const double n = std::sqrt(mu / a) / (e == 1 ? q : a);
        const Elements el{e < 1 ? a : q,
                          e,
                          uniform(0.01, 3.13),
                          uniform(0.01, 6.27),
                          uniform(0.01, 6.27),
                          n,
                          e < 1 ? uniform(0.01, 6.27) : uniform(-4, 4),
                          0.25,
                          kDay};
        const State s = state_of(mu, el);
        const Elements back = elements_of(mu, s);
        EXPECT_NEAR(back.e, e, 1e-9);
        EXPECT_NEAR(back.q / el.q, 1, 1e-9);
        EXPECT_NEAR(back.i, el.i, 1e-12);
        EXPECT_NEAR(std::remainder(back.node - el.node, kTwoPi), 0, 1e-12);
        EXPECT_NEAR(std::remainder(back.peri - el.peri, kTwoPi), 0, 3e-9);
        EXPECT_NEAR(back.n / el.n, 1, 1e-9);
        const double dM = back.M - el.M;
        EXPECT_NEAR(e < 1 ? std::remainder(dM, kTwoPi) : dM, 0, 3e-8);
    }
}

TEST(VectorToElements, SettlesDegenerateOrbits) {
    const double speed = std::sqrt(kGaussSquared);
    const struct {
        Vec3 v;
        double q, e, i, node;
    } cases[] = {{{0, 1, 0}, 1, 0, 0, 0},
                 {{0, -1.1, 0}, 1 / 0.79, 0.21, kPi, kPi},
                 {{0, 0, 1.1}, 1 / 0.79, 0.21, kHalfPi, 0},
                 {{0, std::sqrt(2.0), 0}, 1, 1, 0, 0}};
    for (const auto& c : cases) {
        const Elements el = elements_of(kGaussSquared, {{1, 0, 0}, speed * c.v});
        EXPECT_NEAR(el.q, c.q, 1e-12);
        EXPECT_NEAR(el.e, c.e, c.e == 0 ? 1e-9 : 1e-12);
        EXPECT_EQ(el.i, c.i);
        EXPECT_EQ(el.node, c.node);
        EXPECT_TRUE(c.e != 1 || el.e == 1);
        EXPECT_TRUE(c.e != 0 || (el.M == 0 && std::fabs(el.q - 1) < 1e-14));
    }
}

// Position by the mean longitude against the exact ellipse.
double mean_ellipse_error(double e) {
    double worst = 0;
    const double a = 1.7, i = 0.3, node = 1.0, perihelion = 2.5;
    for (double M = -3.1; M < 3.14; M += 0.02) {
        double r[3], v[3], distance = 0;
        EXPECT_TRUE(ElementsToVector(1, kGaussSquared, a, e, i, node, perihelion,
                                     perihelion + M, r, &distance, v));
        EXPECT_NEAR(distance, norm(load(r)), 1e-13);
        // Energy fixes the speed, the areal velocity its direction. Near aphelion 1 + e cos nu
        // has lost a factor 1 - e.
        EXPECT_NEAR(dot(load(v), load(v)) / 2 - kGaussSquared / distance,
                    -kGaussSquared / (2 * a),
                    (1e-12 + 2e-14 / (1 - e)) * kGaussSquared / distance);
        EXPECT_NEAR(norm(cross(load(r), load(v))), std::sqrt(kGaussSquared * a * (1 - e * e)),
                    1e-13);
        const ExactPlane at = ExactOrbit{a, e, 1, M}.position(0);
        const Mat3 orbit_from_frame =
            rotate_z(perihelion - node) * rotate_x(i) * rotate_z(node);
        const Vec3 expected = transpose_times(
            orbit_from_frame, Vec3{static_cast<double>(at.X), static_cast<double>(at.Y), 0});
        worst = std::fmax(worst, norm(load(r) - expected));
    }
    return worst / a;
}

TEST(ElementsToVector, IsAsGoodAsItsBranch) {
    // The series leaves out sixth powers of e, which come to 2.2 e^6 at most.
    EXPECT_LT(mean_ellipse_error(0.05), 2.5 * std::pow(0.05, 6));
    EXPECT_LT(mean_ellipse_error(0.1999), 2.5 * std::pow(0.2, 6));
    EXPECT_GT(mean_ellipse_error(0.1999), 0.5 * std::pow(0.2, 6));
    // Newton's last step is below 1e-6 and the error after it about its square / (1 - e).
    for (const double e : {0.2, 0.9, 0.97, 0.98, 0.99, 0.999, 0.9999, 0.99995})
        EXPECT_LT(mean_ellipse_error(e), 1e-12 + 4e-16 / (1 - e)) << e;
    // The near-parabolic iteration stops short far from perihelion.
    EXPECT_LT(mean_ellipse_error(0.99996), 1e-8);
    EXPECT_LT(mean_ellipse_error(0.9999989), 1e-8);
}

TEST(ElementsToVector, RefusesWhatIsNoEllipse) {
    for (const double e : {0.9999991, 0.9999995, 1.0, 2.0, std::nan("")}) {
        double r[3] = {1, 2, 3}, v[3] = {4, 5, 6}, distance = 9;
        EXPECT_FALSE(ElementsToVector(1, kGaussSquared, 1, e, 0, 0, 0, 0, r, &distance, v));
        EXPECT_EQ(distance, 0);
        EXPECT_EQ(r[0] + r[1] + r[2] + v[0] + v[1] + v[2], 21);
    }
}

TEST(KepElla, FollowsTheExactEllipse) {
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> angle(-20, 20), unit_range(0, 1);
    const double mu = 8.4596e-08;  // Saturn
    double worst = 0;
    for (int k = 0; k < 20000; ++k) {
        const double a = 0.01,
                     e = k % 4 == 0 ? 0.99 * unit_range(random) : 0.1 * unit_range(random);
        const double i = 3.1 * unit_range(random), M = angle(random), peri = angle(random),
                     node = angle(random);
        const double elements[6] = {a, e, i, M, peri, node};
        double out[6];
        ASSERT_GE(KepElla(elements, mu, out), 1) << e << " " << M;
        const long double n = std::sqrt(static_cast<long double>(mu) / a) / a;
        const ExactOrbit exact{a, e, 1, M};
        const ExactPlane at = exact.position(0);
        const Mat3 orbit_from_frame = rotate_z(peri) * rotate_x(i) * rotate_z(node);
        const auto in_space = [&](long double X, long double Y) {
            return transpose_times(orbit_from_frame,
                                   Vec3{static_cast<double>(X), static_cast<double>(Y), 0});
        };
        // Five cosines from sines, each within eps / |cos|, 1.5e-8 at worst, on a scale of
        // a / (1 - e) for the one of E.
        const double error = norm(load(out) - in_space(at.X, at.Y)) / a;
        EXPECT_LT(error, 5e-8);
        worst = std::fmax(worst, error);
        // dE/dM differences in M: the exact velocity is n times the slope over M.
        const long double h = 1e-5L;
        const ExactPlane ahead = exact.position(h), behind = exact.position(-h);
        const Vec3 v =
            in_space(n * (ahead.X - behind.X) / (2 * h), n * (ahead.Y - behind.Y) / (2 * h));
        const double slope =
            std::hypot(static_cast<double>(at.X), static_cast<double>(at.Y)) / a;
        EXPECT_NEAR(norm(load(out + 3) - v) / norm(v), 0,
                    5e-8 / slope + 2e-10 / std::pow(slope, 6));
    }
    EXPECT_GT(worst, 1e-13);
}

TEST(KepElla, RefusesWhatIsNoEllipse) {
    const double good[6] = {0.01, 0.1, 0.5, 1, 2, 3};
    const double mu = 1e-7, nan = std::nan(""),
                 infinity = std::numeric_limits<double>::infinity();
    double out[6];
    ASSERT_GE(KepElla(good, mu, out), 1);
    const struct {
        int index;
        double value;
    } faults[] = {{0, 1e-16}, {0, -1},  {0, nan}, {1, -0.1}, {1, 1.0},      {1, nan},
                  {2, -0.1},  {2, kPi}, {2, nan}, {3, nan},  {3, infinity}, {5, nan}};
    for (const auto& fault : faults) {
        double elements[6];
        for (int k = 0; k < 6; ++k) elements[k] = k == fault.index ? fault.value : good[k];
        EXPECT_EQ(KepElla(elements, mu, out), -1) << fault.index << " " << fault.value;
    }
    EXPECT_EQ(KepElla(good, 1e-16, out), -1);
    EXPECT_EQ(KepElla(good, nan, out), -1);
}

TEST(FundamentalCoor, ProjectsOnTheReferencesAxes) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> angle(-1.5, 1.5);
    for (int k = 0; k < 200; ++k) {
        const double reference[3] = {1, 4 * angle(random), angle(random)};
        const double body[3] = {2.5, 4 * angle(random), angle(random)};
        const Vec3 r = 2.5 * test::direction(body[1], body[2]);
        const Vec3 west = test::direction(reference[1] - kHalfPi, 0);
        const Vec3 north = test::direction(reference[1], reference[2] + kHalfPi);
        const Vec3 across_the_pole = test::direction(reference[1] + kPi, reference[2]);
        double out[3];
        FundamentalCoor(reference, body, out);
        EXPECT_NEAR(out[0], dot(r, west), 1e-14);
        EXPECT_NEAR(out[1], dot(r, north), 1e-14);
        EXPECT_NEAR(out[2], dot(r, across_the_pole), 1e-14);
    }
}

}  // namespace
}  // namespace solsys
