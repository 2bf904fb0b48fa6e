// solsys constellation: which constellation holds a direction.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/angles.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/constellations.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/options.h"
#include "apps/solsys/place.h"

namespace app {
namespace {

struct Request {
    Options options;
    std::string ra, dec;
};

void run(const Request& request) {
    const double ra = parse_right_ascension(request.ra);
    const double dec = parse_declination(request.dec);
    const bool of_date = !request.options.time.empty();
    const Format format = request.options.format();

    CSWSolSys model;
    open_model(model, request.options);
    double ra_of_date = ra;
    double dec_of_date = dec;
    if (of_date) {
        move_to(model, tt_from_utc(parse_time(request.options.time)));
    } else {
        move_to(model, {2451545, 0.0});
        // By way of the ecliptic of date, which both equators know.
        const double ra_j2000 = ra / kDegrees;
        const double dec_j2000 = dec / kDegrees;
        double lon = 0;
        double lat = 0;
        model.FromRAToEclAng(true, &ra_j2000, &dec_j2000, &lon, &lat);
        model.FromEclAngToRA(false, &lon, &lat, &ra_of_date, &dec_of_date);
        ra_of_date *= kDegrees;
        dec_of_date *= kDegrees;
    }
    const Constellation& found = constellation_at(model, ra_of_date, dec_of_date);
    Report report({{"ra_deg", "RA", shown_hours},
                   {"dec_deg", "Dec", shown_degrees},
                   {"equinox", "Equinox", nullptr},
                   {"constellation", "Con", nullptr},
                   {"constellation_name", "Constellation", nullptr}});
    report.add({ra, dec, std::string(of_date ? "of date" : "J2000"),
                std::string(found.abbreviation), std::string(found.name)});
    report.print(format);
}

}  // namespace

void add_constellation(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command =
        main.add_subcommand("constellation", "Which constellation holds a direction");
    command
        ->add_option("ra", request->ra, "Right ascension: degrees, 5h35m17s or 5:35:17 (hours)")
        ->required();
    command->add_option("dec", request->dec, "Declination: degrees, -5d23m28s or -5:23:28")
        ->required();
    command->add_option("--time", request->options.time,
                        "The direction is on the true equator of this date (without: J2000)");
    add_output_options(*command, request->options);
    command->footer(
        "Boundaries are those of Delporte (1930).\n"
        "Examples:\n"
        "  solsys constellation 83.82 -5.39\n"
        "  solsys constellation 5h35m17s -5d23m28s\n"
        "  solsys constellation 18:36:56 +38:47 --time 2026-12-01");
    command->callback([request] { run(*request); });
}

}  // namespace app
