// solsys orbit: positions of minor planets and comets by their elements.
#include <fmt/format.h>

#include <memory>

#include "apps/solsys/catalogue_file.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/ephemeris_table.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/orbit_elements.h"

namespace app {
namespace {

struct Request {
    EphemerisRequest ephemeris;
    std::vector<std::string> names;
    std::string file, object, elements;
};

void run(const Request& request) {
    const int sources = (request.names.empty() ? 0 : 1) + (request.file.empty() ? 0 : 1) +
                        (request.elements.empty() ? 0 : 1);
    if (sources != 1) throw BadInput("give one of: names, --file, --elements");
    if (request.file.empty() && !request.object.empty())
        throw BadInput("--object needs a --file");

    const Utc first = first_instant(request.ephemeris);
    std::vector<Target> targets;
    for (const std::string& name : request.names)
        targets.push_back(parse_sample_target(name, first));
    if (!request.file.empty())
        targets.push_back(find_in_file(request.file, request.object, first));
    if (!request.elements.empty()) targets.push_back(parse_elements(request.elements));
    print_ephemeris(request.ephemeris, targets);
}

}  // namespace

void add_orbit(CLI::App& main) {
    auto request = std::make_shared<Request>();
    CLI::App* command =
        main.add_subcommand("orbit", "Where minor planets and comets are, by their elements");
    command->add_option("name", request->names,
                        "Objects of the built-in sample: ceres, 433, halley, \"c/1995 o1\"");
    command->add_option("--file", request->file,
                        "File of orbits: minor planets (MPCORB) or comets, a line each");
    command->add_option("--object", request->object,
                        "Number, name or designation of the one wanted of the file");
    command->add_option("--elements", request->elements,
                        "KEY=VALUE,...: epoch, a or q [au], e, i, node, peri [deg, J2000 "
                        "ecliptic], M [deg] or tp, H with G or K, name; times in TT");
    add_ephemeris_table_options(*command, request->ephemeris);
    command->footer(
        "Two-body motion: good near the epoch of the elements.\n"
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
