// Minor planets and comets as several subcommands take them: by name, from a file, as elements.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/solsys/options.h"
#include "solsys/sky/body.h"

namespace app {

struct SmallBodyOptions {
    std::vector<std::string> names;
    std::optional<std::string> file, object, elements;
};

void add_small_body_options(Command& command, SmallBodyOptions& options);
// --file, --object, --elements alone, for commands whose names may be of anything.
void add_orbit_options(Command& command, SmallBodyOptions& options);

// Of several orbits of a body that with the epoch nearest to an instant. Throws BadInput, and
// NothingFound for an object that the file does not hold.
// The one of --file or --elements, if there is one.
std::optional<sky::Body> own_orbit_of(const SmallBodyOptions& options,
                                      const sky::Instant& near);
std::vector<sky::Body> small_bodies_of(const SmallBodyOptions& options,
                                       const sky::Instant& near);

}  // namespace app
