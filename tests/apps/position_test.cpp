// The command as a user meets it: places, formats, times, refusals.
#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "tests/support/run_command.h"

namespace {

using support::run_command;
using testing::HasSubstr;

TEST(Position, AgreesWithThePublishedPlaceOfJupiter) {
    // Apparent geocentric place for 2024 January 1, 0h TT: 2h 14m 44.4s, +12d 15' 50" (The
    // Astronomical Almanac, to the second of arc). The frames leave out nutation terms of up to
    // 1"; 69 s of Delta T move Jupiter by less than 0.1".
    const auto rows = run_command("position jupiter --time 2024-01-01T00:00:00Z --json").json();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0]["id"], "plnt:5");
    EXPECT_EQ(rows[0]["name"], "Jupiter");
    EXPECT_EQ(rows[0]["time_utc"], "2024-01-01T00:00:00.000Z");
    EXPECT_NEAR(rows[0]["jd_tt"].get<double>(), 2460310.5 + 69.184 / 86400, 1e-9);
    EXPECT_NEAR(rows[0]["ra_deg"].get<double>(), 15 * (2 + 14 / 60.0 + 44.45 / 3600), 1e-3);
    EXPECT_NEAR(rows[0]["dec_deg"].get<double>(), 12 + 15 / 60.0 + 50 / 3600.0, 1e-3);
}

TEST(Position, TheEphemerisFileAndTheBuiltInTheoryAgree) {
    const std::string what =
        "position sun moon mercury venus mars jupiter saturn --json "
        "--from 1970-01-01 --to 2050-01-01 --step 3000d";
    const auto theory = run_command(what).json();
    const auto file = run_command(what + " --ephemeris " SOLSYS_DE405).json();
    ASSERT_EQ(theory.size(), file.size());
    ASSERT_EQ(theory.size(), 7U * 10U);
    for (std::size_t i = 0; i < file.size(); ++i) {
        // The theory's heliocentric error stays below 0.4"; closer to the Earth it grows.
        const double limit = 1.2 / 3600;
        const double dec = file[i]["dec_deg"].get<double>();
        EXPECT_NEAR(theory[i]["ra_deg"].get<double>(), file[i]["ra_deg"].get<double>(),
                    limit / std::cos(dec * 0.0174533))
            << file[i];
        EXPECT_NEAR(theory[i]["dec_deg"].get<double>(), dec, limit) << file[i];
    }
    // Both really ran: no two sources agree to the last digit.
    EXPECT_NE(theory[10]["ra_deg"], file[10]["ra_deg"]);
}

TEST(Position, FramesShowTheSameDirection) {
    const std::string common =
        "position venus --time 2026-03-01T21:00 --site 51.5,-0.1,30 --json --frame ";
    const auto apparent = run_command(common + "apparent").json()[0];
    const auto ecliptic = run_command(common + "ecliptic").json()[0];
    const auto helio = run_command(common + "heliocentric").json()[0];
    const auto j2000 = run_command(common + "j2000").json()[0];

    // Ecliptic longitude and latitude from the equatorial place, written out (obliquity of date
    // 23.4385 deg within a few arcsec).
    const double degree = std::acos(-1.0) / 180;
    const double ra = apparent["ra_deg"].get<double>() * degree;
    const double dec = apparent["dec_deg"].get<double>() * degree;
    const double eps = 23.4385 * degree;
    const double sin_lat =
        std::sin(dec) * std::cos(eps) - std::cos(dec) * std::sin(eps) * std::sin(ra);
    EXPECT_NEAR(ecliptic["lat_deg"].get<double>(), std::asin(sin_lat) / degree, 0.003);

    double r = 0;
    for (const char* axis : {"x_au", "y_au", "z_au"})
        r += std::pow(helio[axis].get<double>(), 2);
    EXPECT_THAT(std::sqrt(r), testing::AllOf(testing::Gt(0.718), testing::Lt(0.729)));

    // 26 years of precession, at 50.29" a year, less aberration.
    EXPECT_NEAR(apparent["ra_deg"].get<double>() - j2000["ra_deg"].get<double>(), 0.335, 0.04);
    EXPECT_EQ(apparent["altitude_deg"], j2000["altitude_deg"]);
}

TEST(Position, CsvAndTableHoldTheSameRows) {
    const std::string span = "position mars --from 2024-01-01 --to 2024-01-05 --step 2d";
    const auto rows = run_command(span + " --json").json();
    const std::string csv = run_command(span + " --csv").out;
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_THAT(csv, HasSubstr("id,name,time_utc,time_local,jd_tt,ra_deg,dec_deg,distance_au"));
    for (const auto& row : rows) EXPECT_THAT(csv, HasSubstr(row["ra_deg"].dump()));
    const std::string table = run_command(span).out;
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 6);  // a heading, a blank line
}

using support::Refusal;
class BadInput : public testing::TestWithParam<Refusal> {};

