/// \file
/// What is known of a body itself.
#pragma once

#include <optional>
#include <string>

#include "solsys/export.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// Physical data; empty is what is not known.
struct BodyFacts {
    Body body;                                   ///< whose facts these are
    std::optional<Body> parent;                  ///< what it moves about
    int moons = 0;                               ///< catalogued ones
    std::optional<double> radius_km;             ///< equatorial
    double flattening = 0;                       ///< (equatorial - polar radius) / equatorial
    std::optional<double> gm_km3_s2;             ///< gravitational parameter
    std::optional<double> mass_kg;               ///< from GM, with the Sun's 1.98841e30 kg
    std::optional<double> density_kg_m3;         ///< mean, of the ellipsoid
    std::optional<double> surface_gravity_m_s2;  ///< GM over the equatorial radius squared
    std::optional<double> orbital_period_days;   ///< sidereal
    std::optional<double> rotation_period_days;  ///< sidereal
    std::optional<double> solar_day_days;        ///< mean, from noon to noon
    std::optional<double> pole_ra_deg;           ///< north pole, J2000
    std::optional<double> pole_dec_deg;          ///< likewise
    std::optional<double> prime_meridian_deg;    ///< at the model's instant, [0, 360)
};
/// Of a catalogued body; a Failure for others.
SOLSYS_API Result<BodyFacts> facts_of(Model& model, const Body& body);

}  // namespace solsys::sky
