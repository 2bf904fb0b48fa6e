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
};

void add_ephemeris_table_options(Command& command, EphemerisRequest& request);

// Prints a row for each body and instant. Throws BadInput.
void print_ephemeris(const EphemerisRequest& request, const Setting& setting,
                     const std::vector<sky::Body>& bodies);

}  // namespace app
