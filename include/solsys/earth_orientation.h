/// \file
/// Precession, nutation, obliquity, sidereal time, and the frames of an orbit.
///
/// Instants are split Julian dates in dynamical time. Angles are radians; matrices are 9
/// doubles, row-major, applied to column vectors.
#pragma once

#include "solsys/export.h"

/// Short nutation model: mean obliquity, nutation in longitude and in obliquity.
///
/// Two terms each, good to 1 arcsec in longitude and 0.4 arcsec in obliquity against the full
/// series. Source: Bretagnon & Simon 1986, Planetary Programs and Tables.
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
/// Source: IAU 1976; Lieske et al. 1977, Astron. Astrophys. 58, 1.
SOLSYS_API void Precession(int day0, double fraction0, int day1, double fraction1,
                           double* matrix, double* zeta, double* z, double* theta);
/// Greenwich sidereal angle in [0, 2 pi), mean or apparent. Universal time is taken from the
/// dynamical instant by `ET_UT::Get`. Source: IAU 1982; Aoki et al. 1982, Astron. Astrophys.
/// 105, 359.
SOLSYS_API double SiderialTime(bool apparent, int day, double fraction);

/// Frame of a state: row 0 towards the central body, row 2 along the orbit normal, row 1 =
/// row 2 x row 0. Zero vectors give the identity.
SOLSYS_API void RNB_matrix(const double* r, const double* v, double* matrix);
/// Semi-latus rectum, eccentricity, and the polar angle acos(x/|r|), negative for y < 0.
SOLSYS_API void CalcPEM(double mu, const double* r, const double* v, double* p, double* e,
                        double* angle);
/// Perifocal frame: P, Q, W as nine doubles. Below an eccentricity of 1e-4 the pericentre is
/// taken at the position.
SOLSYS_API void Eq_Orb(double mu, const double* r, const double* v, double* frame);
