// Inner satellites and Triton: ellipses that precess uniformly.
#pragma once

#include "ephemeris/satellites/equinoctial.h"

namespace solsys::satellites {

enum class EllipseFrame { j2000, b1950, neptune };

// One row of data/satellites/precessing_ellipses.csv, in the units of the computation.
struct PrecessingEllipse {
    int body;
    EllipseFrame frame;
    double epoch_jd;
    double a;                                   // au
    double h, k, p, q;                          // at the epoch; p and q with the tangent of I/2
    double l;                                   // rad at the epoch
    double apsis_rate, mean_motion, node_rate;  // rad/day
    Mat3 equator_from_plane;  // J2000; frame neptune: from the invariable plane
    double tilt;              // rad
};

// The ellipse of a body, null if it has none.
const PrecessingEllipse* find_ellipse(int body);

// The state [au, au/day], J2000 equator. The velocity is that of the ellipse at rest.
int ellipse_state(const PrecessingEllipse& ellipse, Instant t, State& state);

}  // namespace solsys::satellites
