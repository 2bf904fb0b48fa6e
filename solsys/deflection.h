// Gravitational deflection of light on its way past the Sun, Jupiter and Saturn, with the
// effect of the source's own distance (Klioner 2003, Astron. J. 125, 1580; Urban &
// Seidelmann 2013, Explanatory Supplement to the Astronomical Almanac).
#pragma once

#include <array>
#include <limits>

#include "core/linalg.h"
#include "solsys/sso_id.h"

namespace solsys {

enum class Deflector { kSun, kJupiter, kSaturn };
constexpr std::size_t kDeflectorCount = 3;

// A body as it stands to an observer at the instant of observation.
struct DeflectingBody {
    Deflector which = Deflector::kSun;
    Vec3 to_observer{};  // from the body to the observer [au]
    Vec3 velocity{};     // of the body [au/day]: it was elsewhere when the light passed
};

// 2 GM/c^2 [au] of a body, and the least 1 + cos of the angle at the body between source and
// observer: `limiter`, and `limb` [au^2] over the square of the observer's distance.
struct BendingConstants {
    double two_gm, limiter, limb;
};
BendingConstants bending_constants(Deflector which, bool on_earth);

// The Deflector that a body is, -1 for all others.
int deflector_number(const SSO_ID& body);

constexpr double kStarLightTime = std::numeric_limits<double>::infinity();

// The unit direction `p` after the light passed one body. `path`: from the observer to where
// the source was [au]; `tau`: its light time [day], kStarLightTime for a star, whose path is
// not used. Inside the body's disk, from where no light comes, the amount is limited: for
// observers on the Earth by a constant, for others by the size of the disk.
Vec3 deflected(Vec3 p, Vec3 path, double tau, const DeflectingBody& body, bool on_earth);

// After all bodies, the farthest from the observer first. `source` is not bent by itself.
struct DeflectingBodies {
    std::array<DeflectingBody, kDeflectorCount> farthest_first{};
    bool on_earth = true;
};
Vec3 deflected(Vec3 p, Vec3 path, double tau, const DeflectingBodies& bodies,
               const SSO_ID& source);

}  // namespace solsys
