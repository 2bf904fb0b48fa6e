// From the fundamental plane to the ground and back.
#pragma once

#include "events/eclipses/solar_path.h"

namespace solsys::eclipses {

struct Place {
    double latitude;   // geodetic [rad]
    double longitude;  // east [rad], (-pi, pi]
};

// The point of the ellipsoid at (xi, eta1, zeta1) with xi^2 + eta1^2 + zeta1^2 = 1, the
// coordinates in which the flattened Earth is a sphere; mu: true hour angle of the axis at
// Greenwich.
Place place_at(double xi, double eta1, double zeta1, const Flattening& earth, double mu,
               double flattening);

// The place nearest to the axis: where the axis meets the ground, else the limb of the Earth in
// the direction of the axis on the fundamental plane (as the canons print it; the point of the
// ellipsoid that is nearest indeed lies up to 0.2 degree along the limb).
Place nearest_place(double x, double y, const Flattening& earth, double mu, double flattening);

// A site on or above the ellipsoid.
struct Site {
    double latitude, longitude;       // geodetic, east [rad]
    double rho_cos_phi, rho_sin_phi;  // geocentric [equatorial radii]
};
Site site_at(double latitude, double longitude, double height_km, const Radii& radii);

// A site on the fundamental frame, and its hourly motion there.
struct Standpoint {
    double xi, eta, zeta;
    double dxi, deta;
    double sin_altitude;  // of the axis above the geodetic horizon
};
Standpoint stand(const Site& site, const ShadowElements& e);

}  // namespace solsys::eclipses
