// solsys selfcheck: recomputes the check values that come with the project.
#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <string>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/selfcheck.h"

namespace app {
namespace {

struct Request {
    Options options;
    bool markdown = false;
};

std::string shown(double value) {
    if (value == 0) return "0";
    return std::fabs(value) >= 0.001 && std::fabs(value) < 1e5 ? fmt::format("{:.4g}", value)
                                                               : fmt::format("{:.1e}", value);
}

void print_markdown(const std::vector<Check>& checks) {
    fmt::print(
        "| quantity | against | cases | worst | rms | unit |\n|---|---|---|---|---|---|\n");
    for (const Check& c : checks)
        fmt::print("| {} | {} | {} | {} | {} | {} |\n", c.quantity, c.against, c.cases,
                   shown(c.worst), shown(c.rms()), c.unit);
}

void print_report(const std::vector<Check>& checks, Format format) {
    Report report({{"quantity", "Quantity"},
                   {"against", "Against"},
                   {"cases", "Cases"},
                   {"worst", "Worst", shown},
                   {"rms", "rms", shown},
                   {"bound", "Bound", shown},
                   {"unit", "Unit"},
                   {"passed", "Passed"}});
    for (const Check& c : checks)
        report.add({c.quantity, c.against, static_cast<long long>(c.cases), c.worst, c.rms(),
                    c.bound, c.unit, c.passed()});
    report.print(format);
}

void run(const Request& request) {
    const Format format = request.options.format();
    std::vector<Check> checks;
    const auto append = [&](std::vector<Check> more) {
        checks.insert(checks.end(), more.begin(), more.end());
    };
    CSWSolSys model;
    open_model(model, request.options);
    append(orientation_checks(model));
    if (model.HasEphemeris()) append(place_checks(model));
    append(table_checks(model));
    append(event_checks(model));
    append(reduction_differences(model));
    if (request.markdown) {
        print_markdown(checks);
    } else {
        print_report(checks, format);
    }
    std::string failed;
    for (const Check& c : checks) {
        if (!c.passed()) failed += (failed.empty() ? "" : "; ") + c.quantity;
    }
    if (!failed.empty()) throw NothingFound("not within their bounds: " + failed);
}

}  // namespace

void add_selfcheck(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "selfcheck", "Recompute the check values that come with the project");
    command->add_flag("--markdown", request->markdown, "Print the table of docs/accuracy.md");
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "Apparent places need a DE405 file: --ephemeris PATH. Exit status 1 when a value is "
        "not\n"
        "met.\n"
        "Examples:\n"
        "  solsys selfcheck\n"
        "  solsys selfcheck --ephemeris de405.bin --markdown");
    command->callback([request] { run(*request); });
}

}  // namespace app
