// What a solar eclipse is for the Earth as a whole, from its elements.
#pragma once

#include "events/eclipses/contact_roots.h"
#include "events/eclipses/solar_path.h"

namespace solsys::eclipses {

// Distance of the axis from the limb of the flattened Earth seen along it, negative inside.
double distance_from_limb(const ShadowElements& e);

// The central line at an instant: where the axis meets the ellipsoid. `zeta` is the height of
// that point above the fundamental plane; NaN when it misses.
struct AxisPoint {
    double xi, eta, zeta;
};
bool axis_point(const ShadowElements& e, AxisPoint& out);

// First and last times [hours from t0]; NaN: does not happen.
struct SolarContacts {
    Pair penumbra_outer, penumbra_inner;  // P1 P4, P2 P3
    Pair umbra_outer, umbra_inner;        // U1 U4, U2 U3
    Pair axis;                            // ends of the central line
};
SolarContacts solar_contacts(const SolarPath& path);
Pair central_line(const SolarPath& path);
// When a magnitude is first and last reached anywhere on the Earth.
Pair phase_limits(const SolarPath& path, double magnitude);

struct SolarCircumstances {
    bool exists = false;
    bool central = false;
    short type = 0;  // as in ECLIPSE
    double gamma = 0, magnitude = 0;
    ShadowElements greatest{};
};
SolarCircumstances solar_circumstances(const SolarPath& path);

}  // namespace solsys::eclipses
