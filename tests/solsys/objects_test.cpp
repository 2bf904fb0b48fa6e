// The objects of a model: where their states come from, and what they keep.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/linalg.h"
#include "ephemeris/analytic/analytic_theory.h"
#include "solsys/integrator.h"
#include "tests/support/models.h"

namespace {

using solsys::State;

constexpr double kMillisecond = 1.0 / 86400e3;  // day

State state_of(SS_Object& object, int day, double fraction) {
    double s[6];
    EXPECT_EQ(object.ComputeState(day, fraction, true, s), SS_OK);
    return solsys::load_state(s);
}

// A moon of a body at the origin whose position comes from a function that counts its calls.
class Cache : public testing::Test {
  protected:
    void SetUp() override {
        calls = 0;
        value = 1.0;
        moon.SetPositionCallback([](int, double, bool velocity, double* to) {
            ++calls;
            for (int i = 0; i < (velocity ? 6 : 3); ++i) to[i] = value;
            return value < 0 ? 7 : SS_OK;
        });
    }
    int ask(double fraction, bool velocity) {
        return moon.ComputeState(2451545, fraction, velocity, out);
    }

    static inline int calls;
    static inline double value;
    SS_PlanetObject sun{{.number = 10, .gm = 3e-4}, nullptr, nullptr};
    SS_MoonObject moon{{.number = 301}, &sun, static_cast<DE_EvalState*>(nullptr)};
    double out[6] = {};
};

TEST_F(Cache, ServesOneMillisecondAndTheLevelItHolds) {
    EXPECT_EQ(ask(0.5, false), SS_OK);
    EXPECT_EQ(ask(0.5 + 0.9 * kMillisecond, false), SS_OK);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ask(0.5, true), SS_OK);  // holds no velocity yet
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(ask(0.5, false), SS_OK);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(ask(0.5 - 1.1 * kMillisecond, false), SS_OK);
    EXPECT_EQ(calls, 3);
}

TEST_F(Cache, ForgetsWhenTheSourceChanges) {
    ask(0.5, true);
    value = 2.0;
    moon.SetEphemeris(nullptr);
    ask(0.5, true);
    EXPECT_EQ(out[0], 2.0);
}

TEST_F(Cache, NeverKeepsAFailureOrWhatIsNotFinite) {
    for (const double bad : {-1.0, std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity()}) {
        value = bad;
        out[0] = 42;
        EXPECT_NE(ask(0.5, true), SS_OK);
        EXPECT_EQ(out[0], 42) << "left alone";
        EXPECT_EQ(moon.GetState(2451545, 0.5, true, out), SS_UNKNOWN);
        value = 3.0;
        EXPECT_EQ(ask(0.5, true), SS_OK);
        EXPECT_EQ(out[0], 3.0);
        moon.SetEphemeris(nullptr);
    }
    value = 4.0;
    EXPECT_EQ(ask(std::numeric_limits<double>::quiet_NaN(), false), SS_OK);
    EXPECT_EQ(ask(0.5, false), SS_OK);
    value = 5.0;
    EXPECT_EQ(ask(std::numeric_limits<double>::quiet_NaN(), false), SS_OK);
    EXPECT_EQ(out[0], 5.0) << "an instant that is not a number is never served from the cache";
}

TEST(Planet, HasNoStateBeforeItIsAskedAtJ2000) {
    SS_PlanetObject mars({.number = 4}, nullptr, nullptr);
    EXPECT_GT(norm(state_of(mars, 2451545, 0.0).r), 1.3);
}

TEST(Planet, AnswersUnknownWhereNoTheoryReaches) {
    SS_PlanetObject mars({.number = 4}, nullptr, nullptr);
    double s[6];
    EXPECT_EQ(mars.ComputeState(5000000, 0.0, true, s), SS_UNKNOWN);
    EXPECT_EQ(mars.GetState(-100000000, 0.0, true, s), SS_UNKNOWN);
}

