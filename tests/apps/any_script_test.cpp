// Arguments, paths and what is printed, in letters that no code page holds all of.
#include <gmock/gmock.h>

#include "tests/io/orbit_lines.h"
#include "tests/support/run_command.h"
#include "tests/support/temp_folder.h"

namespace {

using support::run_command;
using testing::HasSubstr;

std::filesystem::path path_of(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

std::string quoted(const std::string& path) { return '"' + path + '"'; }

TEST(AnyScript, InPathsThatAreRead) {
    const TempFolder folder;
    const std::string below = folder / "Εφημερίδες ж";
    std::filesystem::create_directories(path_of(below));
    std::filesystem::copy_file(SOLSYS_DE405, path_of(below + "/дата.bin"));
    for (const std::string& path : {below, below + "/дата.bin"}) {
        const auto row =
            run_command("position mars --time 2026-12-01 --json --ephemeris " + quoted(path))
                .json()
                .at(0);
        EXPECT_EQ(row["source"], "DE file") << path;
    }
    const std::string missing = below + "/нет.bin";
    support::expect_refusal({("ephemeris-info " + quoted(missing)).c_str(), missing.c_str()});

    solsys_io::PrintedPlanet named;
    named.words = "     (1) Cérès";
    const std::string file = folder.write("Bahnen-é.txt", print(named) + "\n");
    const auto orbit = run_command("orbit --object Cérès --json --file " + quoted(file));
    EXPECT_EQ(orbit.json().at(0)["name"], "Cérès");
}

TEST(AnyScript, InPathsThatAreWrittenAndInNames) {
    const TempFolder folder;
    for (const char* line :
         {"sky --city München --time 2026-12-01 --svg ",
          "diary --city \"São Paulo\" --from 2026-12-01 --to 2026-12-03 --ics ",
          "eclipses --solar --from 2026-08 --to 2026-09 --map "}) {
        const std::string path = folder / "Ünï ☾.svg";
        const auto outcome = run_command(line + quoted(path));
        EXPECT_EQ(outcome.status, 0) << line;
        EXPECT_THAT(outcome.err, HasSubstr("wrote " + path));
        EXPECT_GT(std::filesystem::file_size(path_of(path)), 500U) << line;
        std::filesystem::remove(path_of(path));
    }
    EXPECT_THAT(run_command("rise-set sun --city Zürich --from 2026-12-01").out,
                HasSubstr("Zürich"));
    support::expect_refusal({"position jupitér☾ --time 2026-12-01", "jupitér☾"});
}

}  // namespace
