// Short nutation model and mean obliquity: what every frame of the library uses.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "core/sin_cos.h"

namespace solsys {

// [rad]
struct NutationAngles {
    double obliquity;  // mean
    double d_psi;      // nutation in longitude
    double d_epsilon;  // nutation in obliquity

    [[nodiscard]] double true_obliquity() const { return obliquity + d_epsilon; }
};

// The two largest terms (Moon's node; twice the Sun's longitude), and the obliquity of Laskar
// 1986, in the compact form of Bretagnon & Simon 1986.
NutationAngles short_nutation(Instant t);

// Mean equator to true equator of date.
Mat3 nutation_matrix(const NutationAngles& angles);
Mat3 nutation_matrix(double mean_obliquity, SinCos true_obliquity, double d_psi);

// Both evaluations of the IAU 1980 theory (106 terms).
NutationAngles nutation_iau1980(Instant t);
NutationAngles nutation_iau1980_by_recurrence(Instant t);

}  // namespace solsys
