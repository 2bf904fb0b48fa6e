// Units of the tables and of the classic interface in those people read.
#pragma once

namespace app {

inline constexpr double kDegree = 0.017453292519943295;  // rad
inline constexpr double kAuKm = 149597870.7;             // km
inline constexpr double kSecondsPerDay = 86400;

}  // namespace app
