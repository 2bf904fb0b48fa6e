// Minor planets and comets by name, from files and by typed elements.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>

#include "tests/io/orbit_lines.h"
#include "tests/support/csv.h"
#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using solsys_io::PrintedComet;
using solsys_io::PrintedPlanet;
using support::run_command;
using testing::HasSubstr;

constexpr double kDegree = 0.017453292519943295;
constexpr double kObliquity = 84381.448 / 3600 * kDegree;
const std::string kCeres =
    "epoch=jd:2459800.5,a=2.766619044655007,e=0.07863575691875528,i=10.58679512153367,"
    "node=80.2664361119415,peri=73.53162522557164,M=334.3271698971151,H=3.33,G=0.12";

nlohmann::json row_of(const std::string& arguments) {
    return run_command(arguments + " --json").json().at(0);
}

// The Julian date in UT that is `jd` in dynamical time, as an option.
std::string at_tt(double jd) {
    char text[64];
    std::snprintf(text, sizeof text, " --time jd:%.12f", jd);
    const double tt = row_of(std::string("position sun") + text)["jd_tt"].get<double>();
    std::snprintf(text, sizeof text, " --time jd:%.12f", jd - (tt - jd));
    return text;
}

// Every published check position, moved by a separate program, through the command.
TEST(Orbit, TheSampleStandsWhereItShould) {
    for (const auto& row :
         solsys::test::read_csv(SOLSYS_TEST_DATA "/reference/small_body_positions.csv")) {
        const auto out = row_of("orbit --two-body \"" + row[1] + "\" --frame heliocentric" +
                                at_tt(std::stod(row[2])));
        const double x = out["x_au"].get<double>();
        const double y = out["y_au"].get<double>();
        const double z = out["z_au"].get<double>();
        const double c = std::cos(kObliquity), s = std::sin(kObliquity);
        const double ecliptic[3] = {x, c * y + s * z, c * z - s * y};
        const double r = std::sqrt(x * x + y * y + z * z);
        for (int i = 0; i < 3; ++i) {
            const double expected = std::stod(row[3 + static_cast<std::size_t>(i)]);
            // The model's own sine and cosine of the obliquity are 4.2e-9 rad aside.
            EXPECT_NEAR(ecliptic[i], expected, 6e-9 * r) << out;
        }
    }
}

TEST(Orbit, VestaWasAsBrightAsPublishedAtItsOpposition) {
    // Opposition of 2022 August 22: magnitude 5.8 at 1.28 au, in Aquarius.
    const auto vesta = row_of("position vesta --time 2022-08-22T18:00");
    EXPECT_EQ(vesta["id"], "astr:4");
    EXPECT_NEAR(vesta["magnitude"].get<double>(), 5.8, 0.1);
    EXPECT_NEAR(vesta["distance_au"].get<double>(), 1.28, 0.01);
    EXPECT_GT(std::fabs(vesta["elongation_deg"].get<double>()), 170);
    EXPECT_EQ(vesta["constellation"], "Aqr");
}

TEST(Orbit, HalleyIsTakenFromTheApparitionAskedFor) {
    // Closest to the Earth on 1986 April 11, at 0.42 au; the elements of 1994 would have it
    // elsewhere by a tenth of an au.
    const auto seen = row_of("position halley --time 1986-04-11");
    EXPECT_NEAR(seen["distance_au"].get<double>(), 0.417, 0.002);
    EXPECT_NE(row_of("position halley --time 1994-01-01")["id"], seen["id"]);
    EXPECT_EQ(row_of("position 1p/halley --time 1986-04-11"), seen);
}

TEST(Orbit, OfABodyThereIsOneAnswerAndItsAgeIsTold) {
    const auto ceres = row_of("position ceres --time 2022-08-09");
    EXPECT_EQ(ceres, row_of("orbit ceres --time 2022-08-09"));
    EXPECT_EQ(ceres["id"], "astr:1");
    EXPECT_EQ(ceres["elements_epoch"], "2022-08-08");
    EXPECT_LT(ceres["uncertainty_arcsec"].get<double>(), 1);
    const auto old = run_command("position ceres --two-body --json --time 2000-01-01");
    EXPECT_GT(old.json()[0]["uncertainty_arcsec"].get<double>(), 450 * 60);
    EXPECT_THAT(old.err, HasSubstr("two-body motion"));
}

