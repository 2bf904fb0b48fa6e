/// \file
/// Vectors, matrices, angles and scalars: the plain functions every part of the library uses.
///
/// A vector is an array of `double`; a matrix is row-major, element (i, j) of an n x m matrix
/// at m i + j, and is applied to column vectors. Angles are radians. A spherical vector is
/// (modulus, longitude in [0, 2 pi), latitude in [-pi/2, pi/2]); a planetographic position is
/// (height, longitude, geodetic latitude), the height in the unit of the equatorial radius.
/// Outputs may be inputs unless said otherwise. Nothing allocates, holds state or throws.
#pragma once

#include <cstdint>

#include "solsys/export.h"

/// An angle or a time split into sexagesimal parts.
struct GMSAngle {
    std::int16_t degrees;  ///< whole degrees or hours
    std::int16_t minutes;  ///< 0 to 59
    float seconds;         ///< 0 <= s < 60
    char sign;             ///< '+' or '-'; 'a' or 'p' on the 12-hour clock
};

extern "C" {

/// \name Vectors
/// @{

/// Dot product of n elements.
SOLSYS_API double SVprod(const double* a, const double* b, short n);
/// Euclidean norm of n elements.
SOLSYS_API double Vmod(const double* v, short n);
/// out = a x b.
SOLSYS_API void Vprod(const double* a, const double* b, double* out);
/// out = a + b (3 elements).
SOLSYS_API void Vadd(const double* a, const double* b, double* out);
/// out = ka a + kb b (3 elements). \return out
SOLSYS_API double* Vmmad(const double* a, double ka, const double* b, double kb, double* out);
/// Unit vector and modulus of n elements. A modulus below 1e-13 gives (0, 0, 1) in the first
/// three elements and leaves the rest of `out` alone.
SOLSYS_API void Vnorm(const double* v, double* out, short n, double* modulus);
/// Normalises a 3-vector in place, without a zero test.
SOLSYS_API void Vnorm2(double* v);
/// Angle between two 3-vectors, in [0, pi]; when `oriented` is not 0, in [0, 2 pi), the sense
/// taken from a component of a x b. Within 1e-12 of parallel or antiparallel: 0 or pi; a zero
/// vector gives 0.
SOLSYS_API double VectorsAngle(short oriented, const double* a, const double* b);
/// @}

/// \name Matrices
/// @{

/// C (n x p) = A (n x m) B (m x p).
SOLSYS_API void Mprod(const double* A, const double* B, double* C, short n, short m, short p);
/// out = transpose(M) v for a 3x3 matrix.
SOLSYS_API void V3Mprod(const double* v, const double* M, double* out);
/// out = M v for a 3x3 matrix.
SOLSYS_API void MV3prod(const double* M, const double* v, double* out);
/// C = A B for 3x3 matrices.
SOLSYS_API void M3prod(const double* A, const double* B, double* C);
/// Applies A, of row stride n, to `count` consecutive vectors of m elements:
/// out[k m + i] = sum over j < m of A[i n + j] vecs[k m + j], i < n. `out` is not an input.
SOLSYS_API void MVarrProd(const double* A, const double* vecs, double* out, short n, short m,
                          short count);
/// B (cols x rows) = transpose of A (rows x cols). B is not A.
SOLSYS_API void Mtrans(const double* A, double* B, short rows, short cols);
/// Active rotation about the unit axis u by the angle of cosine c and sine s.
SOLSYS_API void M3rot(const double* u, double c, double s, double* out);
/// @}

/// \name Spherical and planetographic coordinates
/// @{

/// Spherical coordinates; `modulus` is the caller's. At a modulus up to 1e-13 the angles are 0.
/// Within 1e-13 of an axis the angles are those of the axis, and the -y axis has longitude
/// -pi/2.
SOLSYS_API void psf(const double* xyz, double modulus, double* out);
/// The same without the special cases of the axes; modulus 0 gives zeros.
SOLSYS_API void psf1(const double* xyz, double modulus, double* out);
/// Cartesian coordinates of a spherical vector. One of each sine and cosine is formed from the
/// other: near an axis the small one carries an absolute error of up to 1e-8.
SOLSYS_API void sfp(const double* sph, double* out);
/// The same.
SOLSYS_API void sfp1(const double* sph, double* out);
/// (1/modulus, longitude, latitude): the reciprocal modulus. A modulus below 1e-13 prints
/// "Vector module is too small to convert to spherical coordinates" to standard output and
/// leaves `out` alone.
SOLSYS_API void cartesianToSpherical(const double* xyz, double* out);
/// Planetographic to planetocentric Cartesian, equatorial radius a, flattening f.
SOLSYS_API void Plg2Plc(double a, double f, const double* geo, double* out);
/// The inverse. \return number of iterations, or -1 when they stopped converging (the outputs
/// are written all the same). The longitude is in (-pi, pi]. On the axis the latitude is
/// +-pi/2 and the height exact, after 0 iterations, as on the equator.
SOLSYS_API int Plc2Plg(double a, double f, const double* xyz, double* out);
/// @}

/// \name Angles and scalars
/// @{

/// Fast sine and cosine: within 4e-16 of the exact value up to 2 pi, then within 2e-16 of the
/// argument (one-step reduction). From 1e9 on the standard library's sine and cosine answer;
/// what is not finite gives NaN.
SOLSYS_API double fmSin(double x);
SOLSYS_API double fmCos(double x);
/// Sexagesimal parts to radians. Modes: 0 to 2 degrees, 3 hours, 4 hours of the 12-hour clock.
/// 12 o'clock 'a' is midnight, 12 'p' noon. \return the record's sign
SOLSYS_API char GMS2Rad(const GMSAngle* record, double* radians, short mode);
/// Radians to sexagesimal parts. Modes: 0 [0, 360) degrees, 1 (-180, 180] degrees, 2 latitude
/// (folded at 90 degrees), 3 hours, 4 the 12-hour clock; any other acts like 0. What is not
/// finite leaves zeros. The return value means nothing.
SOLSYS_API int Rad2GMS(double radians, GMSAngle* record, short mode);
/// Rounds the seconds to a whole number, with carry into minutes and degrees.
SOLSYS_API void Round_DMS(GMSAngle* record);
/// Rounds half away from zero.
SOLSYS_API double Round_LDouble(double x);
/// a if b >= 0, else -a.
SOLSYS_API double sign(double a, double b);
/// pow(base, e), and -pow(|base|, e) for a negative base when |e| exceeds its rounded value by
/// more than 1e-16: SafePow(-8, 1/3.) is -2.
SOLSYS_API double SafePow(double base, double e);
/// Decimal text of a number with a terminating NUL, at most 12 bytes. \return the NUL's place
SOLSYS_API char* fast_itoa10(std::int32_t value, char* buffer);
/// Placeholders: both answer 0.
SOLSYS_API int solveCubic(void);
SOLSYS_API int solveQuatric(void);
/// Root of f between a and b, where it has opposite signs (not tested), to `tol` and the
/// spacing of doubles (Brent's method). End points that are not finite give NaN; any function,
/// one that answers NaN included, ends the search after a bounded number of calls.
///
/// Source: Forsythe, Malcolm & Moler 1977, Computer Methods for Mathematical Computations,
/// after Brent 1973.
SOLSYS_API double Zeroin(double a, double b, double (*f)(double), double tol);
/// @}
}
