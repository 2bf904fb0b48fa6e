// The matrix between a body-fixed frame and the equator, from the angles of its pole and prime
// meridian. The angle alpha of these functions is 90 degrees minus the right ascension of the
// pole: the third column of the result is the pole, (cos d sin a, cos d cos a, sin d).
#pragma once

#include "core/linalg.h"
#include "solsys/body_rotation.h"

namespace solsys {

// Equator from body-fixed, from an encoded alpha and the sine of the pole's declination. The
// sine of W is the toolkit's fast sine and its cosine is derived from it: good to about 1e-8.
Mat3 body_matrix_from_encoded(double e, double sin_dec, double w);

// The same from plain angles [rad], to rounding.
Mat3 body_matrix_from_angles(double alpha, double delta, double w);

// The same from published elements: alpha = pi/2 - right ascension of the pole.
Mat3 body_matrix_from_pole(double pole_ra, double pole_dec, double w);

}  // namespace solsys
