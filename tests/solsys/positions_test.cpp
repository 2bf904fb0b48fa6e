// Vectors of the model's objects: identities between them, derivatives, missing objects.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <string>

#include "solsys/light_time.h"
#include "tests/support/sky_models.h"

namespace {

using namespace solsys;
using namespace solsys::test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t kAbsent = 987654;

// The query as a host writes it; fills with a mark first, so that what is written shows.
constexpr double kMark = -77.0;
struct Answer {
    bool known;
    double v[6] = {kMark, kMark, kMark, kMark, kMark, kMark};
    [[nodiscard]] Vec3 r() const { return {v[0], v[1], v[2]}; }
    [[nodiscard]] Vec3 dr() const { return {v[3], v[4], v[5]}; }
};
using Query = bool (CSWSolSys::*)(const SSO_ID&, char, double*);
Answer ask(CSWSolSys& model, Query query, SSO_ID id, bool velocity = true) {
    Answer out{};
    out.known = (model.*query)(id, velocity ? 1 : 0, out.v);
    return out;
}

Elements orbit(double q, double e, double M, double n) {
    return {.q = q,
            .e = e,
            .i = 0.3,
            .node = 1.2,
            .peri = 2.1,
            .n = n,
            .M = M,
            .epochFraction = 0.25,
            .epochDay = 2455000};
}
double motion(double a) { return 0.01720209895 / std::pow(a, 1.5); }

class Positions : public testing::TestWithParam<Source> {
  protected:
    void SetUp() override {
        model_ = make_model(GetParam());
        model_->AddAsteroid(1, {.elements = orbit(2.77, 0.08, 1.0, motion(2.77))});
        model_->AddComet(1, {.elements = orbit(17.8, 0.967, 0.01, motion(17.8))});
        model_->AddComet(2, {.elements = orbit(1.5, 2.5, -0.5, 0)});
        UserObjectRecord iss;
        iss.epoch_day = 2455000;
        iss.state[0] = 4.5e-5, iss.state[4] = 3.2e-3, iss.state[5] = 3.0e-3;
        model_->AddUserObject(1, iss);
        SpacecraftRecord record;
        record.epoch_day = 2454900;
        record.q = 0.9, record.e = 0.2, record.i = 0.1, record.n = motion(0.9 / 0.8);
        model_->AddSpacecraft(1, &record, 1);
        model_->UpdateSys(2455000, 0.3);
    }

