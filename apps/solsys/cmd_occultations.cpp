// solsys occultations: stars and planets covered by the Moon.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/typed_options.h"
#include "solsys/sky/occultations.h"

namespace app {
namespace {

namespace sky = solsys::sky;

struct Request {
    Options options;
    double faintest = 5;
    bool all = false;
};

Cell magnitude_cell(double magnitude) {
    Cell cell;
    if (magnitude < 90) cell = magnitude;
    return cell;
}

void run(const Request& request) {
    const Format format = request.options.format();
    const auto site = typed_site(request.options);
    if (!site) throw BadInput("a place is needed: --city NAME or --site LAT,LON");
    const sky::Zone zone = typed_zone(request.options, site);
    const sky::Span span = typed_span(request.options, zone, 31);
    sky::Model model = open_sky_model(request.options);
    model.observe_from(*site);
    sky::OccultationOptions options;
    options.faintest_star = request.faintest;
    options.observable_only = !request.all;

    Report report({{"id", "", nullptr},
                   {"name", "Body", nullptr},
                   {"magnitude", "Mag", fixed(1)},
                   {"contact", "Contact", nullptr},
                   {"time_utc", "", nullptr},
                   {"", fmt::format("Time ({})", zone.name()), nullptr},
                   {"delta_t_s", "", nullptr},
                   {"position_angle_deg", "Pos. angle", fixed(0)},
                   {"cusp_angle_deg", "Cusp", fixed(0)},
                   {"cusp", "", nullptr},
                   {"limb", "Limb", nullptr},
                   {"graze", "Graze", nullptr},
                   {"moon_altitude_deg", "Moon alt", fixed(1)},
                   {"moon_azimuth_deg", "az", fixed(0)},
                   {"sun_altitude_deg", "Sun alt", fixed(0)},
                   {"moon_illuminated", "Lit", fixed(2)}});
    Interruptible search;
    for (const sky::LunarOccultation& o :
         sky::lunar_occultations(model, span, options, search.control()))
        report.add({sky::code_of(o.body.id), o.body.name, magnitude_cell(o.magnitude),
                    std::string(sky::to_string(o.contact)), o.at.iso(0), zone.seconds(o.at),
                    o.at.delta_t_seconds(), o.position_angle_deg, o.cusp_angle_deg,
                    std::string(o.north_cusp ? "N" : "S"),
                    std::string(o.dark_limb ? "dark" : "bright"), o.graze, o.moon_altitude_deg,
                    o.moon_azimuth_deg, o.sun_altitude_deg, o.moon_illuminated});
    if (report.empty()) throw NothingFound("no occultation in that span");
    if (format == Format::kTable)
        fmt::print("Occultations by the Moon at {} (times: {})\n\n", site->name, zone.name());
    report.print(format);
}

}  // namespace

void add_occultations(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command = main.add_subcommand(
        "occultations", "Stars and planets that the Moon covers for a site");
    command
        ->add_option("--faintest", request->faintest, "Stars down to this magnitude (to 5.0)")
        ->capture_default_str();
    command->add_flag("--all", request->all, "By day and below the horizon, too");
    add_span_options(*command, request->options);
    add_site_options(*command, request->options);
    add_ephemeris_option(*command, request->options);
    add_output_options(*command, request->options);
    command->footer(
        "A month from --from, unless --to says otherwise. Position angles count on the Moon's\n"
        "limb from north through east, cusp angles from the nearer cusp into the dark side.\n"
        "Examples:\n"
        "  solsys occultations --city London --from 2026-01-01\n"
        "  solsys occultations --site 51.48,0 --from 2015 --to 2018 --faintest 1.5");
    command->callback([request] { run(*request); });
}

}  // namespace app
