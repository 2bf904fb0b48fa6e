// The difference of two bodies' apparent angles, as the conjunction search defines it.
#pragma once

#include "core/linalg.h"
#include "solsys/solar_system.h"

namespace solsys::conjunctions {

// Two bodies in the order in which the difference is taken.
struct BodyPair {
    SSO_ID first, second;
    [[nodiscard]] bool has_moon() const;
};

// The Moon first; of two planets the Sun, else the lower number; else the order asked for.
BodyPair ordered(const SSO_ID& a, const SSO_ID& b);

// Angle from the second to the first direction about the z axis [rad], in [-pi, pi]: positive
// where the first stands to the east. NaN for a direction on the axis.
double angle_about_pole(Vec3 first, Vec3 second);

// Moves the model to the instant and answers the difference of the apparent right ascensions,
// or ecliptic longitudes, of date [rad]; NaN when one of the bodies cannot be computed.
double difference(CSWSolSys& model, const BodyPair& pair, bool ecliptic, double jd_tt);

// Angle between the apparent directions at the model's instant [rad]; NaN likewise.
double separation(CSWSolSys& model, const BodyPair& pair);

}  // namespace solsys::conjunctions
