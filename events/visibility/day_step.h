// One day of an object: from a transit to its rising and setting, and the Sun's twilight.
#pragma once

#include "events/search/span.h"
#include "events/visibility/hour_angle.h"
#include "solsys/visibility.h"

namespace solsys::visibility {

enum class Day {
    kUp,      // the record holds it
    kNotUp,   // it stays below the level
    kUnknown  // the object cannot be computed there
};

// Fills the day whose transit is nearest to `cursor` (JD TT; the record comes zeroed but for
// its identifier) and moves the cursor a day past that transit; half a day on when the object
// is not up, or not known. `height_km`: of the site, for the dip of the horizon.
Day day_step(SkyAt& sky, const Target& target, double height_km, double& cursor,
             VISIBILITY& day);

// Where a search goes on whose object could not be computed (JD TT): at its cursor, unless the
// observer's own body cannot be computed there, which happens outside the span of the theories;
// then where that span begins, or at the end of the search when it is behind.
double next_computable(SkyAt& sky, const search::Span& span);

// Altitude of the horizon of a site [rad]: standard refraction, and the dip of 0.0353 degrees
// per square root of a metre of height (a refracted ray over a sphere; the coefficient of the
// older almanacs, 2.12 arcmin).
double horizon_altitude(double height_km);
// Whether an object rises with its upper limb: the Sun and the Moon.
bool rises_with_its_limb(const SSO_ID& id);
bool is_sun(const SSO_ID& id);

}  // namespace solsys::visibility