    [[nodiscard]] Vec3 observer(const double* state) const { return load(state); }
    std::unique_ptr<CSWSolSys> model_;
};

std::string printed_source(const testing::TestParamInfo<Source>& each) {
    return name_of(each.param);
}
INSTANTIATE_TEST_SUITE_P(Sources, Positions, testing::Values(Source::kDe405, Source::kBuiltIn),
                         printed_source);

constexpr double kRounding = 2e-15;  // au at the distances of the inner planets

MATCHER_P2(IsVector, expected, tolerance, "") {
    const double apart = norm(arg - expected);
    *result_listener << "off by " << apart;
    return apart <= tolerance;
}

// Velocities belong to the positions: against a five-point difference over h = 1/16 day, or,
// for what moves fast, over a fraction of it.
TEST_P(Positions, VelocitiesAreDerivatives) {
    const struct {
        SSO_ID id;
        double h;
        double tolerance;  // au/day: theories' own consistency; rounding of Julian dates over h
    } cases[] = {{{SSO_PLNT, 1}, 0.0625, 2e-8},   {{SSO_PLNT, 5}, 0.0625, 2e-8},
                 {{SSO_MOON, 301}, 0.0625, 2e-7}, {{SSO_PLNT, 11}, 0.0625, 2e-8},
                 {{SSO_ASTR, 1}, 0.0625, 2e-8},   {{SSO_COMT, 1}, 0.0625, 2e-8},
                 {{SSO_COMT, 2}, 0.0625, 2e-8},   {{SSO_SCFT, 1}, 0.0625, 2e-8},
                 {{SSO_USCO, 1}, 0.001, 3e-7}};
    for (const auto& each : cases) {
        const Query query =
            each.id.type == SSO_USCO ? &CSWSolSys::GetVecCentre2K : &CSWSolSys::GetHelVec2K;
        model_->UpdateSys(2455000, 0.3);
        const Answer now = ask(*model_, query, each.id);
        ASSERT_TRUE(now.known) << each.id.type << ' ' << each.id.number;
        const auto at = [&](double steps) {
            model_->SetTime(2455000, 0.3 + steps * each.h, false);
            return ask(*model_, query, each.id, false).r();
        };
        const Vec3 slope =
            (1.0 / (12.0 * each.h)) * ((at(-2) - at(2)) + 8.0 * (at(1) - at(-1)));
        EXPECT_THAT(now.dr(), IsVector(slope, each.tolerance)) << each.id.number;
    }
}

TEST_P(Positions, WithoutTheFlagThreeValuesAreWritten) {
    for (const Query query :
         {&CSWSolSys::GetHelVec2K, &CSWSolSys::GetVecCentre2K, &CSWSolSys::GetHelVecCur,
          &CSWSolSys::GetHelEcl2K, &CSWSolSys::GetRefVec2K, &CSWSolSys::GetRefVecCur}) {
        for (const SSO_ID& id :
             {SSO_ID(SSO_PLNT, 4), SSO_ID(SSO_ASTR, 1), SSO_ID(SSO_MOON, 1)}) {
            const Answer three = ask(*model_, query, id, false);
            const Answer six = ask(*model_, query, id, true);
            EXPECT_EQ(three.dr().x, kMark);
            EXPECT_THAT(three.r(), IsVector(six.r(), kRounding));
            EXPECT_NE(six.v[5], kMark);
        }
    }
}

// A satellite is its planet plus what it is relative to it.
TEST_P(Positions, SatellitesGoWithTheirPlanets) {
    for (const int number : {301, 401, 503, 606, 703, 801, 901}) {
        const SSO_ID moon(SSO_MOON, number);
        const SSO_ID planet(SSO_PLNT, number / 100);
        const Answer whole = ask(*model_, &CSWSolSys::GetHelVec2K, moon);
        const Answer relative = ask(*model_, &CSWSolSys::GetVecCentre2K, moon);
        const Answer centre = ask(*model_, &CSWSolSys::GetHelVec2K, planet);
        ASSERT_TRUE(whole.known && relative.known && centre.known) << number;
        EXPECT_THAT(whole.r(), IsVector(centre.r() + relative.r(), 20 * kRounding)) << number;
        EXPECT_THAT(whole.dr(), IsVector(centre.dr() + relative.dr(), kRounding)) << number;
        EXPECT_GT(norm(relative.r()), 1e-6);
    }
}

// The rotated forms are the plain ones turned by the matrices that the model shows.
TEST_P(Positions, FramesAreRotationsOfOneVector) {
    const Mat3 cur = load_matrix(model_->GetMtrxEq2K_EqCur());
    const Mat3 ecl = load_matrix(model_->GetMtrxEq2K_Ecl2K());
    double observer[6];
    model_->GetObserverVec2K(observer);
    for (const SSO_ID& id : {SSO_ID(SSO_PLNT, 2), SSO_ID(SSO_MOON, 502), SSO_ID(SSO_ASTR, 1),
                             SSO_ID(SSO_SCFT, 1)}) {
        const Answer hel = ask(*model_, &CSWSolSys::GetHelVec2K, id);
        const Answer ref = ask(*model_, &CSWSolSys::GetRefVec2K, id);
        EXPECT_THAT(ask(*model_, &CSWSolSys::GetHelVecCur, id).r(),
                    IsVector(cur * hel.r(), kRounding));
        EXPECT_THAT(ask(*model_, &CSWSolSys::GetHelEcl2K, id).dr(),
                    IsVector(ecl * hel.dr(), kRounding));
        EXPECT_THAT(ref.r(), IsVector(hel.r() - load(observer), kRounding));
        EXPECT_THAT(ref.dr(), IsVector(hel.dr() - load(observer + 3), kRounding));
        EXPECT_THAT(ask(*model_, &CSWSolSys::GetRefVecCur, id).r(),
                    IsVector(cur * ref.r(), kRounding));

        double vector[3], place[3];
        for (const bool to_date : {false, true}) {
            ASSERT_TRUE(model_->GetCurVec(id, vector, to_date));
            EXPECT_THAT(load(vector), IsVector(to_date ? cur * ref.r() : ref.r(), kRounding));
            ASSERT_TRUE(model_->GetRADec(id, place, to_date));
            EXPECT_THAT(place[0] * direction(place[1], place[2]),
                        IsVector(load(vector), 10 * kRounding));
        }
    }
}

// Seen from a site, the Earth's centre and satellites come without the detour over the Sun: to
// the last digit, which a heliocentric difference does not hold.
TEST_P(Positions, NearBodiesKeepTheirDigits) {
    const OBSERVER place = site(30, 50, 0.2);
    model_->SetObserver(&place);
    const Answer earth = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_PLNT, 3});
    const Answer moon = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_MOON, 301});
    const Answer moon_centre = ask(*model_, &CSWSolSys::GetVecCentre2K, {SSO_MOON, 301});
    const Answer own = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_USCO, 1});
    const Answer own_centre = ask(*model_, &CSWSolSys::GetVecCentre2K, {SSO_USCO, 1});
    EXPECT_NEAR(norm(earth.r()) * kAuKm, 6365.2 + 0.2, 5.0);
    EXPECT_THAT(moon.r(), IsVector(moon_centre.r() + earth.r(), 0.0));
    EXPECT_THAT(moon.dr(), IsVector(moon_centre.dr() + earth.dr(), 0.0));
    EXPECT_THAT(own.r(), IsVector(own_centre.r() + earth.r(), 0.0));

    // From Mars the Moon is a heliocentric difference, and Phobos is near.
    const OBSERVER mars = site(0, 0, 0, 4);
    model_->SetObserver(&mars);
    double observer[6];
    model_->GetObserverVec2K(observer);
    const Answer moon_hel = ask(*model_, &CSWSolSys::GetHelVec2K, {SSO_MOON, 301});
    EXPECT_THAT(ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_MOON, 301}).r(),
                IsVector(moon_hel.r() - load(observer), 0.0));
    const Answer ground = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_PLNT, 4});
    EXPECT_NEAR(norm(ground.r()) * kAuKm, 3397.0, 1e-3);
    EXPECT_THAT(
        ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_MOON, 401}).r(),
        IsVector(ask(*model_, &CSWSolSys::GetVecCentre2K, {SSO_MOON, 401}).r() + ground.r(),
                 0.0));
}

