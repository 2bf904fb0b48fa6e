// The objects of a model: where their states come from, and what they keep.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/linalg.h"
#include "ephemeris/analytic/analytic_theory.h"
#include "solsys/integrator.h"
#include "tests/support/de_file_writer.h"
#include "tests/support/models.h"
#include "tests/support/shared_de_file.h"

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
        moon.SetEphemeris(nullptr);  // another source: what is kept is forgotten
    }
    value = 4.0;
    EXPECT_EQ(ask(std::numeric_limits<double>::quiet_NaN(), false), SS_OK);
    EXPECT_EQ(ask(0.5, false), SS_OK);
    value = 5.0;
    EXPECT_EQ(ask(std::numeric_limits<double>::quiet_NaN(), false), SS_OK);
    EXPECT_EQ(out[0], 5.0) << "an instant that is not a number is never served from the cache";
}

// What an object keeps goes with the file it came from, at the same instant too.
class ReplacedFile : public SharedDeFile {
  protected:
    std::string file(double size) {
        de_file::Layout layout;
        layout.coefficient = [=](int body, int, int, int, int degree) {
            return degree == 0 ? size * body : 0;
        };
        return folder_.write(std::to_string(size), de_file::bytes(layout));
    }
};

TEST_F(ReplacedFile, IsNotServedAnyLonger) {
    CSWSolSys model;
    ASSERT_TRUE(model.InitSys(file(1e6).c_str()));
    SS_Object& mars = *model.GetSS_Object({SSO_PLNT, 4});
    SS_Object& phobos = *model.GetSS_Object({SSO_MOON, 401});
    SS_Object& moon = *model.GetSS_Object({SSO_MOON, 301});
    const State mars_first = state_of(mars, 2451545, 0.0);
    const State phobos_first = state_of(phobos, 2451545, 0.0);
    const State moon_first = state_of(moon, 2451545, 0.0);

    ASSERT_TRUE(DE_Ephemeris::replaceEphemeris(file(2e6).c_str()));
    const State shift = state_of(mars, 2451545, 0.0) - mars_first;
    EXPECT_NEAR(shift.r.x / mars_first.r.x, 1, 1e-12);
    EXPECT_NEAR(norm((state_of(phobos, 2451545, 0.0) - phobos_first - shift).r), 0, 1e-16);
    EXPECT_NEAR(state_of(moon, 2451545, 0.0).r.x / moon_first.r.x, 2, 1e-12);

    DE_Ephemeris::clear();
    EXPECT_GT(norm(state_of(mars, 2451545, 0.0).r), 1.3);  // by the built-in theory
}

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

TEST(Objects, HaveAStateTodayAndTheirParentsGM) {
    const auto model = support::built_in_model();
    std::vector<SSO_ID> bodies;
    model->GetFullList(&bodies);
    for (const SSO_ID& id : bodies) {
        const double r = norm(state_of(*model->GetSS_Object(id), 2459000, 0.5).r);
        EXPECT_TRUE(id.number == 10 || (r > 0.3 && r < 100)) << id.number << " at " << r;
    }
    for (const auto& [id, gm] : {std::pair{SSO_ID(SSO_PLNT, 13), 0.00029591220828411956},
                                 {SSO_ID(SSO_MOON, 301), 8.887692446707102e-10},
                                 {SSO_ID(SSO_PLNT, 10), -1.0}})
        EXPECT_EQ(model->GetSS_Object(id)->GetParentGM(), gm);
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

// Moves in a straight line, and tells of its end.
class Straight final : public Integrator {
  public:
    explicit Straight(int* gone, bool starts = true) : gone_(gone), starts_(starts) {}
    ~Straight() override { ++*gone_; }
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
    int* gone_;
    bool starts_;
    int day_ = 0;
    double fraction_ = 0;
    State start_{};
};

TEST_F(DwarfPlanetCatalogue, AnIntegratorTakesOverFromTheElements) {
    SS_DwarfPlanetObject eris({.number = 12}, nullptr, nullptr);
    const State start = state_of(eris, 2458000, 0.25);
    const State by_elements = state_of(eris, 2458100, 0.25);
    int gone = 0;
    eris.AttachIntegrator(new Straight(&gone));
    ASSERT_NE(eris.GetIntegrator(), nullptr);
    EXPECT_LT(norm(state_of(eris, 2458100, 0.25).r - (start.r + 100.0 * start.v)), 1e-12);
    // Where it does not reach, the elements serve.
    EXPECT_NEAR(norm(state_of(eris, 2460000, 0.25).r), 4.0, 1e-12);

    eris.AttachIntegrator(nullptr);
    EXPECT_EQ(gone, 1);
    EXPECT_EQ(norm(state_of(eris, 2458100, 0.25).r - by_elements.r), 0.0);
    eris.AttachIntegrator(new Straight(&gone, false));  // refuses to start
    EXPECT_EQ(gone, 2);
    EXPECT_EQ(eris.GetIntegrator(), nullptr);
    {
        SS_DwarfPlanetObject owner({.number = 12}, nullptr, nullptr);
        owner.AttachIntegrator(new Straight(&gone));
    }
    EXPECT_EQ(gone, 3);
}

// Nothing kept from the old source is served at the same instant: not by bodies about it.
TEST(Objects, FollowAChangeOfSourceAtTheSameInstant) {
    const auto model = support::built_in_model();
    SS_Object& io = *model->GetSS_Object(SSO_ID(SSO_MOON, 501));
    SS_Object& dysnomia = *model->GetSS_Object(SSO_ID(SSO_MOON, 1201));
    const auto about_parent = [](SS_Object& moon) {
        return state_of(moon, 2451545, 0.0).r - state_of(*moon.Parent(), 2451545, 0.0).r;
    };
    const solsys::Vec3 of_io = about_parent(io), of_dysnomia = about_parent(dysnomia);
    ASSERT_TRUE(model->InitSys(SOLSYS_DE405));
    EXPECT_LT(norm(about_parent(io) - of_io), 1e-15);
    int gone = 0;
    dysnomia.Parent()->AttachIntegrator(new Straight(&gone));
    EXPECT_LT(norm(about_parent(dysnomia) - of_dysnomia), 1e-13);
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
