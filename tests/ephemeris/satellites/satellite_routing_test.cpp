// Which numbers every class serves, and what it answers to all others and to impossible
// instants.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "solsys/kepler.h"
#include "tests/ephemeris/satellites/satellite_fixture.h"

using namespace solsys;
using namespace solsys::test;

namespace {

constexpr int kDay = 2451545;

struct Routing {
    const char* name;
    int system;
    int last;               // moons 1 to last have states
    bool modulo;            // the number is taken modulo 100
    int first_gm, last_gm;  // numbers with a GM
};

class Routes : public testing::TestWithParam<Routing> {};

TEST_P(Routes, EveryNumberHasItsCode) {
    const Routing& expected = GetParam();
    Theories theories;
    SatTheory& theory = theories.of_system(expected.system);
    const int full = expected.system * 100;
    for (int number = -120; number <= full + 120; ++number) {
        const int moon = expected.modulo ? number % 100 : number;
        const bool covered = moon >= 1 && moon <= expected.last;
        double out[6] = {7, 7, 7, 7, 7, 7};
        EXPECT_EQ(theory.GetSatVector(kDay, 0.0, number, 1, out), covered ? 0 : 111) << number;
        EXPECT_EQ(out[0] == 7 && out[5] == 7, !covered) << number;

        const double gm = theory.GetPrimaryGM(number);
        if (number >= expected.first_gm && number <= expected.last_gm) {
            EXPECT_GT(gm, 0) << number;
        } else {
            EXPECT_EQ(gm, -1.0) << number;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Routes,
                         testing::Values(Routing{"Mars", 4, 2, true, 1, 2},
                                         Routing{"Jupiter", 5, 80, false, 1, 80},
                                         Routing{"Saturn", 6, 83, true, 1, 83},
                                         Routing{"Uranus", 7, 27, true, 1, 27},
                                         Routing{"Neptune", 8, 14, true, 1, 14},
                                         Routing{"Pluto", 9, 5, true, 1, 3},
                                         Routing{"Eris", 12, 1, true, 1, 1},
                                         Routing{"Haumea", 14, 2, true, INT_MIN, INT_MAX}),
                         [](const auto& suite) { return suite.param.name; });

TEST(Routes, APlainPetitSatServesNothing) {
    const PetitSat plain;
    double out[6];
    for (const int number : {0, 1, 5, 506, 901}) {
        EXPECT_EQ(plain.AsTheory().GetSatVector(kDay, 0.0, number, 1, out), 111);
        EXPECT_EQ(plain.AsTheory().GetPrimaryGM(number), -1.0);
    }
}

// A row beyond a table, or in no table, is answered and never read.
TEST(Routes, RowsBeyondATableAreRefused) {
    const PetitSat tables;
    double out[6];
    struct {
        int system, rows;
    } const sizes[] = {{5, 72}, {6, 65}, {7, 12}, {8, 6}, {9, 6},
                       {12, 3}, {14, 3}, {4, 0},  {10, 0}};
    for (const auto& [system, rows] : sizes) {
        for (const int row : {-1, rows, rows + 1, INT_MIN, INT_MAX}) {
            EXPECT_EQ(tables.EvalMeanElements(system, kDay, 0.0, row, 1, out), 111);
            EXPECT_EQ(tables.MeanElementsGM(system, row), -1.0);
        }
    }
    // The zeros that close Pluto's table are no ellipse.
    EXPECT_EQ(tables.EvalMeanElements(9, kDay, 0.0, 5, 1, out), -1);
}

// Values of GM in km^3/s^2: Jacobson (JPL) for the planets, within 2e-4 of each other whether
// satellites are counted in or not (Neptune: 1.3e-3).
TEST(PrimaryGm, IsThatOfThePrimary) {
    Theories theories;
    const double au3_per_day2 = 86400.0 * 86400.0 / std::pow(149597870.691, 3);
    struct {
        int body;
        double gm, relative;
    } const cases[] = {
        {401, 42828.4, 1e-5},    {501, 126686534., 3e-4}, {506, 126686534., 3e-4},
        {580, 126686534., 3e-4}, {606, 37931208., 1e-5},  {619, 37940585., 1e-5},
        {703, 5793951.3, 1e-5},  {716, 5794556.4, 1e-5},  {801, 6835099.5, 1.2e-3},
        {809, 6836527.1, 1e-5},  {901, 975.5, 0.01},      {1201, 1256.019157, 1e-9}};
    for (const auto& [body, gm, relative] : cases) {
        const double value = theories.of_system(body / 100).GetPrimaryGM(body % 100);
        EXPECT_NEAR(value / (gm * au3_per_day2), 1, relative) << body;
    }
}

// Charon's fixed row stands on the equator of J2000 and is returned without a rotation.
TEST(MeanElements, EquatorialRowIsNotTurned) {
    const PetitSat tables;
    const double dt = 2451545 - 2449000.5 + 0.25;
    const double elements[6] = {
        19636.0,           0.0076,
        96.163 * kDegree,  173.775 * kDegree + 56.3625225 * kDegree * dt,
        356.107 * kDegree, 222.993 * kDegree};
    double expected[6], out[6];
    ASSERT_GT(KepElla(elements, 981.5 * 86400.0 * 86400.0, expected), 0);
    ASSERT_EQ(tables.EvalMeanElements(9, 2451545, 0.25, 0, 0, out), 0);
    for (int k = 0; k < 6; ++k) EXPECT_DOUBLE_EQ(out[k], expected[k] * tables.kmToAU) << k;
}

// The small satellites of Pluto are carried from the barycentre to Pluto; velocities are not.
TEST(Pluto, PositionsAreShiftedAndVelocitiesAreNot) {
    Theories theories;
    const PetitSat tables;
    const Instant t{2457217, 0.99};
    const Vec3 charon = theories.state(901, t).r;
    for (int moon = 2; moon <= 5; ++moon) {
        double barycentric[6];
        ASSERT_EQ(tables.EvalMeanElements(9, t.day, t.fraction, moon - 1, 1, barycentric), 0);
        const State state = theories.state(900 + moon, t);
        const Vec3 shift = state.r - load(barycentric);
        EXPECT_LT(norm(shift - 0.10434393193013883 * charon), 1e-18) << moon;
        EXPECT_EQ(norm(state.v - load(barycentric + 3)), 0) << moon;
    }
}

// Whatever the instant, the answer comes at once, and is finite or a refusal.
TEST(Instants, NoneLeadsAstray) {
    Theories theories;
    const double inf = std::numeric_limits<double>::infinity();
    const Instant instants[] = {{kDay, NAN},    {kDay, inf},      {kDay, -inf},
                                {kDay, 1e300},  {kDay, -4.1e9},   {INT_MAX, 0.5},
                                {INT_MIN, 0.5}, {0, 0.0},         {kDay, 3.9e9},
                                {kDay, -3.9e9}, {10000000, 0.25}, {-5000000, 0.0}};
    for (const Period& period : published_periods()) {
        const int body = period.body;
        for (const Instant& t : instants) {
            double out[6] = {7, 7, 7, 7, 7, 7};
            const int code = theories.of_system(body / 100)
                                 .GetSatVector(t.day, t.fraction, body % 100, 1, out);
            const bool far = !(std::fabs(days_since_j2000(t)) < 4e9);
            SCOPED_TRACE(std::to_string(body) + " at " + std::to_string(t.jd()));
            EXPECT_TRUE(code == 0 || code == -1 || code == -1000) << code;
            if (far) {
                EXPECT_EQ(code, -1);
            }
            for (const double x : out)
                EXPECT_TRUE(code == 0 ? std::fabs(x) < 1e3 : x == 7) << x;
        }
    }
}

}  // namespace
