// Sizes and periods of a model's bodies.
#pragma once

#include "core/instant.h"
#include "solsys/bodies.h"

namespace solsys {

inline constexpr double kUnknownQuantity = -1.0;

// Equatorial radius [km]: the catalogue's, the record's, or what stands for the type; -1.0
// unknown.
double equatorial_radius_km(const Bodies& bodies, BodyKey body);

// Sidereal orbital period [day]; -1.0 for an open orbit and for an unknown body.
double orbital_period(const Bodies& bodies, BodyKey body, Instant t);

// Mean day from noon to noon [day] at an instant with such an equator of date; -1.0 when the
// rotation is not known.
double mean_solar_day(const Bodies& bodies, BodyKey body, Instant t,
                      const Mat3& cur_from_j2000);

}  // namespace solsys
