// Units of the typed layer.
#pragma once

namespace solsys::sky {

constexpr double kDegrees = 57.29577951308232;            // per radian
constexpr double kArcsec = 206264.80624709636;            // per radian
constexpr double kLightDaysPerAu = 0.005775518331436995;  // IAU 2012 au, c
constexpr double kAuKm = 149597870.7;
constexpr double kSecondsPerDay = 86400.0;

}  // namespace solsys::sky
