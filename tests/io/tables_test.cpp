// CSV tables, those shipped with the library included, and what the library makes of them.
#include "io/tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/constants.h"
#include "core/linalg.h"
#include "io/csv.h"
#include "io/orbit_records.h"
#include "tests/support/csv.h"
#include "tests/support/geometry.h"

namespace solsys_io {
namespace {

using solsys::kDegree;
using solsys::load;
using solsys::norm;
using solsys::Vec3;
using testing::ElementsAre;

const std::string kData = SOLSYS_TEST_DATA;

template <class Record, class Reader>
std::vector<Record> all_of(const std::string& name, Reader reader) {
    std::ifstream in(kData + "/catalogue/" + name);
    std::vector<Record> records;
    const auto summary = reader(
        in, [&](const Record& record) { records.push_back(record); },
        [](const Problem& problem) { ADD_FAILURE() << problem.line << problem.message; });
    EXPECT_TRUE(summary.complete);
    return records;
}
std::vector<MinorPlanet> planets() {
    return all_of<MinorPlanet>("asteroids_sample.csv", read_minor_planet_table);
}
std::vector<Comet> comets() { return all_of<Comet>("comets_sample.csv", read_comet_table); }
std::vector<ListedStar> stars() {
    return all_of<ListedStar>("bright_stars.csv", read_star_table);
}

template <class Record>
const Record& named(const std::vector<Record>& records, const std::string& name) {
    for (const Record& record : records)
        if (std::string(record.name).rfind(name, 0) == 0) return record;
    throw std::runtime_error("no row " + name);
}

Vec3 moved(const Elements& el, int day, double fraction) {
    double r[3], v[3];
    EXPECT_TRUE(Kepler(0, solsys::kGaussSquared, day, fraction, el, r, v));
    return load(r);
}
template <class Record>
Vec3 moved(const Record& record, int day, double fraction) {
    double out[6];
    EXPECT_TRUE(KeplerPQ5(0, day, fraction, &record, out));
    return load(out);
}

// Elements and compact records against positions computed elsewhere, both planes.
template <class Record>
void check(const Record& body, std::uint32_t key, double jd, Vec3 expected, double compact) {
    const int day = static_cast<int>(jd);
    const double fraction = jd - day;
    const double r = norm(expected);
    // Twelve decimals printed; the step rule's 1e-10 of anomaly on a long ellipse.
    EXPECT_NEAR(norm(moved(to_elements(body), day, fraction) - expected), 0, 2e-10 * r)
        << body.name;
    const auto ecliptic = to_compact(body, Plane::ecliptic_j2000,
                                     static_cast<decltype(tagComet_SPH_5::number)>(key));
    EXPECT_NEAR(norm(moved(ecliptic, day, fraction) - expected), 0, compact * r) << body.name;
    const auto equator = to_compact(body, Plane::equator_j2000,
                                    static_cast<decltype(tagComet_SPH_5::number)>(key));
    const Vec3 turned =
        solsys::rotate_x(84381.448 / 3600 * kDegree) * moved(equator, day, fraction);
    EXPECT_NEAR(norm(turned - expected), 0, compact * r) << body.name;
}

TEST(SampleTables, MoveAsComputedElsewhere) {
    const auto all_planets = planets();
    const auto all_comets = comets();
    EXPECT_EQ(all_planets.size(), 65U);
    EXPECT_EQ(all_comets.size(), 33U);
    std::uint32_t key = 0;
    for (const auto& row :
         solsys::test::read_csv(kData + "/reference/small_body_positions.csv")) {
        const double jd = std::stod(row[2]);
        const Vec3 expected = solsys::test::vector_of(row, 3);
        ++key;
        if (row[0] == "C") {
            check(named(all_comets, row[1]), key, jd, expected, 2e-10);
            continue;
        }
        // Single precision of the compact asteroid record: 6e-8 in each of a, e, P and Q, and
        // in M and in n times the days since the epoch, which move the body by a^2 / r each.
        const MinorPlanet& planet = named(all_planets, row[1]);
        const double dM = 6e-8 * (planet.M + planet.n * std::fabs(jd - planet.epoch));
        const double stretch = planet.a / norm(expected);
        check(planet, key, jd, expected, 2e-7 * stretch + dM * stretch * stretch);
    }
}

TEST(BrightStars, MoveAsComputedElsewhere) {
    const auto all = stars();
    for (const auto& row : solsys::test::read_csv(kData + "/reference/star_motions.csv")) {
        const auto hip = static_cast<std::uint32_t>(std::stoul(row[0]));
        const auto found = std::find_if(
            all.begin(), all.end(), [&](const ListedStar& star) { return star.hip == hip; });
        ASSERT_NE(found, all.end());
        const StarObject& s = found->object;
        const double sun[6] = {};
        double out[3], distance = 0;
        CalcProperMotionD(50, sun, out, s.ra, s.dec, s.pm_ra, s.pm_dec, s.parallax,
                          s.radial_velocity, distance);
        const Vec3 expected =
            solsys::test::direction(std::stod(row[1]) * kDegree, std::stod(row[2]) * kDegree);
        // Motions are stored in single precision: 6e-8 of at most 1e-3 rad.
        EXPECT_NEAR(norm(load(out) - expected), 0, 1e-10) << found->name;
    }
}

TEST(BrightStars, CarryTheirNames) {
    const auto all = stars();
    EXPECT_EQ(all.size(), 1608U);
    const ListedStar& vega = named(all, "Vega");
    EXPECT_TRUE(vega.hip == 91262 && vega.constellation == "Lyr" && vega.bayer == "alp Lyr");
    EXPECT_NEAR(vega.object.magnitude, 0.03, 1e-6);
    EXPECT_NEAR(vega.object.parallax / kDegree * 3.6e6, 128.93, 0.01);
}

TEST(StarTable, KeepsTheUnknownApartFromZero) {
    std::istringstream in(
        "ra_deg,dec_deg,parallax_mas,pm_ra_mas_yr\n10,20,,0\n10,91,,\n,20,,\nx,1,,\n1,2,"
        "3\n\"1\",2,,\n");
    std::vector<StarObject> read;
    std::vector<std::size_t> faults;
    read_star_table(
        in, [&](const ListedStar& star) { read.push_back(star.object); },
        [&](const Problem& problem) { faults.push_back(problem.line); });
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].parallax, STAR_UNKNOWN);
    EXPECT_EQ(read[0].pm_ra, 0);
    EXPECT_EQ(read[0].magnitude, STAR_UNKNOWN);
    EXPECT_THAT(faults, ElementsAre(3, 4, 5, 6));
}