TEST_P(BadInput, EndsWithStatus2AndOneLine) { support::expect_refusal(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    All, BadInput,
    testing::Values(
        Refusal{"position mars --time 2024-02-30", "is no time"},
        Refusal{"position mars --time 1582-10-10", "is no time"},
        Refusal{"position mars --time jd:nan", "is no time"},
        Refusal{"position mars --time 2024-01-01T25:00", "is no time"},
        Refusal{"position mars --time 2024-01-01T12:00+99:00", "is no time"},
        Refusal{"position mars --from 2024-01-02 --to 2024-01-01", "before"},
        Refusal{"position mars --from 2024-01-01 --to 2034-01-01 --step 1s", "million"},
        Refusal{"position mars --from 2024-01-01 --to 2024-01-02 --step 0d", "is no step"},
        Refusal{"position mars --site 91,0", "is no site"},
        Refusal{"position mars --site nan,0", "is no site"},
        Refusal{"position mars --site 51.5", "is no site"},
        Refusal{"position mars --city Nowhereville", "no city"},
        Refusal{"position mars --city Paris --site 0,0", "exclude"},
        Refusal{"position mars --tz Nowhere/None --city Paris", "no time zone"},
        Refusal{"position marz", "no body"}, Refusal{"position plnt:77", "no body"},
        Refusal{"position moon:999999999999", "no body"},
        Refusal{"position mars --frame sideways", "no 'sideways'"},
        Refusal{"position mars --frame horizontal", "needs a --site"},
        Refusal{"position mars --ephemeris /no/such/file", "does not exist"},
        Refusal{"position mars --time jd:1e8", "cannot be computed"},
        Refusal{"position mars --json --csv", "exclude"},
        Refusal{"position mars --jsn", "perhaps --json"},
        Refusal{"sky --city Oslo --svg a.png", "use --png"},
        Refusal{"ephemeris-info README.md", "no DE ephemeris"}, Refusal{"position", "body"},
        Refusal{"positon mars", "perhaps position"},
        Refusal{"position mars --time \"\"", "--time: the value is empty"},
        Refusal{"position mars --city \"\"", "--city: the value is empty"},
        Refusal{"position mars --ephemeris \"\"", "--ephemeris: the value is empty"},
        Refusal{"position mars --refraction thick", "--refraction"},
        Refusal{"position mars --step 2d", "--step needs"},
        Refusal{"sky --light", "--light needs"}, Refusal{"moons earth", "position moon"},
        Refusal{"rise-set sun", "a place is needed"},
        Refusal{"rise-set nosuchbody --site 0,0", "no body"},
        Refusal{"rise-set --calendar 2024-13 --site 0,0", "no month"},
        Refusal{"rise-set --calendar +2026-12 --site 0,0", "no month"},
        Refusal{"rise-set sun --site 0,0 --from 2024-02-02 --to 2024-02-01", "before"},
        Refusal{"rise-set sun --site 0,0 --svg x.svg", "no bodies"},
        Refusal{"rise-set --svg /nonexistent/folder/x.svg --site 0,0", "cannot write"},
        Refusal{"frobnicate", "no command"}));

TEST(Times, ZonesCalendarsAndJulianDatesNameTheSameInstant) {
    std::set<std::string> instants;
    for (const char* time : {"2024-03-10T12:00:00Z", "2024-03-10T14:00:00+02:00",
                             "2024-03-10T07:30:00-04:30", "2024-03-10T12:00", "jd:2460380.0"}) {
        const auto rows = run_command(std::string("position sun --json --time ") + time).json();
        instants.insert(rows[0]["time_utc"].get<std::string>());
    }
    EXPECT_THAT(instants, testing::ElementsAre("2024-03-10T12:00:00.000Z"));

    // The reform: the day after 1582 October 4 is October 15.
    const auto before = run_command("position sun --json --time 1582-10-04").json()[0];
    const auto after = run_command("position sun --json --time 1582-10-15").json()[0];
    EXPECT_NEAR(after["jd_tt"].get<double>() - before["jd_tt"].get<double>(), 1.0, 1e-9);
    // Year 0 is 1 BC, a leap year of the Julian calendar.
    const auto leap = run_command("position sun --json --time 0000-02-29").json()[0];
    EXPECT_EQ(leap["time_utc"], "0000-02-29T00:00:00.000Z");
}

TEST(Sky, ListsTenBodiesAndTellsWhatIsUp) {
    const auto rows = run_command("sky --city Sydney --time 2024-01-01T02:00Z --json").json();
    ASSERT_EQ(rows.size(), 10U);
    for (const auto& row : rows) {
        // The upper limb of Sun and Moon, the centre of others, lifted by 34' of refraction.
        const bool limb = row["name"] == "Sun" || row["name"] == "Moon";
        const double radius = limb ? row["angular_diameter_arcsec"].get<double>() / 7200 : 0;
        EXPECT_EQ(row["above_horizon"].get<bool>(),
                  row["altitude_deg"].get<double>() > -34.0 / 60 - radius)
            << row;
    }
    // Local noon in the southern summer: the Sun is nearly overhead.
    EXPECT_GT(rows[0]["altitude_deg"].get<double>(), 75);
}

TEST(EphemerisInfo, ReadsTheHeader) {
    const auto rows = run_command("ephemeris-info " SOLSYS_DE405 " --json").json();
    EXPECT_EQ(rows[0]["de_number"], 405);
    EXPECT_EQ(rows[0]["doubles_per_record"], 1018);
    EXPECT_DOUBLE_EQ(rows[0]["earth_moon_mass_ratio"].get<double>(), 81.30056);
}

}  // namespace
