/// \file
/// Records of the bodies a host adds to a model: asteroids, comets, spacecraft, own objects.
///
/// Angles of all elements refer to the J2000 ecliptic unless said otherwise; times are TDB.
#pragma once

#include <cstdint>

#include "solsys/export.h"
#include "solsys/kepler.h"
#include "solsys/sso_id.h"

/// Heliocentric elements of a comet or minor planet as catalogues print them: by perihelion.
///
/// \param[in]  q             perihelion distance [au], above 0
/// \param[in]  e             eccentricity, 0 or more; within 1e-6 of 1 the orbit is a parabola
/// \param[in]  i,node,peri   inclination, ascending node, argument of perihelion [rad], in the
///                           frame of the record (J2000 ecliptic for the model's tables)
/// \param[in]  day,fraction  instant of perihelion, Julian date TDB
/// \param[out] out           the elements as `Kepler` takes them, the mean motion derived from
///                           the Sun's GM 0.00029591220828411956 au^3/day^2
/// \return false, and nothing written, for a null destination and for what is no orbit.
SOLSYS_API bool ElementsFromPerihelion(double q, double e, double i, double node, double peri,
                                       int day, double fraction, Elements* out);

/// Heliocentric elements of an ellipse by its mean anomaly `M` [rad] at an epoch; `a` is the
/// semi-major axis [au], above 0, `e` below 1 by more than 1e-6, `day` and `fraction` the epoch
/// (Julian date TDB). All else as in `ElementsFromPerihelion`.
SOLSYS_API bool ElementsFromMeanAnomaly(double a, double e, double i, double node, double peri,
                                        double M, int day, double fraction, Elements* out);

/// An asteroid (`astr`): heliocentric osculating elements and the H-G magnitude parameters.
struct AsteroidRecord {
    Elements elements{};    ///< J2000 ecliptic, heliocentric; n = 0: derived from the orbit
    float H = 99.0F;        ///< absolute magnitude
    float G = 0.15F;        ///< slope parameter
    double radius_km = -1;  ///< -1: unknown
};

/// A comet (`comt`): heliocentric osculating elements and its magnitude law
/// H + 5 log10(distance) + K log10(r), both in au, the second from the Sun.
struct CometRecord {
    Elements elements{};  ///< as an asteroid's
    float H = 99.0F;      ///< total magnitude at 1 au from Sun and observer
    float K = 10.0F;      ///< slope with the distance from the Sun
};

/// One stretch of a spacecraft's trajectory (`scft`): elements about a central body, in force
/// from their epoch until the next record's. Records are kept in the order of their epochs.
struct SpacecraftRecord {
    std::int32_t central_type = SSO_PLNT;  ///< of the central body, as in SSO_ID
    std::int32_t central_number = 10;      ///< of the central body: 10 is the Sun
    std::int32_t epoch_day = 0;  ///< epoch of the elements and start of the stretch, TDB
    double epoch_fraction = 0;   ///< of a day, added to epoch_day
    double q = 0;                ///< pericentre distance [au], whatever the eccentricity
    double e = 0;                ///< eccentricity, 0 or more
    double i = 0;                ///< [rad], J2000 ecliptic
    double node = 0;             ///< [rad]
    double peri = 0;             ///< [rad]
    double n = 0;  ///< mean motion [rad/day]; 0: derived from the central body's GM
    double M = 0;  ///< mean anomaly at the epoch [rad]
};

/// An object given by a state vector about a central body (`uSCO`), moved as a two-body orbit
/// in universal variables: at its epoch it is in its state to rounding (1e-15 of the distance)
/// whatever the eccentricity and inclination. The central body's GM has to be known.
/// A fall along the radius is refused.
struct UserObjectRecord {
    std::int32_t central_type = SSO_PLNT;  ///< of the central body, as in SSO_ID
    std::int32_t central_number = 3;       ///< of the central body: 3 is the Earth
    std::int32_t epoch_day = 0;            ///< epoch of the state, Julian date TDB
    double epoch_fraction = 0;             ///< of a day, added to epoch_day
    /// Position [au] and velocity [au/day] at the epoch, relative to the central body, along
    /// the axes of its equatorial frame at the epoch (`CSWSolSys::GetMtrxEq2K_PlEq`; about the
    /// Earth and bodies without rotation elements: the J2000 equator).
    double state[6] = {};
};
