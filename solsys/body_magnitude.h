// Magnitudes of the bodies that have a law of their own.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/bodies.h"
#include "solsys/states.h"

namespace solsys {

// Of the Sun, a planet or a satellite under the model's reduction, from heliocentric positions
// [au], J2000 equator, at the instant of observation. False, and `magnitude` untouched, for
// bodies without a law.
bool magnitude_by_law(const Bodies& bodies, const StateSource& source, Vec3 body, Vec3 observer,
                      Instant now, float& magnitude);

}  // namespace solsys
