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

// The query as a host writes it; fills with a mark first, so that what is written shows.
constexpr double kMark = -77.0;
struct Answer {
    bool known;
    double v[6] = {kMark, kMark, kMark, kMark, kMark, kMark};
    [[nodiscard]] Vec3 r() const { return {v[0], v[1], v[2]}; }
    [[nodiscard]] Vec3 dr() const { return {v[3], v[4], v[5]}; }
};
using Query = bool (CSWSolSys::*)(const SSO_ID&, char, double*);
Answer ask(CSWSolSys& model, Query query, SSO_ID id, char velocity = 1) {
    Answer out{};
    out.known = (model.*query)(id, velocity, out.v);
    return out;
}
State observer_of(const CSWSolSys& model) {
    double s[6];
    model.GetObserverVec2K(s);
    return load_state(s);
}

Elements orbit(double q, double e, double M, double n) {
    return {q, e, 0.3, 1.2, 2.1, n, M, 0.25, 2455000};
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

    std::unique_ptr<CSWSolSys> model_;
};
INSTANTIATE_TEST_SUITE_P(Sources, Positions, testing::Values(Source::kDe405, Source::kBuiltIn),
                         [](const auto& each) { return std::string(name_of(each.param)); });

constexpr double kRounding = 2e-15;  // au at the distances of the inner planets

MATCHER_P2(IsVector, expected, tolerance, "") {
    const double apart = norm(arg - expected);
    *result_listener << "off by " << apart;
    return apart <= tolerance;
}

// Velocities belong to the positions: against a five-point difference over steps of a day/16,
// or, for what moves fast about its planet, of less. Tolerances in au/day: the theories' own
// consistency (7e-8 of the satellites) and the rounding of Julian dates over h.
TEST_P(Positions, VelocitiesAreDerivatives) {
    const struct {
        SSO_ID id;
        double h, tolerance;
    } cases[] = {{{SSO_PLNT, 1}, 0.0625, 2e-8},  {{SSO_PLNT, 3}, 0.0625, 2e-8},
                 {{SSO_PLNT, 5}, 0.0625, 2e-8},  {{SSO_PLNT, 8}, 0.0625, 2e-8},
                 {{SSO_PLNT, 9}, 0.0625, 2e-8},  {{SSO_MOON, 301}, 0.0625, 2e-7},
                 {{SSO_PLNT, 11}, 0.0625, 2e-8}, {{SSO_PLNT, 12}, 0.0625, 2e-8},
                 {{SSO_PLNT, 13}, 0.0625, 2e-8}, {{SSO_PLNT, 14}, 0.0625, 2e-8},
                 {{SSO_MOON, 503}, 0.01, 1e-7},  {{SSO_MOON, 606}, 0.02, 1.5e-7},
                 {{SSO_MOON, 801}, 0.01, 2e-8},  {{SSO_ASTR, 1}, 0.0625, 2e-8},
                 {{SSO_COMT, 1}, 0.0625, 2e-8},  {{SSO_COMT, 2}, 0.0625, 2e-8},
                 {{SSO_SCFT, 1}, 0.0625, 2e-8},  {{SSO_USCO, 1}, 0.001, 3e-7}};
    for (const auto& [id, h, tolerance] : cases) {
        const Query query = h < 0.0625 ? &CSWSolSys::GetVecCentre2K : &CSWSolSys::GetHelVec2K;
        model_->UpdateSys(2455000, 0.3);
        const Answer now = ask(*model_, query, id);
        ASSERT_TRUE(now.known) << id.type << ' ' << id.number;
        const auto at = [&](double steps) {
            model_->SetTime(2455000, 0.3 + steps * h, false);
            return ask(*model_, query, id, 0).r();
        };
        const Vec3 slope = (1.0 / (12.0 * h)) * ((at(-2) - at(2)) + 8.0 * (at(1) - at(-1)));
        EXPECT_THAT(now.dr(), IsVector(slope, tolerance)) << id.number;
    }
}

