// Passages of Mercury and Venus over the disk of the Sun, for the Earth's centre.
#pragma once

#include "events/diary/geocentric_sky.h"

namespace solsys::diary {

struct Transit {
    bool exists = false;
    double greatest = 0;     // least angle of the centres [JD TT]
    double contact[4] = {};  // exterior, interior; interior, exterior [JD TT]; 0: none
};

// The transit about an inferior conjunction, to 0.1 s.
Transit transit_near(GeocentricSky& sky, const SSO_ID& planet, double conjunction);

}  // namespace solsys::diary
