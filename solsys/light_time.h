// Light time.
#pragma once

#include <cmath>

#include "core/instant.h"

namespace solsys {

constexpr double kFarthestLightTime = 36500.0;  // day: beyond it only geometric vectors
constexpr double kLightTimeTolerance = 2e-6;    // day
constexpr int kMaxLightTimeSteps = 20;

// The instant tau days before t.
inline Instant earlier(Instant t, double tau) { return plus(t, -tau); }

// Whether the instant tau days before t has a day number (and tau is a number at all).
inline bool can_be_earlier(Instant t, double tau) {
    return std::fabs(t.day + (t.fraction - tau)) < kLargestDay;
}

}  // namespace solsys
