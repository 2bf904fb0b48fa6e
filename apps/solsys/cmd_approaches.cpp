// solsys approaches: when minor planets and comets come close to the planets and the Moon.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/long_search.h"
#include "apps/solsys/small_body_options.h"
#include "apps/solsys/units.h"
#include "solsys/sky/approaches.h"

namespace app {
namespace {

constexpr double kDefaultApproachSpan = 36525;  // day

struct ApproachesRequest {
    Options options;
    SmallBodyOptions body;
    double within_au = 0.1;
    bool two_body = false;
};

std::vector<Column<sky::Approach>> approach_columns(const Setting& setting) {
    using Row = sky::Approach;
    std::vector<Column<Row>> columns{
        {"id", "", nullptr, [](const Row& r) { return Cell(sky::code_of(r.planet.id)); }},
        {"name", "Planet", nullptr, [](const Row& r) { return Cell(r.planet.name); }}};
    add_instant_columns(
        columns, setting, "time", fmt::format("Time ({})", setting.zone.name()),
        [](const Row& r) { return std::optional(r.time); }, shown_seconds);
    columns.push_back(
        {"distance_au", "Distance au", fixed(7), [](const Row& r) { return r.distance_au; }});
    columns.push_back(
        {"distance_km", "km", fixed(0), [](const Row& r) { return r.distance_au * kAuKm; }});
    columns.push_back(
        {"speed_km_s", "km/s", fixed(3), [](const Row& r) { return r.speed_km_s; }});
    return columns;
}

void run(const ApproachesRequest& request) {
    const Setting setting = setting_of(request.options);
    const sky::Span span = span_of(request.options, setting, kDefaultApproachSpan);
    const std::vector<sky::Body> bodies = small_bodies_of(request.body, span.from);
    if (bodies.size() != 1) throw BadInput("name: one body at a time");
    sky::Model model = model_of(request.options, setting);
    LongSearch search;
    const auto found = need(sky::find_approaches(
        model, bodies.front(), span, {request.within_au, request.two_body, search.progress()}));
    Table<sky::Approach> table(setting.format, approach_columns(setting),
                               setting.context(model));
    for (const sky::Approach& a : found) table.add(a);
    table.finish(fmt::format("{} comes to no planet within {} au in that time",
                             bodies.front().name, request.within_au));
}

}  // namespace

void add_approaches(CommandLine& main) {
    auto request = std::make_shared<ApproachesRequest>();
    Command command = main.add(
        "approaches", "When a minor planet or comet comes close to the planets and the Moon");
    add_small_body_options(command, request->body);
    command.number("--within", request->within_au, {1e-9, 1000}, "Greatest distance [au]");
    command.flag("--two-body", request->two_body,
                 "On the osculating orbit alone, not integrated among the planets");
    add_span_options(command, request->options, "a century on");
    add_zone_option(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "Distances are between centres, geometric; the orbit is integrated among the planets,\n"
        "the Moon, Ceres, Pallas and Vesta. Without --to a century is searched.\n"
        "Examples:\n"
        "  solsys approaches apophis --from 2017-01-01 --to 2040-01-01\n"
        "  solsys approaches 433 --from 1900-01-01 --within 0.3");
    command.run([request] { run(*request); });
}

}  // namespace app
