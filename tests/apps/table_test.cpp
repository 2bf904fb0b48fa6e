// What the command prints, column by column, against values computed without the library
// (tools/reference/command_oracle.py).
#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "tests/support/named_csv.h"
#include "tests/support/run_command.h"

namespace {

using support::run_command;

constexpr double kDegree = 0.017453292519943295;

using Record = std::map<std::string, std::string>;

std::vector<Record> records(const std::string& path) {
    std::vector<Record> out;
    for (const auto& row : solsys::test::read_named_csv(path)) out.push_back(row.cells);
    return out;
}

nlohmann::json printed(const std::string& command, const Record& asked) {
    const auto rows = run_command(command + " --json --ephemeris " SOLSYS_DE405 " --time jd:" +
                                  asked.at("jd_utc") + " --site=" + asked.at("latitude_deg") +
                                  "," + asked.at("longitude_deg") + "," + asked.at("height_m"))
                          .json();
    for (const auto& row : rows)
        if (row["name"].get<std::string>().substr(1) == asked.at("name").substr(1)) return row;
    return {};
}

// How near a column has to come, and whether it goes round at 360 degrees.
struct Tolerance {
    const char* key;
    double within;
    bool circle = false;
};

// The classic nutation keeps the larger terms of IAU 1980 alone: frames of date are within
// 0.45 arcsec of the whole series, places over the horizon, which turn with them, within a
// third of that. Light time settles to 2e-6 day, which moves Mercury by 4e-8 au. Phases and
// elongations are of the geometric places.
constexpr double kOfDate = 1.3e-4;  // deg
constexpr double kAngle = 3e-6;     // deg, a hundredth of an arcsec: J2000
constexpr Tolerance kApparent[] = {{"ra_deg", kOfDate, true},
                                   {"dec_deg", kOfDate},
                                   {"distance_au", 4e-8},
                                   {"light_time_days", 4e-10},
                                   {"azimuth_deg", kOfDate / 2, true},
                                   {"altitude_deg", kOfDate / 2},
                                   {"phase_angle_deg", 0.02},
                                   {"illuminated_fraction", 1e-4},
                                   {"elongation_deg", 0.02}};
constexpr Tolerance kEcliptic[] = {{"lon_deg", kOfDate, true}, {"lat_deg", kAngle}};
constexpr Tolerance kHeliocentric[] = {{"x_au", 1e-9},       {"y_au", 1e-9},
                                       {"z_au", 1e-9},       {"vx_au_day", 1e-10},
                                       {"vy_au_day", 1e-10}, {"vz_au_day", 1e-10}};

template <std::size_t N>
void compare(const nlohmann::json& row, const Record& expected, const Tolerance (&columns)[N],
             const std::string& prefix = "") {
    ASSERT_FALSE(row.is_null()) << expected.at("name");
    for (const Tolerance& column : columns) {
        const double wanted = std::stod(expected.at(prefix + column.key));
        double got = row[column.key].get<double>();
        // The command signs elongations: west of the Sun is negative.
        if (std::string(column.key) == "elongation_deg") got = std::fabs(got);
        const double off = column.circle ? std::remainder(got - wanted, 360) : got - wanted;
        const double scale = std::string(column.key) == "azimuth_deg"
                                 ? std::cos(std::stod(expected.at("altitude_deg")) * kDegree)
                                 : 1;
        EXPECT_LT(std::fabs(off) * scale, column.within)
            << column.key << ' ' << got << " for " << wanted << " of " << expected.at("name")
            << " at " << expected.at("jd_utc");
    }
}

TEST(Tables, EveryColumnOfPositionAndSkyAgreesWithAnIndependentChain) {
    const auto all = records(SOLSYS_TEST_DATA "/reference/command_places.csv");
    ASSERT_EQ(all.size(), 36U);
    for (const Record& expected : all) {
        const std::string position = "position " + expected.at("name");
        const auto apparent = printed(position, expected);
        compare(apparent, expected, kApparent);
        compare(printed(position + " --frame ecliptic", expected), expected, kEcliptic);
        compare(printed(position + " --frame heliocentric", expected), expected, kHeliocentric);
        constexpr Tolerance astrometric[] = {{"ra_deg", kAngle, true}, {"dec_deg", kAngle}};
        compare(printed(position + " --frame J2000", expected), expected, astrometric,
                "j2000_");
        compare(printed("sky", expected), expected, kApparent);
        // Saemundsson's formula, written out, for what is up.
        const double h = apparent["altitude_deg"].get<double>();
        if (h > 0) {
            EXPECT_NEAR(apparent["apparent_altitude_deg"].get<double>() - h,
                        1.02 / 60 / std::tan((h + 10.3 / (h + 5.11)) * kDegree), 1e-4);
        }
    }
}

// UT1 - UTC turns the Earth as that second of time does.
TEST(Tables, Dut1TurnsTheSkyAsMuchAsTime) {
    const std::string at =
        "position sirius --json --frame horizontal --site 51.5,0 --time 2026-12-01T23:00";
    const auto later = run_command(at + ":01Z").json()[0];
    const auto turned = run_command(at + ":00Z --dut1 1").json()[0];
    for (const char* key : {"azimuth_deg", "altitude_deg"})
        EXPECT_NEAR(turned[key].get<double>(), later[key].get<double>(), 1e-6) << key;
}

// The height above sea level moves neither sunrise nor sunset; a minute would be a mistake of
// the horizon, a second one of the Earth's rotation.
TEST(Tables, SunriseAndSunsetOfTenCitiesAtTheirHeights) {
    const auto all = records(SOLSYS_TEST_DATA "/reference/command_risings.csv");
    ASSERT_EQ(all.size(), 10U);
    for (const Record& city : all) {
        const std::string site = city.at("latitude_deg") + "," + city.at("longitude_deg") +
                                 "," + city.at("height_m");
        const auto rows = run_command(
                              "rise-set sun --by-time --json --from 2026-11-30 --to 2026-12-03"
                              " --ephemeris " SOLSYS_DE405 " --site=" +
                              site)
                              .json();
        for (const auto& [event, key] :
             {std::pair{"rise", "rise_jd_utc"}, std::pair{"set", "set_jd_utc"}}) {
            double nearest = 1;
            const double wanted = std::stod(city.at(key));
            for (const auto& row : rows) {
                if (row["event"] != event) continue;
                const auto printed_time = row["time_utc"].get<std::string>();
                int y = 0, mo = 0, d = 0, h = 0, mi = 0;
                double s = 0;
                ASSERT_EQ(std::sscanf(printed_time.c_str(), "%d-%d-%dT%d:%d:%lfZ", &y, &mo, &d,
                                      &h, &mi, &s),
                          6);
                // Days of November 30 to December 3, 2026: JD 2461374.5 at the first midnight.
                const double jd =
                    2461374.5 + (mo == 11 ? 0 : d) + h / 24.0 + mi / 1440.0 + s / 86400;
                nearest = std::min(nearest, std::fabs(jd - wanted));
            }
            // The Sun's radius here and there differ by 0.03 arcsec in the semidiameter.
            EXPECT_LT(nearest * 86400, 0.6) << city.at("name") << ' ' << event;
        }
    }
}

}  // namespace
