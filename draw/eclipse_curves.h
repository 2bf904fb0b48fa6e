// What the pictures and the files of an eclipse's map share.
#pragma once

#include <string>
#include <vector>

#include "draw/globe.h"
#include "solsys/sky/eclipses.h"

namespace solsys::draw {

std::vector<LonLat> line_of(const sky::MapCurve& curve);

// The band of the umbra: its northern limit there, its southern one back. Empty when the umbra
// has not exactly one limit on each side.
std::vector<LonLat> umbral_band(const sky::EclipseMap& map);

// "Total solar eclipse of 1999 August 11".
std::string title_of(const sky::Eclipse& eclipse);
// "1999 August 11".
std::string date_text(const sky::Instant& t);
// "3 min 12 s".
std::string duration_text(double seconds);
// "65.22° N, 25.25° W".
std::string place_text(const sky::GroundPoint& place);

}  // namespace solsys::draw
