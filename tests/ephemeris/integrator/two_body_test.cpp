// The method by itself, on systems whose motion is known.
#include <gmock/gmock.h>

#include <cmath>

#include "core/linalg.h"
#include "ephemeris/integrator/radau_stepper.h"
#include "solsys/integrator.h"

namespace {

using solsys::Vec3;

// A unit mass at the origin; `context`, if any, is a number of bodies.
bool kepler_force(double /*t*/, const double* x, const double* /*v*/, double* f,
                  void* context) {
    const int bodies = context != nullptr ? *static_cast<int*>(context) : 1;
    for (int i = 0; i < bodies; ++i) {
        const Vec3 r = solsys::load(x + 3 * i);
        store(-1 / (dot(r, r) * norm(r)) * r, f + 3 * i);
    }
    return true;
}

class TwoBodies final : public solsys::Force {
    bool prepare(double /*t*/, std::span<const double> /*offsets*/) override { return true; }
    bool evaluate(int /*node*/, const double* x, const double* v, double* f) override {
        return kepler_force(0, x, v, f, nullptr);
    }
};

// Semi-major axis 1, at perihelion, tilted: the period is 2 pi.
std::array<double, 6> perihelion(double e) {
    const double q = 1 - e, v = std::sqrt((1 + e) / q);
    return {q, 0, 0, 0, 0.8 * v, 0.6 * v};
}

// The same, known to `grid` only.
class RoundedTwoBodies final : public solsys::Force {
  public:
    explicit RoundedTwoBodies(double grid) : grid_(grid) {}

