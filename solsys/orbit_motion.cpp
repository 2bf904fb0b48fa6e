#include "solsys/orbit_motion.h"

#include <cmath>

#include "ephemeris/two_body/orbit_plane.h"

namespace solsys {
namespace {

// Mean anomalies this near to 0 are where `Kepler` halts [rad].
constexpr double kHalt = 1e-9;

bool halts_at_perihelion(const Elements& el, double M) {
    return conic_of(el.e) == Conic::ellipse && std::fabs(M) <= kHalt && el.n > 0.0;
}

// Position and velocity at mean anomaly M, almost 0, of an ellipse.
State near_perihelion(const Elements& el, double mu, double M, bool velocity) {
    const double a = el.q;
    double E = M / (1.0 - el.e);
    if (el.e > kNearParabolic) {
        E = near_parabolic_anomaly(mu, a * (1.0 - el.e), el.e, M / el.n);
    } else {
        E -= el.e * E * E * E / (6.0 * (1.0 - el.e));  // of (1 - e) E + e E^3 / 6 = M
    }
    const auto [X, Y, distance] = on_ellipse(a, el.e, std::cos(E), std::sin(E));

    const OrbitPlane plane = orbit_plane(el.i, el.node);
    const double cos_peri = std::cos(el.peri), sin_peri = std::sin(el.peri);
    const Vec3 P = plane.radial(cos_peri, sin_peri);
    const Vec3 Q = plane.transverse(cos_peri, sin_peri);
    State out{X * P + Y * Q, {}};
    if (velocity) {
        const double cos_nu = X / distance, sin_nu = Y / distance;
        out.v = conic_velocity(mu, a * (1.0 - el.e * el.e), el.e, cos_nu, sin_nu,
                               (1.0 / distance) * out.r, cos_nu * Q - sin_nu * P);
    }
    return out;
}

// (sqrt(z) - sin sqrt(z)) / z^(3/2) and its continuation to negative z, and
// (1 - cos sqrt(z)) / z.
struct Stumpff {
    double c2, c3;
};
Stumpff stumpff(double z) {
    if (std::fabs(z) < 1.0) {
        double c2 = 0.0, c3 = 0.0;
        for (int k = 20; k >= 2; k -= 2) {  // nested, from the term in z^9
            c2 = (1.0 - z * c2) / ((k - 1) * k);
            c3 = (1.0 - z * c3) / (k * (k + 1));
        }
        return {c2, c3};
    }
    const double root = std::sqrt(std::fabs(z));
    if (z > 0.0) {
        const double half = std::sin(0.5 * root);
        return {2.0 * half * half / z, (root - std::sin(root)) / (z * root)};
    }
    const double half = std::sinh(0.5 * root);
    return {-2.0 * half * half / z, (root - std::sinh(root)) / (z * root)};
}

// The universal functions U0 to U3 of an anomaly, and what follows: the distance there and how
// far Kepler's equation is from the time.
struct Universal {
    double U1, U2, U3, r, excess;
};
struct UniversalOrbit {
    double alpha;  // reciprocal of the semi-major axis
    double r0;
    double sigma0;  // r.v / sqrt(mu)
    double time;    // sqrt(mu) times the days

    [[nodiscard]] Universal at(double anomaly) const {
        const double z = alpha * anomaly * anomaly;
        const auto [c2, c3] = stumpff(z);
        const double U0 = 1.0 - z * c2, U1 = anomaly * (1.0 - z * c3);
        const double U2 = anomaly * anomaly * c2, U3 = anomaly * anomaly * anomaly * c3;
        return {U1, U2, U3, r0 * U0 + sigma0 * U1 + U2, r0 * U1 + sigma0 * U2 + U3 - time};
    }
};

// The anomaly of a time, by Newton's method within a bracket: the time rises with the anomaly,
// at the rate of the distance.
double universal_anomaly(const UniversalOrbit& orbit) {
    if (orbit.time == 0.0) return 0.0;
    const double direction = orbit.time > 0.0 ? 1.0 : -1.0;
    double near = 0.0;  // in units of the direction: the time here falls short
    double far =
        orbit.alpha > 0.0 ? kTwoPi / std::sqrt(orbit.alpha) : std::fabs(orbit.time) / orbit.r0;
    constexpr int kDoublings = 1100;  // all of a double's range
    for (int i = 0; i < kDoublings && direction * orbit.at(direction * far).excess < 0.0; ++i) {
        near = far;
        far *= 2.0;
    }
    double x = orbit.alpha > 0.0 ? std::fabs(orbit.time) * orbit.alpha : 0.5 * (near + far);
    constexpr int kPasses = 200;  // bisection alone needs no more
    for (int i = 0; i < kPasses; ++i) {
        if (!(x > near && x < far)) x = 0.5 * (near + far);
        const Universal u = orbit.at(direction * x);
        const double excess = direction * u.excess;
        (excess < 0.0 ? near : far) = x;
        const double next = x - excess / u.r;
        if (next == x || near == far) break;
        if (std::fabs(next - x) <= 1e-15 * x) return direction * next;
        x = next;
    }
    return direction * x;
}

}  // namespace

bool state_on_orbit(const Elements& elements, double mu, Instant t, bool velocity, State& out) {
    const double dt = (t.day + t.fraction) - (elements.epochDay + elements.epochFraction);
    const double M = std::remainder(elements.n * dt + elements.M, kTwoPi);
    if (halts_at_perihelion(elements, M)) {
        out = near_perihelion(elements, mu, M, velocity);
        return std::isfinite(dot(out.r, out.r));
    }
    double r[3] = {};
    double v[3] = {};
    const bool solved = Kepler(velocity, mu, t.day, t.fraction, elements, r, v);
    out = {load(r), load(v)};
    return solved;
}

bool moved_state(const State& start, double mu, double days, State& out) {
    const double r0 = norm(start.r);
    const double alpha = 2.0 / r0 - dot(start.v, start.v) / mu;
    if (!(r0 > 0.0 && mu > 0.0 && std::isfinite(alpha) && std::isfinite(days))) return false;
    const double root = std::sqrt(mu);
    if (alpha > 0.0) {  // whole periods change nothing
        const double period = kTwoPi / (root * alpha * std::sqrt(alpha));
        if (std::isfinite(period) && period > 0.0) days = std::remainder(days, period);
    }
    const UniversalOrbit orbit{alpha, r0, dot(start.r, start.v) / root, root * days};
    const Universal u = orbit.at(universal_anomaly(orbit));
    const double f = 1.0 - u.U2 / r0;
    const double g = days - u.U3 / root;
    const double f_rate = -root * u.U1 / (u.r * r0);
    const double g_rate = 1.0 - u.U2 / u.r;
    const State there{f * start.r + g * start.v, f_rate * start.r + g_rate * start.v};
    if (!std::isfinite(dot(there.r, there.r) + dot(there.v, there.v))) return false;
    out = there;
    return true;
}

}  // namespace solsys
