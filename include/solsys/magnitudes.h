/// \file
/// Visual magnitudes of the built-in bodies, and the illuminated part of a disk.
#pragma once

#include "solsys/export.h"

/// Magnitude of a built-in body.
///
/// \param      observer  heliocentric position of the observer, 3 values [au]
/// \param      body      body number
/// \param      position  heliocentric position of the body, 3 values, same axes [au]
/// \param[out] out       visual magnitude; left alone when 111 is returned
/// \return 0, or 111 for a body that the function does not cover.
///
/// An observer at the body, or a body at the Sun, has magnitude -25.0 (whatever the number);
/// the Sun has its own law, minus infinity at distance 0. Positions that are not finite give a
/// magnitude that is not.
using MagnitudeFn = signed char (*)(const double* observer, int body, const double* position,
                                    float* out);

/// \name Magnitude laws by family
/// Each covers the body numbers named; see `MagnitudeFn`.
/// @{

/// The Sun (10), planets (1-9), dwarf planets (11-14) and the Moon (301).
///
/// Saturn's ring term takes its ring latitude from the heliocentric position as passed, so pass
/// positions whose z axis is Saturn's pole to have the rings seen at their true tilt.
/// Sources: Explanatory Supplement to the Astronomical Almanac, planetary magnitudes; Bowell et
/// al. 1989, in Asteroids II, for the dwarf planets beyond Pluto and Ceres.
SOLSYS_API signed char StarMagPlanet(const double* observer, int body, const double* position,
                                     float* out);
/// 401-402.
SOLSYS_API signed char StarMagMarsSat(const double* observer, int body, const double* position,
                                      float* out);
/// 501-580; the four Galilean moons with their phase terms, which were measured up to the 12
/// degrees seen from the Earth and are evaluated at 12 degrees beyond.
SOLSYS_API signed char StarMagJupSat(const double* observer, int body, const double* position,
                                     float* out);
/// 601-683.
SOLSYS_API signed char StarMagSaturnSat(const double* observer, int body,
                                        const double* position, float* out);
/// 701-727.
SOLSYS_API signed char StarMagUranSat(const double* observer, int body, const double* position,
                                      float* out);
/// 801-814.
SOLSYS_API signed char StarMagNepSat(const double* observer, int body, const double* position,
                                     float* out);
/// 901-905.
SOLSYS_API signed char StarMagPlutoSat(const double* observer, int body, const double* position,
                                       float* out);
/// 1201. The Sun (10) gives 111 like every other number.
SOLSYS_API signed char StarMagErisSat(const double* observer, int body, const double* position,
                                      float* out);
/// 1401-1402.
SOLSYS_API signed char StarMagHaumeaSat(const double* observer, int body,
                                        const double* position, float* out);
/// @}

/// Magnitude of an asteroid in the H-G system.
/// \param r, delta  distances from the Sun and from the observer [au]
/// \param phase     phase angle [rad]; above 120 degrees taken as 120
/// \param h, g      absolute magnitude and slope parameter
/// Source: Bowell et al. 1989, in Asteroids II, 524.
SOLSYS_API float MagnitudeHG(double r, double delta, double phase, float h, float g);

/// Magnitude of a comet, H + 5 log10(delta) + K log10(r).
/// \param r, delta  distances from the Sun and from the observer [au]
/// \param h, k      absolute total magnitude and activity slope (10 for the usual n = 4)
SOLSYS_API float MagnitudeComet(double r, double delta, float h, float k);

/// Phase angle: the angle at the body between the Sun and the observer [degrees].
/// 0 when fully lit; 180 when the observer looks at the night side, and when either distance is
/// 0. \param observer, position  heliocentric positions of observer and body, 3 values each
/// [au]
SOLSYS_API double PhaseAngle(const double* observer, const double* position);

/// Illuminated fraction of a sphere's disk, (1 + cos phase) / 2.
/// \param phase  phase angle [rad]
SOLSYS_API double calcVisibleDiskPart(double phase);

/// Area of a disk that another disk covers, in units of the square of the radii's unit.
/// \param r1, r2  radii of the disk and of the covering disk; negative ones count as 0
/// \param d       distance of the centres
/// \return between 0 and pi r1^2, symmetric in the two disks; 0 when an argument is NaN.
SOLSYS_API double diskCutArea(double r1, double r2, double d);
