// Which way the bodies of a model point.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/bodies.h"

namespace solsys {

// The rotation that a host registered for a body, or for all bodies of its type (number -1);
// null when there is neither.
const BodyRotationParams* registered_rotation(BodyKey body);

// The body's own axes at an instant (the frame that turns with it), v_body = M v_j2000, by its
// rotation elements or, failing these, by the registry; plnt 11 stands for the J2000 ecliptic.
// False, and nothing written, when there is neither; so for the Earth, whose axes are those of
// the equator of date.
bool body_frame(const Bodies& bodies, BodyKey body, Instant t, Mat3& body_from_j2000);

// v_j2000 = M v_body: the Earth's by sidereal time and the equator of date, all others' as
// above, but the elements of a body hold only for instants for which it has a place.
bool surface_frame(const Bodies& bodies, BodyKey body, Instant t, const Mat3& cur_from_j2000,
                   Mat3& j2000_from_body);
// v_cur = M v_body, on the equator of date.
bool surface_frame_of_date(const Bodies& bodies, BodyKey body, Instant t,
                           const Mat3& cur_from_j2000, Mat3& cur_from_body);

// The axes of the local horizon, columns north, west, zenith, in the body's own frame:
// v_body = M v_horizon. Longitude east and latitude [rad].
Mat3 horizon_frame(double longitude, double latitude);

// Mean solar day [day] of a body whose sidereal rotation takes `rotation` and its (a
// satellite's planet's) orbit `orbit` days: the two turns are of one sense, or opposed.
constexpr double solar_day(double rotation, double orbit, bool retrograde) {
    return orbit * rotation / (retrograde ? orbit + rotation : orbit - rotation);
}

}  // namespace solsys
