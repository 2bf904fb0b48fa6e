// Construction, instants, the save slot, and the search for new Moons.
#include <gtest/gtest.h>

#include <fstream>
#include <limits>

#include "tests/support/debug_text.h"
#include "tests/support/models.h"

namespace {

using namespace solsys;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

using Time = std::pair<int, double>;
Time time_of(const CSWSolSys& model) {
    const Instant t = test::time_of(model);
    return {t.day, t.fraction};
}

// Everything a host can see that follows from the instant and the observer.
std::vector<double> derived(const CSWSolSys& model) {
    double horizon[9], galaxy[9], observer[6];
    model.GetLocal2CelestialMtrx(horizon);
    model.GetMtrx_EqCur_GalCur(galaxy);
    model.GetObserverVec2K(observer);
    std::vector<double> all(observer, observer + 6);
    for (const double* matrix :
         {model.GetMtrxEq2K_EqCur(), model.GetMtrxEq2K_EclCur(), model.GetMtrxEqCur_EclCur(),
          model.GetMtrxPrecession(), model.GetMtrxNutation(), model.GetMtrxTopoCur(),
          static_cast<const double*>(horizon), static_cast<const double*>(galaxy)})
        all.insert(all.end(), matrix, matrix + 9);
    for (const char code : {char{0}, char{1}, char{2}}) {
        double v[3] = {1.0, 0.5, 0.25};
        model.TransferLocationVec(v, 9, v, code);
        all.insert(all.end(), v, v + 3);
    }
    return all;
}

TEST(SetTime, StoresTheDayTruncatedAndTheRest) {
    for (const auto& [given, stored] :
         {std::pair{Time(2451545, -0.25), Time(2451544, 0.75)},
          {Time(2440000, 12345.75), Time(2452345, 0.75)},
          {Time(2451600, -1e-12), Time(2451599, 1 - 1e-12)},  // the sum rounds to the day
          {Time(2451600, -1e-20), Time(2451600, 0.0)},
          {Time(-10, -0.5), Time(-10, -0.5)},
          {Time(kIntMin, 0.0), Time(kIntMin, 0.0)},
          {Time(kIntMax, 0.0), Time(kIntMax, 0.0)}}) {
        CSWSolSys model;
        model.SetTime(given.first, given.second, false);
        EXPECT_EQ(time_of(model), stored);
    }
}

TEST(SetTime, TakesAnotherSplitOfItsInstantForTheSame) {
    CSWSolSys model;
    model.SetTime(2451545, 0.75, true);
    model.SetTime(2451544, 1.75, true);
    model.SetTime(2451545, 0.75 + 0.9e-8, true);
    EXPECT_EQ(time_of(model), Time(2451545, 0.75));
    model.SetTime(2451545, 0.75 + 1.1e-8, true);
    EXPECT_EQ(time_of(model), Time(2451545, 0.75 + 1.1e-8));
}

TEST(SetTime, CountsNaNAsZeroAndSaysSo) {
    const support::DebugText debug;
    CSWSolSys model;
    model.SetTime(2451600, kNaN, true);
    EXPECT_EQ(time_of(model), Time(2451600, 0.0));
    EXPECT_EQ(debug.text(), "SetTime(): tj is NaN!\n");
}

TEST(SetTime, RefusedInstantsLeaveTheModelWhereItWas) {
    for (const auto& [day, fraction] : {Time(2451545, kInf), Time(0, -kInf), Time(kIntMax, 1.0),
                                        Time(kIntMin, -1.0), Time(0, 1e300)}) {
        CSWSolSys model;
        model.UpdateSys(2451600, 0.25);
        const auto before = derived(model);
        EXPECT_FALSE(model.SetTime(day, fraction, true));
        EXPECT_FALSE(model.UpdateSys(day, fraction));
        EXPECT_FALSE(model.SetT3(day, fraction));
        EXPECT_EQ(time_of(model), Time(2451600, 0.25));
        model.RestoreT3Data();  // nothing was saved
        EXPECT_EQ(time_of(model), Time(2451600, 0.25));
        EXPECT_EQ(derived(model), before);
    }
}

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

TEST(Frames, TheGalaxyStandsStill) {
    CSWSolSys model;
    double before[9], of_date[9], after[9];
    ASSERT_TRUE(model.GetMtrx_Eq2K_GalCur(before));
    model.UpdateSys(2460000, 0.0);
    ASSERT_TRUE(model.GetMtrx_Eq2K_GalCur(after) && model.GetMtrx_EqCur_GalCur(of_date));
    EXPECT_EQ(test::distance(load_matrix(before), load_matrix(after)), 0.0);
    EXPECT_NEAR(before[8], std::sin(27.128 * kDegree), 3e-4);  // its pole
    EXPECT_LT(test::distance(load_matrix(of_date) * load_matrix(model.GetMtrxEq2K_EqCur()),
                             load_matrix(before)),
              1e-15);
}

TEST(Frames, OfANewModelComeWithItsFirstInstantEvenJ2000) {
    CSWSolSys model;
    EXPECT_EQ(model.GetMtrxNutation()[0], 1.0);
    model.SetTime(2451545, 0.0, false);
    EXPECT_EQ(model.GetMtrxNutation()[1], 0.0);
    model.SetTime(2451545, 0.0, true);
    // Nutation in longitude is -13.9 arcsec then; the element is -sin(dpsi) cos(eps).
    EXPECT_NEAR(model.GetMtrxNutation()[1], 13.9 * kArcsec * 0.917, 0.5 * kArcsec);
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

TEST(Frames, FollowTheHostsOwnModels) {
    CSWSolSys model;
    model.SetPrecessionFunction([](int, double, double* m) {
        store(rotate_z(0.5), m);
        return true;
    });
    model.SetNutationFunction(
        [](int, double, double*, double*, double*, double*) { return false; });
    model.UpdateSys(2451545, 0.0);
    EXPECT_NEAR(model.GetMtrxPrecession()[0], std::cos(0.5), 1e-16);
    const double declined = model.GetMtrxNutation()[1];
    model.SaveT3Data();  // by the host's models, which are gone when it comes back
    model.SetPrecessionFunction(nullptr);
    model.SetNutationFunction(nullptr);
    model.RestoreT3Data();
    model.UpdateSys(2451545, 0.0);
    EXPECT_EQ(model.GetMtrxPrecession()[0], 1.0);
    EXPECT_EQ(model.GetMtrxNutation()[1], declined);
}

TEST(SaveSlot, BringsBackInstantObserverAndAllThatFollows) {
    const auto model = support::built_in_model();
    const SSO_ID saturn(SSO_PLNT, 6);
    const OBSERVER site = support::observer(LOCATION_SURFACE, 4, 1e-8, 2.0, -0.4);
    model->SetObserver(&site);
    model->UpdateSys(2458000, 0.125);
    const auto before = derived(*model);
    double place[3], again[3];
    ASSERT_TRUE(model->GetRADecVis(saturn, place, 0.0));

    model->SaveT3Data();
    const OBSERVER other = support::on_moon(LOCATION_SURFACE, 503, 0, 1, 1);
    model->SetObserver(&other);
    model->UpdateSys(2459000, 0.5);
    ASSERT_NE(derived(*model), before);
    model->RestoreT3Data();

    EXPECT_EQ(derived(*model), before);
    EXPECT_EQ(time_of(*model), Time(2458000, 0.125));
    EXPECT_EQ(model->GetObserverSSO(), model->GetSS_Object(SSO_ID(SSO_PLNT, 4)));
    ASSERT_TRUE(model->GetRADecVis(saturn, again, 0.0));
    EXPECT_EQ(norm(load(place) - load(again)), 0.0);
}

TEST(SaveSlot, SetT3ComesBackToItsInstant) {
    const auto model = support::built_in_model();
    model->SetT3(2458000, 1.125);
    const auto before = derived(*model);
    EXPECT_EQ(time_of(*model), Time(2458001, 0.125));
    model->UpdateSys(2459000, 0.5);
    model->RestoreT3Data();
    EXPECT_EQ(time_of(*model), Time(2458001, 0.125));  // in the ordinary split
    EXPECT_EQ(derived(*model), before);
}

struct Root {
    double (*f)(double);
    double root;
    int calls;
};
// Calls the function of the days since J2000, counts and moves the model about.
double probe(CSWSolSys& m, double jd, void* context) {
    Root& root = *static_cast<Root*>(context);
    ++root.calls;
    const int day = std::isfinite(jd) ? static_cast<int>(jd) : 0;
    m.SetTime(day, jd - day, true);
    return root.f(jd - 2451545.0);
}

TEST(FindNewMoon, FindsTheZeroAndKeepsTheInstant) {
    CSWSolSys model;
    model.UpdateSys(2458000, 0.5);
    for (Root r : {Root{[](double x) { return x - 3.3; }, 3.3, 0},
                   Root{[](double x) { return std::exp(0.4 * x) - 5; }, 4.0235947810852507, 0},
                   Root{[](double x) { return 3 - std::sqrt(x); }, 9.0, 0},
                   Root{[](double x) { return std::log1p(x) - 1; }, 1.7182818284590452, 0},
                   Root{[](double x) { return x; }, 0.0, 0},
                   Root{[](double x) { return x - 10; }, 10.0, 0}}) {
        const double found = model.FindNewMoon(2451545.0, 2451555.0, probe, &r);
        // One second, and the rounding of a Julian date.
        EXPECT_NEAR(found, 2451545.0 + r.root, 1.2e-5);
        EXPECT_LT(r.calls, 500);
        EXPECT_EQ(time_of(model), Time(2458000, 0.5));
    }
}

TEST(FindNewMoon, EndsWithoutAChangeOfSignOrANumberAndSaysSo) {
    const support::DebugText debug;
    CSWSolSys model;
    Root positive{[](double) { return 1.0; }, 0, 0}, nowhere{[](double) { return kNaN; }, 0, 0};
    EXPECT_EQ(model.FindNewMoon(2451545.0, 2451546.0, probe, &positive), -1.0);
    EXPECT_EQ(debug.text(), "CSWSolSys::FindNewMoon() error\n");
    model.FindNewMoon(2451545.0, 2451546.0, probe, &nowhere);
    EXPECT_LT(nowhere.calls, 10);
}

TEST(InitSys, TakesAnEphemerisThatComesLater) {
    ASSERT_TRUE(std::ifstream(SOLSYS_DE405).good()) << "make " << SOLSYS_DE405 << " first";
    const auto model = support::built_in_model();
    model->UpdateSys(2451545, 0.0);
    const SSO_ID bodies[] = {{SSO_PLNT, 2}, {SSO_PLNT, 9}, {SSO_MOON, 301}};
    double built_in[3][3], from_file[3];
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(model->GetVecCentre2K(bodies[i], 0, built_in[i]));

    EXPECT_TRUE(model->InitSys(SOLSYS_DE405));
    EXPECT_TRUE(model->HasEphemeris());
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(model->GetVecCentre2K(bodies[i], 0, from_file));
        EXPECT_NE(built_in[i][0], from_file[0]);
        // The built-in theories hold 0.1 arcsec; the axes of DE405 are theirs to 0.03.
        const Vec3 expected = load(from_file);
        EXPECT_LT(norm(load(built_in[i]) - expected) / norm(expected), 1e-6);
    }
    // At the same instant: not by choice, by choice, closed, not found, opened anew.
    const auto serves = [&](bool file) {
        EXPECT_EQ(model->HasEphemeris(), file);
        double now[3];
        EXPECT_TRUE(model->GetVecCentre2K(bodies[2], 0, now));
        return now[0] == (file ? from_file : built_in[2])[0];
    };
    EXPECT_TRUE(model->UseEphemeris(false) && serves(false));
    EXPECT_TRUE(model->InitSys(SOLSYS_DE405) && serves(false));
    EXPECT_TRUE(model->UseEphemeris(true) && serves(true));
    DE_Ephemeris::clear();
    EXPECT_TRUE(serves(false));
    EXPECT_TRUE(model->InitSys("no such file") && serves(false));
    EXPECT_TRUE(model->InitSys(SOLSYS_DE405) && serves(true));
    DE_Ephemeris::clear();
}

// Null pointers are answered, never written through.
TEST(NullDestinations, AreRefusedByEveryMember) {
    const auto model = support::built_in_model();
    model->UpdateSys(2451545, 0.0);
    CSWSolSys& m = *model;
    const SSO_ID mars(SSO_PLNT, 4);
    const double angle = 0.5;
    double out[9];
    int day = 0;
    OBSERVER site = support::observer(LOCATION_SURFACE, 3);
    const bool answers[] = {m.GetTime(nullptr, out),
                            m.GetTime(&day, nullptr),
                            m.SetObserver(nullptr),
                            m.GetObserverVec2K(nullptr),
                            m.GetNutationAngles(out, nullptr, out),
                            m.GetMtrxTopo(nullptr, out),
                            m.GetMtrxTopo(&site, nullptr),
                            m.GetLocal2CelestialMtrx(nullptr),
                            m.GetMtrx_Eq2K_GalCur(nullptr),
                            m.GetMtrx_EqCur_GalCur(nullptr),
                            m.FromRAToAzm(true, nullptr, &angle, out, out),
                            m.FromAzmToRA(true, &angle, &angle, nullptr, out),
                            m.FromRAToEclAng(true, &angle, &angle, out, nullptr),
                            m.FromEclAngToRA(true, &angle, nullptr, out, out),
                            m.FromRAToPlEq(true, &angle, &angle, nullptr, out),
                            m.FromPlEqToRA(true, &angle, &angle, nullptr, out),
                            m.FromRAToOrbAng(true, &angle, &angle, nullptr, out),
                            m.FromOrbAngToRA(true, &angle, &angle, nullptr, out),
                            m.FromRAToGalAng(true, &angle, &angle, nullptr, out),
                            m.FromGalAngToRA(true, &angle, &angle, nullptr, out),
                            m.VecFromRAToAzm(out, nullptr),
                            m.TransferLocationVec(nullptr, 1, out, 2),
                            m.TransferLocationCoor(nullptr, 1),
                            m.TransferViewVec(out, 1, nullptr, 2),
                            CSWSolSys::AddBodyRotationParams({}, nullptr),
                            m.GetMtrxPl_EqFromEncodedAngles(0, 0, 0, nullptr, true),
                            m.GetMtrxPl_EqFromAngles(0, 0, 0, nullptr, false),
                            m.GetMtrxPl_Eq(mars, nullptr, true),
                            m.GetMtrxEq2K_PlEq(mars, 2451545, 0.0, out, nullptr),
                            m.PlgToEq(mars, nullptr, out),
                            m.EqToPlg(mars, out, nullptr),
                            m.CheckSSO(nullptr),
                            m.GetHelVec2K(mars, 1, nullptr),
                            m.GetVecCentre2K(mars, 1, nullptr),
                            m.GetHelVecCur(mars, 1, nullptr),
                            m.GetHelEcl2K(mars, 1, nullptr),
                            m.GetRefVec2K(mars, 1, nullptr),
                            m.GetRefVecCur(mars, 1, nullptr),
                            m.GetCurVec(mars, nullptr, true),
                            m.GetRADec(mars, nullptr, true),
                            m.GetSSOVisVec2K(mars, nullptr, 0.0),
                            m.GetRADecVis(mars, nullptr, 0.0),
                            m.GetAsterVecCentre2K(1, nullptr, nullptr),
                            m.GetRADecVisStar(nullptr, out, out, true),
                            m.GetMagnitude(mars, nullptr),
                            m.GetPolarAxes(mars, nullptr),
                            m.AddSpacecraft(1, nullptr, 1),
                            m.GetFullList(nullptr) != 0,
                            m.GetPlanetsList(nullptr) != 0,
                            m.GetMoonsList(nullptr) != 0,
                            m.GetAstersList(nullptr) != 0,
                            m.GetCometsList(nullptr) != 0,
                            m.GetMoonsListFor(mars, nullptr) != 0,
                            LonLatForObjects(&mars, 1, 1, nullptr, nullptr) != 0,
                            m.FindNewMoon(1, 2, nullptr, nullptr) != -1.0};
    for (std::size_t i = 0; i < std::size(answers); ++i) EXPECT_FALSE(answers[i]) << i;
    EXPECT_TRUE(m.PhaseElongation(mars, nullptr, nullptr, nullptr, nullptr, nullptr));
}

}  // namespace
