// State of the main catalogue's asteroids and comets.
#include "ephemeris/two_body/pq_motion.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

PlaneState solve(const OrbitShape& orbit, double t, double epoch, double perihelion_epoch) {
    const double dt = t - epoch;

    switch (conic_of(orbit.e)) {
        case Conic::parabola: {
            const Anomaly s = barker_by_newton(orbit.n * dt + orbit.M0);
            return parabola_state(orbit.q, s.value, orbit.n / (1 + s.value * s.value),
                                  s.converged);
        }
        case Conic::hyperbola: {
            const double M = hyperbolic_mean_anomaly(orbit, dt);
            return hyperbola_state(
                orbit,
                hyperbola_by_newton(orbit.e, M, hyperbola_start(orbit.e, M), Stop::absolute));
        }
        case Conic::ellipse:
            break;
    }
    return ellipse_state(orbit, t, epoch, perihelion_epoch);
}

}  // namespace
}  // namespace solsys

bool KeplerPQ(short velocity, int day, double fraction, const tagAster_SPH* record,
              double out[6]) {
    // A copy: its members are unaligned.
    const tagAster_SPH el = *record;
    const float P[3] = {el.P[0], el.P[1], el.P[2]};
    const float Q[3] = {el.Q[0], el.Q[1], el.Q[2]};
    const double midnight = el.epochDay + 0.5;
    return solsys::write_state(
        solsys::solve({el.a, el.e, el.n, el.M}, day + fraction, midnight, el.epochDay), P, Q,
        velocity != 0, out);
}

bool KeplerPQComets(short velocity, int day, double fraction, const tagComet_SPH* record,
                    double out[6]) {
    const tagComet_SPH el = *record;
    const double P[3] = {el.P[0], el.P[1], el.P[2]};
    const double Q[3] = {el.Q[0], el.Q[1], el.Q[2]};
    const double epoch = el.epochDay + el.epochFraction;
    return solsys::write_state(
        solsys::solve({el.q, el.e, el.n, el.M}, day + fraction, epoch, epoch), P, Q,
        velocity != 0, out);
}
