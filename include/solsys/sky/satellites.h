/// \file
/// A satellite beside its planet as the observer sees the two.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// The planet's disk at the model's instant.
struct PlanetView {
    Body planet;
    double radius_arcsec = 0;   ///< equatorial
    double polar_ratio = 1;     ///< apparent polar over equatorial radius
    double pole_angle_deg = 0;  ///< position angle of the north pole, from north through east
    double pole_tilt_deg = 0;   ///< of the north pole towards the observer
    double distance_au = 0;
    double illuminated = 1;      ///< fraction of the disk
    double bright_limb_deg = 0;  ///< position angle of the middle of the bright limb
};

struct SatelliteView {
    Body moon;
    double east_arcsec = 0;  ///< from the planet's centre, on the tangent plane of date
    double north_arcsec = 0;
    double x_radii =
        0;  ///< along the equator as projected, east (for a pole up north) positive
    double y_radii = 0;  ///< towards the planet's north pole
    double separation_radii = 0;
    double distance_au = 0;
    bool in_front = false;  ///< nearer than the planet's centre
    bool on_disk = false;   ///< in front of the disk
    bool behind_disk = false;
    bool in_shadow = false;       ///< in the planet's umbra
    bool in_penumbra = false;     ///< in its penumbra, not in the umbra
    bool shadow_on_disk = false;  ///< its own shadow falls on the planet
    /// Where that shadow stands on the disk, in radii along the axes of x and y.
    double shadow_x_radii = 0;
    double shadow_y_radii = 0;
    double radius_radii = 0;  ///< the satellite's own radius; 0 unknown

    /// "on the disk", "behind the disk", "in the shadow" ...; empty when there is nothing to
    /// say.
    [[nodiscard]] SOLSYS_API std::string phenomenon() const;
};

/// Empty when the body cannot be computed at the model's instant.
SOLSYS_API std::optional<PlanetView> view_planet(Model& model, const Body& planet);
SOLSYS_API std::optional<SatelliteView> view_satellite(Model& model, const PlanetView& planet,
                                                       const Body& moon);

/// The satellites of a planet in the catalogue's order: all of them, or those that a small
/// telescope, or the planet's fame, brings to mind. Empty for what has none.
SOLSYS_API std::vector<Body> moons_of(Model& model, const Body& planet, bool all = true);

}  // namespace solsys::sky
