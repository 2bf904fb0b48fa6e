// A place of what the layers below answer.
#pragma once

#include "sky/units.h"
#include "solsys/sky/places.h"

namespace solsys::sky {

// Right ascension and declination in radians.
inline Place place_of(double distance_au, double ra, double dec) {
    return {ra * kDegrees, dec * kDegrees, distance_au, distance_au * kLightDaysPerAu};
}

}  // namespace solsys::sky
