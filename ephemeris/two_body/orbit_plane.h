// The orbit in its own plane, X towards perihelion and Y 90 degrees ahead, and that plane in
// space.
#pragma once

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "ephemeris/two_body/kepler_equation.h"

namespace solsys {

enum class Conic { ellipse, parabola, hyperbola };

// A NaN counts as an ellipse: its iterations end without convergence.
inline Conic conic_of(double e) {
    if (std::fabs(e - 1) <= kParabolicBand) return Conic::parabola;
    return e > 1 ? Conic::hyperbola : Conic::ellipse;
}

// The quantities that `Elements` and every catalogue record share. The mean anomaly, or
// Barker's quantity, is M0 + n (t - epoch).
struct OrbitShape {
    double q;  // semi-major axis of an ellipse, perihelion distance otherwise [au]
    double e;
    double n;   // [rad/day]
    double M0;  // [rad]
};

// Days since the perihelion nearest the epoch, M0 taken from [0, 2 pi) to (-pi, pi].
inline double time_since_perihelion(double t, double epoch, double M0, double n) {
    const double M = M0 > kPi ? M0 - kTwoPi : M0;
    return t - (epoch - M / n);
}

// The eccentric anomaly at mean anomaly M of an ellipse, `tau` days from perihelion; `tau`
// matters in the near-parabolic case only.
Anomaly eccentric_anomaly(double mu, double a, double e, double M, double tau);

// The mean anomaly of a hyperbola `dt` days from its epoch, a negative. The mean motion is the
// one that follows from mu.
double hyperbolic_mean_anomaly(double mu, double a, double dt, double M0);

// Where the body is in its plane.
struct PlanePosition {
    double X, Y;
    double r;
};

inline PlanePosition on_ellipse(double a, double e, double cos_E, double sin_E) {
    return {a * (cos_E - e), a * std::sqrt(1 - e * e) * sin_E, a * (1 - e * cos_E)};
}
// a negative.
inline PlanePosition on_hyperbola(double a, double e, double cosh_H, double sinh_H) {
    return {-a * (e - cosh_H), -a * std::sqrt(e * e - 1) * sinh_H, -a * (e * cosh_H - 1)};
}
// s: tangent of half the true anomaly.
inline PlanePosition on_parabola(double q, double s) {
    return {q * (1 - s * s), 2 * q * s, q * (1 + s * s)};
}

// An orbit's plane by its inclination and node. The two directions at the argument of latitude
// u, given by its cosine and sine: away from the focus, and 90 degrees ahead.
struct OrbitPlane {
    double cos_node, sin_node, cos_i, sin_i;

    [[nodiscard]] Vec3 radial(double cos_u, double sin_u) const {
        return {cos_u * cos_node - sin_u * sin_node * cos_i,
                sin_u * cos_node * cos_i + cos_u * sin_node, sin_u * sin_i};
    }
    [[nodiscard]] Vec3 transverse(double cos_u, double sin_u) const {
        return {-sin_u * cos_node - cos_u * sin_node * cos_i,
                cos_u * cos_node * cos_i - sin_u * sin_node, cos_u * sin_i};
    }
};

inline OrbitPlane orbit_plane(double i, double node) {
    return {std::cos(node), std::sin(node), std::cos(i), std::sin(i)};
}

// Velocity at true anomaly nu from the radial and transverse directions there; p is the
// semi-latus rectum.
inline Vec3 conic_velocity(double mu, double p, double e, double cos_nu, double sin_nu,
                           Vec3 radial, Vec3 transverse) {
    return std::sqrt(mu / p) * (e * sin_nu * radial + (1 + e * cos_nu) * transverse);
}

}  // namespace solsys