// Velocities against the motion of the positions over an hour either way; the error of that
// is a third of the step squared times the third derivative, (2 pi / period)^2 of the speed.
class Velocity : public testing::TestWithParam<SSO_ID> {};
TEST_P(Velocity, IsTheDerivativeOfThePosition) {
    const auto model = support::built_in_model();
    SS_Object& body = *model->GetSS_Object(GetParam());
    const double period = std::min(body.OrbitalPeriod(), 365.0);
    const double h = period / 2000;
    double before[6];
    double after[6];
    double now[6];
    ASSERT_EQ(body.GetState(2458000, 0.3 - h, false, before), SS_OK);
    ASSERT_EQ(body.GetState(2458000, 0.3 + h, false, after), SS_OK);
    ASSERT_EQ(body.GetState(2458000, 0.3, true, now), SS_OK);
    const auto moved = (0.5 / h) * (solsys::load(after) - solsys::load(before));
    const auto velocity = solsys::load(now + 3);
    const double speed = norm(velocity);
    // (2 pi / 2000)^2 / 6 = 1.6e-6 for a circle; ellipses and the Moon's forward difference
    // (3e-5 of its speed) ask for the rest.
    EXPECT_LT(norm(moved - velocity), 5e-5 * speed);
    // The heliocentric state is the parent's and the relative one together.
    const State sum = solsys::load_state(now) + state_of(*body.Parent(), 2458000, 0.3);
    const State heliocentric = state_of(body, 2458000, 0.3);
    EXPECT_LT(norm(sum.r - heliocentric.r), 1e-14);
    EXPECT_LT(norm(sum.v - heliocentric.v), 1e-16);
}
INSTANTIATE_TEST_SUITE_P(Bodies, Velocity,
                         testing::Values(SSO_ID(SSO_PLNT, 1), SSO_ID(SSO_PLNT, 3),
                                         SSO_ID(SSO_PLNT, 5), SSO_ID(SSO_PLNT, 8),
                                         SSO_ID(SSO_PLNT, 9), SSO_ID(SSO_PLNT, 11),
                                         SSO_ID(SSO_PLNT, 12), SSO_ID(SSO_PLNT, 13),
                                         SSO_ID(SSO_PLNT, 14), SSO_ID(SSO_MOON, 301),
                                         SSO_ID(SSO_MOON, 503), SSO_ID(SSO_MOON, 606),
                                         SSO_ID(SSO_MOON, 801)));

TEST(Moon, WithoutAFileMovesByADifferenceForward) {
    const auto model = support::built_in_model();
    SS_Object& moon = *model->GetSS_Object(SSO_ID(SSO_MOON, 301));
    double s[6];
    ASSERT_EQ(moon.GetState(2458000, 0.3, true, s), SS_OK);
    State theory{};
    ASSERT_TRUE(solsys::analytic_moon({2458000, 0.3}, true, theory));
    EXPECT_EQ(s[0], theory.r.x);
    // A forward difference over 0.00027 day is off by half that times the acceleration, which
    // is GM(Earth + Moon)/r^2 to a few percent: present, and no more than that.
    const double r = norm(theory.r);
    const double half_step = 0.5 * 0.00027 * 8.997e-10 / (r * r);
    const double off = norm(solsys::load(s + 3) - theory.v);
    EXPECT_NEAR(off, half_step, 0.05 * half_step);
}

TEST(EveryCataloguedBody, HasAStateToday) {
    const auto model = support::built_in_model();
    std::vector<SSO_ID> bodies;
    model->GetFullList(&bodies);
    for (const SSO_ID& id : bodies) {
        double s[6];
        EXPECT_EQ(model->GetSS_Object(id)->ComputeState(2459000, 0.5, true, s), SS_OK)
            << id.number;
        const double r = norm(solsys::load(s));
        EXPECT_TRUE(id.number == 10 || (r > 0.3 && r < 100)) << id.number << " at " << r;
    }
}

TEST(Objects, KnowTheirParentsGM) {
    const auto model = support::built_in_model();
    const auto gm = [&](std::int32_t type, int number) {
        return model->GetSS_Object(SSO_ID(type, number))->GetParentGM();
    };
    EXPECT_EQ(gm(SSO_PLNT, 3), 0.00029591220828411956);
    EXPECT_EQ(gm(SSO_PLNT, 13), 0.00029591220828411956);
    EXPECT_EQ(gm(SSO_MOON, 301), 8.887692446707102e-10);
    EXPECT_EQ(gm(SSO_PLNT, 10), -1.0);
}

TEST(Objects, FollowAReplacedRotationFunction) {
    const auto model = support::built_in_model();
    SS_Object& mars = *model->GetSS_Object(SSO_ID(SSO_PLNT, 4));
    double ra = 0, dec = 0, w = 0;
    ASSERT_TRUE(mars.GetRotationElements(2458000, 0.25, &ra, &dec, &w));
    EXPECT_NEAR(dec, 0.923, 0.001);
    mars.SetRotationFunction([](int, double, int body, double* a, double* d, double* p) {
        *a = 1, *d = 2, *p = body;
        return true;
    });
    ASSERT_TRUE(mars.GetRotationElements(2458000, 0.25, &ra, &dec, &w));
    EXPECT_EQ(w, 4.0);
    mars.SetRotationFunction(nullptr);
    EXPECT_FALSE(mars.GetRotationElements(2458000, 0.25, &ra, &dec, &w));
}

// One record: a circle of 4 au in the ecliptic, at the node.
class OneRecord final : public DwarfPlanetsIO {
  public:
    bool Read(std::int32_t type, std::int32_t number, Elements* elements) override {
        if (type != SSO_PLNT || number != 12) return false;
        *elements = record;
        return true;
    }
    Elements record{4.0, 0.0, 0.0, 0.0, 0.0, 0.0, solsys::kHalfPi, 0.25, 2458000};
};

