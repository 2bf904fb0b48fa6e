/// \file
/// Precession, nutation, obliquity, sidereal time, and the frames of an orbit.
///
/// Instants are split Julian dates in dynamical time. Angles are radians; matrices are 9
/// doubles, row-major, applied to column vectors. An instant that is not finite gives NaN.
#pragma once

#include "solsys/export.h"

/// Short nutation model: mean obliquity, nutation in longitude and in obliquity.
///
/// Two terms each: within 0.72 arcsec in longitude and 0.27 arcsec in obliquity of the IAU 1980
/// series, 1900 to 2100; the mean obliquity within 0.007 arcsec of IAU 1976.
/// Source: Bretagnon & Simon 1986, Planetary Programs and Tables; obliquity of Laskar 1986,
/// Astron. Astrophys. 157, 59.
SOLSYS_API void NutBretagnon(int day, double fraction, double* obliquity, double* d_psi,
                             double* d_epsilon);
/// True obliquity by the short model.
SOLSYS_API double EclipseAngle(int day, double fraction);
/// Ecliptic of date to equator of date, by the true obliquity.
SOLSYS_API void GetMtrxEcl2Eq(int day, double fraction, double* matrix);
/// Mean equator of date to true equator of date by the short model, and its angles.
SOLSYS_API void Nutation(int day, double fraction, double* matrix, double* obliquity,
                         double* d_epsilon, double* d_psi);
/// IAU 1980 nutation, 106 terms, term by term: mean obliquity, nutation in longitude and in
/// obliquity. Source: Seidelmann 1982, Celest. Mech. 27, 79.
SOLSYS_API void NutationSeidelman(int day, double fraction, double& obliquity, double& d_psi,
                                  double& d_epsilon);
/// The same series with sines and cosines of the five fundamental arguments only.
SOLSYS_API void NutationSeidelmanBest(int day, double fraction, double& obliquity,
                                      double& d_psi, double& d_epsilon);
/// Mean equator of epoch 0 to mean equator of epoch 1, and the three angles.
/// The angles agree with the theory to rounding. The matrix forms sines from cosines and loses
/// digits for short spans: elements within 2e-14 over a century, 1e-12 over a year, 4e-10 over
/// a day; an angle below 1.5e-8 rad (an hour) counts as none. Source: IAU 1976; Lieske et al.
/// 1977, Astron. Astrophys. 58, 1.
SOLSYS_API void Precession(int day0, double fraction0, int day1, double fraction1,
                           double* matrix, double* zeta, double* z, double* theta);
/// Greenwich sidereal angle in [0, 2 pi), mean or apparent. Universal time is taken from the
/// dynamical instant by `ET_UT::Get`. Source: IAU 1982; Aoki et al. 1982, Astron. Astrophys.
/// 105, 359.
SOLSYS_API double SiderialTime(bool apparent, int day, double fraction);

/// Frame of a state: row 0 towards the central body, row 2 along the orbit normal, row 1 =
/// row 2 x row 0. Zero vectors give the identity; one zero vector, or parallel ones, have no
/// normal and give NaN.
SOLSYS_API void RNB_matrix(const double* r, const double* v, double* matrix);
/// Semi-latus rectum, eccentricity, and the polar angle acos(x/|r|), negative for y < 0, of a
/// two-body state; `mu` is the sum of the GM, in the units of r and v. A reciprocal semi-major
/// axis within 1e-9 of 0 counts as a parabola: e = 1.
SOLSYS_API void CalcPEM(double mu, const double* r, const double* v, double* p, double* e,
                        double* angle);
/// Perifocal frame: P, Q, W as nine doubles. Below an eccentricity of 1e-4 the pericentre is
/// taken at the position. A radial state has no plane and gives NaN.
SOLSYS_API void Eq_Orb(double mu, const double* r, const double* v, double* frame);
