// Precession of the mean equator and equinox, IAU 1976.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// Equatorial precession angles [rad] (Lieske et al. 1977, Astron. Astrophys. 58, 1).
struct PrecessionAngles {
    double zeta, z, theta;
};
PrecessionAngles precession_angles(Instant from, Instant to);
Mat3 precession_matrix(const PrecessionAngles& angles);

// Mean equator of `from` to mean equator of `to`.
inline Mat3 precession_matrix(Instant from, Instant to) {
    return precession_matrix(precession_angles(from, to));
}

constexpr Instant kJ2000{kJ2000Day, 0.0};

}  // namespace solsys
