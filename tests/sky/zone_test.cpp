// Zones, civil dates and the times that people write.
#include "solsys/sky/zone.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <limits>
#include <string>

#include "sky/zone_rules.h"

namespace solsys::sky {
namespace {

Instant at(const char* iso) { return *Instant::from_iso(iso); }

// The standard library's calendar, for Gregorian dates; for Julian ones the day numbers that
// the Explanatory Supplement prints.
TEST(CivilDate, CountsDaysAsTheStandardLibraryDoes) {
    using namespace std::chrono;
    for (int number = 2299161; number < 5300000; number += 997) {
        const CivilDate date = date_of_julian_day(number);
        const year_month_day ymd{sys_days{days{number - 2440588}}};
        EXPECT_EQ(date.year, static_cast<int>(ymd.year()));
        EXPECT_EQ(date.month, static_cast<int>(static_cast<unsigned>(ymd.month())));
        EXPECT_EQ(date.day, static_cast<int>(static_cast<unsigned>(ymd.day())));
        EXPECT_EQ(julian_day_number(date), number);
    }
    EXPECT_EQ(date_of_julian_day(0), (CivilDate{-4712, 1, 1}));
    EXPECT_EQ(date_of_julian_day(2299160), (CivilDate{1582, 10, 4}));
    // Months and days outside their range run on, the absurd to the ends.
    EXPECT_EQ(julian_day_number({2026, 14, 31}), julian_day_number({2027, 3, 3}));
    EXPECT_EQ(julian_day_number({2000, -11, 1}), julian_day_number({1999, 1, 1}));
    EXPECT_GT(julian_day_number({2000, std::numeric_limits<int>::max(), 1}), 60000000);
    EXPECT_LT(julian_day_number({2000, std::numeric_limits<int>::min(), 1}), -60000000);
    for (int number = -3000000; number < 2299161; number += 991)
        EXPECT_EQ(julian_day_number(date_of_julian_day(number)), number);
}

// The machine's own zone files, decoded by the other reader: what happened before 2020 is the
// same in every edition of the database.
TEST(Zone, CompiledRulesAgreeWithTheSystemsFiles) {
    if (!std::filesystem::exists("/usr/share/zoneinfo/Europe/Oslo"))
        GTEST_SKIP() << "no zone database here";
    int compared = 0;
    for (const char* name :
         {"Europe/London", "America/New_York", "America/St_Johns", "Asia/Kolkata", "Asia/Tokyo",
          "Australia/Lord_Howe", "Pacific/Apia", "Africa/Monrovia", "Africa/Casablanca",
          "Asia/Tehran", "Europe/Dublin", "America/Sao_Paulo", "Pacific/Auckland",
          "Asia/Kathmandu", "Antarctica/Troll"}) {
        const auto system = Zone::find(name);
        const auto compiled = Zone::find_compiled(name);
        ASSERT_TRUE(system && compiled) << name;
        for (double jd = 2440588; jd < 2458849; jd += 3.37, ++compared)
            ASSERT_EQ(system->offset_seconds(Instant::from_utc(jd)),
                      compiled->offset_seconds(Instant::from_utc(jd)))
                << name << ' ' << Instant::from_utc(jd).iso();
    }
    EXPECT_GT(compared, 50000);
}

TEST(Zone, FollowsItsRuleBeyondTheLastListedChange) {
    const Zone berlin = *Zone::find_compiled("europe/berlin");
    EXPECT_EQ(berlin.name(), "Europe/Berlin");
    // The last Sundays of March and October, 1 h UTC, as the directive 2000/84/EC has it.
    EXPECT_EQ(berlin.date_time(at("2060-03-28T00:59:00Z")), "2060-03-28 01:59");
    EXPECT_EQ(berlin.date_time(at("2060-03-28T01:00:00Z")), "2060-03-28 03:00");
    EXPECT_EQ(berlin.iso(at("2060-10-31T00:59:59Z"), 0), "2060-10-31T02:59:59+02:00");
    EXPECT_EQ(berlin.iso(at("2060-10-31T01:00:00Z"), 0), "2060-10-31T02:00:00+01:00");
    EXPECT_NEAR(berlin.day({2060, 3, 28}).days() * 24, 23, 1e-9);
    EXPECT_NEAR(berlin.day({2060, 10, 31}).days() * 24, 25, 1e-9);
    // A reading that occurs twice is the first; one that is skipped keeps the old offset.
    EXPECT_EQ(berlin.instant({{2060, 10, 31}, 2, 30, 0}).iso(0), "2060-10-31T00:30:00Z");
    EXPECT_EQ(berlin.instant({{2060, 3, 28}, 2, 30, 0}).iso(0), "2060-03-28T01:30:00Z");
}

// Folders of the database, names that lead out of it, none at all.
TEST(Zone, IsNoFolder) {
    for (const char* name : {"Europe", "", "../zoneinfo/UTC", "America/Indiana"})
        EXPECT_FALSE(Zone::find(name)) << name;
}

// Two types, the second `ahead` seconds ahead of UTC from `at[1]` on.
std::optional<Zone::Rules> zone_file(std::int32_t ahead, std::array<std::int64_t, 2> at,
                                     const std::string& rule) {
    std::string file("TZif2");
    file.resize(44);
    std::string second = file;
    second[35] = 2, second[39] = 2, second[43] = 4;  // times, types, characters
    const auto put = [&](std::int64_t value, int size) {
        while (size-- > 0) second.push_back(static_cast<char>(value >> 8 * size));
    };
    put(at[0], 8), put(at[1], 8), put(1, 2), put(0, 6), put(ahead, 4), put(0, 2), put(0, 4);
    return read_zone_file(file + second + "\n" + rule + "\n");
}

TEST(Zone, FilesOfNoZoneAreRefused) {
    EXPECT_TRUE(zone_file(50400, {-9, 7}, "<+14>-14"));
    EXPECT_FALSE(zone_file(2000000000, {-9, 7}, ""));
    EXPECT_FALSE(zone_file(-90000, {-9, 7}, ""));
    EXPECT_FALSE(zone_file(3600, {7, -9}, ""));
    EXPECT_FALSE(zone_file(3600, {-9, 7}, "<+14>-140"));
}

struct Written {
    const char* text;
    const char* zone;
    const char* utc;  // empty: refused
};

class Times : public testing::TestWithParam<Written> {};

TEST_P(Times, AreReadAsMeant) {
    const auto [text, zone, utc] = GetParam();
    const auto t = parse_time(text, *Zone::find(zone));
    EXPECT_EQ(t ? t->iso(1) : "", utc) << t.message();
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Times,
    testing::Values(Written{"2026-12-01T20:00", "Asia/Tokyo", "2026-12-01T11:00:00.0Z"},
                    Written{"2026-12-01T20:00Z", "Asia/Tokyo", "2026-12-01T20:00:00.0Z"},
                    Written{"2026-12-01 20:00:30.5+05:30", "UTC", "2026-12-01T14:30:30.5Z"},
                    Written{"20261201T200000Z", "Asia/Tokyo", "2026-12-01T20:00:00.0Z"},
                    Written{"20261201", "+01:00", "2026-11-30T23:00:00.0Z"},
                    Written{"2026-12", "-02:00", "2026-12-01T02:00:00.0Z"},
                    Written{"2026", "UTC", "2026-01-01T00:00:00.0Z"},
                    Written{"jd:2451545.25", "Asia/Tokyo", "2000-01-01T18:00:00.0Z"},
                    Written{"2451545.25", "UTC", "2000-01-01T18:00:00.0Z"},
                    Written{"mjd:51544.5", "UTC", "2000-01-01T12:00:00.0Z"},
                    Written{"-0044-03-15", "UTC", "-0044-03-15T00:00:00.0Z"},
                    Written{"1582-10-10", "UTC", ""}, Written{"2026-02-29", "UTC", ""},
                    Written{"2026-12-01T25:00", "UTC", ""}, Written{"", "UTC", ""},
                    Written{"2026-12-01T20:00 tomorrow", "UTC", ""},
                    Written{"jd:1e300", "UTC", ""}, Written{"jd:nan", "UTC", ""},
                    Written{"12:30", "UTC", ""}, Written{"now+", "UTC", ""}));

TEST(Times, WordsFollowTheZonesDays) {
    const Zone tokyo = *Zone::find("Asia/Tokyo");
    const Instant today = *parse_time("today", tokyo);
    EXPECT_EQ(tokyo.clock(today), "00:00");
    EXPECT_NEAR(days_between(today, *parse_time("tomorrow", tokyo)), 1, 1e-9);
    EXPECT_NEAR(days_between(today, *parse_time("today+6h", tokyo)), 0.25, 1e-9);
    EXPECT_NEAR(days_between(*parse_time("now-1d"), Instant::now()), 1, 1e-4);
}

TEST(Steps, KeepTheClockAndTheDayOfTheMonth) {
    const Zone berlin = *Zone::find("Europe/Berlin");
    const Instant start = berlin.instant({{2026, 1, 31}, 12, 0, 0});
    const Step month = *parse_step("1mo");
    EXPECT_EQ(berlin.date_time(after_steps(start, month, 1, berlin)), "2026-02-28 12:00");
    EXPECT_EQ(berlin.date_time(after_steps(start, month, 6, berlin)), "2026-07-31 12:00");
    EXPECT_EQ(berlin.date_time(after_steps(start, *parse_step("1y"), -2, berlin)),
              "2024-01-31 12:00");
    EXPECT_EQ(parse_step("2w")->days, 14);
    EXPECT_EQ(parse_step("90s")->days * 86400, 90);
    for (const char* bad : {"", "0d", "-1d", "1x", "1.5mo", "infd"})
        EXPECT_FALSE(parse_step(bad)) << bad;
}

TEST(Instant, KeepsItsDigits) {
    const Instant t = at("2026-11-21T18:03:04.567891Z");
    EXPECT_EQ(t.iso(6), "2026-11-21T18:03:04.567891Z");
    EXPECT_EQ(Instant::from_tt(t.tt()).iso(6), t.iso(6));
    EXPECT_NEAR(t.delta_t_seconds(), 69.184, 1e-9);  // 32.184 s and 37 leap seconds
    EXPECT_EQ(at("2026-12-31T23:59:59.9996Z").iso(3), "2027-01-01T00:00:00.000Z");
    EXPECT_EQ(t.plus_days(1e-9 - 1).plus_days(1).iso(5), t.plus_days(1e-9).iso(5));
    EXPECT_EQ(Instant::from_utc(1e300).utc().day, 0);
}

}  // namespace
}  // namespace solsys::sky
