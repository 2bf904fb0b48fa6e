// Every exported member and function, with hostile arguments, in every state a model can be in:
// nothing may crash, read out of bounds or go on without end. Run under sanitizers by ./check.
#include <gtest/gtest.h>

#include <functional>

#include "solsys/solsys.h"
#include "tests/hostile/attack.h"

namespace {

using hostile::Attacker;

constexpr int kRounds = 12;  // calls of each member in each state
constexpr double kLongest =
    20.0;  // s, under sanitizers: an end that is not reached is what fails

#define MEMBER(name) attack(#name, &CSWSolSys::name, model)

void attack_observer(Attacker& attack, CSWSolSys& model) {
    MEMBER(SetTime), MEMBER(UpdateSys), MEMBER(SetT3), MEMBER(SaveT3Data),
        MEMBER(RestoreT3Data);
    MEMBER(GetTime), MEMBER(SetPrecessionFunction), MEMBER(SetNutationFunction);
    MEMBER(HasEphemeris), MEMBER(SetObserver), MEMBER(GetObserver), MEMBER(GetObserverSSO);
    MEMBER(GetObserverVec2K), MEMBER(setUseGravityForRNB);
    attack("FindNewMoon", [&] {
        (void)model.FindNewMoon(
            attack.number(), attack.number(),
            [](CSWSolSys&, double jd, void*) { return jd - 2451550.0; }, nullptr);
    });
}

void attack_frames(Attacker& attack, CSWSolSys& model) {
    MEMBER(GetMtrxEq2K_EqCur), MEMBER(GetMtrxEq2K_Ecl2K), MEMBER(GetMtrxEq2K_EclCur);
    MEMBER(GetMtrxEqCur_EclCur), MEMBER(GetMtrxPrecession), MEMBER(GetMtrxNutation);
    MEMBER(GetNutationAngles), MEMBER(GetMtrxTopo), MEMBER(GetMtrxTopoCur);
    MEMBER(GetLocal2CelestialMtrx), MEMBER(GetMtrx_Eq2K_GalCur), MEMBER(GetMtrx_EqCur_GalCur);
    MEMBER(FromRAToAzm), MEMBER(FromAzmToRA), MEMBER(FromRAToEclAng), MEMBER(FromEclAngToRA);
    MEMBER(FromRAToPlEq), MEMBER(FromPlEqToRA), MEMBER(FromRAToOrbAng), MEMBER(FromOrbAngToRA);
    MEMBER(FromRAToGalAng), MEMBER(FromGalAngToRA), MEMBER(VecFromRAToAzm);
    MEMBER(TransferLocationVec), MEMBER(TransferLocationCoor), MEMBER(TransferViewVec);
    MEMBER(GetMtrxPl_EqFromEncodedAngles), MEMBER(GetMtrxPl_EqFromAngles), MEMBER(GetMtrxPl_Eq);
    MEMBER(GetMtrxEq2K_PlEq), MEMBER(SetMtrxEq2K_PlEq), MEMBER(PlgToEq), MEMBER(EqToPlg);
    attack("AddBodyRotationParams", &CSWSolSys::AddBodyRotationParams);
    attack("GetBodyRotationsCount", &CSWSolSys::GetBodyRotationsCount);
    using ByIndex = const BodyRotationParams* (*)(int);
    using ByKey = const BodyRotationParams* (*)(const ObjectKey&);
    attack("GetBodyRotation", static_cast<ByIndex>(&CSWSolSys::GetBodyRotation));
    attack("GetBodyRotation", static_cast<ByKey>(&CSWSolSys::GetBodyRotation));
}

void attack_positions(Attacker& attack, CSWSolSys& model) {
    MEMBER(GetFullList), MEMBER(GetPlanetsList), MEMBER(GetMoonsList), MEMBER(GetAstersList);
    MEMBER(GetCometsList), MEMBER(GetMoonsListFor), MEMBER(GetSS_Object), MEMBER(CheckSSO);
    MEMBER(GetCentralBodyID), MEMBER(GetHelVec2K), MEMBER(GetVecCentre2K), MEMBER(GetHelVecCur);
    MEMBER(GetHelEcl2K), MEMBER(GetRefVec2K), MEMBER(GetRefVecCur), MEMBER(GetCurVec);
    MEMBER(GetRADec), MEMBER(GetSSOVisVec2K), MEMBER(GetRADecVis), MEMBER(GetAsterVecCentre2K);
}

void attack_tables(Attacker& attack, CSWSolSys& model) {
    MEMBER(AddAsteroid), MEMBER(GetAsteroid), MEMBER(AddComet), MEMBER(GetComet);
    MEMBER(AddUserObject), MEMBER(HoldAsteroid), MEMBER(HoldComet), MEMBER(AddStar);
    MEMBER(GetStar), MEMBER(GetRADecVisStar), MEMBER(RemoveAsteroid), MEMBER(RemoveComet);
    MEMBER(RemoveSpacecraft), MEMBER(RemoveUserObject), MEMBER(RemoveStar);
    attack("AddSpacecraft", [&] {
        SpacecraftRecord records[3];
        for (SpacecraftRecord& r : records) {
            r.central_number = attack.integer();
            r.epoch_day = attack.integer();
            r.q = attack.number(), r.e = attack.number(), r.M = attack.number();
            r.n = attack.number();
        }
        model.AddSpacecraft(attack.integer(), attack.pick(5) == 0 ? nullptr : records,
                            static_cast<int>(attack.pick(5)) - 1);
    });
    if (attack.pick(6) == 0) {
        MEMBER(ClearAsteroids), MEMBER(ClearComets), MEMBER(ClearSpacecraft);
        MEMBER(ClearUserObjects), MEMBER(ClearStars);
    }
}

void attack_physics(Attacker& attack, CSWSolSys& model) {
    MEMBER(GetMagnitude), MEMBER(PhaseElongation), MEMBER(GetRadiEq), MEMBER(GetGravity);
    MEMBER(GetParentGravity), MEMBER(GetPeriodRotation), MEMBER(GetAngVelocity);
    MEMBER(GetPolarAxes), MEMBER(GetOrbitalPeriod), MEMBER(GetSolarDay),
        MEMBER(RADecInConstell);
}

#undef MEMBER

#define MEMBER(name) attack(#name, &CSWVisibility::name, search)
void attack_visibility(Attacker& attack, CSWSolSys& model) {
    CSWVisibility search(&model);
    attack("InitSearch", [&] {
        // Long spans are long work; those that end beyond all sources must end there.
        const double start = attack.number();
        const double spans[] = {30.0, 0.0, -1.0, 1e12, attack.number() * 1e9};
        OBSERVER observer = attack.observer();
        search.InitSearch(start, start + spans[attack.pick(std::size(spans))], attack.id(),
                          attack.pick(6) == 0 ? nullptr : &observer);
    });
    MEMBER(SearchNext), MEMBER(SearchVisibility), MEMBER(GetResults);
    attack("SearchRiseSet", [&] {
        std::vector<RISESETDAY> days;
        RISESETVIS request;
        if (attack.pick(3) != 0) request.days = &days;
        search.SearchRiseSet(attack.pick(6) == 0 ? nullptr : &request);
    });
    MEMBER(FreeRiseSetVector), MEMBER(GetCulmination), MEMBER(GetCulmination4Spacecraft);
    MEMBER(GetCulmination4Spacecraft2), MEMBER(FindObjSinAltMinMax);
    MEMBER(FindNearestRiseSetTimes), MEMBER(GetCurVisibility), MEMBER(GetHorizon);
    MEMBER(GetZenith), MEMBER(GetMtrxEq_Ec), MEMBER(GetPhysInfo), MEMBER(GetBrief_OI);
    using Near = bool (CSWVisibility::*)(SSO_ID*, double, double, double&, double&, short);
    using Between =
        bool (CSWVisibility::*)(SSO_ID*, double, double, double, double&, double&, short);
    attack("GetEventsTimeForElevation",
           static_cast<Near>(&CSWVisibility::GetEventsTimeForElevation), search);
    attack("GetEventsTimeForElevation",
           static_cast<Between>(&CSWVisibility::GetEventsTimeForElevation), search);
}
#undef MEMBER

// The states a model can be in when a host errs.
struct State {
    const char* name;
    std::function<void(CSWSolSys&, Attacker&)> reach;
};
const State kStates[] = {
    {"Constructed", [](CSWSolSys&, Attacker&) {}},
    {"WithoutAnInstant", [](CSWSolSys& m, Attacker&) { m.InitSys(""); }},
    {"OnTheTheory", [](CSWSolSys& m, Attacker&) { m.InitSys(""), m.UpdateSys(2460000, 0.25); }},
    {"OnTheFile",
     [](CSWSolSys& m, Attacker&) { m.InitSys(SOLSYS_DE405), m.UpdateSys(2450000, 0.1); }},
    {"BeyondAllSources",
     [](CSWSolSys& m, Attacker&) { m.InitSys(""), m.UpdateSys(9000000, 0); }},
    {"AtNoInstant",
     [](CSWSolSys& m, Attacker& a) { m.InitSys(""), m.UpdateSys(a.integer(), a.number()); }},
    {"SeenFromAnywhere",
     [](CSWSolSys& m, Attacker& a) {
         m.InitSys("");
         m.UpdateSys(2460000, 0.25);
         const OBSERVER anywhere = a.observer();
         m.SetObserver(&anywhere);
     }},
};

class Model : public testing::TestWithParam<State> {};

TEST_P(Model, SurvivesEveryMember) {
    Attacker attack(20);
    for (int round = 0; round < kRounds; ++round) {
        CSWSolSys model;
        GetParam().reach(model, attack);
        attack_tables(attack, model);
        for (const auto part : {attack_positions, attack_frames, attack_physics,
                                attack_visibility, attack_observer, attack_positions})
            part(attack, model);
    }
    EXPECT_LT(attack.slowest, kLongest) << attack.slowest_name;
    RecordProperty("slowest", attack.slowest_name);
}

INSTANTIATE_TEST_SUITE_P(States, Model, testing::ValuesIn(kStates),
                         [](const auto& state) { return state.param.name; });

}  // namespace
