// Magnitudes of the Sun and the planets under the modern reduction.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/bodies.h"

namespace solsys {

// By Mallama & Hilton 2018 from heliocentric positions [au], J2000 equator. False for other
// bodies, and where one of the two is at the Sun or at the other.
bool modern_magnitude(const Bodies& bodies, int planet, Vec3 body, Vec3 observer, Instant now,
                      float& magnitude);

}  // namespace solsys
