#include "solsys/held_motion.h"

#include <cmath>

#include "core/constants.h"
#include "ephemeris/analytic/analytic_theory.h"
#include "ephemeris/planet_states.h"

namespace solsys {
namespace {

constexpr BodyKey kMoonKey{SSO_MOON, kMoonNumber};
constexpr int kLastNearPlanet =
    6;  // farther planets are cheap, and their light is long under way

// The light of Saturn is under way for 0.065 day. The Earth is shaken by the Moon, which an
// orbit about the Sun does not know: from afar both are computed anew.
constexpr double kReach = 0.07;        // day
constexpr double kReachOfMoon = 1e-4;  // day

// Along the orbit about an attracting centre, up to the third power of the time [day].
Vec3 carried(const State& s, double gm, double days) {
    const double r2 = dot(s.r, s.r);
    const double pull = -gm / (r2 * std::sqrt(r2));
    const Vec3 acceleration = pull * s.r;
    const Vec3 jerk = pull * (s.v - (3 * dot(s.r, s.v) / r2) * s.r);
    return s.r + days * (s.v + (days / 2) * (acceleration + (days / 3) * jerk));
}

bool is_carried(BodyKey body) {
    return body == kMoonKey || (body.type == SSO_PLNT && body.number >= 1 &&
                                body.number <= kLastNearPlanet && body.number != kEarthNumber);
}

}  // namespace

HeldMotion::HeldMotion(const Bodies& bodies, const StateSource& source)
    : bodies_(bodies), source_(source) {
    if (!is_carried(source.body) || source.object == nullptr || !bodies.only_theories()) return;
    const SS_Object* earth = bodies.find(kEarthKey);
    const bool moon = source.body == kMoonKey;
    if (moon && earth == nullptr) return;
    carries_ = true;
    reach_ = moon ? kReachOfMoon : kReach;
    sun_gm_ = kGaussSquared + (moon ? earth->GM() : source.object->GM());
    earth_gm_ = moon ? earth->GM() + source.object->GM() : 0.0;
}

bool HeldMotion::hold(Instant t) {
    if (source_.body != kMoonKey) return heliocentric(bodies_, source_, t, true, about_sun_);
    return heliocentric(bodies_, find_source(bodies_, kEarthKey), t, true, about_sun_) &&
           analytic_moon(t, true, about_earth_);
}

bool HeldMotion::position(Instant t, Vec3& out) {
    if (carries_ && !held_) {
        held_ = hold(t);
        at_ = t;
        out = about_sun_.r + about_earth_.r;
        return held_;
    }
    const double days = held_ ? days_between(at_, t) : 0.0;
    if (held_ && std::fabs(days) <= reach_ && analytic_covers(t)) {
        out = carried(about_sun_, sun_gm_, days);
        if (earth_gm_ > 0) out += carried(about_earth_, earth_gm_, days);
        return true;
    }
    State body{};
    const bool known = heliocentric(bodies_, source_, t, false, body);
    out = body.r;
    return known;
}

}  // namespace solsys
