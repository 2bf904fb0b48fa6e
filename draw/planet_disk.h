// A planet's disk with its phase, rings and shadows of satellites.
#pragma once

#include "draw/palette.h"
#include "draw/svg.h"
#include "solsys/sky/satellites.h"

namespace solsys::draw {

// What lies on the page: the disk's centre, and its equatorial radius.
struct DiskOnPage {
    Point centre;
    double radius = 0;
};

void draw_disk(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk,
               const Theme& theme);
// The half of Saturn's rings that lies nearer to the observer than the planet, or the other.
void draw_rings(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk, bool near);
// The shadow that a satellite throws onto the disk.
void draw_shadow(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk,
                 const sky::SatelliteView& moon);

// Where a point in planetary radii, x along the equator and y to the north pole, lies.
Point on_page(const sky::PlanetView& planet, const DiskOnPage& disk, double x_radii,
              double y_radii);

}  // namespace solsys::draw
