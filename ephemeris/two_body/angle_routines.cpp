// State from elements given by the orientation angles.
#include "ephemeris/two_body/orbit_plane.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

struct PlaneSolution {
    PlanePosition at;
    double e;  // 1 for a parabola, whatever its record says within the band
    double p;  // semi-latus rectum [au]
    bool converged;
};

enum class Perihelion { within_one_period, unreduced };

PlaneSolution solve(double mu, double t, const Elements& el, Perihelion perihelion) {
    const double epoch = el.epochDay + el.epochFraction;
    const double dt = t - epoch;

    switch (conic_of(el.e)) {
        case Conic::parabola: {
            const Anomaly s = barker_by_newton(el.n * dt + el.M);
            return {on_parabola(el.q, s.value), 1.0, 2 * el.q, s.converged};
        }
        case Conic::hyperbola: {
            const double a = el.q / (1 - el.e);
            const double M = hyperbolic_mean_anomaly(mu, a, dt, el.M);
            const Anomaly H =
                hyperbola_by_newton(el.e, M, hyperbola_start(el.e, M), Stop::absolute);
            return {on_hyperbola(a, el.e, std::cosh(H.value), std::sinh(H.value)), el.e,
                    a * (1 - el.e * el.e), H.converged};
        }
        case Conic::ellipse:
            break;
    }
    double tau = 0;
    if (el.e > kNearParabolic) {
        tau = time_since_perihelion(t, epoch, el.M, el.n);
        const double period = kTwoPi / el.n;
        if (perihelion == Perihelion::within_one_period && std::fabs(tau) > period)
            tau = std::fmod(tau, period);
    }
    const Anomaly E = eccentric_anomaly(mu, el.q, el.e, el.n * dt + el.M, tau);
    return {on_ellipse(el.q, el.e, std::cos(E.value), std::sin(E.value)), el.e,
            el.q * (1 - el.e * el.e), E.converged};
}

bool state_from_elements(short velocity, double mu, double t, const Elements& el,
                         Perihelion perihelion, double r[3], double v[3]) {
    const PlaneSolution orbit = solve(mu, t, el, perihelion);
    const auto& [X, Y, distance] = orbit.at;

    const OrbitPlane plane = orbit_plane(el.i, el.node);
    const double cos_peri = std::cos(el.peri), sin_peri = std::sin(el.peri);
    const Vec3 P = plane.radial(cos_peri, sin_peri);
    const Vec3 Q = plane.transverse(cos_peri, sin_peri);
    const Vec3 position = X * P + Y * Q;
    store(position, r);
    if (velocity == 0) return orbit.converged;

    const double cos_nu = X / distance, sin_nu = Y / distance;
    store(conic_velocity(mu, orbit.p, orbit.e, cos_nu, sin_nu, (1 / distance) * position,
                         cos_nu * Q - sin_nu * P),
          v);
    return orbit.converged;
}

}  // namespace
}  // namespace solsys

bool Kepler(short velocity, double mu, int day, double fraction, Elements elements, double r[3],
            double v[3]) {
    return solsys::state_from_elements(velocity, mu, day + fraction, elements,
                                       solsys::Perihelion::within_one_period, r, v);
}

bool KeplerForIntegr(short velocity, double mu, int day, double fraction, Elements elements,
                     double r[3], double v[3]) {
    return solsys::state_from_elements(velocity, mu, day + fraction, elements,
                                       solsys::Perihelion::unreduced, r, v);
}
