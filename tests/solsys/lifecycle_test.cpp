// Construction, instants, the save slot, and the search for new Moons.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <limits>

#include "core/linalg.h"
#include "tests/support/debug_text.h"
#include "tests/support/models.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

std::pair<int, double> time_of(const CSWSolSys& model) {
    int day = 0;
    double fraction = 0;
    model.GetTime(&day, &fraction);
    return {day, fraction};
}

// Everything a host can see that follows from the instant and the observer.
std::vector<double> derived(const CSWSolSys& model) {
    std::vector<double> all;
    for (const double* matrix :
         {model.GetMtrxEq2K_EqCur(), model.GetMtrxEq2K_EclCur(), model.GetMtrxEqCur_EclCur(),
          model.GetMtrxPrecession(), model.GetMtrxNutation(), model.GetMtrxTopoCur()})
        all.insert(all.end(), matrix, matrix + 9);
    std::array<double, 9> more{};
    model.GetLocal2CelestialMtrx(more.data());
    all.insert(all.end(), more.begin(), more.end());
    model.GetMtrx_EqCur_GalCur(more.data());
    all.insert(all.end(), more.begin(), more.end());
    model.GetObserverVec2K(more.data());
    all.insert(all.end(), more.begin(), more.begin() + 6);
    for (const char code : {char{0}, char{1}, char{2}})
        for (const double x : {0.0, 1.0}) {
            const double v[3] = {x, 0.5, 0.25};
            model.TransferLocationVec(v, 9, more.data(), code);
            all.insert(all.end(), more.begin(), more.begin() + 3);
        }
    return all;
}

struct Split {
    int day;
    double fraction;
    int stored_day;
    double stored_fraction;
};
class SetTimeStores : public testing::TestWithParam<Split> {};
TEST_P(SetTimeStores, TheDayTruncatedAndTheRest) {
    const auto& [day, fraction, stored_day, stored_fraction] = GetParam();
    CSWSolSys model;
    model.SetTime(day, fraction, false);
    EXPECT_EQ(time_of(model), std::pair(stored_day, stored_fraction));
}
INSTANTIATE_TEST_SUITE_P(
    Splits, SetTimeStores,
    testing::Values(Split{2451545, -0.25, 2451544, 0.75},
                    Split{2440000, 12345.75, 2452345, 0.75},
                    Split{2451600, -1e-12, 2451599, 1 - 1e-12},  // the sum rounds to the day
                    Split{2451600, -1e-20, 2451600, 0.0}, Split{-10, -0.5, -10, -0.5},
                    Split{kIntMin, 0.0, kIntMin, 0.0}, Split{kIntMax, 0.0, kIntMax, 0.0}));

TEST(SetTime, TakesAnotherSplitOfItsInstantForTheSame) {
    CSWSolSys model;
    model.SetTime(2451545, 0.75, true);
    model.SetTime(2451544, 1.75, true);
    EXPECT_EQ(time_of(model), std::pair(2451545, 0.75));
    model.SetTime(2451545, 0.75 + 0.9e-8, true);
    EXPECT_EQ(time_of(model), std::pair(2451545, 0.75));
    model.SetTime(2451545, 0.75 + 1.1e-8, true);
    EXPECT_EQ(time_of(model), std::pair(2451545, 0.75 + 1.1e-8));
}

TEST(SetTime, CountsNaNAsZeroAndSaysSo) {
    const support::DebugText debug;
    CSWSolSys model;
    model.SetTime(2451600, kNaN, true);
    EXPECT_EQ(time_of(model), std::pair(2451600, 0.0));
    EXPECT_EQ(debug.text(), "SetTime(): tj is NaN!\n");
}

class RefusedInstants : public testing::TestWithParam<std::pair<int, double>> {};
TEST_P(RefusedInstants, LeaveTheModelWhereItWas) {
    const auto [day, fraction] = GetParam();
    CSWSolSys model;
    model.UpdateSys(2451600, 0.25);
    const auto before = derived(model);
    model.SetTime(day, fraction, true);
    model.UpdateSys(day, fraction);
    model.SetT3(day, fraction);
    EXPECT_EQ(time_of(model), std::pair(2451600, 0.25));
    model.RestoreT3Data();
    EXPECT_EQ(derived(model), before);
}
INSTANTIATE_TEST_SUITE_P(Instants, RefusedInstants,
                         testing::Values(std::pair(2451545, kInf), std::pair(0, -kInf),
                                         std::pair(kIntMax, 1.0), std::pair(kIntMin, -1.0),
                                         std::pair(0, 1e300)));

