#include "ephemeris/integrator/small_body_force.h"

#include <cmath>

namespace solsys {
namespace {

constexpr double kSpeedOfLight = 1.0 / kLightDayPerAu;  // au/day

// Within this of the Earth the Moon is a body of its own; beyond, both masses stand at their
// barycentre. What that leaves out, 6e-12 of the Sun's attraction at the most, swings to and
// fro twice a month, and over a century of an inner orbit adds up to 1e-10 au.
constexpr double kMoonReach = 0.5;         // au
constexpr double kOblatenessReach = 0.03;  // au: 1e-11 of the Sun's attraction there

// Closer than this, and slower, a body is a massive asteroid itself.
constexpr double kSamePlace = 1e-3;  // au
constexpr double kSameSpeed = 1e-5;  // au/day

constexpr double kEarthJ2 = 0.0010826359;              // IERS Conventions 2010
constexpr double kEarthRadius = 6378.1366 * kAuPerKm;  // au

// The push of water ice: alpha (r/r0)^-m (1 + (r/r0)^n)^-k.
constexpr double kAlpha = 0.111262, kR0 = 2.808, kM = 2.15, kN = 5.093, kK = 4.6142;

constexpr std::array<double, kMassiveBodies> kSquaredRadius = [] {
    std::array<double, kMassiveBodies> squares{};
    for (std::size_t i = 0; i < kMassiveBodies; ++i) {
        const double radius = kMassiveRadiusKm[i] * kAuPerKm;
        squares[i] = radius * radius;
    }
    return squares;
}();

}  // namespace

Vec3 about_the_sun(const State& state) {
    const double r = norm(state.r);
    const double newton = -kGaussSquared / (r * r * r);
    constexpr double kPerC2 = 1 / (kSpeedOfLight * kSpeedOfLight);
    const double along_r = 4 * kGaussSquared / r - dot(state.v, state.v);
    const double along_v = 4 * dot(state.r, state.v);
    return newton * state.r - (newton * kPerC2) * (along_r * state.r + along_v * state.v);
}

Vec3 not_gravity(const SmallForces& forces, const State& state) {
    const double r = norm(state.r);
    const Vec3 radial = (1 / r) * state.r;
    const Vec3 h = cross(state.r, state.v);
    const double size = norm(h);
    const Vec3 normal = size > 0 ? (1 / size) * h : Vec3{};
    const double x = r / kR0;
    const double g = forces.inverse_square
                         ? 1 / (r * r)
                         : kAlpha * std::pow(x, -kM) * std::pow(1 + std::pow(x, kN), -kK);
    return (g * forces.A1 + forces.radiation * kGaussSquared / (r * r)) * radial +
           (g * forces.A2) * cross(normal, radial) + (g * forces.A3) * normal;
}

Vec3 earth_oblateness(Vec3 r) {
    const double r2 = dot(r, r);
    const double factor = -1.5 * kEarthJ2 * kMassiveGm[kEarth] * kEarthRadius * kEarthRadius /
                          (r2 * r2 * std::sqrt(r2));
    const double polar = 5 * r.z * r.z / r2;
    return factor * Vec3{(1 - polar) * r.x, (1 - polar) * r.y, (3 - polar) * r.z};
}

SmallBodyForce::SmallBodyForce(Perturbers& perturbers, double epoch_day, MassiveBody centre,
                               const SmallForces& forces, int bodies)
    : perturbers_(perturbers),
      epoch_day_(epoch_day),
      centre_(centre),
      forces_(forces),
      pushed_(forces.A1 != 0 || forces.A2 != 0 || forces.A3 != 0 || forces.radiation != 0),
      bodies_(static_cast<std::size_t>(bodies)) {
    gm_[centre_] = 0;
}

void SmallBodyForce::tell_apart(const double* start) {
    if (centre_ != kTheSun) return;
    for (std::size_t i = 0; i < bodies_; ++i) {
        const Vec3 r = load(start + 3 * i), v = load(start + 3 * (bodies_ + i));
        for (const MassiveBody body : {kCeres, kPallas, kVesta}) {
            State asteroid{};
            if (perturbers_.asteroid(body, epoch_day_, asteroid) &&
                norm(asteroid.r - r) < kSamePlace && norm(asteroid.v - v) < kSameSpeed)
                gm_[body] = 0;
        }
    }
}

bool SmallBodyForce::prepare(Node& node) {
    MassivePositions& at = node.at;
    if (!perturbers_.all(node.day, node.offset, at)) return false;
    at.r[kTheSun] = Vec3{};
    // About the Earth or the Moon that one's own place counts.
    const bool with_moon = centre_ == kEarth || centre_ == kTheMoon;
    if (with_moon && !perturbers_.place_moon(node.day, node.offset, at)) return false;
    node.centre = at.r[centre_];
    node.of_centre = Vec3{};
    if (centre_ != kTheSun) at.earth_and_moon -= node.centre;
    for (std::size_t body = 0; body < kMassiveBodies; ++body) {
        if (centre_ != kTheSun) at.r[body] -= node.centre;
        const bool falls_with_it = body == kMercury && centre_ == kTheSun;
        if (gm_[body] > 0 && !falls_with_it)
            node.of_centre += attraction(gm_[body], at.r[body]);
    }
    if (centre_ != kTheSun) at.sun = Vec3{};
    return true;
}

bool SmallBodyForce::origin(double t, State& sun) {
    sun = State{};
    return centre_ != kTheSun || perturbers_.sun_sway(epoch_day_ + t, 0, sun);
}

bool SmallBodyForce::prepare(double t, std::span<const double> offsets) {
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        nodes_[i].day = epoch_day_ + t;
        nodes_[i].offset = offsets[i];
        if (!prepare(nodes_[i])) return false;
    }
    return true;
}

