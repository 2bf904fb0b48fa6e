/// \file
/// Refraction of the Earth's atmosphere, both ways, and the dip of the horizon.
#pragma once

#include <optional>

#include "solsys/export.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// The air at a site.
struct Air {
    double pressure_hpa = 1010;    ///< at the site, not reduced to sea level
    double temperature_c = 10;     ///< at the site
    double humidity = 0;           ///< relative, 0 to 1
    double wavelength_um = 0.574;  ///< of the light, micrometres
};

/// The air of the standard atmosphere at a height above the sea [m]: 1013.25 hPa and 15 degrees
/// Celsius at the sea.
[[nodiscard]] SOLSYS_API Air standard_air(double height_m);

/// The air itself, or what is wrong with it: 0 to 1200 hPa, -100 to 60 degrees Celsius,
/// humidity 0 to 1, 0.2 to 20 micrometres.
[[nodiscard]] SOLSYS_API Result<Air> checked_air(const Air& air);

/// A column of air over a site.
struct Atmosphere {
    Air air{};                 ///< at the site
    double latitude_deg = 45;  ///< of the site, geodetic
    double height_m = 0;       ///< of the site above the sea
};

/// Altitudes [deg] below which no ray arrives: asked for a lower one, the functions here answer
/// nothing.
inline constexpr double kLowestApparentAltitude = -1.0;

/// The short formulas: what is added to the true altitude, subtracted from the apparent one
/// [deg]. Pressure and temperature by the factor (P/1010)(283/(273 + t)), as the formulas have
/// it, P in hPa and t in degrees Celsius.
///
/// Against the integral: within 10 arcsec from an altitude of 5 degrees upward; at the horizon
/// within 71 arcsec in ordinary air (1010 hPa, 10 Celsius), within 150 arcsec in air from -20
/// to 35 Celsius. Sources: Bennett 1982, J.
/// Navigation 35, 255; Saemundsson 1986, Sky and Telescope 72, 70. \return nothing below an
/// apparent altitude of -1 degree or for what is not finite
[[nodiscard]] SOLSYS_API std::optional<double> refraction_of_apparent_short(
    double apparent_deg, const Air& air = {});
/// The same for a true altitude.
[[nodiscard]] SOLSYS_API std::optional<double> refraction_of_true_short(double true_deg,
                                                                        const Air& air = {});

/// The integral along the ray through a two-layer atmosphere (temperature falling by 6.5 K per
/// km to 11 km, constant above), with the zenith distance as variable.
///
/// Within 0.007 arcsec of the converged integral down to -1 degree. The real atmosphere differs
/// from any model by seconds of arc at 5 degrees and by minutes at the horizon. Sources:
/// Hohenkerk & Sinclair 1985, NAO Technical Note 63; Auer & Standish 2000, Astron. J. 119,
/// 2472. \return nothing below an apparent altitude of -1 degree, above 90, for what is not
/// finite, or for air out of range
[[nodiscard]] SOLSYS_API std::optional<double> refraction_of_apparent(
    double apparent_deg, const Atmosphere& atmosphere);
/// The same for a true altitude: its apparent one within 1e-7 degree.
[[nodiscard]] SOLSYS_API std::optional<double> refraction_of_true(double true_deg,
                                                                  const Atmosphere& atmosphere);

/// How far the apparent horizon lies below the horizontal [deg] for an eye so many metres above
/// land or sea: the ray that grazes the ground, bent as the air bends it. 0 for heights that
/// are not positive; nothing above 10 km or for air out of range.
[[nodiscard]] SOLSYS_API std::optional<double> dip_of_horizon(double above_ground_m,
                                                              const Atmosphere& atmosphere);

/// The true altitude [deg] of what is seen on that horizon: below the dip by the refraction of
/// a ray that grazes the ground. -0.56 degree for an eye on the ground in ordinary air; empty
/// as above.
[[nodiscard]] SOLSYS_API std::optional<double> true_altitude_of_horizon(
    double above_ground_m, const Atmosphere& atmosphere);

/// What is known of the air decides: with an atmosphere the integral, else the short formulas.
[[nodiscard]] SOLSYS_API std::optional<double> apparent_altitude(
    double true_deg, const std::optional<Atmosphere>& atmosphere);
/// The other way round.
[[nodiscard]] SOLSYS_API std::optional<double> true_altitude(
    double apparent_deg, const std::optional<Atmosphere>& atmosphere);

}  // namespace solsys::sky
