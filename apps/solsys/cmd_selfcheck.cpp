// solsys selfcheck: recomputes the check values that come with the project.
#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <string>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/selfcheck.h"
#include "solsys/de_ephemeris.h"

namespace app {
namespace {

struct SelfcheckRequest {
    Options options;
    bool markdown = false;
};

struct CheckRow {
    const CheckGroup* group;
    const Check* check;
};

std::string shown(double value) {
    if (value == 0) return "0";
    const double size = std::fabs(value);
    return size >= 0.001 && size < 1e5 ? fmt::format("{:.3g}", value)
                                       : fmt::format("{:.1e}", value);
}

bool has_bound(const Check& check) { return std::isfinite(check.bound); }

std::vector<Column<CheckRow>> columns() {
    return {
        {"group", "", nullptr, [](const CheckRow& r) { return Cell(r.group->title); }},
        {"quantity", "Quantity", nullptr, [](const CheckRow& r) { return r.check->quantity; }},
        {"against", "", nullptr, [](const CheckRow& r) { return r.check->against; }},
        {"cases", "Cases", nullptr,
         [](const CheckRow& r) { return static_cast<long long>(r.check->cases); }},
        {"worst", "Worst", shown, [](const CheckRow& r) { return r.check->worst; }},
        {"rms", "rms", shown, [](const CheckRow& r) { return r.check->rms(); }},
        {"bound", "Bound", shown,
         [](const CheckRow& r) { return has_bound(*r.check) ? Cell(r.check->bound) : Cell(); }},
        {"unit", "Unit", nullptr, [](const CheckRow& r) { return r.check->unit; }},
        {"passed", "", nullptr, [](const CheckRow& r) { return r.check->passed(); }}};
}

void print_markdown(const std::vector<CheckGroup>& groups) {
    for (const CheckGroup& group : groups) {
        fmt::print("### {}\n\n| quantity | against | cases | worst | rms | bound | unit |\n",
                   group.title);
        fmt::print("|---|---|---|---|---|---|---|\n");
        for (const Check& c : group.checks)
            fmt::print("| {} | {} | {} | {} | {} | {} | {} |\n", c.quantity, c.against, c.cases,
                       shown(c.worst), shown(c.rms()), has_bound(c) ? shown(c.bound) : "",
                       c.unit);
        fmt::print("\n");
    }
}

void print_report(const std::vector<CheckGroup>& groups, Format format) {
    Table<CheckRow> table(format, columns());
    for (const CheckGroup& group : groups)
        for (const Check& check : group.checks) table.add({&group, &check});
    table.finish();
}

// On DE405, whose states the recorded places were made from.
void add_file_checks(const std::string& path, const Positions& theory,
                     const std::vector<SplitDate>& instants, std::vector<CheckGroup>& groups) {
    const auto header = DE_Ephemeris::readHeader(path.c_str());
    if (!header || header->de_number != 405)
        throw BadInput("--ephemeris: the recorded places are those of DE405; give its file");
    sky::Model model = need(sky::Model::open(path), "--ephemeris");
    CSWSolSys& file = model.classic();
    groups.push_back(theory_against_file(theory, positions_of_ten(file, instants)));
    groups.push_back(classic_place_checks(file));
    groups.push_back(modern_place_checks(file));
    groups.push_back(reduction_differences(file));
}

std::vector<CheckGroup> all_checks(const Options& options) {
    std::vector<CheckGroup> groups;
    const auto instants = spread_instants(400);
    Positions of_theory;
    {
        sky::Model model = need(sky::Model::open());
        CSWSolSys& theory = model.classic();
        groups = {orientation_checks(theory), table_checks(theory), theory_checks(theory),
                  event_checks(theory)};
        if (!options.ephemeris) {
            groups.push_back(reduction_differences(theory));
            return groups;
        }
        of_theory = positions_of_ten(theory, instants);
    }
    add_file_checks(*options.ephemeris, of_theory, instants, groups);
    return groups;
}

void run(const SelfcheckRequest& request) {
    const Format format = request.options.format();
    if (request.markdown && format != Format::kTable)
        throw BadInput("--markdown is a form of its own: leave --json and --csv away");
    const std::vector<CheckGroup> groups = all_checks(request.options);
    request.markdown ? print_markdown(groups) : print_report(groups, format);
    std::string failed;
    for (const CheckGroup& group : groups)
        for (const Check& check : group.checks)
            if (!check.passed()) failed += (failed.empty() ? "" : "; ") + check.quantity;
    if (!failed.empty()) throw NothingFound("not within their bounds: " + failed);
}

}  // namespace

void add_selfcheck(CommandLine& main) {
    auto request = std::make_shared<SelfcheckRequest>();
    Command command =
        main.add("selfcheck", "Recompute the check values that come with the project");
    command.text("--ephemeris", request->options.ephemeris,
                 "File of DE405, for the places that need it");
    command.flag("--markdown", request->markdown, "Print the tables of docs/accuracy.md");
    add_output_options(command, request->options);
    command.footer(
        "Differences from recorded values: of other libraries, of published tables. Without\n"
        "a bound: the classic reduction less the modern one. Exit status 1 when a bound is "
        "not\n"
        "kept.\n"
        "Examples:\n"
        "  solsys selfcheck\n"
        "  solsys selfcheck --ephemeris de405.bin --markdown");
    command.run([request] { run(*request); });
}

}  // namespace app