// Whether the Moon counts by itself at r; its place is then there.
bool SmallBodyForce::near_earth(Node& node, Vec3 r) {
    if (node.at.moon_known && centre_ != kTheSun) return true;
    const Vec3 d = node.at.earth_and_moon - r;
    if (dot(d, d) > kMoonReach * kMoonReach) {
        node.at.r[kEarth] = node.at.r[kTheMoon] = node.at.earth_and_moon;
        return true;
    }
    return perturbers_.place_moon(node.day, node.offset, node.at);
}

bool SmallBodyForce::accelerate(Node& node, const State& state, Vec3& out) {
    const double own_d2 = dot(state.r, state.r);
    if (!(own_d2 > kSquaredRadius[centre_])) {
        hit_ = centre_;
        return false;
    }
    if (!near_earth(node, state.r)) return false;

    Vec3 sum = -node.of_centre;
    for (std::size_t body = 0; body < kMassiveBodies; ++body) {
        if (gm_[body] == 0) continue;
        const Vec3 d = node.at.r[body] - state.r;
        const double d2 = dot(d, d);
        if (!(d2 > kSquaredRadius[body])) {
            hit_ = static_cast<MassiveBody>(body);
            return false;
        }
        sum += (gm_[body] / (d2 * std::sqrt(d2))) * d;
    }
    const Vec3 from_earth = centre_ == kEarth ? state.r : state.r - node.at.r[kEarth];
    if (dot(from_earth, from_earth) < kOblatenessReach * kOblatenessReach)
        sum += earth_oblateness(from_earth);

    if (centre_ == kTheSun) {
        sum += about_the_sun(state);
        if (pushed_) sum += not_gravity(forces_, state);
    } else {
        sum += attraction(kMassiveGm[centre_], -state.r);
        const SmallForces light{.radiation = forces_.radiation};
        if (forces_.radiation != 0)
            sum += not_gravity(light, {state.r - node.at.r[kTheSun], Vec3{}});
    }
    out = sum;
    return std::isfinite(dot(sum, sum));
}

bool SmallBodyForce::evaluate(int node, const double* x, const double* v, double* f) {
    for (std::size_t i = 0; i < bodies_; ++i) {
        Vec3 acceleration{};
        Node& at = nodes_[static_cast<std::size_t>(node)];
        // The Sun's own velocity, 5e-9 au/day, is nothing to what depends on velocities.
        const State state{load(x + 3 * i) - at.at.sun, load(v + 3 * i)};
        if (!accelerate(at, state, acceleration)) return false;
        store(acceleration, f + 3 * i);
    }
    return true;
}

std::optional<Vec3> acceleration(Perturbers& perturbers, MassiveBody centre, Instant t,
                                 const State& state) {
    SmallBodyForce force(perturbers, days_since_j2000(t), centre, {}, 1);
    const double now[1] = {0};
    State sun{};
    double x[3], v[3], f[3];
    if (!force.origin(0, sun)) return std::nullopt;
    store(state.r + sun.r, x);
    store(state.v + sun.v, v);
    if (!force.prepare(0, now) || !force.evaluate(0, x, v, f)) return std::nullopt;
    if (centre != kTheSun) return load(f);
    // The origin falls towards Mercury as its share of the mass bids.
    return load(f) - attraction(kMassiveGm[kMercury], (-1 / kMercuryShare) * sun.r);
}

}  // namespace solsys
