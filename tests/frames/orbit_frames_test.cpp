// Frames and scalars of two-body states, against states built from known orbits.
#include <gtest/gtest.h>

#include "core/constants.h"
#include "solsys/earth_orientation.h"
#include "tests/support/geometry.h"

namespace solsys {
namespace {

constexpr double kMu = 2.5;

struct Orbit {
    double p, e, anomaly;  // semi-latus rectum, eccentricity, true anomaly
};

class TwoBodyState : public testing::TestWithParam<Orbit> {};

TEST_P(TwoBodyState, GivesItsOrbitBack) {
    const Orbit& o = GetParam();
    const Mat3 axes = rotate_z(0.4) * rotate_x(1.1) * rotate_z(2.3);  // P, Q, W by three turns
    const double c = std::cos(o.anomaly), s = std::sin(o.anomaly);
    const Vec3 position = c * axes.r0 + s * axes.r1;
    double r[3], v[3], m[9], p = 0, e = 0, angle = 0;
    store(o.p / (1 + o.e * c) * position, r);
    store(std::sqrt(kMu / o.p) * (-s * axes.r0 + (o.e + c) * axes.r1), v);
    CalcPEM(kMu, r, v, &p, &e, &angle);
    EXPECT_NEAR(p, o.p, 4e-15 * o.p);
    // e^2 is what is formed: at a small e the error is the root of a rounding.
    EXPECT_NEAR(e, o.e, o.e < 1e-6 ? 3e-8 : 4e-15 / o.e + 4e-15 * o.e);
    EXPECT_NEAR(std::cos(angle), position.x, 1e-15);
    EXPECT_EQ(std::signbit(angle), r[1] < 0);

    Eq_Orb(kMu, r, v, m);
    const Mat3 frame = load_matrix(m);
    const bool circular = o.e < 1e-4;
    EXPECT_LT(norm(frame.r2 - axes.r2), 2e-15);
    EXPECT_LT(norm(frame.r0 - (circular ? position : axes.r0)), circular ? 2e-15 : 4e-15 / o.e);
    EXPECT_LT(norm(frame.r1 - cross(frame.r2, frame.r0)), 1e-15);

    // Down, and the normal of the motion: both factors of its product are reversed, or none is.
    RNB_matrix(r, v, m);
    EXPECT_LT(test::distance(load_matrix(m), {-position, cross(axes.r2, -position), axes.r2}),
              4e-15);
}

INSTANTIATE_TEST_SUITE_P(CircleToHyperbola, TwoBodyState,
                         testing::Values(Orbit{1.3, 0, 0.7}, Orbit{1.3, 5e-5, 2},
                                         Orbit{2, 2e-4, 4}, Orbit{0.9, 0.2, 1},
                                         Orbit{5, 0.97, -2.4}, Orbit{1, 1, 0.3},
                                         Orbit{1.1, 1.0000001, -1}, Orbit{3, 2.5, 1.2}));

TEST(TwoBodyFrames, WhatHasNoPlane) {
    const double zero[3] = {0, 0, 0}, r[3] = {1, 2, -3};
    double m[9];
    RNB_matrix(zero, zero, m);
    EXPECT_EQ(test::distance(load_matrix(m), kIdentity), 0);
    RNB_matrix(r, r, m);
    EXPECT_FALSE(std::isfinite(m[8]));
    Eq_Orb(kMu, r, r, m);
    EXPECT_FALSE(std::isfinite(m[8]));
}

TEST(TwoBodyFrames, PolarAngleOnTheXAxis) {
    double p = 0, e = 0, angle = 7;
    const double v[3] = {0, 0, 1}, plus[3] = {2, 0, 0}, minus[3] = {-2, 0, 0};
    CalcPEM(1, plus, v, &p, &e, &angle);
    EXPECT_EQ(angle, 0);
    EXPECT_EQ(e, 1);  // 2 / 2 - 1 = 0: a parabola
    CalcPEM(1, minus, v, &p, &e, &angle);
    EXPECT_DOUBLE_EQ(angle, kPi);
}

}  // namespace
}  // namespace solsys
