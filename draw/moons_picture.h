// Pictures of a planet with its satellites.
#pragma once

#include <string>
#include <vector>

#include "draw/svg.h"
#include "solsys/sky/satellites.h"
#include "solsys/sky/zone.h"

namespace solsys::draw {

// One instant of a planet and its satellites.
struct Configuration {
    sky::Instant at;
    sky::PlanetView planet;
    std::vector<sky::SatelliteView> moons;
};

// The configuration to scale, north up and east to the left as the sky shows it; where an outer
// satellite makes the planet tiny, with an enlarged inset of its neighbourhood.
Svg draw_configuration(const Configuration& configuration, const std::string& title,
                       bool light = false);

// Paths of the satellites along the planet's equator over a span, time running down: the
// satellites' waves beside the planet's band. East is to the left.
Svg draw_waves(const std::vector<Configuration>& instants, const sky::Zone& zone,
               const std::string& title, bool light = false);

}  // namespace solsys::draw
