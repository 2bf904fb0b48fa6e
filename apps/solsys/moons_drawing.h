// Pictures of a planet with its satellites.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "apps/solsys/civil_time.h"
#include "apps/solsys/satellite_view.h"
#include "apps/solsys/svg.h"
#include "apps/solsys/zone.h"

namespace app {

// One instant of a planet and its satellites.
struct Configuration {
    Utc utc;
    PlanetView planet;
    std::vector<SatelliteView> moons;
};

// The configuration to scale, north up and east to the left as the sky shows it.
Svg draw_configuration(const Configuration& configuration, const std::string& title);

// Paths of the satellites along the planet's equator over a span, time running down: the
// satellites' waves beside the planet's band. East is to the left.
Svg draw_waves(const std::vector<Configuration>& instants, const Zone& zone,
               const std::string& title);

}  // namespace app