// The rotated forms are the plain ones turned by the matrices that the model shows.
TEST_P(Positions, FramesAreRotationsOfOneVector) {
    const Mat3 cur = load_matrix(model_->GetMtrxEq2K_EqCur());
    const Mat3 ecl = load_matrix(model_->GetMtrxEq2K_Ecl2K());
    const State observer = observer_of(*model_);
    for (const SSO_ID& id : {SSO_ID(SSO_PLNT, 2), SSO_ID(SSO_MOON, 502), SSO_ID(SSO_ASTR, 1),
                             SSO_ID(SSO_SCFT, 1)}) {
        const Answer hel = ask(*model_, &CSWSolSys::GetHelVec2K, id);
        const Answer ref = ask(*model_, &CSWSolSys::GetRefVec2K, id);
        struct Form {
            Query query;
            const Answer& plain;
            const Mat3& turned;
        };
        for (const auto& [query, plain, turned] : {Form{&CSWSolSys::GetHelVecCur, hel, cur},
                                                   {&CSWSolSys::GetHelEcl2K, hel, ecl},
                                                   {&CSWSolSys::GetRefVecCur, ref, cur}}) {
            const Answer both = ask(*model_, query, id), place = ask(*model_, query, id, 0);
            EXPECT_THAT(both.r(), IsVector(turned * plain.r(), kRounding));
            EXPECT_THAT(both.dr(), IsVector(turned * plain.dr(), kRounding));
            EXPECT_THAT(place.r(), IsVector(both.r(), kRounding));
            EXPECT_THAT(place.dr(), IsVector(Vec3{kMark, kMark, kMark}, 0.0));
        }
        EXPECT_THAT(ref.r(), IsVector(hel.r() - observer.r, kRounding));
        EXPECT_THAT(ref.dr(), IsVector(hel.dr() - observer.v, kRounding));

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
    const auto ref = [&](std::int32_t type, int number) {
        return ask(*model_, &CSWSolSys::GetRefVec2K, {type, number});
    };
    const auto centre = [&](std::int32_t type, int number) {
        return ask(*model_, &CSWSolSys::GetVecCentre2K, {type, number});
    };
    const OBSERVER place = site(30, 50, 0.2);
    model_->SetObserver(&place);
    const Answer earth = ref(SSO_PLNT, 3), moon = ref(SSO_MOON, 301);
    EXPECT_NEAR(norm(earth.r()) * kAuKm, 6365.2 + 0.2, 5.0);
    EXPECT_THAT(moon.r(), IsVector(centre(SSO_MOON, 301).r() + earth.r(), 0.0));
    EXPECT_THAT(moon.dr(), IsVector(centre(SSO_MOON, 301).dr() + earth.dr(), 0.0));
    EXPECT_THAT(ref(SSO_USCO, 1).r(), IsVector(centre(SSO_USCO, 1).r() + earth.r(), 0.0));

    // From Mars the Moon is a heliocentric difference, and Phobos is near.
    const OBSERVER mars = site(0, 0, 0, 4);
    model_->SetObserver(&mars);
    const Vec3 far = ask(*model_, &CSWSolSys::GetHelVec2K, {SSO_MOON, 301}).r();
    const Vec3 ground = ref(SSO_PLNT, 4).r();
    EXPECT_THAT(ref(SSO_MOON, 301).r(), IsVector(far - observer_of(*model_).r, 0.0));
    EXPECT_NEAR(norm(ground) * kAuKm, 3397.0, 1e-3);
    EXPECT_THAT(ref(SSO_MOON, 401).r(), IsVector(centre(SSO_MOON, 401).r() + ground, 0.0));
}

// What heliocentric queries and all that stands on them answer for objects that are not there.
TEST(MissingObjects, AnswerByTheirType) {
    const auto model = make_model(Source::kBuiltIn);
    model->UpdateSys(2455000, 0.5);
    for (const auto& [type, expected] : {std::pair{SSO_PLNT, false},
                                         {SSO_MOON, false},
                                         {SSO_ASTR, true},
                                         {SSO_COMT, true},
                                         {SSO_FAST, true},
                                         {SSO_FCOM, true},
                                         {SSO_USCO, false},
                                         {SSO_FSCO, false},
                                         {SSO_TLE, false},
                                         {SSO_STAR, false},
                                         {SSO_MESH, false}}) {
        const SSO_ID id(type, 987654);
        SCOPED_TRACE(type);
        const Answer hel = ask(*model, &CSWSolSys::GetHelVec2K, id);
        EXPECT_EQ(hel.known, expected);
        EXPECT_THAT(hel.v, testing::Each(0.0));
        const Answer ref = ask(*model, &CSWSolSys::GetRefVec2K, id);
        EXPECT_EQ(ref.known, expected);
        EXPECT_THAT(ref.r(), IsVector(expected ? -observer_of(*model).r : Vec3{}, 0.0));
        for (const Query query : {&CSWSolSys::GetVecCentre2K, &CSWSolSys::GetHelEcl2K}) {
            const Answer none = ask(*model, query, id);
            EXPECT_FALSE(none.known);
            EXPECT_THAT(none.v, testing::Each(0.0));
        }
        double out[6];
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
}

class VisibleVector : public testing::Test {
  protected:
    void SetUp() override {
        model_ = make_model(Source::kDe405);
        model_->UpdateSys(2455000, 0.0);
    }
    double passed() { return days_between({2455000, 0.0}, time_of(*model_)); }
    std::unique_ptr<CSWSolSys> model_;
};

// Whatever the first guess, the light time it ends with is that of the place it gives.
TEST_F(VisibleVector, DoesNotDependOnTheFirstGuess) {
    for (const SSO_ID& id : {SSO_ID(SSO_PLNT, 1), SSO_ID(SSO_PLNT, 8), SSO_ID(SSO_MOON, 606)}) {
        double expected[4], out[4];
        ASSERT_TRUE(model_->GetSSOVisVec2K(id, expected, 0.0));
        EXPECT_NEAR(norm(load(expected)), 1.0, 1e-15);
        for (const double guess : {1e-9, 0.5, -2.0, 3000.0, double{NAN}, 1e300}) {
            ASSERT_TRUE(model_->GetSSOVisVec2K(id, out, guess)) << guess;
            // 2e-6 day of tolerance, at 0.03 au/day and 0.6 au at worst.
            EXPECT_LT(angle_between(load(out), load(expected)), 1.5e-7) << guess;
            EXPECT_EQ(passed(), 0.0);
        }
    }
    // Absurd ones are refused.
    double out[4];
    EXPECT_FALSE(model_->GetSSOVisVec2K({SSO_PLNT, 5}, out, -1e300));
    EXPECT_EQ(passed(), 0.0);
    // At the first day there is, nothing is seen whose light would have left before.
    constexpr int kFirstDay = std::numeric_limits<int>::min() + 10;
    model_->AddAsteroid(1, {.elements = orbit(1e5, 0.0, 0.0, motion(1e5))});
    model_->UpdateSys(kFirstDay, 0.0);
    EXPECT_FALSE(model_->GetSSOVisVec2K({SSO_ASTR, 1}, out, 0.0));
    EXPECT_EQ(time_of(*model_).day, kFirstDay);
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
    EXPECT_NEAR(-passed(), norm(ref.r()) * kLightDayPerAu, 1e-9);
}

// A user's object is corrected along its velocity, and aberration adds the velocities.
TEST_F(VisibleVector, OfOwnObjectsIsLinear) {
    UserObjectRecord probe;
    probe.central_number = 10;
    probe.epoch_day = 2455000;
    probe.state[0] = 1.7, probe.state[1] = 0.4, probe.state[4] = 0.012;
    ASSERT_TRUE(model_->AddUserObject(1, probe));
    const Answer hel = ask(*model_, &CSWSolSys::GetHelVec2K, {SSO_USCO, 1});
    const State observer = observer_of(*model_);
    double out[4];
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_USCO, 1}, out, 0.0));
    const Vec3 delta = hel.r() - observer.r;
    const double tau = norm(delta) * 0.005775518331436995;
    const Vec3 path = delta - tau * hel.dr();
    EXPECT_EQ(out[3], norm(path));
    EXPECT_THAT(load(out),
                IsVector(unit(unit(path) + 0.005775518331436995 * observer.v), 1e-15));
}

