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
    Body planet;                 ///< which
    double radius_arcsec = 0;    ///< equatorial
    double polar_ratio = 1;      ///< apparent polar over equatorial radius
    double pole_angle_deg = 0;   ///< position angle of the north pole, from north through east
    double pole_tilt_deg = 0;    ///< of the north pole towards the observer
    double distance_au = 0;      ///< from the observer
    double illuminated = 1;      ///< fraction of the disk
    double bright_limb_deg = 0;  ///< position angle of the middle of the bright limb
};

/// A satellite against the disk of its planet, and what happens to it.
struct SatelliteView {
    Body moon;                ///< which
    double east_arcsec = 0;   ///< from the planet's centre, on the tangent plane of date
    double north_arcsec = 0;  ///< likewise
    double x_radii =
        0;  ///< along the equator as projected, east (for a pole up north) positive
    double y_radii = 0;  ///< towards the planet's north pole
    double separation_radii =
        0;                     ///< from the planet's centre; radii are the planet's equatorial
    double distance_au = 0;    ///< from the observer
    bool in_front = false;     ///< nearer than the planet's centre
    bool on_disk = false;      ///< in front of the disk
    bool behind_disk = false;  ///< hidden by the planet
    bool in_shadow = false;    ///< in the planet's umbra
    bool in_penumbra = false;  ///< in its penumbra, not in the umbra
    bool shadow_on_disk = false;  ///< its own shadow falls on the planet
    double shadow_x_radii = 0;    ///< where that shadow stands, along the axis of `x_radii`
    double shadow_y_radii = 0;    ///< and along that of `y_radii`
    double radius_radii = 0;      ///< the satellite's own radius; 0 unknown

    /// "on the disk", "behind the disk", "in the shadow" ...; empty when there is nothing to
    /// say.
    [[nodiscard]] SOLSYS_API std::string phenomenon() const;
};

/// At the model's instant for its observer. Empty when the planet cannot be computed there.
SOLSYS_API std::optional<PlanetView> view_planet(Model& model, const Body& planet);
/// A satellite of the planet of `view_planet`, at the same instant. Shadows fall as they did
/// when the light left; the Sun has a radius of 696,000 km. Empty when the satellite cannot be
/// computed. The model stays.
SOLSYS_API std::optional<SatelliteView> view_satellite(Model& model, const PlanetView& planet,
                                                       const Body& moon);

/// The satellites of a planet in the catalogue's order: all of them, or those that a small
/// telescope, or the planet's fame, brings to mind. Empty for what has none.
SOLSYS_API std::vector<Body> moons_of(Model& model, const Body& planet, bool all = true);

}  // namespace solsys::sky