// From elements of 2022, against an integration by others (of the first four minor planets).
TEST(Orbit, OfTheSampleIsIntegratedWithinItsUncertainty) {
    int checked = 0;
    for (const auto& row :
         solsys::test::read_csv(SOLSYS_TEST_DATA "/reference/asteroid_positions.csv")) {
        if (row[0] == "number" || (row[1] != "2451545.0" && row[1] != "2455197.5")) continue;
        const auto out = row_of("position astr:" + row[0] + " --frame heliocentric" +
                                at_tt(std::stod(row[1])));
        EXPECT_EQ(out["motion"], "integrated");
        double off = 0, distance = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            constexpr const char* keys[] = {"x_au", "y_au", "z_au"};
            off = std::hypot(off, out[keys[i]].get<double>() - std::stod(row[2 + i]));
            distance = std::hypot(distance, std::stod(row[2 + i]));
        }
        EXPECT_LT(off / distance / kDegree * 3600, out["uncertainty_arcsec"].get<double>());
        EXPECT_LT(off / distance / kDegree * 3600, 0.5) << row[0] << " at " << row[1];
        ++checked;
    }
    EXPECT_GE(checked, 4);
}

TEST(Orbit, ElementsTypedMeanTheSameAsThoseOfTheSample) {
    const std::string when = " --time 2022-09-01 --site 51.5,0 --frame j2000";
    const auto sample = row_of("orbit ceres --two-body" + when);
    auto typed = row_of("orbit --elements " + kCeres + when);
    EXPECT_TRUE(typed["id"].is_null());
    for (const char* key : {"ra_deg", "dec_deg", "distance_au", "altitude_deg", "magnitude"})
        EXPECT_NEAR(typed[key].get<double>(), sample[key].get<double>(), 1e-7) << key;

    // Perihelion distance and time instead of axis and anomaly.
    const double a = 2.766619044655007, e = 0.07863575691875528;
    const double n = 0.01720209895 / std::sqrt(a * a * a);
    char elements[300];
    std::snprintf(elements, sizeof elements,
                  "q=%.15g,e=%.16g,tp=jd:%.9f,i=10.58679512153367,node=80.2664361119415,"
                  "peri=73.53162522557164,H=3.33,G=0.12",
                  a * (1 - e), e, 2459800.5 + (360 - 334.3271698971151) * kDegree / n);
    const auto other = row_of(std::string("orbit --elements ") + elements + when);
    EXPECT_NEAR(other["ra_deg"].get<double>(), typed["ra_deg"].get<double>(), 1e-7);
    EXPECT_EQ(other["magnitude"], typed["magnitude"]);
}

// Across e = 1 the orbit changes continuously: near perihelion a parabola and its neighbours.
TEST(Orbit, ParabolasJoinEllipsesAndHyperbolas) {
    const auto place = [](const char* e) {
        return row_of(
            std::string("orbit --elements q=0.3,tp=2026-01-01,i=50,node=10,peri=20,e=") + e +
            " --time 2026-02-01 --frame heliocentric");
    };
    const auto parabola = place("1");
    for (const char* e : {"0.99999", "1.00001", "0.9999999", "1.0000001"})
        for (const char* axis : {"x_au", "y_au", "z_au"})
            EXPECT_NEAR(place(e)[axis].get<double>(), parabola[axis].get<double>(), 1e-5) << e;
    // Barker's equation: 31 days after perihelion at q = 0.3 au, less the 69 s of TT.
    const double W = 3 * 0.01720209895 / std::sqrt(2 * 0.027) * (31 + 69.184 / 86400);
    double s = 1;
    for (int i = 0; i < 60; ++i) s = (2 * s * s * s + W) / (3 * (s * s + 1));
    double r = 0;
    for (const char* axis : {"x_au", "y_au", "z_au"})
        r += std::pow(parabola[axis].get<double>(), 2);
    EXPECT_NEAR(std::sqrt(r), 0.3 * (1 + s * s), 1e-8);
}

class OrbitFile : public testing::Test {
  protected:
    TempFolder folder;

    [[nodiscard]] static std::string planets() {
        PrintedPlanet vesta;
        vesta.packed = "00004", vesta.words = "     (4) Vesta", vesta.M = 200;
        PrintedPlanet fresh;
        fresh.packed = "K07Tf8I", fresh.words = "        2007 TA418";
        return print(PrintedPlanet{}) + "\n" + print(vesta) + "\n" + print(fresh) + "\n";
    }
};

TEST_F(OrbitFile, FindsObjectsByAnyName) {
    const std::string file = folder.write("planets.txt", planets());
    const auto vesta = row_of("orbit --object vesta --time 2023-09-13 --file " + file);
    EXPECT_EQ(vesta["name"], "Vesta");
    EXPECT_EQ(row_of("orbit --object 4 --time 2023-09-13 --file " + file), vesta);
    EXPECT_EQ(row_of("orbit --object \"(4) Vesta\" --time 2023-09-13 --file " + file), vesta);
    const auto fresh = row_of("orbit --object \"2007 ta418\" --file " + file);
    EXPECT_TRUE(fresh["id"].is_null());
    EXPECT_EQ(fresh["name"], "2007 TA418");

    PrintedComet halley;
    halley.number = "0001", halley.kind = 'P', halley.name = "1P/Halley";
    const std::string comets =
        folder.write("comets.txt", print(PrintedComet{}) + "\n" + print(halley) + "\n");
    for (const char* name : {"\"c/1995 o1\"", "hale-bopp", "\"C/1995 O1 (Hale-Bopp)\""})
        EXPECT_EQ(row_of(std::string("orbit --object ") + name + " --file " + comets)["name"],
                  "C/1995 O1 (Hale-Bopp)");
    EXPECT_EQ(row_of("orbit --object 1p --file " + comets)["name"], "1P/Halley");
}

