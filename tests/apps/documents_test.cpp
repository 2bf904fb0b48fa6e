// What help, README and documents promise: every example runs, every key is documented.
#include <gmock/gmock.h>

#include <regex>
#include <set>
#include <sstream>

#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::contents;
using support::run_command;

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::vector<std::string> matches(const std::string& text, const std::string& pattern) {
    std::vector<std::string> found;
    const std::regex regex(pattern);
    for (std::sregex_iterator m(text.begin(), text.end(), regex), end; m != end; ++m)
        found.push_back((*m)[1]);
    return found;
}

std::vector<std::string> subcommands() {
    std::vector<std::string> names;
    const std::string help = run_command("--help").out;
    for (const std::string& line : lines_of(help.substr(help.find("Subcommands:"))))
        for (const std::string& name : matches(line, "^  ([a-z-]+) ")) names.push_back(name);
    return names;
}

// The arguments of each line that calls the command.
std::vector<std::string> examples_in(const std::string& text) {
    std::vector<std::string> found;
    const std::string joined = std::regex_replace(text, std::regex(R"(\\\n *)"), " ");
    for (const std::string& line : lines_of(joined))
        for (const std::string& arguments : matches(line, R"(^ *(?:\S+/)?solsys ([a-z][^#]*))"))
            found.push_back(arguments);
    return found;
}

TEST(Documents, EveryExampleRuns) {
    const TempFolder folder;
    std::set<std::string> examples;
    const auto take = [&](const std::string& text) {
        for (const std::string& example : examples_in(text)) examples.insert(example);
    };
    const auto names = subcommands();
    EXPECT_GE(names.size(), 13U);
    for (const std::string& name : names) {
        const std::string help = run_command(name + " --help").out;
        EXPECT_THAT(lines_of(help), testing::Each(testing::SizeIs(testing::Le(100)))) << name;
        take(help);
    }
    EXPECT_THAT(lines_of(run_command("--help").out),
                testing::Each(testing::SizeIs(testing::Le(100))));
    take(contents("README.md"));
    const auto before = examples.size();
    take(contents("quickstart"));
    EXPECT_GT(examples.size(), before);
    for (const auto& file : std::filesystem::recursive_directory_iterator("docs"))
        if (file.path().extension() == ".md") take(contents(file.path()));
    EXPECT_GE(examples.size(), 40U);
    const std::regex written(R"(([\w/]+\.(svg|ics|png|kml|geojson))\b)");
    for (std::string example : examples) {
        if (example.find("MPCORB.DAT") != std::string::npos) continue;  // nobody's own file
        example = std::regex_replace(example, written, folder.path() + "/$1");
        example = std::regex_replace(example, std::regex(R"(de405\.bin)"), SOLSYS_DE405);
        const auto outcome = run_command(example);
        EXPECT_EQ(outcome.status, 0) << example << '\n' << outcome.err;
        EXPECT_FALSE(outcome.out.empty() && outcome.err.empty()) << example;
    }
}

// One call at least for each shape that rows have.
constexpr const char* kRows[] = {
    "position ceres --city Oslo",
    "position mars --frame ecliptic",
    "position mars --frame heliocentric",
    "sky --city Oslo",
    "tonight --city Oslo",
    "rise-set sun --city Oslo",
    "rise-set sun --city Oslo --by-time",
    "rise-set moon --city Oslo --best",
    "rise-set --calendar 2026-12 --city Oslo",
    "moons jupiter",
    "moons jupiter --events --from 2026-12-01",
    "info jupiter",
    "diary --from 2026-12-01 --city Oslo",
    "conjunctions venus jupiter --from 2026 --to 2027",
    "conjunctions venus jupiter mars --from 2026 --to 2028 --within 30",
    "occultations --city Oslo --from 2026-01-01 --to 2026-02-01",
    "eclipses --city Oslo --from 2026 --to 2027",
    "approaches apophis --from 2029 --to 2030",
    "tle data/catalogue/element_sets_sample.txt --city Oslo --from 2006-06-27 --to 2006-06-28",
    "constellation sirius",
    "ephemeris-info " SOLSYS_DE405,
    "selfcheck",
};

TEST(Documents, EveryKeyStandsInTheTableOfKeysAndNoOther) {
    const std::string text = contents("docs/command.md");
    std::set<std::string> documented;
    for (const std::string& line : lines_of(text.substr(text.find("## Keys"))))
        for (const std::string& cell : matches(line, R"(^\| (`[^|]*)\|)"))
            for (const std::string& key : matches(cell, "`([^`]+)`")) documented.insert(key);
    std::set<std::string> printed;
    for (const char* call : kRows) {
        const auto rows = run_command(std::string(call) + " --json").json();
        ASSERT_FALSE(rows.empty()) << call;
        for (const auto& [key, value] : rows[0].items()) {
            const std::size_t stem = key.rfind("_local");
            const bool beside =
                stem != std::string::npos && rows[0].contains(key.substr(0, stem) + "_utc");
            if (!beside) printed.insert(key);
        }
    }
    std::vector<std::string> differ;
    std::set_symmetric_difference(printed.begin(), printed.end(), documented.begin(),
                                  documented.end(), std::back_inserter(differ));
    EXPECT_THAT(differ, testing::IsEmpty());
}

}  // namespace
