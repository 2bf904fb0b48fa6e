// Apparent place of a star under the modern reduction.
#pragma once

#include "core/instant.h"
#include "solsys/reduction.h"
#include "solsys/star_place.h"

namespace solsys {

// What the place of a star needs of its observer: all from the barycentre of the solar system.
struct BarycentricObserver {
    Vec3 position;              // [au]
    Vec3 beta;                  // velocity over that of light
    double reciprocal_lorentz;  // sqrt(1 - |beta|^2)
    const DeflectingBodies& bodies;
};

// Proper motion to the instant at which the light passed the barycentre, parallax, deflection,
// aberration; axes of the catalogue (ICRS).
StarPlace modern_star_place(const StarObject& star, Instant tdb,
                            const BarycentricObserver& observer);

}  // namespace solsys
