// The check values are met, and docs/accuracy.md shows what the command prints.
#include <gmock/gmock.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/run_command.h"

namespace {

using support::contents;
using support::run_command;

struct Residual {
    double worst, rms, bound;
};

double number_in(const std::string& cell) { return cell.empty() ? 0 : std::stod(cell); }

// Rows of tables by what they are about: heading, quantity, against, cases, unit.
std::map<std::string, Residual> tables_in(const std::string& text) {
    std::map<std::string, Residual> rows;
    std::istringstream in(text);
    std::string heading;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("### ", 0) == 0) heading = line;
        if (line.rfind("| ", 0) != 0 || line.rfind("| quantity", 0) == 0) continue;
        std::vector<std::string> cells;
        std::istringstream split(line.substr(2));
        for (std::string cell; std::getline(split, cell, '|');) {
            const std::size_t from = cell.find_first_not_of(' ');
            cells.push_back(from == std::string::npos
                                ? ""
                                : cell.substr(from, cell.find_last_not_of(' ') - from + 1));
        }
        if (cells.size() < 7) continue;
        rows[heading + '|' + cells[0] + '|' + cells[1] + '|' + cells[2] + '|' + cells[6]] = {
            number_in(cells[3]), number_in(cells[4]), number_in(cells[5])};
    }
    return rows;
}

// To a tenth, or to a hundredth of the bound: sums of rounding differ from system to system.
void expect_alike(const std::string& row, double documented, double printed, double bound) {
    EXPECT_NEAR(documented, printed,
                std::max(0.1 * std::max(documented, printed), 0.01 * bound))
        << row;
}

TEST(Selfcheck, MeetsEveryBoundAndTheDocumentSaysTheSame) {
    const auto outcome = run_command("selfcheck --markdown --ephemeris " SOLSYS_DE405);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string document = contents("docs/accuracy.md");
    const std::size_t begin = document.find("<!-- solsys selfcheck"),
                      end = document.find("<!-- end -->");
    ASSERT_TRUE(begin < end && end != std::string::npos);
    const auto documented = tables_in(document.substr(begin, end - begin));
    const auto printed = tables_in(outcome.out);
    EXPECT_GE(printed.size(), 50U);
    EXPECT_EQ(documented.size(), printed.size());
    for (const auto& [row, now] : printed) {
        ASSERT_EQ(documented.count(row), 1U) << row << " is not in docs/accuracy.md";
        const Residual& then = documented.at(row);
        EXPECT_EQ(then.bound, now.bound) << row;
        expect_alike(row, then.worst, now.worst, now.bound);
        expect_alike(row, then.rms, now.rms, now.bound);
    }
}

TEST(Selfcheck, WithoutAFileChecksTheRest) {
    const auto outcome = run_command("selfcheck --json");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    int without_bound = 0;
    for (const auto& row : outcome.json()) {
        EXPECT_TRUE(row["passed"].get<bool>()) << row;
        EXPECT_GT(row["cases"].get<int>(), 3) << row;
        without_bound += row["bound"].is_null();
    }
    EXPECT_EQ(without_bound, 11);  // classic minus modern
}

TEST(Selfcheck, RefusesWhatItCannotUse) {
    support::expect_refusal({"selfcheck --ephemeris docs/accuracy.md", "DE405"});
    support::expect_refusal({"selfcheck --markdown --json", "--markdown"});
}

}  // namespace
