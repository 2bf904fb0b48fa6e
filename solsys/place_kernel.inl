// The body of the kernel, included by place_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
#include "ephemeris/lanes.inl"
#include "solsys/place_kernel.h"

namespace solsys {
namespace {

static_assert(kPlaceLanes == kLanes);

constexpr double kNowhere = 1e-10;  // au: an observer this near a centre sees no bending

struct Vectors {
    Vector x, y, z;
};
inline Vectors operator+(Vectors a, Vectors b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vectors operator-(Vectors a, Vectors b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vectors operator*(Vector k, Vectors a) { return {k * a.x, k * a.y, k * a.z}; }
inline Vector dot(Vectors a, Vectors b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vector norm(Vectors a) { return square_root(dot(a, a)); }
inline Vectors unit(Vectors a) { return (1.0 / norm(a)) * a; }
inline Vectors select(Mask choose, Vectors a, Vectors b) {
    return {select(choose, a.x, b.x), select(choose, a.y, b.y), select(choose, a.z, b.z)};
}

inline Vector load(const Lane& from) {
    Vector x;
    __builtin_memcpy(&x, from, sizeof x);
    return x;
}
inline Vectors load(const LaneVector& from) {
    return {load(from[0]), load(from[1]), load(from[2])};
}
inline void store(Vector x, Lane& to) { __builtin_memcpy(to, &x, sizeof x); }

// The way of the light, and the step that the light time is off by.
struct Way {
    Vectors path, velocity;
    Vector correction;
};

inline Way way_of(const ObserverLanes& observer, const LightLanes& light, double days_per_au) {
    const Vectors sun_velocity = load(observer.sun_velocity);
    const Vector tau = load(light.tau);
    // The Sun itself moved on while the light came.
    const Vectors path = load(light.body.value) - load(observer.position) - tau * sun_velocity;
    const Vectors velocity = load(light.body.rate) + sun_velocity;
    const Vector distance = norm(path);
    const Vector rate = dot(path, velocity) / distance;
    return {path, velocity, (distance * days_per_au - tau) / (1.0 + days_per_au * rate)};
}

// A unit direction after the light passed one body (see deflected, deflection.h).
inline Vectors bent(Vectors p, Vectors path, Vector tau, const BendingLanes& body, double self,
                    double days_per_au) {
    const Vectors at_arrival = load(body.to_observer);
    Vector since = -dot(p, at_arrival) * days_per_au;
    since = select(since < tau, since, tau);
    since = select(since > 0, since, Vector{});
    const Vectors to_observer = at_arrival + since * load(body.velocity);
    const Vector distance = norm(to_observer);
    const Vectors e = (1.0 / distance) * to_observer;
    const Vectors q = unit(to_observer + path);

    const Vectors sum = q + e;
    const Vector least = load(body.limiter) + load(body.limb) / (distance * distance);
    Vector one_plus_cosine = dot(sum, sum) / 2;
    one_plus_cosine = select(one_plus_cosine > least, one_plus_cosine, least);
    const Vector amount = load(body.two_gm) / (distance * one_plus_cosine);
    const Vectors after = unit(p + amount * (dot(p, q) * e - dot(p, e) * q));
    return select(both(distance > kNowhere, load(body.which) != self), after, p);
}

// Relativistic aberration of a unit direction.
inline Vectors aberrated(Vectors p, Vectors velocity, Vector lorentz_reciprocal) {
    const Vector f = dot(p, velocity);
    return (1.0 / (1.0 + f)) *
           (lorentz_reciprocal * p + (1.0 + f / (1.0 + lorentz_reciprocal)) * velocity);
}

inline void see(const ObserverLanes& observer, const LightLanes& light, double self,
                double days_per_au, SeenLanes& out) {
    const Way way = way_of(observer, light, days_per_au);
    const Vectors path = way.path - way.correction * way.velocity;
    const Vector tau = load(light.tau) + way.correction, distance = norm(path);
    Vectors p = (1.0 / distance) * path;
    store(path.x, out.path[0]), store(path.y, out.path[1]), store(path.z, out.path[2]);
    for (const BendingLanes& body : observer.bending)
        p = bent(p, path, tau, body, self, days_per_au);
    p = aberrated(p, load(observer.velocity), load(observer.lorentz_reciprocal));
    for (int row = 0; row < 3; ++row)
        store(dot(load(observer.frame_from_j2000[row]), p), out.direction[row]);
    store(distance, out.distance);
    store(way.correction, out.correction);
}

}  // namespace
}  // namespace solsys
