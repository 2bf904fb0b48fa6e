// Refraction against a converged integration of the same atmosphere, and the short formulas.
#include "solsys/sky/refraction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/named_csv.h"

namespace solsys::sky {
namespace {

TEST(Refraction, AgreesWithTheConvergedIntegralAndComesBack) {
    double integral = 0, bennett = 0, saemundsson = 0, back = 0;
    int cases = 0;
    for (const auto& row :
         test::read_named_csv(SOLSYS_TEST_DATA "/reference/modern_refraction.csv")) {
        const Atmosphere atmosphere{
            {row["pressure_hpa"], row["temperature_c"], row["humidity"], row["wavelength_um"]},
            row["latitude_deg"],
            row["height_m"]};
        const double apparent = row["altitude_deg"];
        const auto there = refraction_of_apparent(apparent, atmosphere);
        ASSERT_TRUE(there) << apparent;
        integral = std::max(integral, std::fabs(*there * 3600 - row["quadrature"]));
        const auto here = refraction_of_true(apparent - *there, atmosphere);
        ASSERT_TRUE(here) << apparent;
        back = std::max(back, std::fabs(*here - *there));
        const double true_altitude = apparent - row["quadrature"] / 3600;
        const auto b = refraction_of_apparent_short(apparent, atmosphere.air);
        const auto s = refraction_of_true_short(true_altitude, atmosphere.air);
        ASSERT_TRUE(b);
        bennett = std::max(bennett, std::fabs(*b * 3600 - row["bennett"]));
        // Below the lowest ray there is nothing to say.
        if (s) saemundsson = std::max(saemundsson, std::fabs(*s * 3600 - row["saemundsson"]));
        EXPECT_EQ(s.has_value(), apparent > -1) << apparent;
        ++cases;
    }
    EXPECT_EQ(cases, 102);
    EXPECT_LT(integral, 0.007);                         // arcsec
    EXPECT_LT(back, 1e-7);                              // deg
    EXPECT_LT(std::max(bennett, saemundsson), 5.1e-4);  // printed to 3 decimals
}

TEST(Refraction, AnswersNothingWhereNoRayArrivesOrNoAirIs) {
    const double nan = std::nan("");
    for (const double altitude : {-1.01, -40.0, 90.1, nan}) {
        EXPECT_FALSE(refraction_of_apparent(altitude, {})) << altitude;
        EXPECT_FALSE(refraction_of_apparent_short(altitude)) << altitude;
    }
    for (const double altitude : {-1.9, -20.0, 95.0, nan}) {
        EXPECT_FALSE(refraction_of_true(altitude, {})) << altitude;
        EXPECT_FALSE(refraction_of_true_short(altitude)) << altitude;
        EXPECT_FALSE(apparent_altitude(altitude, Atmosphere{})) << altitude;
    }
    const Air kWrong[] = {{.pressure_hpa = -1},     {.pressure_hpa = 1300},
                          {.temperature_c = 70},    {.temperature_c = nan},
                          {.humidity = 1.1},        {.wavelength_um = 0},
                          {.wavelength_um = 1000.0}};
    for (const Air& air : kWrong) {
        EXPECT_FALSE(checked_air(air));
        EXPECT_FALSE(refraction_of_apparent(10, {air}));
        EXPECT_FALSE(refraction_of_apparent_short(10, air));
        EXPECT_FALSE(dip_of_horizon(10, {air}));
    }
    EXPECT_EQ(refraction_of_apparent(90, {}), 0.0);
    EXPECT_EQ(refraction_of_apparent(45, {{.pressure_hpa = 0}}), 0.0);
    EXPECT_TRUE(checked_air(standard_air(2000)));
    EXPECT_NEAR(standard_air(5500).pressure_hpa, 505, 2);  // half the air lies below
}

// The dip without air is geometry; air lifts the horizon by a tenth or so.
TEST(Refraction, HorizonOfAHigherEye) {
    for (const double height : {2.0, 100.0, 3000.0}) {
        const double bare = std::acos(6378120 / (6378120 + height)) * 57.29577951308232;
        const Atmosphere vacuum{{.pressure_hpa = 0}, 45, height};
        EXPECT_NEAR(dip_of_horizon(height, vacuum).value_or(0), bare, 1e-6);
        const double seen = dip_of_horizon(height, {{}, 45, height}).value_or(0);
        EXPECT_GT(seen, 0.88 * bare);
        EXPECT_LT(seen, 0.95 * bare);
        EXPECT_NEAR(true_altitude_of_horizon(height, vacuum).value_or(0), -bare, 1e-6);
        // The grazing ray is alike on both sides of the ground: what it is bent on its way up
        // to the eye is what an eye that looks as far above the horizontal does not see of it.
        const Atmosphere eye{standard_air(height), 45, height}, foot{standard_air(0)};
        const double dip = dip_of_horizon(height, eye).value_or(0);
        const double below = dip + 2 * refraction_of_apparent(0, foot).value_or(0) -
                             refraction_of_apparent(dip, eye).value_or(0);
        EXPECT_NEAR(true_altitude_of_horizon(height, eye).value_or(0), -below, 3e-3);
    }
    EXPECT_EQ(dip_of_horizon(0, {}), 0.0);
    EXPECT_EQ(dip_of_horizon(-5, {}), 0.0);
    EXPECT_FALSE(dip_of_horizon(20000, {}));
}

}  // namespace
}  // namespace solsys::sky
