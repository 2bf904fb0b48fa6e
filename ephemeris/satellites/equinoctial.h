// From orbital elements without singularities to position and velocity; and what the theories
// of the satellites share besides.
#pragma once

#include <cmath>

#include "core/constants.h"
#include "core/instant.h"
#include "core/linalg.h"

namespace solsys::satellites {

// Codes of the exported operations.
constexpr int kOk = 0;
constexpr int kInvalid = -1;
constexpr int kNoConvergence = -1000;

// Osculating ellipse. z = k + i h = e exp(i varpi), zeta = q + i p = sin(I/2) exp(i Omega).
struct EquinoctialElements {
    double a;  // semi-major axis [au]
    double n;  // mean motion [rad/day]; negative for a retrograde orbit written as a direct one
    double l;  // mean longitude [rad], any number of turns
    double k, h;
    double q, p;
};

// State in the frame of the elements [au, au/day]. kInvalid, and nothing is written, for what
// is no ellipse (e >= 1, sin(I/2) > 1, or not a number).
int state_of(const EquinoctialElements& elements, State& state);

// Days since an epoch whose Julian date is a whole or half day.
constexpr double days_since(double epoch_jd, Instant t) {
    return (t.day - epoch_jd) + t.fraction;
}

// The theories answer within 4e9 days of J2000 and refuse whatever is farther, or is no
// number: every split date that makes sense is inside, and no argument inside is too large for
// the sine.
inline bool in_reach(Instant t) { return std::fabs(days_since_j2000(t)) < 4e9; }

// km^3/s^2 to au^3/day^2.
constexpr double gm_in_au(double gm_km3_s2, double au_km) {
    return gm_km3_s2 * (kSecondsPerDay * kSecondsPerDay) / (au_km * au_km * au_km);
}

}  // namespace solsys::satellites
