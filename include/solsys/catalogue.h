/// \file
/// The catalogue of built-in bodies.
#pragma once

#include <cstdint>

#include "solsys/body_rotation.h"
#include "solsys/export.h"
#include "solsys/magnitudes.h"

/// The row of a built-in body, and the number of the next one.
///
/// 229 bodies: the Sun (10), planets 1-9, dwarf planets 11-14, the Moon (301) and the
/// satellites 401-402, 501-580, 601-683, 701-727, 801-814, 901-905, 1201, 1401-1402 (planet x
/// 100 + satellite number). A walk starts with 10 and follows the result until it is -1.
///
/// \param      number          body number
/// \param[out] type            type code of the body, 'plnt' or 'moon'
/// \param[out] parent_type     type code of the body it goes round, 'plnt'
/// \param[out] parent_number   its number; 10 for every 'plnt', the Sun included
/// \param[out] radius_km       equatorial radius [km]
/// \param[out] orbital_period  sidereal orbital period [day]; the Sun: that of the Earth
/// \param[out] rotation_period rotation period [day]; 0 unknown
/// \param[out] flattening      1 - polar radius / equatorial radius
/// \param[out] gm              [au^3/day^2]; 0 unknown
/// \param[out] reserved        0
/// \param[out] magnitude       the body's magnitude law
/// \param[out] rotation        the body's rotation elements
/// \return the next body number of the walk; -1 after the last row (1402); 0 for a number not
///         in the catalogue, and the outputs are then left alone. Null outputs are skipped.
///
/// Radii, periods and GM of the satellites: JPL Solar System Dynamics tables of 2014 to 2023
/// and the works named in data/catalogue/bodies.csv.
SOLSYS_API int GetBodyCatalogueEntry(int number, std::int32_t* type, std::int32_t* parent_type,
                                     std::int32_t* parent_number, double* radius_km,
                                     double* orbital_period, double* rotation_period,
                                     double* flattening, double* gm, double* reserved,
                                     MagnitudeFn* magnitude, RotationElementsFn* rotation);
