// Pictures of what an eclipse looks like.
#pragma once

#include <string>

#include "solsys/sky/eclipses.h"
#include "solsys/sky/zone.h"

namespace solsys::draw {

// The Moon's way through the Earth's shadow, north up and east left, as in the sky.
std::string moon_in_shadow_svg(sky::Model& model, const sky::Eclipse& eclipse,
                               const sky::Zone& zone, bool light);

// The Sun's disk at the contacts and between them, as a site sees it: north up, east left.
std::string eclipsed_sun_svg(sky::Model& model, const sky::Eclipse& eclipse,
                             const sky::LocalEclipse& local, const sky::Site& site,
                             const sky::Zone& zone, bool light);

}  // namespace solsys::draw
