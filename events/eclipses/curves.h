// The curves of a solar eclipse on the ground.
#pragma once

#include <vector>

#include "events/eclipses/limit_point.h"
#include "events/eclipses/solar_circumstances.h"
#include "solsys/eclipses.h"

namespace solsys::eclipses {

using Curves = std::vector<EclipseCurve>;

EclipsePoint ground_point(const SolarPath& path, double h, const ShadowElements& e, double xi,
                          double eta1, double zeta1);

// Where the greatest phase comes at sunrise or sunset, on one side of the path.
Curves maximum_at_horizon(const SolarPath& path, Pair span, Side side);

// Where the greatest phase is the edge of a cone: its points from one end on the horizon to the
// other, one curve or more. `span` has all times at which the cone touches the Earth.
using ConeAt = Cone (*)(const ShadowElements& e, double parameter);
Curves limit_curves(const SolarPath& path, Pair span, ConeAt cone, double parameter, Side side);

Curves central_line(const SolarPath& path, Pair span);
Curves rise_set_curves(const SolarPath& path, const SolarContacts& contacts);
// The points that have their greatest phase at one instant, from north to south.
Curves isochrone(const SolarPath& path, double h);

// Duration, width and the rest at a point of the central line; false beside the Earth.
bool path_point(const SolarPath& path, double h, EclipsePathPoint& out);
// The instant of the longest duration.
double longest(const SolarPath& path, Pair line);

}  // namespace solsys::eclipses
