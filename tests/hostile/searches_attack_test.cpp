// Every exported member of the searches and of the integrator, with hostile arguments, over
// models in every state.
#include <gtest/gtest.h>

#include "tests/hostile/attack.h"
#include "tests/hostile/states.h"

namespace {

using hostile::Attacker;

#define MEMBER(name) attack(#name, &std::remove_reference_t<decltype(search)>::name, search)

// Spans of a search: short ones anywhere, reversed and empty ones; without an end only where
// nothing can be computed, or nothing would be left to do.
std::pair<double, double> span_of(Attacker& attack) {
    static const double starts[] = {2451545.0, 2460000.25, 2305814.0, 2816787.5, 9e6, 1e9};
    const double start = attack.pick(3) == 0 ? attack.number() : starts[attack.pick(6)];
    static const double lengths[] = {40.0, 3.0, 0.0, -1e9, std::nan(""), 1e-9};
    const double beyond[] = {1e6, 1e12, std::numeric_limits<double>::infinity()};
    const bool nowhere = std::fabs(start) > 8e6;
    return {start, start + (nowhere ? beyond[attack.pick(3)] : lengths[attack.pick(6)])};
}

void attack_visibility(Attacker& attack, CSWSolSys& model) {
    CSWVisibility search(&model);
    attack("InitSearch", [&] {
        const auto [start, end] = span_of(attack);
        OBSERVER observer = attack.observer();
        search.InitSearch(start, end, attack.id(), attack.pick(6) == 0 ? nullptr : &observer);
    });
    MEMBER(SearchNext), MEMBER(SearchVisibility), MEMBER(GetResults);
    MEMBER(SearchCrossings), MEMBER(GetCrossings);
    attack("SearchRiseSet", [&] {
        std::vector<RISESETDAY> days;
        RISESETVIS request;
        if (attack.pick(3) != 0) request.days = &days;
        search.SearchRiseSet(attack.pick(6) == 0 ? nullptr : &request);
        if (request.days != &days) search.FreeRiseSetVector(&request);
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

void attack_conjunctions(Attacker& attack, CSWSolSys& model) {
    CSWConjunc search(&model);
    std::vector<SSO_ID> objects(attack.pick(5));
    for (SSO_ID& object : objects) object = attack.id();
    attack("InitSearch", [&] {
        const auto [start, end] = span_of(attack);
        search.InitSearch(start, end, attack.pick(6) == 0 ? nullptr : &objects, attack.number(),
                          attack.pick(2) == 0);
    });
    MEMBER(SearchNext), MEMBER(SearchAll), MEMBER(GetResults), MEMBER(SetProgressHandler);
    MEMBER(Stop), MEMBER(SearchAll);
}

void attack_diary(Attacker& attack, CSWSolSys& model) {
    CSkyDiaryEvents search(&model);
    attack("InitSearch", [&] {
        const auto [start, end] = span_of(attack);
        OBSERVER site = attack.observer();
        search.InitSearch(attack.pick(6) == 0 ? nullptr : &site, start, end,
                          attack.pick(2) == 0);
    });
    attack("SetCallback", [&] { search.SetCallback(nullptr); });
    MEMBER(SetProgressHandler), MEMBER(ShowConjunctions), MEMBER(SearchEquinox);
    MEMBER(SearchInner), MEMBER(SearchOuter), MEMBER(SearchMoonPhases);
    MEMBER(SearchMoonApsides), MEMBER(SearchEclipses), MEMBER(SearchShowers);
    MEMBER(SearchConjPlanetsMoon), MEMBER(SearchConjSSOSSO), MEMBER(ConjStarSSO);
    MEMBER(CalcShower), MEMBER(SearchNext), MEMBER(GetResults), MEMBER(ResListReset);
    if (attack.pick(6) == 0) MEMBER(SearchConjPlanetsPlanets), MEMBER(SearchAll);
    MEMBER(Stop), MEMBER(IsCalculationsInterrupt), MEMBER(SearchAll);
    attack("FreeSkyEvent", [] { FreeSkyEvent(nullptr); });
}

void attack_eclipses(Attacker& attack, CSWSolSys& model) {
    CSWEclipses search(&model);
    MEMBER(SetPrecise), MEMBER(IsPrecise), MEMBER(SetRadii), MEMBER(SetShadow);
    attack("SetCallback", [&] { search.SetCallback(nullptr); });
    MEMBER(SetProgressHandler);
    attack("InitSearch", [&] {
        const auto [start, end] = span_of(attack);
        OBSERVER site = attack.observer();
        if (attack.pick(2) == 0)
            search.InitSearch(start, end);
        else
            search.InitSearchForLocation(start, end, attack.pick(6) == 0 ? nullptr : &site);
    });
    MEMBER(SearchNext), MEMBER(SearchEclipses), MEMBER(SearchEclipsesForLocation);
    MEMBER(GetResults), MEMBER(CircumstanceSolarEclipse), MEMBER(CircumstanceLunarEclipse);
    MEMBER(BesselianElements), MEMBER(FindContact), MEMBER(GetContacts);
    MEMBER(FindTimeLimits), MEMBER(FindPhaseTimeLimits), MEMBER(GetSpecialPoints);
    using AtSite = double (CSWEclipses::*)(OBSERVER*, double);
    using AtPlace = double (CSWEclipses::*)(double, double, double);
    attack("GetSolarEclipsePhase", static_cast<AtSite>(&CSWEclipses::GetSolarEclipsePhase),
           search);
    attack("GetSolarEclipsePhase", static_cast<AtPlace>(&CSWEclipses::GetSolarEclipsePhase),
           search);
    MEMBER(GetSunAltitude), MEMBER(GetEclParams), MEMBER(GetSunMoonVisRad);
    MEMBER(GetEclipsedSun), MEMBER(GetMoonInShadow), MEMBER(CheckForLocation);
    MEMBER(EclipseParamsForLocation), MEMBER(GetCentralLine), MEMBER(GetCentralPath);
    MEMBER(GetPathPoint), MEMBER(GetGreatestDuration), MEMBER(GetUmbralLimits);
    MEMBER(GetPenumbralLimits), MEMBER(GetRiseSetCurves), MEMBER(GetMaximumAtHorizon);
    MEMBER(GetMagnitudeCurve), MEMBER(GetIsochrones), MEMBER(GetVisibilityRegion);
    MEMBER(Stop);
    // The parameters of maps of an eclipse that there is.
    search.InitSearch(2451395.0, 2451405.0);
    ECLIPSE eclipse;
    if (!search.SearchNext(&eclipse, ECLIPSE_SOLAR)) return;
    const double step = attack.number();
    std::vector<EclipseCurve> curves;
    std::vector<EclipsePathPoint> path;
    attack("GetCentralPath of 1999", [&] { search.GetCentralPath(&eclipse, step, &path); });
    attack("GetIsochrones of 1999", [&] { search.GetIsochrones(&eclipse, step, &curves); });
    attack("GetMagnitudeCurve of 1999",
           [&] { search.GetMagnitudeCurve(&eclipse, step, &curves); });
}

// Ends integrations after a few reports.
bool few_steps(double, void* context) { return --*static_cast<int*>(context) > 0; }

void attack_integrator(Attacker& attack, CSWSolSys&) {
    IntegRA15 search;
    MEMBER(Init), MEMBER(SetForces), MEMBER(SetTolerance), MEMBER(SetCallBack);
    if (attack.pick(2) == 0) {
        search.SetForce(
            [](double, const double*, const double*, double* f, void*) {
                f[0] = std::nan("");
                return true;
            },
            nullptr);
    }
    int left = 3;
    search.SetCallBack(few_steps, &left);
    MEMBER(Start), MEMBER(RA15), MEMBER(GetState), MEMBER(SetSteps), MEMBER(IntegrateTo);
    MEMBER(Status), MEMBER(StepCount);
    IntegRA15 body;
    body.SetCallBack(few_steps, &left);
    const double state[] = {1, 0.1, attack.number(), 0, 0.017, 0};
    attack("Start", [&] { body.Start(2451545, attack.number(), state); });
    attack("IntegrateTo", &IntegRA15::IntegrateTo, body);
    attack("RA15", &IntegRA15::RA15, body);
    attack("SetForce", &IntegRA15::SetForce, body);
}

#undef MEMBER

class Searches : public testing::TestWithParam<hostile::State> {};

TEST_P(Searches, SurviveEveryMember) {
    Attacker attack(22);
    for (int round = 0; attack.goes_on(round, 8, 1.0); ++round) {
        CSWSolSys model;
        GetParam().reach(model, attack);
        for (const auto part : {attack_visibility, attack_conjunctions, attack_diary,
                                attack_eclipses, attack_integrator})
            part(attack, model);
    }
    EXPECT_LT(attack.slowest, hostile::kLongest) << attack.slowest_name;
}

INSTANTIATE_TEST_SUITE_P(States, Searches, testing::ValuesIn(hostile::kStates),
                         [](const auto& state) { return state.param.name; });

}  // namespace
