// Rotation of the Earth about the pole of date, and the pole's motion in the crust.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// Earth rotation angle [rad, 0 to 2 pi) at an instant of UT1 (Capitaine, Guinot & McCarthy
// 2000, Astron. Astrophys. 355, 398). Whole days are dropped before they are multiplied.
double earth_rotation_angle(Instant ut1);

// Rate of the angle [rad per day of UT1].
constexpr double kEarthRotationRate = 1.00273781191135448 * kTwoPi;

// Greenwich apparent sidereal time [rad, 0 to 2 pi): the angle minus the equation of the
// origins.
double greenwich_sidereal_time(Instant ut1, double equation_of_origins);
// Greenwich mean sidereal time of IAU 2006 [rad, 0 to 2 pi).
double mean_sidereal_time_2006(Instant ut1, Instant tt);

// Coordinates of the pole in the terrestrial frame [rad]: x towards Greenwich, y towards 90
// degrees west.
struct PolarMotion {
    double x = 0, y = 0;
};

// W = R1(-y) R2(-x) R3(s'): v_itrs = W R3(gst) v_true. s' = -47e-6 arcsec T is the terrestrial
// counterpart of the CIO locator.
Mat3 polar_motion_matrix(PolarMotion pole, Instant tt);

}  // namespace solsys
