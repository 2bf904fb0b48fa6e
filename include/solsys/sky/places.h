/// \file
/// Where a body stands: apparent, astrometric, over the horizon, in the usual frames.
#pragma once

#include <array>
#include <optional>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// A direction on an equator, and how far.
struct Place {
    double ra_deg = 0;           ///< [0, 360)
    double dec_deg = 0;          ///< [-90, 90]
    double distance_au = 0;      ///< NaN: not known
    double light_time_days = 0;  ///< likewise
};

/// All of these are at the model's instant for its observer, and take a body's own record (star
/// or elements) with it. Empty when the body cannot be computed there: unknown, or outside the
/// span of the ephemeris.
///
/// Apparent: light time, aberration, under the modern reduction the deflection of light; true
/// equator and equinox of date. Stars with proper
/// motion, parallax and aberration; without a known parallax their distance is NaN.
SOLSYS_API std::optional<Place> apparent_place(Model& model, const Body& body);
/// Astrometric: light time alone (stars: proper motion and parallax), mean equator and equinox
/// of J2000, to be compared with a catalogue.
SOLSYS_API std::optional<Place> astrometric_place(Model& model, const Body& body);
/// Heliocentric position [au] and velocity [au/day], J2000 equator, geometric. Empty for stars.
SOLSYS_API std::optional<std::array<double, 6>> heliocentric_state(Model& model,
                                                                   const Body& body);

/// Over the horizon of the model's site.
struct Horizontal {
    double azimuth_deg = 0;   ///< from north through east, [0, 360)
    double altitude_deg = 0;  ///< geometric: without refraction
};
/// Of an apparent place. Unless the model was told of the Earth's rotation (earth_rotation.h)
/// UT serves as UT1: 15 arcsec of azimuth for each second between them. For the altitude at
/// which the body is seen see refraction.h.
SOLSYS_API Horizontal horizontal_of(const Model& model, const Place& apparent);

/// A longitude in [0, 360) and a latitude.
struct LonLat {
    double lon_deg = 0;  ///< [0, 360)
    double lat_deg = 0;  ///< [-90, 90]
};
/// Of an apparent place, on the true ecliptic and equinox of date.
SOLSYS_API LonLat ecliptic_of(const Model& model, const Place& apparent);
/// Of an apparent place, in galactic coordinates.
SOLSYS_API LonLat galactic_of(const Model& model, const Place& apparent);
/// From J2000 mean equator to the true equator of date, without light time and aberration.
SOLSYS_API Place of_date(const Model& model, const Place& j2000);

}  // namespace solsys::sky
