// Maps of eclipses: a picture, and files for maps of other makers.
#pragma once

#include <string>

#include "solsys/sky/eclipses.h"

namespace solsys::draw {

// The world with all curves, the globe seen from above greatest eclipse, and a legend.
std::string eclipse_map_svg(const sky::EclipseMap& map, bool light);

// RFC 7946: a FeatureCollection; lines cut at the date line, the path of the umbra as a
// polygon where it has both limits, rings right-handed.
std::string eclipse_map_geojson(const sky::EclipseMap& map);

// KML 2.2 with a folder for each kind of curve.
std::string eclipse_map_kml(const sky::EclipseMap& map);

}  // namespace solsys::draw
