// A year at a site: a row for each night from noon to noon, the date running down; darkness and
// twilight in blues, the Moon's light in ivory.
#pragma once

#include "draw/svg.h"
#include "solsys/sky/site.h"
#include "solsys/sky/year.h"

namespace solsys::draw {

Svg draw_year(const sky::NightsOfYear& year, const sky::Site& site, const sky::Zone& zone,
              bool light = false);

}  // namespace solsys::draw
