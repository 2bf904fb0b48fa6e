// Where a body is during the minutes of a light time. The series of the built-in theories are
// summed once, with the velocity, and carried on from there; all other motions are computed
// anew for every instant.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/states.h"

namespace solsys {

class HeldMotion {
  public:
    // Both must outlive this.
    HeldMotion(const Bodies& bodies, const StateSource& source);

    // Whether positions are carried on: of Mercury to Saturn, the Earth left out, and of the
    // Moon, as long as nothing but the built-in theories moves them.
    [[nodiscard]] bool carries() const { return carries_; }
    // The heliocentric position, J2000 equator [au]. The first one is that of `heliocentric`;
    // those after it leave that by 1e-11 au at most. False as there.
    bool position(Instant t, Vec3& out);

  private:
    bool hold(Instant t);

    const Bodies& bodies_;
    const StateSource& source_;
    bool carries_ = false, held_ = false;
    double reach_ = 0;  // day
    Instant at_{};
    // Of the planet about the Sun, and of the Moon about the Earth, with their attraction.
    State about_sun_{}, about_earth_{};
    double sun_gm_ = 0, earth_gm_ = 0;
};

}  // namespace solsys
