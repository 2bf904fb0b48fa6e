// solsys eclipses as a user meets it.
#include <gmock/gmock.h>

#include <cmath>

#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::contents;
using support::run_command;
using testing::StartsWith;

// Published: greatest eclipse 11:03:05 UT, gamma 0.5062, magnitude 1.0286, Saros 145; contacts
// at Stuttgart from the published elements.
TEST(EclipsesCommand, GivesThePublishedEclipse) {
    const auto rows = run_command(
                          "eclipses --solar --from 1999-08-01 --to 1999-09-01 "
                          "--site 48.7758,9.1829 --json")
                          .json();
    ASSERT_EQ(rows.size(), 1U);
    const auto& e = rows[0];
    EXPECT_EQ(e["kind"], "solar");
    EXPECT_EQ(e["type"], "total");
    EXPECT_THAT(e["greatest_utc"].get<std::string>(), StartsWith("1999-08-11T11:03:0"));
    EXPECT_NEAR(e["gamma"].get<double>(), 0.5062, 1.5e-4);
    EXPECT_NEAR(e["magnitude"].get<double>(), 1.0286, 1.5e-4);
    EXPECT_EQ(e["saros"], 145);
    EXPECT_THAT(e["second_contact_utc"].get<std::string>(), StartsWith("1999-08-11T10:32:5"));
    EXPECT_NEAR(e["maximum_altitude_deg"].get<double>(), 55.1, 0.5);
    EXPECT_EQ(e["obscuration"], 1.0);
    EXPECT_GT(e["local_magnitude"].get<double>(), 1.02);
    for (const char* key : {"begin_utc", "end_utc", "first_contact_utc", "fourth_contact_utc",
                            "first_contact_position_angle_deg", "third_contact_altitude_deg"})
        EXPECT_FALSE(e[key].is_null()) << key;
}

TEST(EclipsesCommand, WritesMapsByExtension) {
    const TempFolder folder;
    const std::string span = "eclipses --solar --from 2026-08-01 --to 2026-09-01 --map ";
    const std::string stem = folder / "map";
    for (const char* extension : {".svg", ".geojson", ".kml"})
        ASSERT_EQ(run_command(span + stem + extension).status, 0) << extension;
    EXPECT_THAT(contents(stem + ".svg"),
                testing::HasSubstr("Total solar eclipse of 2026 August 12"));
    const auto json = nlohmann::json::parse(contents(stem + ".geojson"));
    EXPECT_EQ(json["type"], "FeatureCollection");
    for (const auto& feature : json["features"]) {
        if (feature["geometry"]["type"] != "LineString") continue;
        const auto& line = feature["geometry"]["coordinates"];
        for (std::size_t i = 1; i < line.size(); ++i)  // cut at the date line
            EXPECT_LE(std::abs(line[i][0].get<double>() - line[i - 1][0].get<double>()), 180);
    }
    EXPECT_THAT(contents(stem + ".kml"), testing::HasSubstr("<coordinates>"));
}

TEST(EclipsesCommand, RefusesWhatItCannotDo) {
    EXPECT_EQ(run_command("eclipses --from 2026-08-13 --to 2026-08-14").status, 1);
    EXPECT_EQ(run_command("eclipses --from 2027 --to 2026").status, 2);
    EXPECT_EQ(run_command("eclipses --from 2026 --to 2029 --map x.svg").status, 2);
    EXPECT_EQ(
        run_command("eclipses --solar --from 2026-08-01 --to 2026-09-01 --map x.txt").status,
        2);
    EXPECT_EQ(run_command("eclipses --from never").status, 2);
}

}  // namespace
