// A satellite beside its planet as the observer sees the two.
#pragma once

#include <string>
#include <vector>

#include "solsys/solar_system.h"

namespace app {

// The planet's disk at the model's instant.
struct PlanetView {
    SSO_ID id;
    double radius_arcsec = 0;   // equatorial
    double polar_ratio = 1;     // apparent polar over equatorial radius
    double pole_angle_deg = 0;  // position angle of the north pole, from north through east
    double pole_tilt_deg = 0;   // of the north pole towards the observer
    double distance_au = 0;
};

struct SatelliteView {
    SSO_ID id;
    double east_arcsec = 0;  // from the planet's centre, on the tangent plane of date
    double north_arcsec = 0;
    double x_radii = 0;  // along the equator as projected, east (for a pole up north) positive
    double y_radii = 0;  // towards the planet's north pole
    double separation_radii = 0;
    bool in_front = false;  // nearer than the planet's centre
    bool on_disk = false;   // in front of the disk
    bool behind_disk = false;
    bool in_shadow = false;       // in the planet's umbra
    bool in_penumbra = false;     // in its penumbra, not in the umbra
    bool shadow_on_disk = false;  // its own shadow falls on the planet

    // "transit", "occulted", "eclipsed" ...; empty when there is nothing to say.
    [[nodiscard]] std::string phenomenon() const;
};

PlanetView view_planet(CSWSolSys& model, const SSO_ID& planet);
SatelliteView view_satellite(CSWSolSys& model, const PlanetView& planet, const SSO_ID& moon);

}  // namespace app