TEST(UpdateSys, EndsForTheFarthestInstants) {
    const auto model = support::built_in_model();
    const OBSERVER site = support::observer(LOCATION_SURFACE, 3, 0, 1, 0.5);
    model->SetObserver(&site);
    for (const int day : {kIntMin, kIntMax, 0}) {
        model->UpdateSys(day, 0.0);
        EXPECT_EQ(time_of(*model).first, day);
        double place[3];
        EXPECT_EQ(model->GetRADecVis(SSO_ID(SSO_PLNT, 4), place, 0.0), false) << day;
    }
}

TEST(Frames, OfANewModelComeWithItsFirstInstantEvenJ2000) {
    CSWSolSys model;
    EXPECT_EQ(model.GetMtrxNutation()[0], 1.0);
    model.SetTime(2451545, 0.0, false);
    EXPECT_EQ(model.GetMtrxNutation()[1], 0.0);
    model.SetTime(2451545, 0.0, true);
    // Nutation in longitude is -13.9 arcsec then; the element is -sin(dpsi) cos(eps).
    EXPECT_NEAR(model.GetMtrxNutation()[1], 13.9 * 4.848e-6 * 0.917, 0.5 * 4.848e-6);
}

TEST(Frames, BelongToTheInstantAfterUpdateSysWhateverCameBefore) {
    const auto model = support::built_in_model();
    model->UpdateSys(2440000, 0.0);
    model->SetTime(2460000, 0.5, false);  // leaves the frames behind
    model->UpdateSys(2460000, 0.5);
    const auto fresh = support::built_in_model();
    fresh->UpdateSys(2460000, 0.5);
    EXPECT_EQ(derived(*model), derived(*fresh));
}

TEST(Frames, LoseNutationAtOnceWithAnObserverOffTheEarth) {
    const auto model = support::built_in_model();
    model->UpdateSys(2460000, 0.5);
    const OBSERVER mars = support::observer(LOCATION_BODY_FIXED, 4);
    model->SetObserver(&mars);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(model->GetMtrxEq2K_EqCur()[i], model->GetMtrxPrecession()[i]) << i;
    const OBSERVER earth = support::observer(LOCATION_BODY_FIXED, 3);
    model->SetObserver(&earth);
    const auto m = solsys::load_matrix(model->GetMtrxNutation()) *
                   solsys::load_matrix(model->GetMtrxPrecession());
    EXPECT_EQ(model->GetMtrxEq2K_EqCur()[1], m.r0.y);
}

TEST(Frames, FollowTheHostsOwnModels) {
    CSWSolSys model;
    model.SetPrecessionFunction([](int, double, double* m) {
        store(solsys::rotate_z(0.5), m);
        return true;
    });
    model.SetNutationFunction(
        [](int, double, double*, double*, double*, double*) { return false; });
    model.UpdateSys(2451545, 0.0);
    EXPECT_NEAR(model.GetMtrxPrecession()[0], std::cos(0.5), 1e-16);
    const double declined = model.GetMtrxNutation()[1];
    model.SetPrecessionFunction(nullptr);
    model.SetNutationFunction(nullptr);
    model.UpdateSys(2451545, 0.0);
    EXPECT_EQ(model.GetMtrxPrecession()[0], 1.0);
    EXPECT_EQ(model.GetMtrxNutation()[1], declined);
}

TEST(SaveSlot, BringsBackInstantObserverAndAllThatFollows) {
    const auto model = support::built_in_model();
    const OBSERVER site = support::observer(LOCATION_SURFACE, 4, 1e-8, 2.0, -0.4);
    model->SetObserver(&site);
    model->UpdateSys(2458000, 0.125);
    const auto before = derived(*model);
    double place[3];
    ASSERT_TRUE(model->GetRADecVis(SSO_ID(SSO_PLNT, 6), place, 0.0));

    model->SaveT3Data();
    const OBSERVER other = support::on_moon(LOCATION_SURFACE, 503, 0, 1, 1);
    model->SetObserver(&other);
    model->UpdateSys(2459000, 0.5);
    ASSERT_NE(derived(*model), before);
    model->RestoreT3Data();

    EXPECT_EQ(derived(*model), before);
    EXPECT_EQ(time_of(*model), std::pair(2458000, 0.125));
    EXPECT_EQ(model->GetObserverSSO(), model->GetSS_Object(SSO_ID(SSO_PLNT, 4)));
    double again[3];
    ASSERT_TRUE(model->GetRADecVis(SSO_ID(SSO_PLNT, 6), again, 0.0));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(place[i], again[i]);
}

