// Which numbers every class serves, and what it answers to all others and to impossible
// instants.
#include <gtest/gtest.h>

#include <climits>
#include <limits>

#include "tests/ephemeris/satellites/satellite_fixture.h"

using namespace solsys;
using namespace solsys::test;

namespace {

constexpr int kDay = 2451545;

TEST(Routes, EveryNumberHasItsCode) {
    const struct {
        int system;
        int last;               // moons 1 to last have states
        bool modulo;            // the number is taken modulo 100
        int first_gm, last_gm;  // numbers with a GM
    } systems[] = {{4, 2, true, 1, 2},   {5, 80, false, 1, 80},          {6, 83, true, 1, 83},
                   {7, 27, true, 1, 27}, {8, 14, true, 1, 14},           {9, 5, true, 1, 3},
                   {12, 1, true, 1, 1},  {14, 2, true, INT_MIN, INT_MAX}};
    Theories theories;
    for (const auto& [system, last, modulo, first_gm, last_gm] : systems) {
        SatTheory& theory = theories.of_system(system);
        for (int number = -120; number <= system * 100 + 120; ++number) {
            SCOPED_TRACE(std::to_string(system) + " " + std::to_string(number));
            const int moon = modulo ? number % 100 : number;
            const bool covered = moon >= 1 && moon <= last;
            double out[6] = {7, 7, 7, 7, 7, 7};
            EXPECT_EQ(theory.GetSatVector(kDay, 0.0, number, 1, out), covered ? 0 : 111);
            EXPECT_EQ(out[0] == 7 && out[5] == 7, !covered);
            const double gm = theory.GetPrimaryGM(number);
            EXPECT_TRUE(number >= first_gm && number <= last_gm ? gm > 0 : gm == -1.0) << gm;
        }
    }
}

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
