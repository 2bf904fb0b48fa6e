// solsys rise-set as a user meets it.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::run_command;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFile = " --json --ephemeris " SOLSYS_DE405;

TEST(RiseSet, GivesThePublishedTimesOfLondon) {
    // Shortest day of 2024: sunrise 8:04, sunset 15:53 (almanacs of the city); transit when the
    // equation of time is +2 minutes, at the altitude 90 - 51.5 - 23.44.
    const auto rows = run_command(std::string("rise-set sun --site 51.5,-0.1167 --from "
                                              "2024-12-21 --to 2024-12-22") +
                                  kFile)
                          .json();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0]["id"], "plnt:10");
    EXPECT_EQ(rows[0]["date"], "2024-12-21");
    EXPECT_THAT(rows[0]["rise_utc"].get<std::string>(), StartsWith("2024-12-21T08:0"));
    EXPECT_THAT(rows[0]["set_utc"].get<std::string>(), StartsWith("2024-12-21T15:53"));
    EXPECT_THAT(rows[0]["transit_utc"].get<std::string>(), StartsWith("2024-12-21T11:58"));
    EXPECT_NEAR(rows[0]["transit_altitude_deg"].get<double>(), 15.06, 0.02);
    EXPECT_NEAR(
        rows[0]["rise_azimuth_deg"].get<double>() + rows[0]["set_azimuth_deg"].get<double>(),
        360, 0.1);
    EXPECT_LT(rows[0]["dawn_utc"], rows[0]["rise_utc"]);
    EXPECT_GT(rows[0]["dusk_utc"], rows[0]["set_utc"]);
}

TEST(RiseSet, KeepsToTheSpanAndMarksWhatThereIsNot) {
    // From noon to midnight: the setting, neither the rising nor, for the Sun, the transit.
    const auto rows = run_command(std::string("rise-set sun moon jupiter --site 51.5,-0.1167 "
                                              "--from 2024-12-21T12:00 --to 2024-12-22") +
                                  kFile)
                          .json();
    ASSERT_FALSE(rows.empty());
    for (const auto& row : rows) {
        int events = 0;
        for (const char* key : {"dawn_utc", "rise_utc", "transit_utc", "set_utc", "dusk_utc"}) {
            if (row[key].is_null()) continue;
            ++events;
            EXPECT_GE(row[key], "2024-12-21T12:00:00.000Z");
            EXPECT_LE(row[key], "2024-12-22T00:00:00.000Z");
        }
        EXPECT_GT(events, 0);
        EXPECT_EQ(row["rise_utc"].is_null(), row["rise_azimuth_deg"].is_null());
        EXPECT_EQ(row["transit_utc"].is_null(), row["transit_altitude_deg"].is_null());
    }
    EXPECT_TRUE(rows[0]["rise_utc"].is_null());
    EXPECT_FALSE(rows[0]["set_utc"].is_null());

    // Polar night: twilight without a sunrise. Polar day: a transit alone.
    const std::string north = "rise-set sun --site 75,20 --json --from ";
    const auto night = run_command(north + "2024-11-20 --to 2024-11-21").json();
    EXPECT_TRUE(night[0]["rise_utc"].is_null());
    EXPECT_FALSE(night[0]["dawn_utc"].is_null());
    const auto day = run_command(north + "2024-06-20 --to 2024-06-21").json();
    EXPECT_FALSE(day[0]["transit_utc"].is_null());
    EXPECT_TRUE(day[0]["set_utc"].is_null());
    EXPECT_TRUE(day[0]["dusk_utc"].is_null());
    // Nothing at all is an answer too, by its status.
    EXPECT_EQ(run_command("rise-set sun --site -89,0 --from 2024-06-20 --to 2024-06-22").status,
              1);
}

TEST(RiseSet, CalendarHasTheDaysAndThePhasesOfTheMonth) {
    const auto rows =
        run_command(std::string("rise-set --calendar 2024-02 --site 51.5,-0.1167") + kFile)
            .json();
    ASSERT_EQ(rows.size(), 29U);
    EXPECT_EQ(rows.front()["date"], "2024-02-01");
    EXPECT_EQ(rows.back()["date"], "2024-02-29");
    // Phases of February 2024: last quarter 2nd, new 9th, first quarter 16th, full 24th.
    std::string phases;
    int without_moonrise = 0;
    for (const auto& row : rows) {
        if (!row["moon_phase"].is_null())
            phases += row["date"].get<std::string>().substr(8) + " " +
                      row["moon_phase"].get<std::string>() + "; ";
        without_moonrise += row["moonrise_utc"].is_null();
        EXPECT_LT(row["dawn_utc"], row["sunrise_utc"]);
        EXPECT_LT(row["sunset_utc"], row["dusk_utc"]);
        EXPECT_THAT(row["sunrise_utc"].get<std::string>(), StartsWith(row["date"]));
    }
    EXPECT_EQ(phases, "02 last quarter; 09 new Moon; 16 first quarter; 24 full Moon; ");
    EXPECT_EQ(without_moonrise, 1);
    // The civil day of the zone, not of UTC, decides.
    const auto tokyo =
        run_command("rise-set --calendar 2024-02 --site 35.7,139.7 --tz +09:00 --json").json();
    EXPECT_THAT(tokyo[0]["sunrise_utc"].get<std::string>(), StartsWith("2024-01-31T21:"));
}

TEST(RiseSet, DrawsAYear) {
    TempFolder folder;
    const std::string path = folder / "year.svg";
    for (const char* place : {"51.5,-0.1", "-77.8,166.7", "90,0"}) {
        const auto outcome = run_command(std::string("rise-set --from 2024-01-01 --site=") +
                                         place + " --svg " + path);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::string drawing = support::contents(path);
        EXPECT_THAT(drawing, StartsWith("<"));
        EXPECT_THAT(drawing, HasSubstr("2024"));
        EXPECT_EQ(drawing.find("nan"), std::string::npos);
        // A disc on either margin for each of the 49 to 51 principal phases of a year.
        const auto discs = [&drawing] {
            std::size_t count = 0;
            for (std::size_t at = drawing.find("<circle"); at != std::string::npos;
                 at = drawing.find("<circle", at + 1))
                ++count;
            return count;
        }();
        EXPECT_GE(discs, 2U * 49);
        EXPECT_LE(discs, 2U * 51);
    }
}

TEST(RiseSet, RefusesWhatItCannotUse) {
    for (const char* arguments : {"rise-set sun", "rise-set nosuchbody --site 0,0",
                                  "rise-set --calendar 2024-13 --site 0,0",
                                  "rise-set sun --site 0,0 --from 2024-02-02 --to 2024-02-01",
                                  "rise-set --svg /nonexistent/folder/x.svg --site 0,0"}) {
        const auto outcome = run_command(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.err, StartsWith("solsys: "));
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
    }
}

}  // namespace
