// solsys rise-set as a user meets it.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::run_command;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFile = " --json --ephemeris " SOLSYS_DE405;

nlohmann::json rows_of(const std::string& arguments) {
    return run_command("rise-set " + arguments + kFile).json();
}

TEST(RiseSet, GivesThePublishedTimesOfLondon) {
    // Shortest day of 2024: sunrise 8:04, sunset 15:53 (almanacs of the city); transit when the
    // equation of time is +2 minutes, at the altitude 90 - 51.5 - 23.44.
    const auto rows = rows_of("sun --site 51.5,-0.1167 --from 2024-12-21 --to 2024-12-22");
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
    const char* const order[] = {
        "astronomical_dawn_utc", "nautical_dawn_utc", "civil_dawn_utc", "rise_utc",
        "transit_utc",           "set_utc",           "civil_dusk_utc", "nautical_dusk_utc",
        "astronomical_dusk_utc"};
    for (std::size_t i = 0; i + 1 < std::size(order); ++i)
        EXPECT_LT(rows[0][order[i]], rows[0][order[i + 1]]) << order[i];
}

TEST(RiseSet, TellsPolarDayFromPolarNight) {
    const auto state = [](const std::string& arguments) {
        return rows_of("sun --site 75,20 --from " + arguments)[0];
    };
    const auto night = state("2024-11-20 --to 2024-11-21");
    EXPECT_EQ(night["state"], "down all day");
    EXPECT_TRUE(night["rise_utc"].is_null());
    EXPECT_FALSE(night["civil_dawn_utc"].is_null() && night["nautical_dawn_utc"].is_null());
    const auto day = state("2024-06-20 --to 2024-06-21");
    EXPECT_EQ(day["state"], "up all day");
    EXPECT_FALSE(day["transit_utc"].is_null());
    EXPECT_TRUE(day["set_utc"].is_null());
    EXPECT_TRUE(day["astronomical_dusk_utc"].is_null());
    EXPECT_TRUE(state("2024-03-20 --to 2024-03-21")["state"].is_null());
}

TEST(RiseSet, ShowsBothRisingsOfADayThatHasTwo) {
    // A star rises four minutes earlier every day: once a year twice within a civil day; and so
    // it culminates and sets, on other days.
    const auto rows = rows_of("sirius --site 51.5,0 --from 2026-01-01 --to 2027-01-01");
    EXPECT_EQ(rows.size(), 365U + 3);
    std::size_t rises = 0;
    for (const auto& row : rows) rises += !row["rise_utc"].is_null();
    EXPECT_EQ(rises, 366U);
    EXPECT_NEAR(rows[0]["transit_altitude_deg"].get<double>(), 90 - 51.5 - 16.75, 0.02);
}

TEST(RiseSet, CountsOnlyAHeightAboveTheHorizon) {
    const std::string day = "sun --from 2026-12-01 --to 2026-12-02 --site 51.5,0";
    EXPECT_EQ(rows_of(day)[0]["rise_utc"].get<std::string>().substr(0, 19),
              rows_of(day + ",3000")[0]["rise_utc"].get<std::string>().substr(0, 19));
    // 100 m of it: a dip of 0.353 degrees, some three minutes at this latitude in winter.
    EXPECT_LT(rows_of(day + " --above-horizon 100")[0]["rise_utc"],
              rows_of(day)[0]["rise_utc"]);
}

TEST(RiseSet, CalendarHasTheDaysAndThePhasesOfTheMonth) {
    const auto rows = rows_of("--calendar 2024-02 --site 51.5,-0.1167");
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
    // The civil day of the zone, not of UTC, decides: the full Moon of February 24, 12:30 UT,
    // is of the 25th in Kiribati (UTC+14), and the Sun rises there the evening before in UTC.
    const auto east = rows_of("--calendar 2024-02 --site 1.9,-157.4 --tz Pacific/Kiritimati");
    EXPECT_EQ(east[24]["moon_phase"], "full Moon");
    EXPECT_THAT(east[0]["sunrise_utc"].get<std::string>(), StartsWith("2024-01-31T16:"));
}

TEST(RiseSet, DrawsAYear) {
    TempFolder folder;
    const std::string path = folder / "year.svg";
    for (const char* place : {"51.5,-0.1", "-77.8,166.7", "90,0"}) {
        const auto outcome = run_command(std::string("rise-set --from 2024-01-01 --site=") +
                                         place + " --svg " + path);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("wrote "));
        const std::string drawing = support::contents(path);
        EXPECT_THAT(drawing, StartsWith("<svg "));
        EXPECT_THAT(drawing, HasSubstr("2024"));
        EXPECT_EQ(drawing.find("nan"), std::string::npos);
        // A disc on either margin for each of the 49 to 51 principal phases of a year.
        std::size_t discs = 0;
        for (std::size_t at = drawing.find("<circle"); at != std::string::npos;
             at = drawing.find("<circle", at + 1))
            ++discs;
        EXPECT_GE(discs, 2U * 49);
        EXPECT_LE(discs, 2U * 51);
    }
}

TEST(Tonight, OfADateBeginsOnIt) {
    const std::string night = "The night of 2026-12-01 to 2026-12-02";
    for (const char* time :
         {"2026-12-01", "2026-12-01T18:00", "2026-12-02T00:00", "2026-12-02T03:00"})
        EXPECT_THAT(run_command(std::string("tonight --city Oslo --time ") + time).out,
                    testing::StartsWith(night));
}

// "16:00 - 08:05 (16 h 5 min)" is as long as from the one to the other.
TEST(Tonight, StretchesAreAsLongAsTheirClocksSay) {
    const std::string page = run_command("tonight --city Oslo --time 2026-12-01").out;
    const std::regex stretch(R"((\d\d):(\d\d) - (\d\d):(\d\d) \((\d+) h (\d+) min\))");
    int found = 0;
    for (std::sregex_iterator m(page.begin(), page.end(), stretch), end; m != end;
         ++m, ++found) {
        const auto at = [&m](std::size_t i) { return std::stoi((*m)[i]); };
        const int clocks = 60 * (at(3) - at(1)) + at(4) - at(2);
        EXPECT_NEAR(60 * at(5) + at(6), clocks < 0 ? clocks + 1440 : clocks, 1) << m->str();
        EXPECT_LT(at(6), 60);
    }
    EXPECT_GE(found, 2);
}

}  // namespace
