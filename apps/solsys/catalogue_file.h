// One object out of a file of orbits: minor planets (MPCORB) or comets, a line each.
#pragma once

#include <string>

#include "apps/solsys/targets.h"

namespace app {

// The object called `object` (a number, name or designation; empty: the only one of the file).
// Of several orbits, that with the epoch nearest to `near`. Lines that hold no orbit are
// reported on standard error with their numbers and skipped. Throws BadInput for a file that
// cannot be read or holds no orbit, NothingFound for an object that is not in it.
Target find_in_file(const std::string& path, const std::string& object, Utc near);

}  // namespace app
