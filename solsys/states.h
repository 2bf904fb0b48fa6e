// States of a model's bodies at any instant, on the J2000 equator. Everything here is a
// function of its arguments: the light-time iteration moves nothing, and what was asked before
// does not matter.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/bodies.h"
#include "solsys/kinds.h"

namespace solsys {

// An identifier looked up, so that no table is searched twice: at most one of the pointers is
// set, by its type, and perhaps a motion; none: not found. They lead into the tables.
struct StateSource {
    BodyKey body;
    const Kind* kind = nullptr;
    SS_Object* object = nullptr;
    const Elements* elements = nullptr;
    const tagAster_SPH_5* held_asteroid = nullptr;
    const tagComet_SPH_5* held_comet = nullptr;
    const SpacecraftTrack* track = nullptr;
    const UserObjectRecord* user_object = nullptr;
    // Of an integrated body; the elements or the record beside it serve where it fails.
    IntegratedMotion* motion = nullptr;
    const EarthSatellite* satellite = nullptr;

    [[nodiscard]] bool found() const {
        return object != nullptr || elements != nullptr || held_asteroid != nullptr ||
               held_comet != nullptr || track != nullptr || user_object != nullptr ||
               satellite != nullptr;
    }
};

// An asteroid that is a spacecraft's central body comes from the built-in elements of (433)
// Eros, one whose number a held record has from that, all others from their table.
StateSource find_source(const Bodies& bodies, BodyKey body);
inline StateSource find_source(const Bodies& bodies, const SSO_ID& id) {
    return find_source(bodies, body_key(id));
}

// States [au, au/day]; without `velocity` out.v is zero. False with zeros, or with the last
// iterate of an orbit that did not converge, when there is no state.

// Heliocentric. True for asteroids and comets even when there is none (zeros).
bool heliocentric(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  State& out);
// About the central body.
bool about_centre(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  State& out);
// Heliocentric about a single centre, without the blending between spacecraft records.
bool on_one_centre(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                   State& out);

// The state of an own object at its epoch about its central body.
State start_state(const Bodies& bodies, const UserObjectRecord& record);

// The central body at an instant; type and number -1: none.
BodyKey centre_of(const Bodies& bodies, BodyKey body, Instant t);

// GM [au^3/day^2]; -1.0 unknown.
double gravity_of(const Bodies& bodies, BodyKey body);

}  // namespace solsys
