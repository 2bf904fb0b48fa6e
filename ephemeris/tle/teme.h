// From the model's frame to J2000.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// Greenwich mean sidereal time of 1982 [rad, 0 to 2 pi) (Aoki and others 1982, Astron.
// Astrophys. 105, 359): the turn of the Earth-fixed axes against the model's, v_fixed =
// R3(angle) v_teme.
double sidereal_time_1982(Instant ut1);

// v_j2000 = M v_teme at an instant of dynamical time: from the true equator and mean equinox of
// date by the equation of the equinoxes dpsi cos(eps), then back through the nutation and the
// precession that the frames of a model have (IAU 1976; Bretagnon & Simon 1986). What they
// neglect of the nutation, up to 0.5 arcsec, an observer of the model's neglects too, so places
// seen from the ground do not have it.
Mat3 j2000_from_teme(Instant tt);

}  // namespace solsys
