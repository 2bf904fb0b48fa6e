// The sine of an object's altitude, and how fast it changes. Instants are JD TT; what cannot be
// computed is NaN.
#pragma once

#include "events/search/sky_at.h"

namespace solsys::visibility {

// What rates are differences over [day].
inline constexpr double kHalfSecond = 5.787037037037037e-06;

double sine_of_altitude(search::SkyAt& sky, const SSO_ID& id, double jd_tt);
// Of the sine [1/day]: its difference over half a second.
double altitude_rate(search::SkyAt& sky, const SSO_ID& id, double jd_tt);
// From north through east, 0 to 2 pi.
double azimuth(search::SkyAt& sky, const SSO_ID& id, double jd_tt);

}  // namespace solsys::visibility
