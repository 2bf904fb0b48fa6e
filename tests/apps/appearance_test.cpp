// Magnitudes, phases and constellations as the command prints them, and the stars.
#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "tests/support/csv.h"
#include "tests/support/run_command.h"

namespace {

using support::run_command;
using testing::HasSubstr;

constexpr double kDegree = 0.017453292519943295;

nlohmann::json row_of(const std::string& arguments) {
    return run_command(arguments + " --json").json().at(0);
}

struct Published {
    const char* what;
    const char* time;
    double magnitude;
};
class PublishedMagnitude : public testing::TestWithParam<Published> {};

// Magnitudes at oppositions and at Venus' greatest brilliancy as almanacs gave them before the
// formulas of 2018, to a tenth. Saturn's cases are those of rings wide open, half open and edge
// on.
TEST_P(PublishedMagnitude, IsReachedWithinATenth) {
    const auto row = row_of(std::string("position --reduction classic ") + GetParam().what +
                            " --time " + GetParam().time);
    EXPECT_NEAR(row["magnitude"].get<double>(), GetParam().magnitude, 0.1) << row;
}

INSTANTIATE_TEST_SUITE_P(All, PublishedMagnitude,
                         testing::Values(Published{"venus", "2023-07-07", -4.7},
                                         Published{"mars", "2020-10-13", -2.6},
                                         Published{"mars", "2003-08-28", -2.9},
                                         Published{"jupiter", "2022-09-26", -2.75},
                                         Published{"saturn", "2003-12-31", -0.5},
                                         Published{"saturn", "2017-06-15", 0.0},
                                         Published{"saturn", "2025-09-21", 0.6},
                                         Published{"uranus", "2023-11-13", 5.6},
                                         Published{"neptune", "2023-09-19", 7.8}));

// The Moon's phases of January 2024 at the published instants (UT).
TEST(Phases, TheMoonIsLitAsItsPublishedPhasesSay) {
    struct Phase {
        const char* time;
        double lit, lit_within, elongation, elongation_within;
    };
    // At the quarters the Moon stands 90 degrees from the Sun in longitude, and is lit a little
    // less than half as the Sun is not infinitely far; its latitude of up to 5.1 degrees is
    // left over at new and full Moon.
    for (const Phase& phase : {Phase{"2024-01-11T11:57", 0, 0.002, 0, 5.2},
                               Phase{"2024-01-18T03:53", 0.5, 0.003, 90, 0.3},
                               Phase{"2024-01-25T17:54", 1, 0.002, 180, 5.2},
                               Phase{"2024-02-02T23:18", 0.5, 0.003, -90, 0.3}}) {
        const auto moon = row_of(std::string("position moon --time ") + phase.time);
        EXPECT_NEAR(moon["illuminated_fraction"].get<double>(), phase.lit, phase.lit_within);
        const double elongation = moon["elongation_deg"].get<double>();
        const double off = std::remainder(elongation - phase.elongation, 360);
        EXPECT_LT(std::fabs(off), phase.elongation_within) << moon;
        const double cosine = std::cos(moon["phase_angle_deg"].get<double>() * kDegree);
        EXPECT_NEAR(moon["illuminated_fraction"].get<double>(), (1 + cosine) / 2, 1e-12);
    }
}

TEST(Phases, InnerPlanetsStandWherePublished) {
    // Greatest elongations: Mercury 26.4 W on 2024 May 9, Venus 47.2 E on 2025 January 10.
    const auto mercury = row_of("position mercury --time 2024-05-09T21:00");
    EXPECT_NEAR(mercury["elongation_deg"].get<double>(), -26.4, 0.1);
    const auto venus = row_of("position venus --time 2025-01-10T05:00");
    EXPECT_NEAR(venus["elongation_deg"].get<double>(), 47.2, 0.1);
}

TEST(Diameters, AreThoseOfTheAlmanacs) {
    // Sun at perihelion and aphelion: 32' 32", 31' 28". Jupiter at the opposition of
    // 2022: 49.9". Moon at the perigee of 2016 November 14, 356509 km from the Earth's centre.
    EXPECT_NEAR(row_of("position sun --time 2024-01-03")["angular_diameter_arcsec"], 1952, 2);
    EXPECT_NEAR(row_of("position sun --time 2024-07-05")["angular_diameter_arcsec"], 1888, 2);
    EXPECT_NEAR(row_of("position jupiter --time 2022-09-26")["angular_diameter_arcsec"], 49.9,
                0.1);
    EXPECT_NEAR(row_of("position moon --time 2016-11-14T11:23")["angular_diameter_arcsec"],
                2 * std::asin(1737.4 / 356509) / kDegree * 3600, 1.5);
}

// Apparent places of 2026 December 1, 0h UT computed with ERFA from the list's rows (IAU 2006
// precession, IAU 2000 nutation, light deflection). The models here differ by 0.3" a century
// and 0.1"; Polaris' right ascension by 1/cos(dec) of that.
TEST(Stars, ApparentPlacesAgreeWithModernModels) {
    struct Star {
        const char* name;
        double ra_deg, dec_deg;
    };
    for (const Star& star :
         {Star{"sirius", 101.5906596, -16.7516675}, Star{"polaris", 47.2670702, 89.3793965},
          Star{"\"alpha cen\"", 220.3545859, -60.9439538}}) {
        const auto row = row_of(std::string("position ") + star.name + " --time 2026-12-01");
        const double d_ra = (row["ra_deg"].get<double>() - star.ra_deg) *
                            std::cos(star.dec_deg * kDegree) * 3600;
        EXPECT_NEAR(d_ra, 0, 0.3) << row;
        EXPECT_NEAR(row["dec_deg"].get<double>(), star.dec_deg, 0.3 / 3600) << row;
    }
}

TEST(Stars, AllWaysToNameOneLeadToIt) {
    const auto rows = run_command(
                          "position Sirius hip:32349 \"HIP 32349\" star:32349 \"alp CMa\" "
                          "\"Alpha CMa\" \"9 CMa\" hr:2491 hd:48915 --json --time 2026-12-01")
                          .json();
    ASSERT_EQ(rows.size(), 9U);
    for (const auto& row : rows) {
        EXPECT_EQ(row, rows[0]);
        EXPECT_EQ(row["id"], "star:32349");
    }
    // 379.21 mas (van Leeuwen 2007) are 543,900 au.
    EXPECT_NEAR(rows[0]["distance_au"].get<double>(), 206264.806 / 0.37921, 50);
    EXPECT_NEAR(rows[0]["magnitude"].get<double>(), -1.44, 0.005);
    EXPECT_TRUE(rows[0]["illuminated_fraction"].is_null());
    // The list has no parallax of xi UMa, and one below zero of l Pup.
    for (const char* star : {"hip:55203", "hip:37677"})
        EXPECT_TRUE(row_of(std::string("position ") + star)["distance_au"].is_null());
}

// The whole list at J2000: names, places and constellations as the table has them.
TEST(Stars, TheWholeListIsThere) {
    std::map<std::string, std::vector<std::string>> list;
    std::vector<std::string> batches;  // command lines are not to grow beyond some thousands
    for (auto& row : solsys::test::read_csv(SOLSYS_TEST_DATA "/catalogue/bright_stars.csv")) {
        if (list.size() % 300 == 0) batches.emplace_back();
        batches.back() += " star:" + row[0];
        list["star:" + row[0]] = row;
    }
    auto rows = nlohmann::json::array();
    for (const std::string& names : batches)
        for (auto& row :
             run_command("position --frame j2000 --time jd:2451545 --json" + names).json())
            rows.push_back(row);
    ASSERT_EQ(rows.size(), list.size());
    int elsewhere = 0;
    for (const auto& row : rows) {
        const auto& star = list.at(row["id"].get<std::string>());
        const double dec = std::stod(star[8]);
        // An annual parallax of up to 0.75" remains.
        EXPECT_NEAR(std::remainder(row["ra_deg"].get<double>() - std::stod(star[7]), 360) *
                        std::cos(dec * kDegree),
                    0, 0.75 / 3600)
            << row;
        EXPECT_NEAR(row["dec_deg"].get<double>(), dec, 0.75 / 3600) << row;
        EXPECT_NEAR(row["magnitude"].get<double>(), std::stod(star[14]), 1e-4) << row;
        elsewhere += '"' + row["constellation"].get<std::string>() + '"' != star[6];
    }
    // Boundaries are taken at B1850 instead of B1875: nearly two in a hundred directions lie in
    // the strips between.
    EXPECT_LT(elsewhere, 0.03 * static_cast<double>(rows.size()));
}

struct Place {
    const char* direction;
    const char* abbreviation;
    const char* name;
};
class ConstellationOf : public testing::TestWithParam<Place> {};

TEST_P(ConstellationOf, IsTheKnownOne) {
    const auto row = row_of(std::string("constellation ") + GetParam().direction);
    EXPECT_EQ(row["constellation"], GetParam().abbreviation);
    EXPECT_EQ(row["constellation_name"], GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    All, ConstellationOf,
    testing::Values(
        // The same nebula in five ways of writing.
        Place{"83.8221 -5.3911", "Ori", "Orion"}, Place{"5h35m17.3s -5d23m28s", "Ori", "Orion"},
        Place{"5:35:17.3 -5:23:28", "Ori", "Orion"},
        Place{"\"5h 35m 17.3s\" \"-5\u00b0 23' 28\"", "Ori", "Orion"},
        Place{"5h35.29m -5:23.5", "Ori", "Orion"},
        // The galaxies of Andromeda and of the Virgo cluster, the galactic centre, the poles.
        Place{"0h42m44s +41d16m9s", "And", "Andromeda"},
        Place{"12h30m49s +12d23m28s", "Vir", "Virgo"},
        Place{"266.4168 -29.0078", "Sgr", "Sagittarius"}, Place{"0 90", "UMi", "Ursa Minor"},
        Place{"0 -90", "Oct", "Octans"}, Place{"360 90", "UMi", "Ursa Minor"},
        // The sign of less than a degree counts, and so does a date.
        Place{"22h -0d30m --time jd:2451545", "Aqr", "Aquarius"}));

TEST(ConstellationOf, TakesTheEquinoxOfDate) {
    // 1500 years of precession are 21 degrees: the same figures name other directions.
    int differ = 0;
    for (int dec = -80; dec <= 80; dec += 4) {
        const std::string at = "constellation 200.5 " + std::to_string(dec);
        differ +=
            row_of(at)["constellation"] != row_of(at + " --time 3500-01-01")["constellation"];
    }
    EXPECT_GT(differ, 5);
}

using support::Refusal;
class Refused : public testing::TestWithParam<Refusal> {};

TEST_P(Refused, EndsWithStatus2AndOneLine) { support::expect_refusal(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    All, Refused,
    testing::Values(Refusal{"position hip:1", "no star"},
                    Refusal{"position star:999999", "no star"},
                    Refusal{"position siriux", "perhaps Sirius"},
                    Refusal{"position star:", "no star"}, Refusal{"position \"\"", "empty"},
                    Refusal{"position sirius --frame heliocentric", "is a star"},
                    Refusal{"constellation 361 0", "right ascension"},
                    Refusal{"constellation nan 0", "right ascension"},
                    Refusal{"constellation 24:00:01 0", "right ascension"},
                    Refusal{"constellation 5h60m 0", "right ascension"},
                    Refusal{"constellation 5h5s 0", "right ascension"},
                    Refusal{"constellation 1:2:3:4 0", "right ascension"},
                    Refusal{"constellation 1:-2 0", "right ascension"},
                    Refusal{"constellation 0 90.001", "declination"},
                    Refusal{"constellation 0 inf", "declination"},
                    Refusal{"constellation 0 5h", "declination"},
                    Refusal{"constellation 0 -90:00:01", "declination"},
                    Refusal{"constellation 0 \"\"", "empty"},
                    Refusal{"constellation 0", "no body"},
                    Refusal{"constellation 0 0 --time never", "is no time"}));

}  // namespace