class DwarfPlanetCatalogue : public testing::Test {
  protected:
    DwarfPlanetCatalogue() { SetReader(&reader); }
    ~DwarfPlanetCatalogue() override { SetReader(nullptr); }
    OneRecord reader;
};

TEST_F(DwarfPlanetCatalogue, ReplacesTheBuiltInElements) {
    SS_DwarfPlanetObject eris({.number = 12}, nullptr, nullptr);
    const State s = state_of(eris, 2458000, 0.25);
    // A quarter turn from the equinox: towards the ecliptic's highest declination.
    EXPECT_NEAR(s.r.x, 0.0, 1e-12);
    EXPECT_NEAR(std::atan2(s.r.z, s.r.y), 23.4392911 * solsys::kDegree, 2e-7);
    EXPECT_NEAR(norm(s.r), 4.0, 1e-12);
    EXPECT_NEAR(norm(s.v), 0.017202098950 / 2.0, 1e-11);

    SS_DwarfPlanetObject ceres({.number = 11}, nullptr, nullptr);
    EXPECT_FALSE(ceres.SetElements());
    EXPECT_NEAR(ceres.GetElements().q, 2.767, 0.01);
}

TEST_F(DwarfPlanetCatalogue, IsNotBelievedWhenItsRecordIsNoEllipse) {
    for (const double e : {1.0, -0.1, std::numeric_limits<double>::quiet_NaN()}) {
        reader.record.e = e;
        SS_DwarfPlanetObject eris({.number = 12}, nullptr, nullptr);
        EXPECT_GT(eris.GetElements().q, 60.0);
    }
}

// Moves in a straight line, and tells of its end.
class Straight final : public IntegRA15 {
  public:
    explicit Straight(bool* gone, bool starts = true) : gone_(gone), starts_(starts) {}
    ~Straight() override { *gone_ = true; }
    bool Start(int day, double fraction, const double* state) override {
        day_ = day, fraction_ = fraction, start_ = solsys::load_state(state);
        return starts_;
    }
    bool IntegrateTo(int day, double fraction, double* state) override {
        const double days = (day - day_) + (fraction - fraction_);
        if (days > 1000) return false;
        store(State{start_.r + days * start_.v, start_.v}, state);
        return true;
    }

  private:
    bool* gone_;
    bool starts_;
    int day_ = 0;
    double fraction_ = 0;
    State start_{};
};

TEST_F(DwarfPlanetCatalogue, AnIntegratorTakesOverFromTheElements) {
    SS_DwarfPlanetObject eris({.number = 12}, nullptr, nullptr);
    const State start = state_of(eris, 2458000, 0.25);
    const State by_elements = state_of(eris, 2458100, 0.25);
    bool gone = false;
    eris.AttachIntegrator(new Straight(&gone));
    ASSERT_NE(eris.GetIntegrator(), nullptr);
    const State straight = state_of(eris, 2458100, 0.25);
    EXPECT_NEAR(norm(straight.r - (start.r + 100.0 * start.v)), 0.0, 1e-12);
    // Where it does not reach, the elements serve.
    EXPECT_NEAR(norm(state_of(eris, 2460000, 0.25).r), 4.0, 1e-12);

    eris.AttachIntegrator(nullptr);
    EXPECT_TRUE(gone);
    EXPECT_EQ(norm(state_of(eris, 2458100, 0.25).r - by_elements.r), 0.0);

    gone = false;
    eris.AttachIntegrator(new Straight(&gone, false));
    EXPECT_TRUE(gone);
    EXPECT_EQ(eris.GetIntegrator(), nullptr);

    gone = false;
    {
        SS_DwarfPlanetObject owner({.number = 12}, nullptr, nullptr);
        owner.AttachIntegrator(new Straight(&gone));
    }
    EXPECT_TRUE(gone);
}

TEST(Spacecraft, IsWhereItsFunctionSaysRelativeToItsParent) {
    SS_PlanetObject earth({.number = 3}, nullptr, nullptr);
    double offset = 0.01;
    SS_SCObject craft(
        {.number = 1}, &earth,
        [](void* context, int day, double fraction, bool velocity, double* out) {
            SS_PlanetObject home({.number = 3}, nullptr, nullptr);
            const int status = home.ComputeState(day, fraction, velocity, out);
            out[0] += *static_cast<double*>(context);
            return status;
        },
        &offset);
    double s[6];
    ASSERT_EQ(craft.GetState(2458000, 0.0, true, s), SS_OK);
    EXPECT_NEAR(s[0], 0.01, 1e-15);
    EXPECT_NEAR(s[1], 0.0, 1e-15);
    EXPECT_EQ(craft.GetState(9999999, 0.0, true, s), SS_UNKNOWN);
    EXPECT_EQ(craft.GetParentGM(), -1.0);
}

}  // namespace
