// Positions of targets at one instant or over a span, in the frame asked for: what `position`
// and `orbit` print.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "apps/solsys/options.h"
#include "apps/solsys/targets.h"

namespace app {

struct EphemerisRequest {
    Options options;
    std::string frame = "apparent";
};

void add_ephemeris_table_options(CLI::App& command, EphemerisRequest& request);

// The instant that an orbit should fit best: the first one asked for.
Utc first_instant(const EphemerisRequest& request);

// Prints a row for each target and instant. Throws BadInput.
void print_ephemeris(const EphemerisRequest& request, const std::vector<Target>& targets);

}  // namespace app
