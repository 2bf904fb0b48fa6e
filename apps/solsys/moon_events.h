// The phenomena of a planet's satellites over a span, a row each.
#pragma once

#include "apps/solsys/options.h"

namespace app {

// With `mutual` also those of the satellites among each other. Throws BadInput for a planet
// whose satellites are not followed.
void list_moon_events(const Options& options, const Setting& setting, const sky::Body& planet,
                      bool mutual);

}  // namespace app
