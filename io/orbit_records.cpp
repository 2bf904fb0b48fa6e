#include "io/orbit_records.h"

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"

namespace solsys_io {
namespace {

using solsys::kTwoPi;
using solsys::Mat3;
using solsys::Vec3;

constexpr double kGauss = 0.01720209895;                  // rad/day at 1 au
constexpr double kParabolicBand = 1.0000000000287557e-6;  // of e about 1, see solsys/kepler.h
constexpr double kObliquityJ2000 = 84381.448 * solsys::kArcsec;

struct Directions {
    Vec3 P, Q;
};

// Unit vectors towards perihelion and 90 degrees ahead.
Directions directions(double i, double node, double peri, Plane plane) {
    using solsys::rotate_x;
    using solsys::rotate_z;
    const Mat3 orbit_from_ecliptic = rotate_z(peri) * rotate_x(i) * rotate_z(node);
    const Mat3 orbit_from_plane = plane == Plane::ecliptic_j2000
                                      ? orbit_from_ecliptic
                                      : orbit_from_ecliptic * rotate_x(kObliquityJ2000);
    return {orbit_from_plane.r0, orbit_from_plane.r1};
}

struct Motion {
    double q;  // semi-major axis of an ellipse, else perihelion distance
    double n, M;
};

// Mean motion and mean anomaly at the epoch, or Barker's rate and quantity.
Motion motion_of(const Comet& comet) {
    const double since_perihelion = comet.epoch - comet.perihelion_time;
    if (std::fabs(comet.e - 1) <= kParabolicBand) {
        const double n = kGauss / std::sqrt(2 * comet.q * comet.q * comet.q);
        return {comet.q, n, n * since_perihelion};
    }
    const double a = comet.q / std::fabs(1 - comet.e);
    const double n = kGauss / (a * std::sqrt(a));
    const double M = n * since_perihelion;
    if (comet.e > 1) return {comet.q, n, M};
    return {a, n, std::remainder(M, kTwoPi)};
}

void set_epoch(double jd, Elements& elements) {
    const double day = std::floor(jd);
    elements.epochDay = static_cast<std::int32_t>(day);
    elements.epochFraction = jd - day;
}

void store_single(Vec3 v, float (&out)[3]) {
    out[0] = static_cast<float>(v.x);
    out[1] = static_cast<float>(v.y);
    out[2] = static_cast<float>(v.z);
}

}  // namespace

Elements to_elements(const MinorPlanet& p) {
    Elements el{p.a, p.e, p.i, p.node, p.peri, p.n, p.M, 0, 0};
    set_epoch(p.epoch, el);
    return el;
}

Elements to_elements(const Comet& c) {
    const Motion motion = motion_of(c);
    Elements el{motion.q, c.e, c.i, c.node, c.peri, motion.n, motion.M, 0, 0};
    set_epoch(c.epoch, el);
    return el;
}

tagAster_SPH_5 to_compact(const MinorPlanet& p, Plane plane, std::uint32_t key) {
    const auto [P, Q] = directions(p.i, p.node, p.peri, plane);
    tagAster_SPH_5 record{};
    record.epoch = p.epoch;
    store_single(P, record.P);
    store_single(Q, record.Q);
    record.a = static_cast<float>(p.a);
    record.e = static_cast<float>(p.e);
    record.M = static_cast<float>(p.M);
    record.n = static_cast<float>(p.n);
    record.number = key;
    return record;
}

tagComet_SPH_5 to_compact(const Comet& c, Plane plane, std::int32_t key) {
    const auto [P, Q] = directions(c.i, c.node, c.peri, plane);
    const Motion motion = motion_of(c);
    tagComet_SPH_5 record{};
    solsys::store(P, record.P);
    solsys::store(Q, record.Q);
    record.q = motion.q;
    record.e = c.e;
    record.M = motion.M;
    record.n = motion.n;
    record.epoch = c.epoch;
    record.number = key;
    return record;
}

AsteroidRecord to_record(const MinorPlanet& p) {
    AsteroidRecord record;
    record.elements = to_elements(p);
    record.H = p.H;
    if (p.G < MinorPlanet::kUnknown) record.G = p.G;
    return record;
}

CometRecord to_record(const Comet& c) {
    CometRecord record;
    record.elements = to_elements(c);
    record.H = c.H;
    if (c.K < Comet::kUnknown) record.K = c.K;
    return record;
}

}  // namespace solsys_io
