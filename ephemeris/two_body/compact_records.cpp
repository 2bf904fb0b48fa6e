// State of the compact asteroid and comet records, the path of whole catalogues.
#include <atomic>
#include <cstdint>
#include <optional>

#include "core/fast_trig.h"
#include "ephemeris/two_body/pq_motion.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

// The last record solved by an iteration and its anomaly: eccentric for asteroids, hyperbolic
// for comets. Both kinds share the one pair, and threads may mix two updates: the anomaly is
// only a start. The number is kept wider than any record's, so that the initial one matches
// none.
std::atomic<std::int64_t> lastKeplerObjectNumber{-1};
std::atomic<double> lastKeplerAnomaly{0.0};

std::optional<double> warm_start(std::uint32_t number) {
    if (lastKeplerObjectNumber.load(std::memory_order_relaxed) != number) return std::nullopt;
    const double anomaly = lastKeplerAnomaly.load(std::memory_order_relaxed);
    if (!std::isfinite(anomaly)) return std::nullopt;
    return anomaly;
}

void remember(std::uint32_t number, double anomaly) {
    lastKeplerObjectNumber.store(number, std::memory_order_relaxed);
    lastKeplerAnomaly.store(anomaly, std::memory_order_relaxed);
}

// Solves from the remembered anomaly when there is one. A start from across the perihelion of a
// long ellipse, or from another object's anomaly, can lead Newton's method astray: then the
// cold start decides, so that the answer never depends on what was solved before.
template <class Solve>
Anomaly solve_warm(std::uint32_t number, double cold_start, Solve solve) {
    Anomaly anomaly{0.0, false};
    if (const auto start = warm_start(number)) anomaly = solve(*start);
    if (!anomaly.converged) anomaly = solve(cold_start);
    remember(number, anomaly.value);
    return anomaly;
}

PlaneState parabola(const OrbitShape& orbit, double dt) {
    const BarkerRoot root = barker_root(orbit.n * dt + orbit.M0);
    return parabola_state(orbit.q, root.s, orbit.n * root.slope, std::isfinite(root.s));
}

PlaneState asteroid_ellipse(const OrbitShape& orbit, double dt, std::uint32_t number) {
    const double e = orbit.e;
    const double M = reduced_mean_anomaly(orbit.n * dt + orbit.M0);
    if (const Apsis apsis = apsis_of(M); apsis.at)
        return ellipse_state(orbit, apsis.E == 0 ? 1 : -1, 0, true);

    const Anomaly E = solve_warm(number, e > 0.8 ? kPi : M,
                                 [&](double start) { return ellipse_by_newton(e, M, start); });
    return ellipse_state(orbit, fm_cos(E.value), fm_sin(E.value), E.converged);
}

PlaneState asteroid_state(const OrbitShape& orbit, double dt, std::uint32_t number) {
    switch (conic_of(orbit.e)) {
        case Conic::parabola:
            return parabola(orbit, dt);
        case Conic::hyperbola: {
            const double M = hyperbolic_mean_anomaly(orbit, dt);
            return hyperbola_state(
                orbit,
                hyperbola_by_newton(orbit.e, M, hyperbola_start(orbit.e, M), Stop::absolute));
        }
        case Conic::ellipse:
            break;
    }
    return asteroid_ellipse(orbit, dt, number);
}

PlaneState comet_state(const OrbitShape& orbit, double t, double epoch, std::uint32_t number) {
    const double dt = t - epoch;
    const double e = orbit.e;
    switch (conic_of(e)) {
        case Conic::parabola:
            return parabola(orbit, dt);
        case Conic::hyperbola: {
            const double M = hyperbolic_mean_anomaly(orbit, dt);
            const auto solve = [&](double start) {
                return hyperbola_by_newton(e, M, start, Stop::relative);
            };
            return hyperbola_state(orbit, solve_warm(number, hyperbola_start(e, M), solve));
        }
        case Conic::ellipse:
            break;
    }
    return ellipse_state(orbit, t, epoch, epoch);
}

}  // namespace
}  // namespace solsys

bool KeplerPQ5(short velocity, int day, double fraction, const tagAster_SPH_5* record,
               double out[6]) {
    const tagAster_SPH_5& el = *record;
    const double dt = day + fraction - el.epoch;
    return solsys::write_state(solsys::asteroid_state({el.a, el.e, el.n, el.M}, dt, el.number),
                               el.P, el.Q, velocity != 0, out);
}

bool KeplerPQ5(short velocity, int day, double fraction, const tagComet_SPH_5* record,
               double out[6]) {
    const tagComet_SPH_5& el = *record;
    return solsys::write_state(
        solsys::comet_state({el.q, el.e, el.n, el.M}, day + fraction, el.epoch,
                            static_cast<std::uint32_t>(el.number)),
        el.P, el.Q, velocity != 0, out);
}