TEST(StarTable, NeedsItsColumns) {
    for (const char* text :
         {"", "ra_deg,dec\n1,2\n", "\"ra_deg,dec_deg\n", "# only a comment\n"}) {
        std::istringstream in(text);
        int problems = 0;
        const auto summary = read_star_table(
            in, [](const ListedStar&) { ADD_FAILURE(); }, [&](const Problem&) { ++problems; });
        EXPECT_EQ(problems, 1) << text;
        EXPECT_FALSE(summary.complete);
    }
}

TEST(SplitCsv, FollowsTheQuotes) {
    std::vector<std::string> cells;
    const auto split = [&](std::string_view line) { return split_csv(line, cells); };
    EXPECT_TRUE(split("a,\"b,\"\"c\"\"\",,d"));
    EXPECT_THAT(cells, ElementsAre("a", "b,\"c\"", "", "d"));
    EXPECT_TRUE(split("a,"));
    EXPECT_THAT(cells, ElementsAre("a", ""));
    for (const char* empty : {"", "\"\""}) {
        EXPECT_TRUE(split(empty));
        EXPECT_THAT(cells, ElementsAre(""));
    }
    EXPECT_FALSE(split("\"a"));
    EXPECT_FALSE(split("\"a\"b,c"));
}

}  // namespace
}  // namespace solsys_io
