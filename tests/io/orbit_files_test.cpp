// Files of one-line orbits, whole and damaged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/constants.h"
#include "io/fields.h"
#include "io/orbit_records.h"
#include "io/text_lines.h"
#include "tests/io/orbit_lines.h"
#include "tests/support/temp_folder.h"

namespace solsys_io {
namespace {

using solsys::kDegree;
using testing::ElementsAre;

struct ReadPlanets {
    std::vector<MinorPlanet> planets;
    std::vector<std::size_t> faults;  // line numbers
    ReadSummary summary;
};

ReadPlanets read(const std::string& text) {
    ReadPlanets result;
    std::istringstream in(text);
    result.summary = read_minor_planets(
        in, [&](const MinorPlanet& planet) { result.planets.push_back(planet); },
        [&](const Problem& problem) { result.faults.push_back(problem.line); });
    EXPECT_EQ(result.summary.records, result.planets.size());
    EXPECT_EQ(result.summary.problems, result.faults.size());
    return result;
}

std::vector<std::string> names(const ReadPlanets& result) {
    std::vector<std::string> all;
    for (const MinorPlanet& planet : result.planets) all.emplace_back(planet.name);
    return all;
}

PrintedPlanet provisional() {
    PrintedPlanet p;
    p.packed = "K07Tf8A";
    p.H = p.G = "     ";
    p.words = "";
    return p;
}

const std::string kHeader =
    "MINOR PLANET CENTER ORBIT DATABASE (MPCORB)\n\nThis file contains published orbital "
    "elements\nDes'n     H     G   Epoch     M        Peri.      Node       Incl.       e\n" +
    std::string(160, '-') + "\n";

TEST(MinorPlanetLine, GivesWhatWasPrinted) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> turn(0, 360), shape(0, 0.99), size(0.5, 60);
    for (int k = 0; k < 2000; ++k) {
        PrintedPlanet p;
        p.M = turn(random), p.peri = turn(random), p.node = turn(random);
        p.incl = turn(random) / 2, p.e = shape(random), p.a = size(random);
        p.n = 0.01720209895 / kDegree / (p.a * std::sqrt(p.a));
        const auto [planet, message] = parse_minor_planet(print(p));
        ASSERT_TRUE(planet) << message << "\n" << print(p);
        // Half a unit of the last digit printed.
        EXPECT_NEAR(planet->M / kDegree, p.M, 5.01e-6);
        EXPECT_NEAR(planet->peri / kDegree, p.peri, 5.01e-6);
        EXPECT_NEAR(planet->node / kDegree, p.node, 5.01e-6);
        EXPECT_NEAR(planet->i / kDegree, p.incl, 5.01e-6);
        EXPECT_NEAR(planet->e, p.e, 5.01e-8);
        EXPECT_NEAR(planet->a, p.a, 5.01e-8);
        EXPECT_NEAR(planet->n / kDegree, p.n, 5.01e-9);
        EXPECT_EQ(planet->epoch, 2460200.5);
        EXPECT_EQ(planet->number, 1U);
        EXPECT_STREQ(planet->name, "Ceres");
        EXPECT_FLOAT_EQ(planet->H, 3.34F);
        EXPECT_FLOAT_EQ(planet->G, 0.12F);
    }
}

// At perihelion a body stands along P and moves along Q.
TEST(CompactRecords, PointWhereTheElementsDo) {
    MinorPlanet planet{};
    planet.a = 2.5, planet.e = 0.3, planet.i = 0.2, planet.node = 1, planet.peri = 4;
    planet.n = std::sqrt(solsys::kSunGm / planet.a) / planet.a, planet.epoch = 2460200.5;
    Comet comet{};
    comet.q = 0.5, comet.e = 1.2, comet.i = 2, comet.node = 5, comet.peri = 0.7;
    comet.perihelion_time = comet.epoch = 2460200.5;
    const auto expect = [](const Elements& elements, Plane plane, const auto& P,
                           const auto& Q) {
        double r[3], v[3];
        ASSERT_TRUE(Kepler(1, solsys::kSunGm, 2460200, 0.5, elements, r, v));
        // The mean obliquity of J2000.0, 84381.448".
        const double e = plane == Plane::ecliptic_j2000 ? 0 : 84381.448 * solsys::kArcsec;
        for (const auto& [axis, vector] : {std::pair{&P[0], &r[0]}, std::pair{&Q[0], &v[0]}}) {
            const double length = std::hypot(vector[0], vector[1], vector[2]);
            EXPECT_NEAR(axis[0], vector[0] / length, 1e-7);
            EXPECT_NEAR(axis[1], (vector[1] * std::cos(e) - vector[2] * std::sin(e)) / length,
                        1e-7);
            EXPECT_NEAR(axis[2], (vector[1] * std::sin(e) + vector[2] * std::cos(e)) / length,
                        1e-7);
        }
    };
    for (const Plane plane : {Plane::ecliptic_j2000, Plane::equator_j2000}) {
        const tagAster_SPH_5 p = to_compact(planet, plane, 7);
        expect(to_elements(planet), plane, p.P, p.Q);
        EXPECT_EQ(p.number, 7U);
        const tagComet_SPH_5 c = to_compact(comet, plane, 8);

        expect(to_elements(comet), plane, c.P, c.Q);
    }
}

TEST(Fields, TextIsCutWhereItDoesNotFitAndEnds) {
    char out[5];
    for (const auto& [text, copied] :
         {std::pair{"", ""}, std::pair{"abc", "abc"}, std::pair{"abcd", "abcd"},
          std::pair{"abcdefgh", "abcd"}}) {
        std::fill_n(out, 5, 'x');
        copy_text(text, out);
        EXPECT_STREQ(out, copied);
    }
}

TEST(MinorPlanetLine, BlankMagnitudesAreUnknownAndNamesAreUnpacked) {
    const auto planet = parse_minor_planet(print(provisional())).planet;
    ASSERT_TRUE(planet);
    EXPECT_EQ(planet->H, MinorPlanet::kUnknown);
    EXPECT_EQ(planet->G, MinorPlanet::kUnknown);
    EXPECT_EQ(planet->number, 0U);
    EXPECT_STREQ(planet->name, "2007 TA418");
}

TEST(MinorPlanetLine, IsRefusedWhenCutOrShifted) {
    const std::string line = print(PrintedPlanet{});
    for (std::size_t n = 0; n < line.size(); ++n) {
        const auto result = parse_minor_planet(std::string_view(line).substr(0, n));
        EXPECT_EQ(result.planet.has_value(), n >= 103) << n;
        EXPECT_EQ(result.message.empty(), n >= 103) << n;
    }
    for (std::size_t at = 25; at < 103; at += 3) {
        std::string shifted = line.substr(0, at);
        shifted += '7';
        shifted += line.substr(at);
        EXPECT_FALSE(parse_minor_planet(shifted).planet) << shifted;
    }
}

TEST(MinorPlanetLine, EveryByteMayBeWrong) {
    const std::string line = print(PrintedPlanet{});
    std::mt19937 random(9);
    std::uniform_int_distribution<int> byte(0, 255);
    for (std::size_t at = 0; at < line.size(); ++at) {
        for (int k = 0; k < 20; ++k) {
            std::string damaged = line;
            damaged[at] = static_cast<char>(byte(random));
            const auto result = parse_minor_planet(damaged);
            ASSERT_EQ(result.planet.has_value(), result.message.empty());
            if (!result.planet) continue;
            EXPECT_LT(result.planet->e, 1);
            EXPECT_NEAR(result.planet->a, 2.767, 0.01)
                << damaged;  // the mean motion watches it
        }
    }
}

TEST(MinorPlanetFile, SkipsHeaderAndBlankLinesAndReportsTheRest) {
    const std::string good = print(PrintedPlanet{}), other = print(provisional());
    const auto result =
        read(kHeader + good + "\n\n" + "nonsense\n" + other + "\r\n" + good.substr(0, 90) +
             "\n" + std::string(10000, 'x') + "\n" + "a\tb" + '\0' + "\n" + other);
    EXPECT_THAT(names(result), ElementsAre("Ceres", "2007 TA418", "2007 TA418"));
    EXPECT_THAT(result.faults, ElementsAre(8, 10, 11, 12));
    EXPECT_EQ(result.summary.lines, 13U);
    EXPECT_TRUE(result.summary.complete);
}

TEST(MinorPlanetFile, MayHaveNoHeaderOrNoOrbits) {
    const std::string good = print(PrintedPlanet{});
    const auto some = read("faulty\n" + good + "\n" + std::string(20, '-') + "\n" + good);
    EXPECT_THAT(names(some), ElementsAre("Ceres", "Ceres"));
    EXPECT_THAT(some.faults, ElementsAre(1, 3));
    EXPECT_TRUE(read("").faults.empty());
    EXPECT_TRUE(read("\n\n").faults.empty());
    EXPECT_THAT(read("a\nb").faults, ElementsAre(1, 2));
    EXPECT_EQ(read(std::string(1000000, '\0')).faults.size(), 1U);

    std::mt19937 random(2);
    std::string bytes(500000, ' ');
    for (char& c : bytes) c = static_cast<char>(random());
    const auto result = read(bytes);
    EXPECT_TRUE(result.planets.empty());
    EXPECT_GT(result.faults.size(), 1000U);
}

// Lines that lie across the edges of the reader's buffer.
TEST(TextLines, AgreeWithAPlainSplitAtEveryLength) {
    std::mt19937 random(5);
    std::uniform_int_distribution<std::size_t> length(0, TextLines::kLongestLine);
    std::string text;
    std::vector<std::string> expected;
    while (text.size() < (1 << 21)) {
        std::string line(length(random), 'a');
        for (char& c : line) c = static_cast<char>('a' + random() % 26);
        expected.push_back(line);
        text += line + (random() % 2 == 0 ? "\n" : "\r\n");
    }
    std::istringstream in(text);
    TextLines lines(in);
    std::string_view line;
    for (const std::string& whole : expected) {
        ASSERT_TRUE(lines.next(line));
        ASSERT_EQ(line,
                  whole.size() == TextLines::kLongestLine && lines.too_long() ? "" : whole);
    }
    EXPECT_FALSE(lines.next(line));
    EXPECT_EQ(lines.number(), expected.size());
}

TEST(MinorPlanetFile, LoadsFromDisk) {
    const TempFolder folder;
    const std::string line = print(PrintedPlanet{}) + "\n";
    std::string text = kHeader;
    for (int k = 0; k < 5000; ++k) text += line;
    const auto planets = load_minor_planets(folder.write("orbits.dat", text));
    ASSERT_TRUE(planets);
    EXPECT_EQ(planets->size(), 5000U);
    EXPECT_FALSE(load_minor_planets(folder / "missing.dat"));
}

TEST(CometLine, GivesWhatWasPrinted) {
    const auto [comet, message] = parse_comet(print(PrintedComet{}));
    ASSERT_TRUE(comet) << message << "\n" << print(PrintedComet{});
    EXPECT_DOUBLE_EQ(comet->perihelion_time, 2450539.5 + 0.1375);  // 1997 April 1
    EXPECT_EQ(comet->epoch, 2459800.5);                            // 2022 August 9
    EXPECT_EQ(comet->q, 0.914142);
    EXPECT_EQ(comet->e, 0.995086);
    EXPECT_DOUBLE_EQ(comet->peri, 130.5887 * kDegree);
    EXPECT_DOUBLE_EQ(comet->node, 282.4707 * kDegree);
    EXPECT_DOUBLE_EQ(comet->i, 89.43 * kDegree);
    EXPECT_FLOAT_EQ(comet->H, -2.0F);
    EXPECT_FLOAT_EQ(comet->K, 10.0F);
    EXPECT_STREQ(comet->name, "C/1995 O1 (Hale-Bopp)");
    EXPECT_EQ(comet->number, 0U);

    PrintedComet unperturbed;
    unperturbed.number = "0067", unperturbed.kind = 'P';
    unperturbed.epoch = unperturbed.H = unperturbed.slope = "";
    const auto periodic = parse_comet(print(unperturbed)).comet;
    ASSERT_TRUE(periodic);
    EXPECT_EQ(periodic->epoch, periodic->perihelion_time);
    EXPECT_EQ(periodic->number, 67U);
    EXPECT_EQ(periodic->H, Comet::kUnknown);
}

TEST(CometLine, IsRefusedWhenDamaged) {
    const std::string line = print(PrintedComet{});
    for (std::size_t n = 0; n < 79; ++n)
        EXPECT_FALSE(parse_comet(std::string_view(line).substr(0, n)).comet) << n;
    std::vector<PrintedComet> faults(8);
    faults[0].kind = 'Z';
    faults[1].perihelion = "1997 13 01.1375";
    faults[2].perihelion = "1997 02 30.1375";
    faults[3].q = -1;
    faults[4].e = -0.1;
    faults[5].incl = 181;
    faults[6].epoch = "20221309";
    faults[7].number = "-067";
    for (const PrintedComet& fault : faults)
        EXPECT_FALSE(parse_comet(print(fault)).comet) << print(fault);
}

TEST(CometFile, ReportsFaultyLinesAndLosesNoOther) {
    const std::string good = print(PrintedComet{});
    std::istringstream in(good + "\nx\n\n" + good + "\r\n" + good.substr(0, 70) + "\n" + good);
    std::vector<std::size_t> faults;
    int comets = 0;
    const auto summary = read_comets(
        in, [&](const Comet&) { ++comets; },
        [&](const Problem& problem) { faults.push_back(problem.line); });
    EXPECT_EQ(comets, 3);
    EXPECT_EQ(summary.records, 3U);
    EXPECT_THAT(faults, ElementsAre(2, 5));
}

}  // namespace
}  // namespace solsys_io
