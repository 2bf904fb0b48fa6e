// Where on the ground the edge of a cone passes at its farthest: the points that see a given
// phase as their greatest.
// Source: Explanatory Supplement to the Astronomical Almanac (1992), on eclipses.
#pragma once

#include "events/eclipses/ground.h"

namespace solsys::eclipses {

// A cone about the axis: radius a + b zeta at height zeta, `da` the hourly change of a.
struct Cone {
    double a, da, b;
};
// The edge of the umbra, and where `magnitude` (0: the edge of the penumbra) is reached.
Cone umbral_cone(const ShadowElements& e);
Cone magnitude_cone(const ShadowElements& e, double magnitude);
// The part k (0 to 1) of the penumbra.
Cone part_of_penumbra(const ShadowElements& e, double k);

struct GroundPoint {
    double xi, eta1, zeta1;  // on the sphere of the flattened Earth
    double eta, zeta;
};
// Of the edge, at angle q about the axis; false when it misses the Earth. The point is then
// that at height 0.
bool on_edge(const ShadowElements& e, const Cone& cone, double q, GroundPoint& out);

// The motion of the axis against a point of the ground [per hour], and the point's change of
// height.
struct Motion {
    double u, v, dzeta;
};
Motion motion_at(const ShadowElements& e, const GroundPoint& p);

enum class Side { kNorth, kSouth };  // left and right of the shadow's motion

// The point of the edge where the distance from the axis less the cone's radius is stationary.
// `q` is the first guess when it is a number, and the angle found afterwards.
bool limit_point(const ShadowElements& e, const Cone& cone, Side side, double& q,
                 GroundPoint& out);

}  // namespace solsys::eclipses
