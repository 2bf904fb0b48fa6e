// Osculating elements from a state: the vis-viva integral, Kepler's equation, and the
// eccentricity vector. Danby 1988, Fundamentals of Celestial Mechanics.
#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

// Below: no energy [1/au], no eccentricity, no inclination.
constexpr double kTolerance = 1e-9;

double positive_angle(double a) { return a < 0 ? a + kTwoPi : a; }

// Size, shape and place in the orbit: q, e, n, M.
void set_shape(double mu, double R, double V2, double r_dot_v, Elements& el) {
    const double alpha = 2 / R - V2 / mu;  // 1/a
    if (std::fabs(alpha) <= kTolerance) {
        const double p = 2 * R - r_dot_v * r_dot_v / mu;
        const double D = r_dot_v / std::sqrt(p * mu);
        el.e = 1;
        el.q = p / 2;
        el.n = std::sqrt(mu / (2 * el.q * el.q * el.q));
        el.M = D + D * D * D / 3;
        return;
    }
    const double a = 1 / alpha;
    const double size = std::fabs(a);
    el.n = std::sqrt(mu / (size * size * size));
    const double c = r_dot_v / std::sqrt(size * mu);
    if (alpha < 0) {
        const double w = R / size + 1;  // e cosh H; c is e sinh H
        el.e = std::sqrt(w * w - c * c);
        el.q = (1 - el.e) * a;
        const double H = 0.5 * std::log(std::fabs((1 + c / w) / (1 - c / w)));
        el.M = el.e * std::sinh(H) - H;
        return;
    }
    const double w = 1 - R / a;  // e cos E; c is e sin E
    el.e = std::sqrt(w * w + c * c);
    el.q = a;
    const double E = el.e <= kTolerance ? 0 : positive_angle(std::atan2(c, w));
    const double M = E - el.e * std::sin(E);
    el.M = positive_angle(std::fabs(M) >= kTwoPi ? std::fmod(M, kTwoPi) : M);
}

// Plane and perihelion: i, node, peri.
void set_orientation(double mu, Vec3 r, double R, Vec3 v, Elements& el) {
    const Vec3 h = cross(r, v);
    const double h_length = norm(h);
    const double sin_i = std::sqrt(h.x * h.x + h.y * h.y) / h_length;
    const double cos_i = h.z / h_length;
    const bool planar = sin_i <= kTolerance;
    const double planar_angle = cos_i >= 0 ? 0 : kPi;

    if (std::fabs(cos_i) <= kTolerance)
        el.i = kHalfPi;
    else if (planar)
        el.i = planar_angle;
    else
        el.i = cos_i < 0 ? std::atan(sin_i / cos_i) + kPi : std::atan(sin_i / cos_i);

    el.node = planar ? planar_angle : positive_angle(std::atan2(h.x, -h.y));

    // Towards perihelion, mu times the eccentricity.
    const Vec3 A = cross(v, h) - (mu / R) * r;
    const double peri = el.i > kTolerance && el.i < kPi - kTolerance
                            ? std::atan2(h_length * A.z, h.x * A.y - h.y * A.x)
                            : std::atan2(A.y * std::cos(el.node) - A.x * std::sin(el.node),
                                         A.y * std::sin(el.node) + A.x * std::cos(el.node));
    el.peri = positive_angle(peri);
}

}  // namespace
}  // namespace solsys

bool VectorToElements(double mu, const double r[3], const double v[3], Elements* out) {
    using namespace solsys;
    const Vec3 position = load(r), velocity = load(v);
    const double R = norm(position);
    set_shape(mu, R, dot(velocity, velocity), dot(position, velocity), *out);
    set_orientation(mu, position, R, velocity, *out);
    return true;
}
