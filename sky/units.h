// Units of the typed layer.
#pragma once

#include "core/constants.h"

namespace solsys::sky {

constexpr double kDegrees = 57.29577951308232;            // per radian
constexpr double kArcseconds = 206264.80624709636;        // per radian
constexpr double kLightDaysPerAu = 0.005775518331436995;  // IAU 2012 au, c
constexpr double kSunRadiusKm = 696000;                   // as the model has it
constexpr double kUnixEpochJd = 2440587.5;                // 1970 January 1, 0h UTC

}  // namespace solsys::sky
