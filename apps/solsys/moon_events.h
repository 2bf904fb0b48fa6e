// The list of phenomena of a planet's satellites.
#pragma once

#include <string>

#include "apps/solsys/options.h"

namespace app {

void list_moon_events(const Options& options, const std::string& planet, bool mutual);

}  // namespace app
