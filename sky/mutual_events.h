// Satellites that pass before each other, or through each other's shadows.
#pragma once

#include <vector>

#include "sky/search_scope.h"
#include "solsys/sky/phenomena.h"

namespace solsys::sky {

void add_mutual_events(SearchScope& scope, const std::vector<Body>& moons,
                       std::vector<SatellitePhenomenon>& found);

}  // namespace solsys::sky
