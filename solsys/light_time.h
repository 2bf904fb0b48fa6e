// Light time.
#pragma once

#include <cmath>

#include "core/instant.h"

namespace solsys {

constexpr double kFarthestLightTime = 36500.0;  // day: beyond it only geometric vectors
constexpr double kLightTimeTolerance = 2e-6;    // day
constexpr int kMaxLightTimeSteps = 20;

// The instant tau days before t, whole days in `day` and the rest, of the sign of a Julian
// date, in `fraction`. |tau| is to be far from the range of int.
inline Instant earlier(Instant t, double tau) {
    const double fraction = t.fraction - tau;
    const int day = static_cast<int>(t.day + fraction);
    return {day, (t.day - day) + fraction};
}

// Whether a light time can be taken from a Julian date (and is a number at all).
inline bool usable_light_time(double tau) { return std::fabs(tau) < 1e8; }

}  // namespace solsys
