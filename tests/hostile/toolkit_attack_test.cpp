// Every exported function that needs no model, with hostile numbers and absurd records.
// Pointers are not null and arrays as long as they say: the plain toolkit does not look.
#include <gtest/gtest.h>

#include "tests/hostile/attack.h"

namespace {

using hostile::Attacker;

#define FUNCTION(name) attack(#name, &name)
#define SIZED(name, ...) attack(#name, [&] { (void)name(__VA_ARGS__); })

void attack_vectors(Attacker& attack) {
    const auto v = [&] { return attack.numbers(); };
    const auto n = [&] { return static_cast<short>(static_cast<int>(attack.pick(7)) - 1); };
    SIZED(SVprod, v(), v(), n()), SIZED(Vmod, v(), n()), SIZED(Vnorm, v(), v(), n(), v());
    SIZED(Mprod, v(), v(), v(), n(), n(), n()), SIZED(Mtrans, v(), v(), n(), n());
    SIZED(MVarrProd, v(), v(), v(), n(), n(), n());
    FUNCTION(Vprod), FUNCTION(Vadd), FUNCTION(Vmmad), FUNCTION(Vnorm2), FUNCTION(VectorsAngle);
    FUNCTION(V3Mprod), FUNCTION(MV3prod), FUNCTION(M3prod), FUNCTION(M3rot), FUNCTION(psf);
    FUNCTION(psf1), FUNCTION(sfp), FUNCTION(sfp1), FUNCTION(cartesianToSpherical);
    FUNCTION(Plg2Plc), FUNCTION(Plc2Plg), FUNCTION(RNB_matrix), FUNCTION(CalcPEM);
    FUNCTION(Eq_Orb), FUNCTION(FundamentalCoor);
}

void attack_scalars(Attacker& attack) {
    FUNCTION(fmSin), FUNCTION(fmCos), FUNCTION(GMS2Rad), FUNCTION(Rad2GMS), FUNCTION(Round_DMS);
    FUNCTION(Round_LDouble), FUNCTION(sign), FUNCTION(SafePow), FUNCTION(fast_itoa10);
    FUNCTION(solveCubic), FUNCTION(solveQuatric), FUNCTION(LonLatForObjects);
    const double a = attack.number(), b = attack.number(), tolerance = attack.number();
    SIZED(
        Zeroin, a, b, [](double x) { return x * x * x - 2; }, tolerance);
    SIZED(
        Zeroin, a, b, [](double) { return std::nan(""); }, tolerance);
}

void attack_time(Attacker& attack) {
    FUNCTION(DJ), FUNCTION(JD), FUNCTION(BJ), FUNCTION(Adjust_JD), FUNCTION(ET_UT::Init);
    FUNCTION(ET_UT::Get), FUNCTION(ET_UT::UT2ET), FUNCTION(ET_UT::GetSegments);
    FUNCTION(ET_UT::Finish), FUNCTION(TaiMinusUtc), FUNCTION(LeapSecondsValidUntil);
}

void attack_orientation(Attacker& attack) {
    FUNCTION(NutBretagnon), FUNCTION(EclipseAngle), FUNCTION(GetMtrxEcl2Eq), FUNCTION(Nutation);
    FUNCTION(NutationSeidelman), FUNCTION(NutationSeidelmanBest), FUNCTION(Precession);
    FUNCTION(SiderialTime), FUNCTION(EncodeRightAscension), FUNCTION(DecodeRightAscension);
    FUNCTION(EncodeBodyRotation), FUNCTION(PlanetographicalMatrix);
    FUNCTION(PlanetographicalIndex), FUNCTION(GetBodyCatalogueEntry);
}

void attack_orbits(Attacker& attack) {
    FUNCTION(Kepler), FUNCTION(KeplerForIntegr), FUNCTION(KeplerPQ), FUNCTION(KeplerPQComets);
    using OfAsteroid = bool (*)(short, int, double, const tagAster_SPH_5*, double[6]);
    using OfComet = bool (*)(short, int, double, const tagComet_SPH_5*, double[6]);
    attack("KeplerPQ5", static_cast<OfAsteroid>(&KeplerPQ5));
    attack("KeplerPQ5", static_cast<OfComet>(&KeplerPQ5));
    FUNCTION(ElementsToVector), FUNCTION(VectorToElements), FUNCTION(KepElla);
    FUNCTION(ElementsFromPerihelion), FUNCTION(ElementsFromMeanAnomaly);
}

void attack_light(Attacker& attack) {
    FUNCTION(StarMagPlanet), FUNCTION(StarMagMarsSat), FUNCTION(StarMagJupSat);
    FUNCTION(StarMagSaturnSat), FUNCTION(StarMagUranSat), FUNCTION(StarMagNepSat);
    FUNCTION(StarMagPlutoSat), FUNCTION(StarMagErisSat), FUNCTION(StarMagHaumeaSat);
    FUNCTION(MagnitudeHG), FUNCTION(MagnitudeComet), FUNCTION(PhaseAngle);
    FUNCTION(calcVisibleDiskPart), FUNCTION(diskCutArea), FUNCTION(CalcProperMotion);
    FUNCTION(CalcProperMotionD), FUNCTION(EclipseLunation), FUNCTION(EclipseSaros);
    FUNCTION(PossibilityOfEclipse), FUNCTION(BessEl);
}

template <class Theory>
void attack_satellites(Attacker& attack) {
    const Theory theory;
    attack("GetSatVector", &Theory::GetSatVector, theory);
    attack("GetPrimaryGM", &Theory::GetPrimaryGM, theory);
}

void attack_files(Attacker& attack) {
    attack("open", &DE_Ephemeris::open);
    attack("readHeader", &DE_Ephemeris::readHeader);
    attack("replaceEphemeris", &DE_Ephemeris::replaceEphemeris);
    if (attack.pick(2) == 0) DE_Ephemeris::open(SOLSYS_DE405);
    attack("getTimeRange", &DE_Ephemeris::getTimeRange);
    attack("getState", &DE_Ephemeris::getState);
    attack("interpolate", [&] {
        DE_EvalState state;
        state.tc = attack.number();
        DE_Ephemeris::interpolate(
            state, attack.numbers(), 1 + static_cast<int>(attack.pick(20)),
            static_cast<int>(attack.pick(32)), attack.integer(), attack.numbers());
    });
    attack("clear", &DE_Ephemeris::clear);
}

// Element sets whose lines have a byte or two changed, and records of any numbers.
void attack_element_sets(Attacker& attack) {
    std::string lines[] = {
        "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927",
        "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537"};
    for (std::string& line : lines)
        if (attack.pick(2) == 0)
            line[attack.pick(line.size())] = static_cast<char>(attack.pick(256));
    TLEConvert set;
    attack("Set", [&] { set.Set(lines[0].c_str(), lines[1].c_str(), attack.pick(2) == 0); });
    TLERecord record;
    if (set.GetRecord() != nullptr) record = *set.GetRecord();
    if (attack.pick(2) == 0) attack.fill(record);
    attack("Set", static_cast<int (TLEConvert::*)(const TLERecord&)>(&TLEConvert::Set), set);
    attack("Set", [&] { set.Set(record); });
    attack("GetFault", &TLEConvert::GetFault, set);
    attack("IsDeepSpace", &TLEConvert::IsDeepSpace, set);
    attack("GetPeriod", &TLEConvert::GetPeriod, set);
    attack("TLE2Vec", &TLEConvert::TLE2Vec, set);
    attack("GetState", &TLEConvert::GetState, set);
    attack("GetStateAt", &TLEConvert::GetStateAt, set);
    unsigned char status[64];
    attack("GetStates", [&] { set.GetStates(attack.numbers(), 64, attack.numbers(), status); });
    TLECatalogue all;
    attack("Add", [&] { all.Add(record), all.Add(record); });
    attack("GetCount", &TLECatalogue::GetCount, all);
    const int days[] = {2460000, attack.integer(), attack.integer()};
    attack("GetStates",
           [&] { all.GetStates(days, attack.numbers(), 3, attack.numbers(), status); });
    attack("Clear", &TLECatalogue::Clear, all);
    std::vector<TLERecord> sets;
    const std::string text = lines[0] + "\n" + lines[1] + "\r\n[{" + lines[0];
    attack("Read", [&] { TLEConvert::Read(text.data(), text.size(), &sets, nullptr); });
    attack("TLEFaultName", &TLEFaultName);
}

void attack_platform(Attacker& attack) {
    attack("SetDebugPrintHandler", [] { SetDebugPrintHandler([](const char*) {}); });
    attack("PrintDebugString", [&] { PrintDebugString("%g %s\n", attack.number(), "x"); });
    attack("SetPath", &StarwickPath::SetPath), attack("GetPath", &StarwickPath::GetPath);
    attack("SetWorkPath", &StarwickPath::SetWorkPath);
    attack("GetWorkPath", &StarwickPath::GetWorkPath);
    attack("SetEphemerisPath", &StarwickPath::SetEphemerisPath);
    attack("GetEphemerisPath", &StarwickPath::GetEphemerisPath);
    attack("SetReader", [] { SetReader(nullptr), (void)GetReader(); });
    SetDebugPrintHandler(nullptr);
}

#undef FUNCTION
#undef SIZED

TEST(Toolkit, SurvivesEveryFunction) {
    Attacker attack(21);
    attack.nulls = false;
    for (int round = 0; attack.goes_on(round, 300, 3.0); ++round) {
        for (const auto part :
             {attack_vectors, attack_scalars, attack_time, attack_orientation, attack_orbits,
              attack_light, attack_platform, attack_element_sets})
            part(attack);
        attack_satellites<MartianSat>(attack), attack_satellites<JupiterSat>(attack);
        attack_satellites<SaturnSat>(attack), attack_satellites<UraSat>(attack);
        attack_satellites<NepSat>(attack), attack_satellites<PlutoSat>(attack);
        attack_satellites<HaumeaSat>(attack), attack_satellites<ErisSat>(attack);
        if (round % 10 == 0) attack_files(attack);
    }
    EXPECT_LT(attack.slowest, 1.0) << attack.slowest_name;
}

}  // namespace
