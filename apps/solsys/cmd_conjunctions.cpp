// solsys conjunctions: when bodies meet in the sky.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/typed_options.h"
#include "solsys/sky/conjunctions.h"

namespace app {
namespace {

namespace sky = solsys::sky;

struct Request {
    Options options;
    std::vector<std::string> bodies;
    bool ecliptic = false, closest = false;
    double within = 10;
};

sky::ConjunctionWay way_of(const Request& request) {
    if (request.ecliptic && request.closest)
        throw BadInput("--ecliptic and --closest exclude each other");
    return request.ecliptic  ? sky::ConjunctionWay::kLongitude
           : request.closest ? sky::ConjunctionWay::kClosest
                             : sky::ConjunctionWay::kRightAscension;
}

Report pair_report(sky::Model& model, const Request& request,
                   const std::vector<sky::Body>& bodies, const sky::Span& span,
                   const sky::Zone& zone) {
    Report report({{"first", "First", nullptr},
                   {"second", "Second", nullptr},
                   {"time_utc", "", nullptr},
                   {"", fmt::format("Time ({})", zone.name()), nullptr},
                   {"delta_t_s", "", nullptr},
                   {"separation_deg", "Separation", fixed(4)},
                   {"position_angle_deg", "Pos. angle", fixed(1)},
                   {"elongation_deg", "Elongation", fixed(1)}});
    Interruptible search;
    for (const sky::Conjunction& c :
         sky::conjunctions(model, bodies[0], bodies[1], span, way_of(request), request.within,
                           search.control()))
        report.add({bodies[0].name, bodies[1].name, c.at.iso(0), zone.seconds(c.at),
                    c.at.delta_t_seconds(), c.separation_deg, c.position_angle_deg,
                    c.elongation_deg});
    return report;
}

Report group_report(sky::Model& model, const Request& request,
                    const std::vector<sky::Body>& bodies, const sky::Span& span,
                    const sky::Zone& zone) {
    Report report({{"time_utc", "", nullptr},
                   {"", fmt::format("Closest ({})", zone.name()), nullptr},
                   {"delta_t_s", "", nullptr},
                   {"radius_deg", "Radius", fixed(3)},
                   {"ra_deg", "RA", shown_hours},
                   {"dec_deg", "Dec", shown_degrees},
                   {"from_utc", "", nullptr},
                   {"to_utc", "", nullptr},
                   {"", "From", nullptr},
                   {"", "To", nullptr},
                   {"elongation_deg", "Elongation", fixed(1)}});
    Interruptible search;
    for (const sky::Gathering& g :
         sky::gatherings(model, bodies, span, request.within, search.control()))
        report.add({g.at.iso(0), zone.seconds(g.at), g.at.delta_t_seconds(), g.radius_deg,
                    g.ra_deg, g.dec_deg, g.within.from.iso(0), g.within.to.iso(0),
                    zone.date_time(g.within.from), zone.date_time(g.within.to),
                    g.elongation_deg});
    return report;
}

void run(const Request& request) {
    const Format format = request.options.format();
    const sky::Zone zone = typed_zone(request.options, typed_site(request.options));
    const sky::Span span = typed_span(request.options, zone, 366);
    const std::vector<sky::Body> bodies = typed_bodies(request.bodies, span.from);
    for (std::size_t i = 0; i < bodies.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (bodies[i].id == bodies[j].id)
                throw BadInput(fmt::format("{} is named twice", bodies[i].name));
    if (!(request.within > 0 && request.within <= 60))
        throw BadInput("--within is above 0 and at most 60 degrees");
    sky::Model model = open_sky_model(request.options);
    const Report report = bodies.size() == 2 ? pair_report(model, request, bodies, span, zone)
                                             : group_report(model, request, bodies, span, zone);
    if (report.empty()) throw NothingFound("no conjunction in that span");
    report.print(format);
}

}  // namespace

void add_conjunctions(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "conjunctions", "When two bodies meet in the sky, or several gather");
    command->add_option("bodies", request->bodies, "Two bodies or stars, or more")
        ->required()
        ->expected(2, 10);
    command->add_flag("--ecliptic", request->ecliptic,
                      "In ecliptic longitude, not in right ascension");
    command->add_flag("--closest", request->closest, "Least separation");
    command
        ->add_option("--within", request->within,
                     "Least separations below, gatherings within a radius of [degrees]")
        ->capture_default_str();
    add_span_options(*command, request->options);
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "Seen from the Earth's centre; the position angle is that of the first body from the\n"
        "second. A year from --from, unless --to says otherwise. Three bodies and more: how\n"
        "long they stay within a circle, and when it is smallest.\n"
        "Examples:\n"
        "  solsys conjunctions jupiter saturn --from 2020 --to 2021\n"
        "  solsys conjunctions moon regulus --closest --from 2026-01-01\n"
        "  solsys conjunctions mercury venus jupiter --within 5 --from 2013-05-01");
    command->callback([request] { run(*request); });
}

}  // namespace app
