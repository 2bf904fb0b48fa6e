// Motion in the orbit's plane with rates, for the records that carry P and Q.
#pragma once

#include "ephemeris/two_body/orbit_plane.h"

namespace solsys {

// Position and rate in the plane.
struct PlaneState {
    double X, Y;
    double X_rate, Y_rate;
    bool converged;
};

// The mean motion is the record's.
inline PlaneState ellipse_state(const OrbitShape& orbit, double cos_E, double sin_E,
                                bool converged) {
    const auto [X, Y, r] = on_ellipse(orbit.q, orbit.e, cos_E, sin_E);
    const double k = orbit.n * orbit.q * orbit.q / r;
    return {X, Y, -k * sin_E, k * std::sqrt(1 - orbit.e * orbit.e) * cos_E, converged};
}
inline PlaneState hyperbola_state(const OrbitShape& orbit, Anomaly H) {
    const double a = orbit.q / (1 - orbit.e);
    const double sinh_H = std::sinh(H.value), cosh_H = std::cosh(H.value);
    const auto [X, Y, r] = on_hyperbola(a, orbit.e, cosh_H, sinh_H);
    const double k = orbit.n * a * a / r;
    return {X, Y, -k * sinh_H, k * std::sqrt(orbit.e * orbit.e - 1) * cosh_H, H.converged};
}
// The same at time t. `perihelion_epoch` is the epoch that the time of a near-parabolic
// perihelion is reckoned from.
inline PlaneState ellipse_state(const OrbitShape& orbit, double t, double epoch,
                                double perihelion_epoch) {
    const double tau = orbit.e > kNearParabolic
                           ? time_since_perihelion(t, perihelion_epoch, orbit.M0, orbit.n)
                           : 0;
    const double M = orbit.n * (t - epoch) + orbit.M0;
    const Anomaly E = eccentric_anomaly(kGaussSquared, orbit.q, orbit.e, M, tau);
    return ellipse_state(orbit, std::cos(E.value), std::sin(E.value), E.converged);
}
// Mean anomaly of a hyperbola dt days from its epoch.
inline double hyperbolic_mean_anomaly(const OrbitShape& orbit, double dt) {
    return hyperbolic_mean_anomaly(kGaussSquared, orbit.q / (1 - orbit.e), dt, orbit.M0);
}
// s_rate: of the tangent of half the true anomaly, per day.
inline PlaneState parabola_state(double q, double s, double s_rate, bool converged) {
    const auto [X, Y, r] = on_parabola(q, s);
    return {X, Y, -2 * q * s * s_rate, 2 * q * s_rate, converged};
}

// Writes position and, if asked for, velocity. P and Q may be of either precision.
template <class Real>
bool write_state(const PlaneState& s, const Real (&P)[3], const Real (&Q)[3], bool velocity,
                 double out[6]) {
    for (int k = 0; k < 3; ++k) out[k] = s.X * P[k] + s.Y * Q[k];
    if (velocity)
        for (int k = 0; k < 3; ++k) out[3 + k] = s.X_rate * P[k] + s.Y_rate * Q[k];
    return s.converged;
}

}  // namespace solsys
