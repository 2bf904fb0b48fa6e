// The picture of the visible hemisphere.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::contents;
using support::run_command;

struct Point {
    double x = 0, y = 0;
};
struct Text {
    Point at;
    double size = 0;
    bool centred = false;
    std::string words;
};

constexpr Point kZenith{500, 572};
constexpr double kHorizon = 432;

std::string draw(const std::string& arguments) {
    const TempFolder folder;
    const std::string file = folder / "sky.svg";
    const auto outcome = run_command("sky " + arguments + " --svg " + file);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return contents(file);
}

// Every element closes in order, and every attribute is quoted.
void expect_well_formed(const std::string& svg) {
    static const std::regex tag(
        R"re(<(/?)([A-Za-z]+)((?:\s+[A-Za-z0-9-]+="[^"<]*")*)\s*(/?)>)re");
    std::vector<std::string> open;
    std::size_t end = 0;
    for (std::sregex_iterator it(svg.begin(), svg.end(), tag), none; it != none; ++it) {
        const auto start = static_cast<std::size_t>(it->position());
        const std::string between = svg.substr(end, start - end);
        ASSERT_EQ(between.find_first_of("<>"), std::string::npos) << between;
        end = start + static_cast<std::size_t>(it->length());
        if ((*it)[1].length() > 0) {
            ASSERT_FALSE(open.empty());
            ASSERT_EQ(open.back(), (*it)[2]);
            open.pop_back();
        } else if ((*it)[4].length() == 0) {
            open.push_back((*it)[2]);
        }
    }
    EXPECT_TRUE(open.empty());
    static const std::regex not_finite(R"re([" ,-](nan|inf)[" ,])re");
    EXPECT_FALSE(std::regex_search(svg, not_finite));
}

std::vector<Text> texts_of(const std::string& svg) {
    static const std::regex text(
        R"re(<text x="([-0-9.]+)" y="([-0-9.]+)" font-size="([0-9.]+)"([^>]*)>([^<]*)</text>)re");
    std::vector<Text> texts;
    for (std::sregex_iterator it(svg.begin(), svg.end(), text), none; it != none; ++it)
        texts.push_back({{std::stod((*it)[1]), std::stod((*it)[2])},
                         std::stod((*it)[3]),
                         (*it)[4].str().find("middle") != std::string::npos,
                         (*it)[5]});
    return texts;
}

// Where a body belongs on the page, from the altitude and azimuth that the table has.
Point on_page(const nlohmann::json& row) {
    const double r = kHorizon * (90 - row["altitude_deg"].get<double>()) / 90;
    const double a = row["azimuth_deg"].get<double>() * std::acos(-1.0) / 180;
    return {kZenith.x - r * std::sin(a), kZenith.y - r * std::cos(a)};
}

class SkyChart : public testing::TestWithParam<const char*> {};

TEST_P(SkyChart, NamesWhatIsUpBesideItAndNothingElse) {
    const std::string svg = draw(GetParam());
    expect_well_formed(svg);
    std::map<std::string, Text> named;
    for (const Text& text : texts_of(svg)) named[text.words] = text;
    for (const char* point : {"N", "E", "S", "W"}) EXPECT_TRUE(named.contains(point));
    EXPECT_LT(named["E"].at.x, named["W"].at.x);
    EXPECT_LT(named["N"].at.y, named["S"].at.y);

    for (const auto& row : run_command(std::string("sky --json ") + GetParam()).json()) {
        const std::string name = row["name"];
        if (name == "Pluto") continue;
        ASSERT_EQ(named.contains(name), row["above_horizon"].get<bool>()) << name;
        if (!named.contains(name)) continue;
        const Point at = on_page(row);
        // Beside it, or with a line to it: at most 96 and a label's width away.
        EXPECT_LT(std::hypot(named[name].at.x - at.x, named[name].at.y - at.y), 190) << name;
    }
}

TEST_P(SkyChart, LabelsStayApartAndInside) {
    struct Box {
        double left, top, right, bottom;
        std::string words;
    };
    std::vector<Box> boxes;
    for (const Text& text : texts_of(draw(GetParam()))) {
        if (!text.centred ||
            std::hypot(text.at.x - kZenith.x, text.at.y - kZenith.y) > kHorizon)
            continue;
        // Half of the size is less than any letter but the narrowest takes.
        const double half = 0.25 * text.size * static_cast<double>(text.words.size());
        boxes.push_back({text.at.x - half, text.at.y - 0.75 * text.size, text.at.x + half,
                         text.at.y, text.words});
    }
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const Box &a = boxes[i], &b = boxes[j];
            EXPECT_FALSE(a.left < b.right && b.left < a.right && a.top < b.bottom &&
                         b.top < a.bottom)
                << a.words << " and " << b.words;
        }
        for (const double x : {boxes[i].left, boxes[i].right})
            EXPECT_LT(std::hypot(x - kZenith.x, boxes[i].bottom - kZenith.y), kHorizon)
                << boxes[i].words;
    }
}