struct Missing {
    std::int32_t type;
    bool heliocentric;  // what GetHelVec2K and all that stands on it answer
};
class MissingObjects : public testing::TestWithParam<Missing> {};

TEST_P(MissingObjects, AnswerByTheirType) {
    const auto model = make_model(Source::kBuiltIn);
    model->UpdateSys(2455000, 0.5);
    const SSO_ID id(GetParam().type, kAbsent);
    const bool expected = GetParam().heliocentric;
    double observer[6], out[6];
    model->GetObserverVec2K(observer);

    const Answer hel = ask(*model, &CSWSolSys::GetHelVec2K, id);
    EXPECT_EQ(hel.known, expected);
    EXPECT_THAT(hel.v, testing::Each(0.0));
    const Answer ref = ask(*model, &CSWSolSys::GetRefVec2K, id);
    EXPECT_EQ(ref.known, expected);
    EXPECT_THAT(ref.r(), IsVector(expected ? -load(observer) : Vec3{}, 0.0));
    for (const Query query : {&CSWSolSys::GetVecCentre2K, &CSWSolSys::GetHelEcl2K}) {
        const Answer none = ask(*model, query, id);
        EXPECT_FALSE(none.known);
        EXPECT_THAT(none.v, testing::Each(0.0));
    }
    EXPECT_EQ(model->GetRADecVis(id, out, 0.0), expected);
    EXPECT_EQ(model->GetRADec(id, out, true), expected);
    float magnitude = 0;
    EXPECT_FALSE(model->GetMagnitude(id, &magnitude));
    EXPECT_EQ(magnitude, 20.0F);
    EXPECT_EQ(model->GetGravity(id), -1.0);
    EXPECT_EQ(model->GetOrbitalPeriod(id), -1.0);
    EXPECT_EQ(model->GetSolarDay(id), -1.0);
    EXPECT_EQ(model->GetPeriodRotation(id), -1.0);
    EXPECT_EQ(model->GetAngVelocity(id), -1.0);
    EXPECT_FALSE(model->GetPolarAxes(id, out));
}

INSTANTIATE_TEST_SUITE_P(Types, MissingObjects,
                         testing::Values(Missing{SSO_PLNT, false}, Missing{SSO_MOON, false},
                                         Missing{SSO_ASTR, true}, Missing{SSO_COMT, true},
                                         Missing{SSO_FAST, true}, Missing{SSO_FCOM, true},
                                         Missing{SSO_USCO, false}, Missing{SSO_FSCO, false},
                                         Missing{SSO_TLE, false}, Missing{SSO_STAR, false},
                                         Missing{SSO_MESH, false}));

class VisibleVector : public testing::Test {
  protected:
    void SetUp() override {
        model_ = make_model(Source::kDe405);
        model_->UpdateSys(2455000, 0.0);
    }
    Instant now() {
        Instant t{};
        model_->GetTime(&t.day, &t.fraction);
        return t;
    }
    std::unique_ptr<CSWSolSys> model_;
};

