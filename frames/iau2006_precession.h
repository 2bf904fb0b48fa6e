// IAU 2006 precession in the four-angle form of Fukushima and Williams, frame bias included.
// Capitaine & Wallace 2006, Astron. Astrophys. 450, 855; Hilton et al. 2006, Celest. Mech. Dyn.
// Astr. 94, 351.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// [rad]; gamma, phi, psi start from the GCRS, so that the bias is inside them.
struct FukushimaWilliams {
    double gamma, phi, psi;
    double epsilon;  // mean obliquity of date
};
FukushimaWilliams fukushima_williams(Instant tt);

// R1(-(epsilon + d_epsilon)) R3(-(psi + d_psi)) R1(phi) R3(gamma): the GCRS to the equator and
// equinox of date, the mean one without offsets, the true one with the angles of nutation.
Mat3 equator_from_gcrs(const FukushimaWilliams& angles, double d_psi = 0, double d_epsilon = 0);

// Mean equator to true equator of date: R1(-(epsilon + d_epsilon)) R3(-d_psi) R1(epsilon).
Mat3 tod_from_mod_2006(double epsilon, double d_psi, double d_epsilon);

// Greenwich mean sidereal time minus Earth rotation angle [rad].
double gmst_minus_era(Instant tt);

// Obliquity of the ecliptic at J2000.0 [rad].
constexpr double kObliquity2006 = 84381.406 * 4.848136811095359935899141e-6;

}  // namespace solsys