TEST_F(OrbitFile, ReportsMalformedLinesAndKeepsTheRest) {
    const std::string good = planets();
    const std::string file =
        folder.write("planets.txt", "no orbit\n" + good + good.substr(0, 60) + "\n");
    const auto outcome =
        run_command("orbit --object 4 --time 2023-09-13 --json --file " + file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json().at(0)["name"], "Vesta");
    EXPECT_THAT(outcome.err, HasSubstr("planets.txt:1: "));
    EXPECT_THAT(outcome.err, HasSubstr("1 more such line"));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;

    // Of a file that is all wrong not every line.
    std::string noise;
    for (int i = 0; i < 5000; ++i) noise += std::string("\x01\x02 noise") + '\n';
    const auto binary =
        run_command("orbit --object 4 --file " + folder.write("noise.txt", noise));
    EXPECT_EQ(binary.status, 2);
    EXPECT_THAT(binary.err, HasSubstr("no orbit in"));
    EXPECT_LT(std::count(binary.err.begin(), binary.err.end(), '\n'), 15);
}

TEST_F(OrbitFile, SaysWhenThereIsNothing) {
    const std::string file = folder.write("planets.txt", planets());
    const auto missing = run_command("orbit --object 5 --file " + file);
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr("no '5' in"));
    const auto unnamed = run_command("orbit --file " + file);
    EXPECT_EQ(unnamed.status, 2);
    EXPECT_THAT(unnamed.err, HasSubstr("holds 3 orbits"));
    for (const std::string& path :
         {folder.write("empty.txt", ""), folder / "absent.txt", folder.path()}) {
        const auto outcome = run_command("orbit --object 4 --file " + path);
        EXPECT_EQ(outcome.status, 2) << path;
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    }
}

struct Refusal {
    const char* arguments;
    const char* says;
};
class OrbitRefused : public testing::TestWithParam<Refusal> {};

TEST_P(OrbitRefused, EndsWithStatus2AndOneLine) {
    const auto outcome = run_command(GetParam().arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().says));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

#define ANGLES "i=1,node=2,peri=3"
INSTANTIATE_TEST_SUITE_P(
    All, OrbitRefused,
    testing::Values(
        Refusal{"orbit", "give one of"}, Refusal{"orbit ceres --elements a=1", "give one of"},
        Refusal{"orbit ceres --object vesta", "--object needs"},
        Refusal{"orbit jupiter", "in the sample"},
        Refusal{"orbit --elements epoch=2022-01-01,a=2,e=-0.1,M=0," ANGLES, "e=-0.1"},
        Refusal{"orbit --elements epoch=2022-01-01,a=2,e=nan,M=0," ANGLES, "not a number"},
        Refusal{"orbit --elements epoch=2022-01-01,a=0,e=0.1,M=0," ANGLES, "no orbit"},
        Refusal{"orbit --elements epoch=2022-01-01,a=-2,e=1.1,M=0," ANGLES, "open orbit"},
        Refusal{"orbit --elements tp=2022-01-01,q=-1,e=1," ANGLES, "q=-1"},
        Refusal{"orbit --elements tp=2022-01-01,q=1e300,e=1," ANGLES, "q="},
        Refusal{"orbit --elements epoch=2022-01-01,a=1,q=1,e=0,M=0," ANGLES, "either a or q"},
        Refusal{"orbit --elements epoch=2022-01-01,a=1,e=0," ANGLES, "either M or tp"},
        Refusal{"orbit --elements epoch=2022-01-01,q=1,e=1,M=0," ANGLES, "parabola"},
        Refusal{"orbit --elements a=1,e=0,M=0," ANGLES, "lack epoch"},
        Refusal{"orbit --elements tp=2022-02-30,q=1,e=0," ANGLES, "is no time"},
        Refusal{"orbit --elements tp=2022-01-01,q=1,e=0,i=181,node=0,peri=0", "i=181"},
        Refusal{"orbit --elements tp=2022-01-01,q=1,e=0,e=0.1," ANGLES, "twice"},
        Refusal{"orbit --elements tp=2022-01-01,q=1,e=0,G=1,K=1," ANGLES, "G is of"},
        Refusal{"orbit --elements speed=1", "is no element"},
        Refusal{"orbit --elements \"\"", "empty"},
        Refusal{"orbit --elements ,", "is no element"}));
#undef ANGLES

}  // namespace
