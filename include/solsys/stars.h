/// \file
/// Star records and the places of stars in bulk.
///
/// Directions are J2000 equatorial (ICRS axes serve as well), epoch J2000.0; proper motions are
/// per Julian year. The motion is linear in rectangular coordinates, with the radial velocity's
/// term: within 0.02 mas in 50 years of the rigorous motion for every naked-eye star.
#pragma once

#include <cstddef>
#include <cstdint>

#include "solsys/export.h"

/// What stands for an unknown value in the single-precision fields of a star: any value above
/// 999998 is taken as unknown.
constexpr float STAR_UNKNOWN = 999999.0F;

/// A star.
struct StarObject {
    std::uint8_t lead[8] = {};             ///< the host's own; not read
    double ra = 0;                         ///< right ascension at J2000.0 [rad]
    double dec = 0;                        ///< declination at J2000.0 [rad]
    float pm_ra = STAR_UNKNOWN;            ///< d(ra)/dt [rad/year], without cos(dec)
    float pm_dec = STAR_UNKNOWN;           ///< d(dec)/dt [rad/year]
    float parallax = STAR_UNKNOWN;         ///< [rad]
    float radial_velocity = STAR_UNKNOWN;  ///< [km/s], positive receding
    float magnitude = STAR_UNKNOWN;        ///< visual
    float angular_size = 0;  ///< of a deep-sky object, across [rad]; 0 or above 999998: unknown
};

#pragma pack(push, 1)
/// A star of a packed catalogue, 19 bytes, relative to the base vector of its zone. The members
/// are unaligned: read them by value.
struct Tycho2SphRecord {
    std::uint8_t lead[5];           ///< not read here
    std::int16_t offset[3];         ///< unit direction less the base vector, units by class
    std::int16_t proper_motion[3];  ///< units of 2^-29 per year
    std::int16_t parallax;          ///< units of 0.1 mas, 4.848136811095e-10 rad
};
#pragma pack(pop)

static_assert(offsetof(StarObject, ra) == 8 && offsetof(StarObject, pm_ra) == 24 &&
              offsetof(StarObject, magnitude) == 40 &&
              offsetof(StarObject, angular_size) == 44 && sizeof(StarObject) == 48);
static_assert(sizeof(Tycho2SphRecord) == 19 && offsetof(Tycho2SphRecord, offset) == 5 &&
              offsetof(Tycho2SphRecord, proper_motion) == 11 &&
              offsetof(Tycho2SphRecord, parallax) == 17);

/// Direction of a packed catalogue star for an observer: proper motion, parallax, aberration.
///
/// \param[in]  years     Julian years since J2000.0.
/// \param[in]  observer  heliocentric state: position [au], velocity [au/day], J2000 equator.
/// \param[out] out       direction, aberrated, of about unit length (not normalised).
/// \param[in]  base      base vector of the star's zone.
/// \param[in]  star      the packed record.
/// \param[in]  precision class of the record. 7: offsets in units of 1/32767, neither proper
///                       motion nor parallax. All others: offsets in units of 1e-5. Below 4:
///                       proper motion applied. Below 2: parallax too, where it exceeds 1e-6
///                       rad.
/// \param[out] distance  [au]; -1.0 when the class or the record holds no usable parallax.
///
/// Aberration is relativistic and uses the light time 0.0057755 day/au.
SOLSYS_API void CalcProperMotion(double years, const double observer[6], double out[3],
                                 const double base[3], const Tycho2SphRecord* star,
                                 unsigned char precision, double& distance);

/// Direction of a star by plain values: proper motion, parallax, radial velocity, aberration.
///
/// \param[in]  years     Julian years since J2000.0.
/// \param[in]  observer  heliocentric state: position [au], velocity [au/day], J2000 equator.
/// \param[out] out       unit direction (to rounding), aberrated; no light deflection.
/// \param[in]  ra,dec    at J2000.0 [rad].
/// \param[in]  pm_ra,pm_dec  d(ra)/dt and d(dec)/dt [rad/year]; an unknown one counts as zero.
/// \param[in]  parallax  [rad]; applied when positive and known.
/// \param[in]  radial_velocity  [km/s]; applied when known, with the parallax.
/// \param[out] distance  light years, with 0.3066 parsec to the light year; -1.0 without a
///                       parallax.
///
/// Values above 999998 are unknown. Aberration uses the light time 0.0057755 day/au.
SOLSYS_API void CalcProperMotionD(double years, const double observer[6], double out[3],
                                  double ra, double dec, double pm_ra, double pm_dec,
                                  double parallax, double radial_velocity, double& distance);
