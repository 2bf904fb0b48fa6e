// The celestial intermediate origin: its place on the equator of date, from which the Earth's
// rotation is counted.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// s + XY/2 [rad], 66 terms and a polynomial: the slowly varying part of the CIO locator s
// (Capitaine, Wallace & McCarthy 2003, Astron. Astrophys. 406, 1135, for IAU 2006/2000A).
double cio_locator_plus_half_xy(Instant tt);

// Right ascension of the CIO along the true equator of date [rad]: Earth rotation angle minus
// Greenwich apparent sidereal time (Wallace & Capitaine 2006, Astron. Astrophys. 459, 981,
// sect. 9), for v_true = m v_gcrs and the value above.
double equation_of_origins(const Mat3& m, double locator_plus_half_xy);

}  // namespace solsys
