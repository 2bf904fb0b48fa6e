// solsys conjunctions: when bodies meet in the sky.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/long_search.h"
#include "solsys/sky/conjunctions.h"

namespace app {
namespace {

struct ConjunctionsRequest {
    Options options;
    std::vector<std::string> bodies;
    bool ecliptic = false, closest = false;
    double within = 10;
};

sky::ConjunctionWay way_of(const ConjunctionsRequest& request) {
    if (request.ecliptic && request.closest)
        throw BadInput("--ecliptic and --closest exclude each other");
    return request.ecliptic  ? sky::ConjunctionWay::kLongitude
           : request.closest ? sky::ConjunctionWay::kClosest
                             : sky::ConjunctionWay::kRightAscension;
}

// A quantity that the searches' results hold under a member.
template <class Row>
Column<Row> number(const char* name, const char* title, Shown format, double Row::*member) {
    return {name, title, std::move(format), [member](const Row& row) { return row.*member; }};
}
template <class Row>
Column<Row> delta_t_column() {
    return {"delta_t_s", "", nullptr, [](const Row& row) { return row.at.delta_t_seconds(); }};
}

void list_pairs(sky::Model& model, const ConjunctionsRequest& request,
                const std::vector<sky::Body>& bodies, const sky::Span& span,
                const Setting& setting) {
    using Row = sky::Conjunction;
    std::vector<Column<Row>> columns{
        {"first", "First", nullptr, [&](const Row&) { return Cell(bodies[0].name); }},
        {"second", "Second", nullptr, [&](const Row&) { return Cell(bodies[1].name); }}};
    add_time_columns(columns, setting, fmt::format("Time ({})", setting.zone.name()));
    columns.push_back(delta_t_column<Row>());
    columns.push_back(number("separation_deg", "Separation", fixed(4), &Row::separation_deg));
    columns.push_back(
        number("position_angle_deg", "Pos. angle", fixed_round(1), &Row::position_angle_deg));
    columns.push_back(
        number("elongation_deg", "Elongation", shown_elongation, &Row::elongation_deg));
    LongSearch search;
    Table<Row> table(setting.format, columns, setting.context(model));
    for (const Row& row : sky::conjunctions(model, bodies[0], bodies[1], span, way_of(request),
                                            request.within, search.control()))
        table.add(row);
    table.finish("no conjunction in that span");
}

void list_gatherings(sky::Model& model, const ConjunctionsRequest& request,
                     const std::vector<sky::Body>& bodies, const sky::Span& span,
                     const Setting& setting) {
    using Row = sky::Gathering;
    std::vector<Column<Row>> columns;
    add_time_columns(columns, setting, fmt::format("Closest ({})", setting.zone.name()));
    columns.push_back(delta_t_column<Row>());
    columns.push_back(number("radius_deg", "Radius", fixed(3), &Row::radius_deg));
    columns.push_back(number("ra_deg", "RA", shown_hours, &Row::ra_deg));
    columns.push_back(number("dec_deg", "Dec", shown_degrees, &Row::dec_deg));
    add_instant_columns(
        columns, setting, "from", "From",
        [](const Row& row) { return std::optional(row.within.from); }, shown_minutes);
    add_instant_columns(
        columns, setting, "to", "To",
        [](const Row& row) { return std::optional(row.within.to); }, shown_minutes);
    columns.push_back(
        number("elongation_deg", "Elongation", shown_elongation, &Row::elongation_deg));
    LongSearch search;
    Table<Row> table(setting.format, columns, setting.context(model));
    for (const Row& row :
         sky::gatherings(model, bodies, span, request.within, search.control()))
        table.add(row);
    table.finish(fmt::format("these are never within a circle of {} degrees in that span",
                             request.within));
}

void run(const ConjunctionsRequest& request) {
    const Setting setting = setting_of(request.options);
    const sky::Span span = span_of(request.options, setting, 366);
    const std::vector<sky::Body> bodies = bodies_called(request.bodies, span.from);
    for (std::size_t i = 0; i < bodies.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (bodies[i].id == bodies[j].id)
                throw BadInput(fmt::format("bodies: {} is named twice", bodies[i].name));
    sky::Model model = model_of(request.options, setting);
    for (const sky::Body& body : bodies) make_known(model, body);
    bodies.size() == 2 ? list_pairs(model, request, bodies, span, setting)
                       : list_gatherings(model, request, bodies, span, setting);
}

}  // namespace

void add_conjunctions(CommandLine& main) {
    auto request = std::make_shared<ConjunctionsRequest>();
    Command command =
        main.add("conjunctions", "When two bodies meet in the sky, or several gather");
    command.words("bodies", request->bodies, "Two bodies or stars, or more", 2, 10);
    command.flag("--ecliptic", request->ecliptic,
                 "In ecliptic longitude, not in right ascension");
    command.flag("--closest", request->closest, "Least separation");
    command.number("--within", request->within, {1e-6, 60.0},
                   "Least separations below, gatherings within a radius of [degrees]");
    add_span_options(command, request->options, "a year on");
    add_zone_option(command, request->options);
    add_model_options(command, request->options);
    add_output_options(command, request->options);
    command.footer(
        "Seen from the Earth's centre; the position angle is that of the first body from the\n"
        "second. Three bodies and more: how long they stay within a circle, and when it is\n"
        "smallest.\n"
        "Examples:\n"
        "  solsys conjunctions jupiter saturn --from 2020 --to 2021\n"
        "  solsys conjunctions moon regulus --closest --from 2026-01-01\n"
        "  solsys conjunctions mercury venus jupiter --within 5 --from 2013-05-01");
    command.run([request] { run(*request); });
}

}  // namespace app