INSTANTIATE_TEST_SUITE_P(All, SkyChart,
                         testing::Values("--city Greenwich --time 2026-02-20T19:30",
                                         "--city Sydney --time 2025-06-01T10:30",
                                         "--city Nairobi --time 2026-08-12T12:30",
                                         "--city Tokyo --time 2025-08-12T18:30",
                                         "--site 69.65,18.96 --time 2026-12-24T10:30",
                                         "--site 90,0 --time 2000-05-05",
                                         "--site -89.9,0 --time 2000-05-05"));

// The brightest star of the sky stands where the command says, drawn larger than all others.
TEST(SkyChartStars, SiriusIsTheLargestAndInItsPlace) {
    const std::string where = " --city Greenwich --time 2026-02-20T21:30";
    const std::string svg = draw(where);
    const Point sirius = on_page(run_command("position sirius --json" + where).json().at(0));
    static const std::regex star(
        R"re(<circle cx="([-0-9.]+)" cy="([-0-9.]+)" r="([0-9.]+)" fill="#[0-9a-f]+" fill-opacity="(1.00|0.[4-9][0-9]*)"/>)re");
    double largest = 0;
    Point at;
    int stars = 0;
    for (std::sregex_iterator it(svg.begin(), svg.end(), star), none; it != none;
         ++it, ++stars) {
        const double radius = std::stod((*it)[3]);
        if (radius > largest) {
            largest = radius;
            at = {std::stod((*it)[1]), std::stod((*it)[2])};
        }
    }
    EXPECT_NEAR(at.x, sirius.x, 0.02);
    EXPECT_NEAR(at.y, sirius.y, 0.02);
    // Half of the 1608 stars of the list, more or less, are above any horizon.
    EXPECT_GT(stars, 600);
    EXPECT_LT(stars, 1000);
    // By day none.
    EXPECT_FALSE(std::regex_search(draw("--city Greenwich --time 2026-06-20T12:00"), star));
}

// The Moon's bright limb points along the great circle to the Sun.
TEST(SkyChartMoon, IsLitOnTheSideOfTheSun) {
    for (const char* time : {"2026-02-20T19:00", "2026-01-26T20:00", "2026-04-10T04:00"}) {
        const std::string where = std::string(" --city Madrid --time ") + time;
        const auto rows = run_command("sky --json" + where).json();
        const std::string svg = draw(where);
        std::smatch moon;
        static const std::regex path(
            R"re(class="moon" transform="translate\(([-0-9.]+) ([-0-9.]+)\) rotate\(([-0-9.]+)\)")re");
        ASSERT_TRUE(std::regex_search(svg, moon, path)) << time;

        // The great circle's start, from the two places, by the vectors to them.
        const double degree = std::acos(-1.0) / 180;
        const auto direction = [&](const nlohmann::json& row) {
            const double h = row["altitude_deg"].get<double>() * degree;
            const double a = row["azimuth_deg"].get<double>() * degree;
            return std::array<double, 3>{std::cos(h) * std::cos(a), std::cos(h) * std::sin(a),
                                         std::sin(h)};
        };
        const auto m = direction(rows[1]);
        const auto s = direction(rows[0]);
        const double along = m[0] * s[0] + m[1] * s[1] + m[2] * s[2];
        double step[3];
        for (int i = 0; i < 3; ++i) step[i] = m[i] + 1e-4 * (s[i] - along * m[i]);
        nlohmann::json beside;
        beside["altitude_deg"] = std::atan2(step[2], std::hypot(step[0], step[1])) / degree;
        beside["azimuth_deg"] = std::atan2(step[1], step[0]) / degree;
        const Point from = on_page(rows[1]);
        const Point to = on_page(beside);
        const double turn = std::atan2(to.y - from.y, to.x - from.x) / degree;
        EXPECT_NEAR(std::remainder(std::stod(moon[3]) - turn, 360), 0, 1) << time;
        EXPECT_NEAR(std::stod(moon[1]), from.x, 0.02);
    }
}

TEST(SkyChartFile, ThatCannotBeWrittenEndsWithStatus2) {
    const auto outcome = run_command("sky --svg /no/such/folder/sky.svg");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

}  // namespace
