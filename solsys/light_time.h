// Light time.
#pragma once

#include <cmath>
#include <limits>

#include "core/instant.h"

namespace solsys {

constexpr double kFarthestLightTime = 36500.0;  // day: beyond it only geometric vectors
constexpr double kLightTimeTolerance = 2e-6;    // day
constexpr int kMaxLightTimeSteps = 20;

// The instant tau days before t, whole days in `day` and the rest, of the sign of a Julian
// date, in `fraction`. Its day is to be in the range of int (`can_be_earlier`).
inline Instant earlier(Instant t, double tau) {
    const double fraction = t.fraction - tau;
    const int day = static_cast<int>(t.day + fraction);
    return {day, (static_cast<double>(t.day) - day) + fraction};
}

// Whether the instant tau days before t has a day number (and tau is a number at all).
inline bool can_be_earlier(Instant t, double tau) {
    return std::fabs(t.day + (t.fraction - tau)) <= std::numeric_limits<int>::max();
}

}  // namespace solsys
