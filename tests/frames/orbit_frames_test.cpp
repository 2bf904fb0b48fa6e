// Frames and scalars of two-body states, against states built from known orbits.
#include <gtest/gtest.h>

#include <cmath>

#include "core/linalg.h"
#include "solsys/earth_orientation.h"

namespace {

using solsys::Mat3;
using solsys::Vec3;

constexpr double kMu = 2.5;

struct Orbit {
    double p, e, anomaly;  // semi-latus rectum, eccentricity, true anomaly
};

// Axes P, Q, W by three turns.
const Mat3 kAxes = solsys::rotate_z(0.4) * solsys::rotate_x(1.1) * solsys::rotate_z(2.3);

void state_of(const Orbit& o, double r[3], double v[3]) {
    const double c = std::cos(o.anomaly);
    const double s = std::sin(o.anomaly);
    const double radius = o.p / (1 + o.e * c);
    const double k = std::sqrt(kMu / o.p);
    solsys::store(radius * (c * kAxes.r0 + s * kAxes.r1), r);
    solsys::store(k * (-s * kAxes.r0 + (o.e + c) * kAxes.r1), v);
}

void expect_near(Vec3 a, Vec3 b, double tolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

class TwoBodyState : public testing::TestWithParam<Orbit> {};

TEST_P(TwoBodyState, GivesItsOrbitBack) {
    const Orbit& o = GetParam();
    double r[3];
    double v[3];
    state_of(o, r, v);
    double p = 0, e = 0, angle = 0;
    CalcPEM(kMu, r, v, &p, &e, &angle);
    EXPECT_NEAR(p, o.p, 4e-15 * o.p);
    // e^2 is what is formed: at a small e the error is the root of a rounding.
    EXPECT_NEAR(e, o.e, o.e < 1e-6 ? 3e-8 : 4e-15 / o.e + 4e-15 * o.e);
    const double radius = norm(solsys::load(r));
    EXPECT_NEAR(std::cos(angle), r[0] / radius, 1e-15);
    EXPECT_EQ(std::signbit(angle), r[1] < 0);

    double frame[9];
    Eq_Orb(kMu, r, v, frame);
    const Vec3 position = (1 / radius) * solsys::load(r);
    expect_near(solsys::load(frame + 6), kAxes.r2, 2e-15);
    const bool circular = o.e < 1e-4;
    expect_near(solsys::load(frame), circular ? position : kAxes.r0,
                circular ? 2e-15 : 4e-15 / o.e);
    expect_near(solsys::load(frame + 3), cross(solsys::load(frame + 6), solsys::load(frame)),
                1e-15);

    double rnb[9];
    RNB_matrix(r, v, rnb);
    expect_near(solsys::load(rnb), -position, 1e-15);
    // Both factors of the normal's product are reversed with respect to r x v, or none is.
    expect_near(solsys::load(rnb + 6), kAxes.r2, 4e-15);
    expect_near(solsys::load(rnb + 3), cross(kAxes.r2, -position), 4e-15);
}

INSTANTIATE_TEST_SUITE_P(CircleToHyperbola, TwoBodyState,
                         testing::Values(Orbit{1.3, 0, 0.7}, Orbit{1.3, 5e-5, 2},
                                         Orbit{2, 2e-4, 4}, Orbit{0.9, 0.2, 1},
                                         Orbit{5, 0.97, -2.4}, Orbit{1, 1, 0.3},
                                         Orbit{1.1, 1.0000001, -1}, Orbit{3, 2.5, 1.2}));

TEST(TwoBodyFrames, WhatHasNoPlane) {
    const double zero[3] = {0, 0, 0};
    const double r[3] = {1, 2, -3};
    double m[9];
    RNB_matrix(zero, zero, m);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(m[i], i % 4 == 0 ? 1 : 0);
    RNB_matrix(r, r, m);
    EXPECT_FALSE(std::isfinite(m[8]));
    Eq_Orb(kMu, r, r, m);
    EXPECT_FALSE(std::isfinite(m[8]));
}

TEST(TwoBodyFrames, PolarAngleOnTheXAxis) {
    double p = 0, e = 0, angle = 7;
    const double v[3] = {0, 0, 1};
    const double plus[3] = {2, 0, 0};
    CalcPEM(1, plus, v, &p, &e, &angle);
    EXPECT_EQ(angle, 0);
    EXPECT_EQ(e, 1);  // 2 / 2 - 1 = 0: a parabola
    const double minus[3] = {-2, 0, 0};
    CalcPEM(1, minus, v, &p, &e, &angle);
    EXPECT_DOUBLE_EQ(angle, 3.14159265358979323846);
}

}  // namespace
