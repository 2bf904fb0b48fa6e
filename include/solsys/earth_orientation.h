/// \file
/// Precession, nutation, obliquity, sidereal time, and the frames of an orbit.
///
/// Instants are split Julian dates, day + fraction, in dynamical time (TT; TDB serves as well:
/// 2 ms are worth 4e-9 arcsec here). Angles are radians; matrices are 9 doubles, row-major,
/// applied to column vectors; none of the pointers may be null. An instant that is not finite
/// gives NaN in every output.
///
/// This is the classic reduction (IAU 1976 and 1980), which the model's frames stand on.
#pragma once

#include "solsys/export.h"

/// Short nutation model: mean obliquity, nutation in longitude and in obliquity.
///
/// Two terms each: within 0.72 arcsec in longitude and 0.27 arcsec in obliquity of the IAU 1980
/// series, 1900 to 2100; the mean obliquity within 0.007 arcsec of IAU 1976.
/// \param      day,fraction  instant, TT
/// \param[out] obliquity     of the mean equator of date to the ecliptic of date [rad]
/// \param[out] d_psi         nutation in longitude [rad]
/// \param[out] d_epsilon     nutation in obliquity [rad]
///
/// Source: Bretagnon & Simon 1986, Planetary Programs and Tables; obliquity of Laskar 1986,
/// Astron. Astrophys. 157, 59.
SOLSYS_API void NutBretagnon(int day, double fraction, double* obliquity, double* d_psi,
                             double* d_epsilon);

/// True obliquity by the short model.
/// \param day,fraction  instant, TT
/// \return mean obliquity + nutation in obliquity [rad]
SOLSYS_API double EclipseAngle(int day, double fraction);

/// Rotation R1(-(true obliquity)) by the short model:
/// V(true equator of date) = M V(true ecliptic of date).
/// \param      day,fraction  instant, TT
/// \param[out] matrix        3x3
SOLSYS_API void GetMtrxEcl2Eq(int day, double fraction, double* matrix);

/// Nutation by the short model, R1(-(eps + d_epsilon)) R3(-d_psi) R1(eps):
/// V(true equator and equinox of date) = N V(mean equator and equinox of date).
/// \param      day,fraction  instant, TT
/// \param[out] matrix        N, 3x3
/// \param[out] obliquity     mean obliquity eps [rad]
/// \param[out] d_epsilon     nutation in obliquity [rad]
/// \param[out] d_psi         nutation in longitude [rad]; mind the order of the two
SOLSYS_API void Nutation(int day, double fraction, double* matrix, double* obliquity,
                         double* d_epsilon, double* d_psi);

/// IAU 1980 nutation, 106 terms, term by term.
/// \param      day,fraction  instant, TT
/// \param[out] obliquity     mean obliquity of IAU 1976 [rad]
/// \param[out] d_psi         nutation in longitude [rad]
/// \param[out] d_epsilon     nutation in obliquity [rad]
///
/// Agrees with other evaluations of the series to rounding. The pole of IAU
/// 2006/2000A leaves it, with the precession below, by up to 0.050 arcsec from 1962 to 2026.
/// Source: Seidelmann 1982, Celest. Mech. 27, 79.
SOLSYS_API void NutationSeidelman(int day, double fraction, double& obliquity, double& d_psi,
                                  double& d_epsilon);

/// The same series with sines and cosines of the five fundamental arguments only, the others by
/// addition of angles; the same values to rounding, sooner.
/// \param      day,fraction  instant, TT
/// \param[out] obliquity     mean obliquity of IAU 1976 [rad]
/// \param[out] d_psi         nutation in longitude [rad]
/// \param[out] d_epsilon     nutation in obliquity [rad]
SOLSYS_API void NutationSeidelmanBest(int day, double fraction, double& obliquity,
                                      double& d_psi, double& d_epsilon);

/// Precession IAU 1976, P = R3(-z) R2(theta) R3(-zeta):
/// V(mean equator and equinox of epoch 1) = P V(mean equator and equinox of epoch 0).
/// \param      day0,fraction0  epoch 0, TT
/// \param      day1,fraction1  epoch 1, TT
/// \param[out] matrix          P, 3x3
/// \param[out] zeta,z,theta    the three angles [rad]
///
/// The angles agree with the theory to rounding. The matrix forms sines from cosines and loses
/// digits for short spans: elements within 2e-14 over a century, 1e-12 over a year, 4e-10 over
/// a day; an angle below 1.5e-8 rad (an hour) counts as none. From J2000 it turns away from IAU
/// 2006 by 0.31 arcsec in 2100, 0.63 in 2200 and 3.9 in 3000.
///
/// Source: Lieske, Lederle, Fricke & Morando 1977, Astron. Astrophys. 58, 1.
SOLSYS_API void Precession(int day0, double fraction0, int day1, double fraction1,
                           double* matrix, double* zeta, double* z, double* theta);

/// Greenwich sidereal angle: from the equinox of date to the Greenwich meridian,
/// V(Earth-fixed) = R3(angle) V(equator and equinox of date).
/// \param apparent      with the equation of the equinoxes of the short nutation model
/// \param day,fraction  instant, TT; universal time is that less `ET_UT::Get`
/// \return [0, 2 pi)
///
/// Source: Aoki et al. 1982, Astron. Astrophys. 105, 359 (IAU 1982).
SOLSYS_API double SiderialTime(bool apparent, int day, double fraction);

/// Frame of a state: V(towards the centre, along, normal) = M V(frame of r and v). Row 0 points
/// towards the central body, row 2 along the orbit's normal, row 1 = row 2 x row 0.
/// \param      r,v     position and velocity, 3 elements each, any units
/// \param[out] matrix  3x3. Both vectors zero: the identity. One of them zero, or both
/// parallel:
///                     no normal, NaN.
SOLSYS_API void RNB_matrix(const double* r, const double* v, double* matrix);

/// Shape of the orbit of a two-body state.
/// \param      mu     sum of the gravitational parameters, in the units of r and v
/// \param      r,v    position and velocity, 3 elements each
/// \param[out] p      semi-latus rectum |r x v|^2 / mu
/// \param[out] e      eccentricity; a reciprocal semi-major axis within 1e-9 of 0 (in the unit
///                    of 1/r) counts as a parabola: 1
/// \param[out] angle  polar angle acos(x/|r|), negative for y < 0 [rad]
///
/// Source: the vis-viva integral; Danby 1988, Fundamentals of Celestial Mechanics.
SOLSYS_API void CalcPEM(double mu, const double* r, const double* v, double* p, double* e,
                        double* angle);

/// Perifocal frame of a two-body state: V(perifocal) = F V(frame of r and v).
/// \param      mu     sum of the gravitational parameters, in the units of r and v
/// \param      r,v    position and velocity, 3 elements each
/// \param[out] frame  F, 3x3, by rows: P towards the pericentre, Q 90 degrees ahead, W along
/// the
///                    normal. Below an eccentricity of 1e-4 P points to the position. A radial
///                    state has no plane and gives NaN.
///
/// Source: the eccentricity vector v x h - mu r/|r|; Danby 1988.
SOLSYS_API void Eq_Orb(double mu, const double* r, const double* v, double* frame);
