/// \file
/// Records of the bodies a host adds to a model: asteroids, comets, spacecraft, own objects.
///
/// Angles of all elements refer to the J2000 ecliptic unless said otherwise; times are TDB.
#pragma once

#include <cstdint>

#include "solsys/kepler.h"
#include "solsys/sso_id.h"

/// An asteroid (`astr`): heliocentric osculating elements and the H-G magnitude parameters.
struct AsteroidRecord {
    Elements elements{};    ///< J2000 ecliptic, heliocentric
    float H = 99.0F;        ///< absolute magnitude
    float G = 0.15F;        ///< slope parameter
    double radius_km = -1;  ///< -1: unknown
};

/// A comet (`comt`): heliocentric osculating elements and its magnitude law
/// H + 5 log10(distance) + K log10(r).
struct CometRecord {
    Elements elements{};
    float H = 99.0F;
    float K = 10.0F;
};

/// One stretch of a spacecraft's trajectory (`scft`): elements about a central body, in force
/// from their epoch until the next record's. Records are kept in the order of their epochs.
struct SpacecraftRecord {
    std::int32_t central_type = SSO_PLNT;
    std::int32_t central_number = 10;
    std::int32_t epoch_day = 0;  ///< epoch of the elements and start of the stretch
    double epoch_fraction = 0;
    double q = 0;  ///< pericentre distance [au], whatever the eccentricity
    double e = 0;
    double i = 0;     ///< [rad], J2000 ecliptic
    double node = 0;  ///< [rad]
    double peri = 0;  ///< [rad]
    double n = 0;     ///< mean motion [rad/day]
    double M = 0;     ///< mean anomaly at the epoch [rad]
};

/// An object given by a state vector about a central body (`uSCO`), moved as a two-body orbit.
/// Within 1e-6 of e = 1 it is moved as a parabola; a fall along the radius has no state.
struct UserObjectRecord {
    std::int32_t central_type = SSO_PLNT;
    std::int32_t central_number = 3;
    std::int32_t epoch_day = 0;
    double epoch_fraction = 0;
    /// Position [au] and velocity [au/day] at the epoch, relative to the central body, along
    /// the axes of its equatorial frame at the epoch (`CSWSolSys::GetMtrxEq2K_PlEq`; about the
    /// Earth and bodies without rotation elements: the J2000 equator).
    double state[6] = {};
};