TEST(SaveSlot, RestoringNothingChangesNothing) {
    CSWSolSys model;
    model.UpdateSys(2458000, 0.125);
    const auto before = derived(model);
    model.RestoreT3Data();
    EXPECT_EQ(derived(model), before);
    EXPECT_EQ(time_of(model), std::pair(2458000, 0.125));
}

TEST(SaveSlot, SetT3KeepsTheCallersSplit) {
    const auto model = support::built_in_model();
    model->SetT3(2458000, 1.125);
    const auto before = derived(*model);
    EXPECT_EQ(time_of(*model), std::pair(2458001, 0.125));
    model->UpdateSys(2459000, 0.5);
    model->RestoreT3Data();
    EXPECT_EQ(time_of(*model), std::pair(2458000, 1.125));
    EXPECT_EQ(derived(*model), before);
}

struct Root {
    double (*f)(double);
    double root;
};
class FalsePosition : public testing::TestWithParam<Root> {};
TEST_P(FalsePosition, FindsTheZeroAndKeepsTheInstant) {
    CSWSolSys model;
    model.UpdateSys(2458000, 0.5);
    Root param = GetParam();
    int calls = 0;
    std::pair context{&param, &calls};
    const double found = model.FindNewMoon(
        2451545.0, 2451555.0,
        [](CSWSolSys& m, double jd, void* c) {
            auto& [root, count] = *static_cast<decltype(context)*>(c);
            ++*count;
            m.SetTime(static_cast<int>(jd), jd - static_cast<int>(jd), true);
            return root->f(jd - 2451545.0);
        },
        &context);
    // One second, and the rounding of a Julian date.
    EXPECT_NEAR(found, 2451545.0 + GetParam().root, 1.2e-5);
    EXPECT_LT(calls, 500);
    EXPECT_EQ(time_of(model), std::pair(2458000, 0.5));
}
INSTANTIATE_TEST_SUITE_P(
    Functions, FalsePosition,
    testing::Values(Root{[](double x) { return x - 3.3; }, 3.3},
                    Root{[](double x) { return std::exp(0.4 * x) - 5; }, 4.0235947810852507},
                    Root{[](double x) { return 3 - std::sqrt(x); }, 9.0},
                    Root{[](double x) { return std::log1p(x) - 1; }, 1.7182818284590452},
                    Root{[](double x) { return x; }, 0.0},
                    Root{[](double x) { return x - 10; }, 10.0}));

TEST(FindNewMoon, SaysSoWithoutAChangeOfSign) {
    const support::DebugText debug;
    CSWSolSys model;
    const auto positive = [](CSWSolSys&, double, void*) { return 1.0; };
    EXPECT_EQ(model.FindNewMoon(2451545.0, 2451546.0, positive, nullptr), -1.0);
    EXPECT_EQ(debug.text(), "CSWSolSys::FindNewMoon() error\n");
}

TEST(FindNewMoon, EndsWhenTheFunctionIsNotANumber) {
    CSWSolSys model;
    int calls = 0;
    model.FindNewMoon(
        2451545.0, 2451546.0,
        [](CSWSolSys&, double, void* count) {
            ++*static_cast<int*>(count);
            return kNaN;
        },
        &calls);
    EXPECT_LT(calls, 10);
}

TEST(InitSys, TakesAnEphemerisThatComesLater) {
    ASSERT_TRUE(std::ifstream(SOLSYS_DE405).good()) << "make " << SOLSYS_DE405 << " first";
    const auto model = support::built_in_model();
    EXPECT_FALSE(model->HasEphemeris());
    model->UpdateSys(2451545, 0.0);
    const SSO_ID bodies[] = {{SSO_PLNT, 2}, {SSO_PLNT, 9}, {SSO_MOON, 301}};
    double built_in[3][3];
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(model->GetVecCentre2K(bodies[i], 0, built_in[i]));

    EXPECT_TRUE(model->InitSys(SOLSYS_DE405));
    EXPECT_TRUE(model->HasEphemeris());
    for (int i = 0; i < 3; ++i) {
        double from_file[3];
        ASSERT_TRUE(model->GetVecCentre2K(bodies[i], 0, from_file));
        const auto a = solsys::load(built_in[i]);
        const auto b = solsys::load(from_file);
        EXPECT_NE(a.x, b.x);
        // The built-in theories hold 0.1 arcsec; the axes of DE405 are theirs to 0.03.
        EXPECT_LT(norm(a - b) / norm(b), 1e-6);
    }
    DE_Ephemeris::clear();
}

}  // namespace
