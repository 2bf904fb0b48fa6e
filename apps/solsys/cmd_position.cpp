// solsys position: bodies and stars at one instant or over a span.
#include <memory>

#include "apps/solsys/columns.h"
#include "apps/solsys/commands.h"
#include "apps/solsys/ephemeris_table.h"

namespace app {
namespace {

struct PositionRequest {
    EphemerisRequest ephemeris;
    std::vector<std::string> bodies;
};

void run(const PositionRequest& request) {
    const Setting setting = setting_of(request.ephemeris.options);
    const sky::Instant first = instants_of(request.ephemeris.options, setting).front();
    print_ephemeris(request.ephemeris, setting, bodies_called(request.bodies, first),
                    !request.ephemeris.two_body);
}

}  // namespace

void add_position(CommandLine& main) {
    auto request = std::make_shared<PositionRequest>();
    Command command = main.add(
        "position", "Where bodies and stars are: apparent place, distance, other frames");
    command.words("body", request->bodies,
                  "Names (jupiter, io, vesta, halley, sirius, \"alp Cen\", M31), groups "
                  "(planets, all) or codes (plnt:5, moon:501, hip:32349)",
                  1);
    add_ephemeris_table_options(command, request->ephemeris);
    command.footer(
        "Places are as seen from the Earth's centre, or from the site if one is given.\n"
        "Altitudes in tables are apparent; in JSON altitude_deg is without refraction.\n"
        "Examples:\n"
        "  solsys position sun moon mars --time 2026-12-01T20:00\n"
        "  solsys position venus --from 2026-12-01 --to 2026-12-31 --step 1d --json\n"
        "  solsys position moon --city Paris --frame horizontal\n"
        "  solsys position sirius M31 hip:71683 --time 2026-12-01");
    command.run([request] { run(*request); });
}

}  // namespace app