// An observer at the very centre of a body sees it in no direction.
TEST_F(VisibleVector, OfTheObserversOwnCentreIsZero) {
    double out[4], place[3];
    ASSERT_TRUE(model_->GetSSOVisVec2K({SSO_PLNT, 3}, out, 0.0));
    EXPECT_THAT(out, testing::Each(0.0));
    ASSERT_TRUE(model_->GetRADecVis({SSO_PLNT, 3}, place, 0.0));
    EXPECT_THAT(place, testing::Each(0.0));
}

// Beyond the theories an observer on the Earth is nowhere: nothing is seen from there, not even
// the Sun and the stars.
TEST(ObserverNowhere, SeesNothing) {
    const auto model = make_model(Source::kBuiltIn);
    const Elements orbit{2.7, 0.1, 0.0, 0.0, 0.0, 0.004, 0.0, 0.0, 2455000};
    ASSERT_TRUE(model->AddAsteroid(1, {.elements = orbit, .H = 5.0F}));
    ASSERT_TRUE(model->AddStar({SSO_STAR, 1}, {.ra = 1, .dec = 0.5}));
    for (const auto& [day, known] : {std::pair{3500000, false}, {2455000, true}}) {
        model->UpdateSys(day, 0.0);
        double out[6];
        EXPECT_EQ(model->GetObserverVec2K(out), known);
        for (const SSO_ID& id :
             {SSO_ID(SSO_PLNT, 10), SSO_ID(SSO_ASTR, 1), SSO_ID(SSO_STAR, 1)}) {
            EXPECT_EQ(model->GetRADecVis(id, out, 0.0), known) << id.type;
            EXPECT_EQ(model->GetRADec(id, out, false), known) << id.type;
            EXPECT_EQ(model->GetCurVec(id, out, true), known) << id.type;
            if (id.type == SSO_STAR) continue;
            float magnitude = 0;
            EXPECT_EQ(model->GetRefVecCur(id, 0, out), known);
            EXPECT_EQ(model->GetSSOVisVec2K(id, out, 0.01), known);
            EXPECT_EQ(model->GetMagnitude(id, &magnitude), known);
        }
    }
}

}  // namespace
