/// \file
/// Orientation of the bodies: where the pole of a body points and how far it has turned.
///
/// The published elements of a body are the right ascension alpha0 and declination delta0 of
/// its north pole on the J2000 equator and the angle W, measured along its equator from the
/// ascending node on the J2000 equator (at right ascension alpha0 + 90 deg) to its prime
/// meridian.
///
/// The body matrices of this library are written in an angle alpha of their own, 90 degrees
/// minus the right ascension of the pole: the third column, the pole, is (cos delta sin alpha,
/// cos delta cos alpha, sin delta). Whoever starts from published elements hands over alpha =
/// pi/2 - alpha0; `EncodeBodyRotation` does so. The right ascension that `BodyRotationParams`
/// encodes is this angle alpha as well.
#pragma once

#include <cstdint>

#include "solsys/export.h"

/// Rotation of a body in single precision, as the registry of `CSWSolSys` keeps it.
///
/// Single precision limits what it can say: the pole to about 5e-4 rad at worst (alpha near 0
/// or pi, where its cosine is flat; 1e-7 rad elsewhere) and the rate to 6e-8 of itself, which
/// for a body turning once a day is 1.4e-4 rad after a year.
struct BodyRotationParams {
    float e;  ///< encoded angle alpha: cos alpha + 2 if sin alpha >= 0, else cos alpha - 2
    float sin_dec;  ///< sine of the pole's declination
    float w0;       ///< prime-meridian angle at JD 2451545.0 [rad]
    float rate;     ///< its rate [rad/day]
};

/// Key of the registry: type code and number of an `SSO_ID`, ordered by type, then by number.
struct ObjectKey {
    std::int32_t type;    ///< type code
    std::int32_t number;  ///< number within the type

    /// By type, then by number.
    friend bool operator<(const ObjectKey& a, const ObjectKey& b) {
        return a.type != b.type ? a.type < b.type : a.number < b.number;
    }
    /// The same type and number.
    friend bool operator==(const ObjectKey& a, const ObjectKey& b) {
        return a.type == b.type && a.number == b.number;
    }
};

/// Rotation elements of a body at an instant, as the body catalogue refers to them.
///
/// \param      day, fraction  Julian date, TDB [day]
/// \param      body           body number (5 Jupiter, 10 the Sun, 301 the Moon, 501 Io, ...)
/// \param[out] ra, dec        right ascension and declination of the north pole, J2000 equator
///                            [rad]
/// \param[out] w              prime-meridian angle W, in [0, 2 pi) [rad]
/// \return false, and three zeros, for a body without published elements and for an instant
///         that is not finite
using RotationElementsFn = bool (*)(int day, double fraction, int body, double* ra, double* dec,
                                    double* w);

/// One number for an angle: its cosine plus 2 when its sine is not negative, minus 2 when it
/// is.
/// \param angle  [rad], finite
/// \return the encoded angle
SOLSYS_API double EncodeRightAscension(double angle);

/// Cosine and sine of an encoded angle. The cosine is clamped to [-1, 1] for the sine's sake.
/// \param      e       the encoded angle
/// \param[out] cosine  of the angle
/// \param[out] sine    of the angle
SOLSYS_API void DecodeRightAscension(double e, double* cosine, double* sine);

/// The registry's record of a body from published elements.
/// \param pole_ra, pole_dec  north pole, J2000 equator [rad]
/// \param w0                 prime-meridian angle at JD 2451545.0 [rad]
/// \param rate               its rate [rad/day]
SOLSYS_API BodyRotationParams EncodeBodyRotation(double pole_ra, double pole_dec, double w0,
                                                 double rate);

/// Orientation of a body by the compiled-in table of rotation elements.
///
/// \param      day, fraction  Julian date, TDB [day]
/// \param      body           row of the table, 1 to 46: 1-9 Mercury to Pluto, 10 the Moon,
///                            11 the Sun, 12-46 the major satellites in the order of their
///                            planets (`PlanetographicalIndex`). This is not a body number.
/// \param      m              3x3, row-major: equatorial frame wanted from J2000 equator,
///                            applied from the left: V(wanted) = m V(J2000 equator); not used
///                            for the Earth (row 3)
/// \param[out] out_transposed 3x3, row-major: the transpose of `out`
/// \param[out] out            3x3, row-major: V(wanted) = out V(body-fixed). Row 3:
///                            the rotation about z by the apparent sidereal time of Greenwich.
///
/// The pole and the prime meridian are those of the 1994 report; the secular terms are
/// evaluated with a time argument of ten thousand Julian years, so that poles move a hundredth
/// of their published rates, and the Sun's W stays near 84.1 deg. Use the catalogue's rotation
/// elements (`CSWSolSys::GetMtrxPl_Eq`) for present-day values. Rows 14 (Io) and 28 (Hyperion)
/// and an index outside the table have no elements: all angles are zero.
///
/// Source: Davies et al. 1996, Celest. Mech. Dyn. Astron. 63, 127.
SOLSYS_API void PlanetographicalMatrix(int day, double fraction, short body, const double* m,
                                       double* out_transposed, double* out);

/// Row of `PlanetographicalMatrix`'s table for a body number (1-9, 10 the Sun, 301 the Moon,
/// 401, ...), or 0 when the table has none.
SOLSYS_API short PlanetographicalIndex(int body);
