// One day of an object: from a transit to its rising and setting, and the Sun's twilight.
#pragma once

#include "events/visibility/track.h"
#include "solsys/visibility.h"

namespace solsys::visibility {

// Fills the day whose transit is nearest to `cursor` (JD, dynamical; the record comes zeroed
// but for its identifier) and moves the cursor a day past that transit. False, and half a day
// on, when the object stays below the level or cannot be computed. `height_km`: of the site,
// for the dip of the horizon.
bool day_step(Track& track, double height_km, double& cursor, VISIBILITY& day);

}  // namespace solsys::visibility