// Whatever the first guess, the light time it ends with is that of the place it gives.
TEST_F(VisibleVector, DoesNotDependOnTheFirstGuess) {
    for (const SSO_ID& id : {SSO_ID(SSO_PLNT, 1), SSO_ID(SSO_PLNT, 8), SSO_ID(SSO_MOON, 606)}) {
        double expected[4], out[4];
        ASSERT_TRUE(model_->GetSSOVisVec2K(id, expected, 0.0));
        EXPECT_NEAR(norm(load(expected)), 1.0, 1e-15);
        for (const double guess : {1e-9, 0.5, -2.0, 3000.0, kNaN, 1e300}) {
            ASSERT_TRUE(model_->GetSSOVisVec2K(id, out, guess)) << guess;
            // 2e-6 day of tolerance, at 0.03 au/day and 0.6 au at worst.
            EXPECT_LT(angle_between(load(out), load(expected)), 1.5e-7) << guess;
            EXPECT_EQ(days_between({2455000, 0.0}, now()), 0.0);
        }
    }
}

TEST_F(VisibleVector, RefusesAbsurdLightTimes) {
    double out[4];
    EXPECT_FALSE(model_->GetSSOVisVec2K({SSO_PLNT, 5}, out, -1e300));
    EXPECT_EQ(days_between({2455000, 0.0}, now()), 0.0);
}

// Beyond a hundred light-years there is nothing but the geometric vector.
TEST_F(VisibleVector, IsGeometricForTheFarthest) {
    model_->AddAsteroid(1, {.elements = orbit(7e6, 0.0, 0.0, motion(7e6))});
    model_->AddAsteroid(2, {.elements = orbit(6e6, 0.0, 0.0, motion(6e6))});
    double out[4];
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_ASTR, 1}, out, 0.0));
    const Answer ref = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_ASTR, 1}, false);
    EXPECT_THAT(load(out), IsVector(ref.r(), 0.0));
    EXPECT_EQ(out[3], norm(ref.r()));
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_ASTR, 2}, out, 0.0));
    EXPECT_NEAR(norm(load(out)), 1.0, 1e-15);
}

// A spacecraft launched this very moment is in the table, but not when the light left it.
TEST_F(VisibleVector, StaysAtTheInstantItFailedAt) {
    SpacecraftRecord launch;
    launch.epoch_day = 2455000;
    launch.q = 2.0, launch.n = motion(2.0);
    ASSERT_TRUE(model_->AddSpacecraft(1, &launch, 1));
    const Answer ref = ask(*model_, &CSWSolSys::GetRefVec2K, {SSO_SCFT, 1}, false);
    double out[4];
    EXPECT_FALSE(model_->GetSSOVisVec2K({SSO_SCFT, 1}, out, 0.0));
    EXPECT_NEAR(days_between(now(), {2455000, 0.0}), norm(ref.r()) * kLightDayPerAu, 1e-9);
}

// A user's object is corrected along its velocity, and aberration adds the velocities.
TEST_F(VisibleVector, OfOwnObjectsIsLinear) {
    UserObjectRecord probe;
    probe.central_number = 10;
    probe.epoch_day = 2455000;
    probe.state[0] = 1.7, probe.state[1] = 0.4, probe.state[4] = 0.012;
    ASSERT_TRUE(model_->AddUserObject(1, probe));
    const Answer hel = ask(*model_, &CSWSolSys::GetHelVec2K, {SSO_USCO, 1});
    double observer[6], out[4];
    model_->GetObserverVec2K(observer);
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_USCO, 1}, out, 0.0));
    const Vec3 delta = hel.r() - load(observer);
    const double tau = norm(delta) * 0.005775518331436995;
    const Vec3 path = delta - tau * hel.dr();
    EXPECT_EQ(out[3], norm(path));
    EXPECT_THAT(load(out),
                IsVector(unit(unit(path) + 0.005775518331436995 * load(observer + 3)), 1e-15));
}

// An observer at the very centre of a body sees it in no direction.
TEST_F(VisibleVector, OfTheObserversOwnCentreIsZero) {
    double out[4], place[3];
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_PLNT, 3}, out, 0.0));
    EXPECT_THAT(out, testing::Each(0.0));
    ASSERT_TRUE(model_->GetRADecVis({SSO_PLNT, 3}, place, 0.0));
    EXPECT_THAT(place, testing::Each(0.0));
}

TEST(Earlier, SplitsLikeTheModelsInstants) {
    for (const double tau : {0.0, 0.1, 0.3, 0.7, 5.25, 36500.0, -0.9}) {
        const Instant t = earlier({2451545, 0.25}, tau);
        EXPECT_GE(t.fraction, 0.0);
        EXPECT_LT(t.fraction, 1.0);
        EXPECT_NEAR(days_between(t, {2451545, 0.25}), tau, 1e-11);
    }
}

}  // namespace
