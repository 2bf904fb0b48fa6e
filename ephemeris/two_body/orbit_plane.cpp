#include "ephemeris/two_body/orbit_plane.h"

namespace solsys {

Anomaly eccentric_anomaly(double mu, double a, double e, double M, double tau) {
    M = reduced_mean_anomaly(M);
    if (const Apsis apsis = apsis_of(M); apsis.at) return {apsis.E, true};
    if (e > kNearParabolic) {
        const double E = near_parabolic_anomaly(mu, a * (1 - e), e, tau);
        return {E, std::isfinite(E)};
    }
    return ellipse_by_steffensen(e, M > kPi ? M - kTwoPi : M);
}

double hyperbolic_mean_anomaly(double mu, double a, double dt, double M0) {
    const double size = std::fabs(a);
    return std::sqrt(mu / size) / size * dt + M0;
}

}  // namespace solsys
