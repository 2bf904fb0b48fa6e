// Positions of bodies at one instant or over a span, in the frame asked for: what `position`
// and `orbit` print.
#pragma once

#include <string>
#include <vector>

#include "apps/solsys/options.h"

namespace app {

struct EphemerisRequest {
    Options options;
    std::string frame = "apparent";
    bool two_body = false;
};

void add_ephemeris_table_options(Command& command, EphemerisRequest& request);

// Prints a row for each body and instant, bodies with elements `integrated` among the planets
// or on their two-body orbits. Throws BadInput.
void print_ephemeris(const EphemerisRequest& request, const Setting& setting,
                     const std::vector<sky::Body>& bodies, bool integrated);

}  // namespace app