  private:
    bool prepare(double /*t*/, std::span<const double> /*offsets*/) override { return true; }
    bool evaluate(int /*node*/, const double* x, const double* v, double* f) override {
        kepler_force(0, x, v, f, nullptr);
        for (int i = 0; i < 3; ++i) f[i] = std::round(f[i] / grid_) * grid_;
        return true;
    }
    double grid_;
};

class Eccentricity : public testing::TestWithParam<double> {};

// Rounding alone moves the energy, as a random walk. Where it does most, at e = 0.99, 1e-13 is
// a tenth of a unit in the last place of the energy's parts at perihelion a revolution.
TEST_P(Eccentricity, KeepsTheEnergyOver1000Revolutions) {
    TwoBodies force;
    solsys::RadauStepper stepper(3, 2, force, 1e-8);
    stepper.start(0, perihelion(GetParam()).data(), 0.001);
    const auto energy = [&stepper] {
        long double r2 = 0, v2 = 0;
        for (int i = 0; i < 3; ++i) {
            const long double x = stepper.state()[i] + 1.0L * stepper.low()[i];
            const long double v = stepper.state()[i + 3] + 1.0L * stepper.low()[i + 3];
            r2 += x * x, v2 += v * v;
        }
        return v2 / 2 - 1 / std::sqrt(r2);
    };
    const long double first = energy();
    long double worst = 0;
    while (stepper.time() < 6283.2) {
        ASSERT_EQ(stepper.advance(), solsys::StepStatus::kOk);
        worst = std::max(worst, std::fabs(energy() / first - 1));
    }
    EXPECT_LT(worst, 1e-13L);
}

TEST_P(Eccentricity, ComesBackAfter1000RevolutionsAndBackInTime) {
    IntegRA15 there;
    there.SetForce(kepler_force, nullptr);
    there.SetTolerance(1e-8);
    const auto start = perihelion(GetParam());
    ASSERT_TRUE(there.Start(0, 0, start.data()));
    std::array<double, 6> end{}, back{}, at{};
    const double span = 2000 * 3.14159265358979323846;
    ASSERT_TRUE(
        there.IntegrateTo(static_cast<int>(span), span - static_cast<int>(span), end.data()));
    EXPECT_LT(norm(solsys::load(end.data()) - solsys::load(start.data())), 1e-7);

    // A hundred times round, from a place that is not an end of a step, and back.
    ASSERT_TRUE(there.IntegrateTo(629, 0.1, at.data()));
    IntegRA15 reverse;
    reverse.SetForce(kepler_force, nullptr);
    reverse.SetTolerance(1e-8);
    ASSERT_TRUE(reverse.Start(629, 0.1, at.data()));
    ASSERT_TRUE(reverse.IntegrateTo(0, 0, back.data()));
    constexpr double tolerance = 1e-10;
    EXPECT_LT(norm(solsys::load(back.data()) - solsys::load(start.data())), tolerance);
}

INSTANTIATE_TEST_SUITE_P(CircularToCometary, Eccentricity, testing::Values(0.0, 0.7, 0.99));

// A tolerance that the rounding of the force hides: once shorter steps are no better, one is
// taken.
TEST(Integrator, StepsOnWhereOnlyTheRoundingOfTheForceIsLeft) {
    for (const double grid : {1e-13, 1e-12, 1e-11}) {
        RoundedTwoBodies force(grid);
        solsys::RadauStepper stepper(3, 2, force, 1e-12);
        stepper.start(0, perihelion(0.3).data(), 0.001);
        for (int steps = 0; steps < 30; ++steps)
            ASSERT_EQ(stepper.advance(), solsys::StepStatus::kOk) << grid;
    }
}

TEST(Integrator, MovesManyBodiesAsItMovesEach) {
    int bodies = 2;
    IntegRA15 both;
    ASSERT_TRUE(both.Init(24, 6, 2));
    both.SetForce(kepler_force, &bodies);
    const auto a = perihelion(0.1), b = perihelion(0.7);
    double start[12], out[12];
    for (int i = 0; i < 3; ++i)
        start[i] = a[i], start[3 + i] = b[i], start[6 + i] = a[3 + i], start[9 + i] = b[3 + i];
    ASSERT_TRUE(both.Start(0, 0.25, start));
    ASSERT_TRUE(both.IntegrateTo(44, 0.5, out));
    for (int body = 0; body < bodies; ++body) {
        IntegRA15 one;
        one.SetForce(kepler_force, nullptr);
        double alone[6];
        ASSERT_TRUE(one.Start(0, 0.25, (body == 0 ? a : b).data()));
        ASSERT_TRUE(one.IntegrateTo(44, 0.5, alone));
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(out[3 * body + i], alone[i], 1e-9);
    }
}

TEST(Integrator, SolvesFirstOrderSystems) {
    // x' = -y + t, y' = x: x = 2 cos t - ... is t-dependent; with z' = -z/2 beside it.
    IntegRA15 system;
    ASSERT_TRUE(system.Init(6, 3, 1));
    system.SetForce(
        [](double t, const double* x, const double* v, double* f, void*) {
            f[0] = -x[1] + t, f[1] = x[0], f[2] = -x[2] / 2;
            return v == nullptr;
        },
        nullptr);
    const double start[3] = {1, 0, 1};
    ASSERT_TRUE(system.Start(10, 0.5, start));
    for (const double t : {-7.25, 0.0, 12.5, 3.0}) {
        double out[3];
        ASSERT_TRUE(system.IntegrateTo(10, 0.5 + t, out)) << t;
        EXPECT_NEAR(out[0], 1, 1e-11) << t;  // y = t: x' = 0
        EXPECT_NEAR(out[1], t, 1e-11) << t;
        EXPECT_NEAR(out[2] / std::exp(-t / 2), 1, 1e-11) << t;
    }
}

TEST(Integrator, RefusesSizesAndStarts) {
    IntegRA15 integrator;
    EXPECT_FALSE(integrator.Init(11, 3, 2));
    EXPECT_FALSE(integrator.Init(12, 3, 3));
    EXPECT_FALSE(integrator.Init(0, 0, 1));
    EXPECT_FALSE(integrator.RA15(0, 0));
    integrator.SetForce(kepler_force, nullptr);
    auto start = perihelion(0);
    ASSERT_TRUE(integrator.Start(0, 0, start.data()));
    for (const double step : {0.0, std::nan(""), HUGE_VAL})
        EXPECT_FALSE(integrator.RA15(1, 0, step, 0.1)) << step;
    EXPECT_FALSE(integrator.RA15(1, std::nan("")));
    EXPECT_TRUE(integrator.RA15(1, 0));
    start[1] = std::nan("");
    EXPECT_FALSE(integrator.Start(0, 0, start.data()));
    EXPECT_FALSE(integrator.Start(0, 0, nullptr));
}

TEST(Integrator, EndsAtASingularityAndWhereItsForceDoes) {
    IntegRA15 falling;
    falling.SetForce(kepler_force, nullptr);
    const double drop[6] = {1, 0, 0, 0, 0, 0};  // reaches the centre at pi/(2 sqrt 2)
    double out[6] = {7};
    ASSERT_TRUE(falling.Start(0, 0, drop));
    EXPECT_FALSE(falling.IntegrateTo(2, 0, out));
    EXPECT_EQ(falling.Status(), INTEGR_STEP);
    EXPECT_EQ(out[0], 7);
    EXPECT_TRUE(falling.IntegrateTo(1, 0.1, out));

    IntegRA15 bounded;
    bounded.SetForce(
        [](double t, const double* x, const double*, double* f, void*) {
            f[0] = -x[0], f[1] = f[2] = 0;
            return t < 5;
        },
        nullptr);
    ASSERT_TRUE(bounded.Start(0, 0, drop));
    EXPECT_FALSE(bounded.IntegrateTo(6, 0, out));
    EXPECT_EQ(bounded.Status(), INTEGR_NO_FORCE);
    EXPECT_TRUE(bounded.IntegrateTo(4, 0.5, out));
    EXPECT_NEAR(out[0], std::cos(4.5), 1e-9);
}

}  // namespace
