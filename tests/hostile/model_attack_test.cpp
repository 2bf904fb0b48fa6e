// Every exported member and function, with hostile arguments, in every state a model can be in:
// nothing may crash, read out of bounds or go on without end. Run under sanitizers by ./check.
#include <gtest/gtest.h>

#include "tests/hostile/attack.h"
#include "tests/hostile/states.h"

namespace {

using hostile::Attacker;

constexpr int kRounds = 12;  // calls of each member in each state

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
    MEMBER(GetAstrometricVec2K), MEMBER(GetRADec), MEMBER(GetSSOVisVec2K), MEMBER(GetRADecVis),
        MEMBER(GetAsterVecCentre2K);
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

void attack_integrated(Attacker& attack, CSWSolSys& model) {
    MEMBER(AddIntegratedAsteroid), MEMBER(GetIntegratedAsteroid), MEMBER(AddIntegratedComet);
    MEMBER(GetIntegratedComet), MEMBER(AddIntegratedUserObject);
    MEMBER(GetIntegratedUserObject), MEMBER(SetIntegrCallBack);
    attack("SetIntegrated", &CSWSolSys::SetIntegrated, model);
    MEMBER(IsIntegrated), MEMBER(GetHelVec2K);
    MEMBER(RemoveIntegratedAsteroid), MEMBER(RemoveIntegratedComet);
    MEMBER(RemoveIntegratedUserObject);
    if (attack.pick(6) == 0) {
        MEMBER(ClearIntegratedAsteroids), MEMBER(ClearIntegratedComets);
        MEMBER(ClearIntegratedUserObjects);
    }
}

void attack_satellites(Attacker& attack, CSWSolSys& model) {
    using OfRecord = bool (CSWSolSys::*)(std::int32_t, const TLERecord&);
    using OfLines = bool (CSWSolSys::*)(std::int32_t, const char*, const char*);
    attack("AddSatellite", static_cast<OfRecord>(&CSWSolSys::AddSatellite), model);
    attack("AddSatellite", static_cast<OfLines>(&CSWSolSys::AddSatellite), model);
    attack("AddSatellite", [&] {
        model.AddSatellite(
            attack.integer(),
            "1 25544U 98067A   23055.54791667  .00016717  00000-0  10270-3 0  9007",
            "2 25544  51.6400 208.9163 0006317  69.9862  25.2906 15.50000000 00009");
    });
    MEMBER(GetSatellite), MEMBER(RemoveSatellite);
    if (attack.pick(6) == 0) MEMBER(ClearSatellites);
}

void attack_reduction(Attacker& attack, CSWSolSys& model) {
    MEMBER(SetReduction), MEMBER(GetReduction), MEMBER(SetUT1), MEMBER(SetPolarMotion);
    MEMBER(GetEarthOrientation), MEMBER(GetSiderealTime), MEMBER(UseEphemeris);
    attack("SetEarthOrientation", [&] {
        EarthOrientationRow rows[5];
        for (EarthOrientationRow& row : rows)
            row = {attack.number(), attack.number(), attack.number(), attack.number()};
        model.SetEarthOrientation(attack.pick(5) == 0 ? nullptr : rows,
                                  static_cast<int>(attack.pick(7)) - 1);
    });
    attack("SetLeapSeconds", [&] {
        LeapSecond rows[5];
        for (LeapSecond& row : rows) row = {attack.number(), attack.number()};
        model.SetLeapSeconds(attack.pick(5) == 0 ? nullptr : rows,
                             static_cast<int>(attack.pick(7)) - 1, attack.number());
    });
    MEMBER(UpdateSys), MEMBER(GetRADecVis), MEMBER(FromRAToAzm), MEMBER(InitSys);
}

void attack_physics(Attacker& attack, CSWSolSys& model) {
    MEMBER(GetMagnitude), MEMBER(PhaseElongation), MEMBER(GetRadiEq), MEMBER(GetGravity);
    MEMBER(GetParentGravity), MEMBER(GetPeriodRotation), MEMBER(GetAngVelocity);
    MEMBER(GetPolarAxes), MEMBER(GetOrbitalPeriod), MEMBER(GetSolarDay),
        MEMBER(RADecInConstell);
}

#undef MEMBER

class Model : public testing::TestWithParam<hostile::State> {};

TEST_P(Model, SurvivesEveryMember) {
    Attacker attack(20);
    for (int round = 0; attack.goes_on(round, kRounds, 1.0); ++round) {
        CSWSolSys model;
        GetParam().reach(model, attack);
        attack_tables(attack, model);
        for (const auto part :
             {attack_positions, attack_satellites, attack_integrated, attack_frames,
              attack_physics, attack_observer, attack_reduction, attack_positions})
            part(attack, model);
    }
    EXPECT_LT(attack.slowest, hostile::kLongest) << attack.slowest_name;
}

INSTANTIATE_TEST_SUITE_P(States, Model, testing::ValuesIn(hostile::kStates),
                         [](const auto& state) { return state.param.name; });

}  // namespace
