// Where an observer is and which way its frames point: from the record to all that follows from
// it at an instant.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "frames/frame_set.h"
#include "solsys/bodies.h"
#include "solsys/deflection.h"
#include "solsys/observer.h"

namespace solsys {

// What places relative to an observer need of it.
struct ObserverPlace {
    bool known = true;     // false: its body cannot be computed at the instant
    State relative{};      // to the centre of its body, J2000 equator
    State heliocentric{};  // J2000 equator
    Vec3 velocity_c{};     // velocity in units of light's: heliocentric, modern: barycentric
    double lorentz_reciprocal = 1.0;  // sqrt(1 - |velocity_c|^2)
    State sun{};                      // modern reduction: of the barycentre; else zero
    DeflectingBodies bending;         // modern reduction: who bends light on its way here
};

// Which way its frames point, named target_from_source.
struct ObserverFrames {
    Mat3 cur_from_body = kIdentity;      // body-fixed frame to the equator of date
    Mat3 body_from_j2000 = kIdentity;    // J2000 equator to the observer body's frame
    Mat3 j2000_from_body = kIdentity;    // its transpose, as GetMtrxEq2K_PlEq gives it
    Mat3 body_from_horizon = kIdentity;  // columns north, west, zenith
    Mat3 orbit_from_j2000 = kIdentity;   // rows: to the centre, backwards, the normal
};

struct ObserverState {
    OBSERVER record;
    ObserverPlace place;
    ObserverFrames frames;

    [[nodiscard]] BodyKey body() const { return {record.body_type, record.body_number}; }
    [[nodiscard]] bool on_earth() const { return body() == kEarthKey; }
};

// Whether an observer can be placed: kinds with a place of their own have a finite location.
bool well_formed(const OBSERVER& record);

// All that follows from the record at an instant whose frames are `frames`. Kinds without a
// place (4, 5) keep the one they had; the orbit frame is kept where there is none.
void derive_observer(const Bodies& bodies, Instant t, const FrameSet& frames,
                     ObserverState& observer);

// What an observer on the surface has instead of one at the centre of the same body: for many
// of them at one instant, for which `at_centre` and `frames` were derived.
ObserverState on_surface(const Bodies& bodies, const FrameSet& frames,
                         const ObserverState& at_centre, const OBSERVER& record);

// The frame of the observer's body that turns with it, at an instant: the identity without
// rotation elements.
void orient_body_frame(const Bodies& bodies, BodyKey body, Instant t,
                       const Mat3& cur_from_j2000, ObserverFrames& out);

}  // namespace solsys
