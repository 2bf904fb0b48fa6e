// solsys orbit: positions of minor planets and comets by their elements.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/ephemeris_table.h"
#include "apps/solsys/failure.h"
#include "solsys/sky/orbits.h"

namespace app {
namespace {

struct Request {
    EphemerisRequest ephemeris;
    std::vector<std::string> names;
    std::optional<std::string> file, object, elements;
};

sky::Body body_of_file(const Request& request, const sky::Instant& first) {
    auto body = sky::find_in_file(*request.file, request.object.value_or(""), first,
                                  [](const std::string& line) { tell(line); });
    if (!body && body.message().starts_with("no '")) throw NothingFound(body.message());
    if (!body && body.message().ends_with("choose one of them"))
        throw BadInput("--object: " + body.message());
    return need(body, "--file");
}

void run(const Request& request) {
    const int sources =
        (request.names.empty() ? 0 : 1) + (request.file ? 1 : 0) + (request.elements ? 1 : 0);
    if (sources != 1) throw BadInput("give one of: names, --file, --elements");
    if (!request.file && request.object) throw BadInput("--object needs a --file");

    const Setting setting = setting_of(request.ephemeris.options);
    const sky::Instant first = instants_of(request.ephemeris.options, setting).front();
    std::vector<sky::Body> bodies;
    for (const std::string& name : request.names)
        bodies.push_back(need(sky::find_small_body(name, first)));
    if (request.file) bodies.push_back(body_of_file(request, first));
    if (request.elements)
        bodies.push_back(need(sky::parse_elements(*request.elements), "--elements"));
    print_ephemeris(request.ephemeris, setting, bodies);
}

}  // namespace

void add_orbit(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command =
        main.add_subcommand("orbit", "Where minor planets and comets are, by their elements");
    command->add_option("name", request->names,
                        "Objects of the built-in sample: vesta, 433, halley, \"c/1995 o1\"");
    add_text_option(*command, "--file", request->file,
                    "File of orbits: minor planets (MPCORB) or comets, a line each");
    add_text_option(*command, "--object", request->object,
                    "Number, name or designation of the one wanted of the file");
    add_text_option(*command, "--elements", request->elements,
                    "KEY=VALUE,...: epoch, a or q [au], e, i, node, peri [deg, J2000 "
                    "ecliptic], M [deg] or tp, H with G or K, name; times in TT");
    add_ephemeris_table_options(*command, request->ephemeris);
    command->footer(
        "Two-body motion: good near the epoch of the elements. How far from it the places\n"
        "are uncertain is in uncertainty_arcsec, and on standard error above an arcminute.\n"
        "Examples:\n"
        "  solsys orbit ceres vesta --time 2022-08-09\n"
        "  solsys orbit --file MPCORB.DAT --object 99942 --from 2029-04-01 --to 2029-04-20\n"
        "  solsys orbit --elements epoch=jd:2459800.5,a=2.7666,e=0.0786,i=10.587,"
        "node=80.266,peri=73.532,M=334.327,H=3.33,G=0.12\n"
        "  solsys orbit --elements tp=2020-07-03.68,q=0.29465,e=0.999178,i=128.9375,"
        "node=61.0104,peri=37.2786,H=7.5,K=13 --time 2020-07-15");
    command->callback([request] { run(*request); });
}

}  // namespace app
