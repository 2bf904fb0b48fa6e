// What an observer sees: geometric states, light time, aberration. On the J2000 equator; frames
// of date are the caller's, so that whoever needs none computes none.
#pragma once

#include <optional>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/observer_state.h"
#include "solsys/states.h"

namespace solsys {

// A direction (beyond the reach of the light-time iteration: the geometric vector, whose length
// is the distance), the distance the light came, and the vector it came along, aberration left
// out.
struct ApparentPlace {
    Vec3 direction{};
    double distance = 0;
    Vec3 path{};
};

// Geometric state relative to the observer: of the observer's own body, of a satellite of that
// body and (on the Earth) of a `uSCO` without the detour over the Sun, which would cost digits.
// False with zeros when the object, or the observer's body, cannot be computed.
bool from_observer(const Bodies& bodies, const ObserverState& observer,
                   const StateSource& source, Instant t, bool velocity, State& out);

// Where the observer, placed at `t`, sees an object. `light_time` is a first guess [day], 0 for
// none. False when the object, or the observer's body, cannot be computed; the instant of
// emission for which the object could not be goes to `failed_at`.
//
// Light time by fixed-point iteration to 2e-6 day, in at most 20 steps; aberration relativistic
// (see star_place.h). No deflection of light. Source: Explanatory Supplement to the
// Astronomical Almanac 1992.
bool apparent(const Bodies& bodies, const ObserverState& observer, const StateSource& source,
              Instant t, double light_time, ApparentPlace& out,
              std::optional<Instant>* failed_at = nullptr);

// The same by the modern reduction: light time to convergence, deflection by the Sun, Jupiter
// and Saturn, relativistic aberration, all from the barycentre of the solar system.
bool apparent_modern(const Bodies& bodies, const ObserverState& observer,
                     const StateSource& source, Instant t, double light_time,
                     ApparentPlace& out);

}  // namespace solsys
