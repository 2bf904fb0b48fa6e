// solsys orbit: positions of minor planets and comets by their elements.
#include <memory>

#include "apps/solsys/commands.h"
#include "apps/solsys/ephemeris_table.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/small_body_options.h"

namespace app {
namespace {

struct OrbitRequest {
    EphemerisRequest ephemeris;
    SmallBodyOptions body;
    bool integrate = false;
};

void run(const OrbitRequest& request) {
    const Setting setting = setting_of(request.ephemeris.options);
    const sky::Instant first = instants_of(request.ephemeris.options, setting).front();
    const bool named = !request.body.names.empty();
    if (named ? request.integrate : request.ephemeris.two_body)
        throw BadInput(named ? "--integrate: the bodies of the sample are integrated anyway"
                             : "--two-body: own elements are on their two-body orbit anyway");
    print_ephemeris(request.ephemeris, setting, small_bodies_of(request.body, first),
                    named ? !request.ephemeris.two_body : request.integrate);
}

}  // namespace

void add_orbit(CommandLine& main) {
    auto request = std::make_shared<OrbitRequest>();
    Command command =
        main.add("orbit", "Where minor planets and comets are, by their elements");
    add_small_body_options(command, request->body);
    command.flag("--integrate", request->integrate,
                 "Orbits of --file and --elements integrated among the planets");
    add_ephemeris_table_options(command, request->ephemeris);
    command.footer(
        "The bodies of the sample are integrated among the planets, orbits of one's own with\n"
        "--integrate. How far the places may be off is in uncertainty_arcsec, and on standard\n"
        "error above an arcminute.\n"
        "Examples:\n"
        "  solsys orbit ceres vesta --time 2022-08-09\n"
        "  solsys orbit --file MPCORB.DAT --object 99942 --from 2029-04-01 --to 2029-04-20\n"
        "  solsys orbit --elements epoch=jd:2459800.5,a=2.767,e=0.0786,i=10.59,node=80.27,"
        "peri=73.53,M=334.3\n"
        "  solsys orbit --time 2020-07-15 \\\n"
        "      --elements tp=2020-07-03.68,q=0.29465,e=0.999178,i=128.94,node=61.01,"
        "peri=37.28,H=7.5,K=13");
    command.run([request] { run(*request); });
}

}  // namespace app
