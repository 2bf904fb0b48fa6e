/// \file
/// Vectors, matrices, angles and scalars: the plain functions every part of the library uses.
///
/// A vector is an array of `double`: a position 3 elements, a state 6 (position, velocity); a
/// function of positions takes the first three of a state. A matrix is row-major, element (i,
/// j) of an n x m matrix at m i + j, and is applied to column vectors: V(B) = M V(A) for the
/// matrix M that takes frame A to frame B. Angles are radians. A spherical vector is (modulus,
/// longitude in [0, 2 pi), latitude in [-pi/2, pi/2]); a planetographic position is (height,
/// longitude, geodetic latitude), the height in the unit of the equatorial radius. Functions of
/// vectors keep whatever unit they are given.
///
/// Outputs may be inputs unless said otherwise. Nothing allocates, holds state or throws. No
/// pointer may be null. What is not finite goes in as in the formula and comes out as not a
/// number, unless said otherwise.
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

/// Dot product.
/// \param a,b  n elements each
/// \param n    number of elements; 0 or less gives 0
/// \return sum of a[i] b[i], within 1.2e-16 n of the sum of |a[i] b[i]|
SOLSYS_API double SVprod(const double* a, const double* b, short n);

/// Euclidean norm.
/// \param v  n elements
/// \param n  number of elements
/// \return sqrt of the sum of v[i]^2, to 4e-16 of it; overflows from 1.3e154 on
SOLSYS_API double Vmod(const double* v, short n);

/// Cross product, right-handed: out = a x b.
/// \param      a,b  3 elements each
/// \param[out] out  3 elements
SOLSYS_API void Vprod(const double* a, const double* b, double* out);

/// Sum of two vectors: out = a + b.
/// \param      a,b  3 elements each
/// \param[out] out  3 elements
SOLSYS_API void Vadd(const double* a, const double* b, double* out);

/// Linear combination: out = ka a + kb b.
/// \param      a,b    3 elements each
/// \param      ka,kb  factors
/// \param[out] out    3 elements
/// \return out
SOLSYS_API double* Vmmad(const double* a, double ka, const double* b, double kb, double* out);

/// Unit vector and modulus.
/// \param      v    n elements
/// \param[out] out  n elements (three at least): v over its modulus. A modulus below 1e-13
///                  gives (0, 0, 1) in the first three and leaves the rest alone.
/// \param      n    number of elements
/// \param[out] modulus  Vmod(v, n)
SOLSYS_API void Vnorm(const double* v, double* out, short n, double* modulus);

/// Normalises a vector in place, without a zero test: the zero vector becomes non-finite.
/// \param[in,out] v  3 elements
SOLSYS_API void Vnorm2(double* v);

/// Angle between two vectors of any length.
/// \param oriented  0: the angle in [0, pi]. Otherwise in [0, 2 pi), counted from a to b about
///                  +z: the sense is the sign of the z component of a x b; where that is below
///                  1e-12, of its x component; and last of minus its y component.
/// \param a,b  3 elements each
/// \return [rad]. Within 1e-12 of parallel or antiparallel in the cosine (1.4e-6 rad): 0 or pi,
///         whatever the sense; a zero vector gives 0. From the arc cosine: 1e-16 over the sine.
SOLSYS_API double VectorsAngle(short oriented, const double* a, const double* b);
/// @}

/// \name Matrices
/// @{

/// Matrix product C = A B. C is not A or B, but for the shapes 1x3 3x3, 3x3 3x1 and 3x3 3x3.
/// \param      A  n x m
/// \param      B  m x p
/// \param[out] C  n x p
/// \param      n,m,p  dimensions; with one of n and p 0 or less nothing is written
SOLSYS_API void Mprod(const double* A, const double* B, double* C, short n, short m, short p);

/// The transposed matrix applied to a vector, for a rotation the way back:
/// V(from) = transpose(M) V(to).
/// \param      v  3 elements
/// \param      M  3x3
/// \param[out] out  3 elements: out[j] = sum over i of v[i] M[3 i + j]
SOLSYS_API void V3Mprod(const double* v, const double* M, double* out);

/// A matrix applied to a vector: V(to) = M V(from).
/// \param      M  3x3
/// \param      v  3 elements
/// \param[out] out  3 elements: out[i] = sum over j of M[3 i + j] v[j]
SOLSYS_API void MV3prod(const double* M, const double* v, double* out);

/// Product of 3x3 matrices, C = A B: first B, then A.
/// \param      A,B  3x3 each
/// \param[out] C    3x3
SOLSYS_API void M3prod(const double* A, const double* B, double* C);

/// A square matrix applied to consecutive vectors:
/// out[k m + i] = sum over j < m of A[i n + j] vecs[k m + j], i < n.
/// \param      A      n x m with rows n apart: meant for n = m
/// \param      vecs   count vectors of m elements
/// \param[out] out    count vectors, m apart; is not an input
/// \param      n,m    dimensions
/// \param      count  number of vectors
SOLSYS_API void MVarrProd(const double* A, const double* vecs, double* out, short n, short m,
                          short count);

/// Transposed matrix.
/// \param      A  rows x cols
/// \param[out] B  cols x rows; is not A
/// \param      rows,cols  dimensions of A
SOLSYS_API void Mtrans(const double* A, double* B, short rows, short cols);

/// Rotation of a vector about an axis, counter-clockwise seen from its tip (active):
/// V(turned) = out V. Rodrigues' formula, c I + (1 - c) u u^T + s [u]x.
/// \param      u    the axis, a unit vector of 3 elements
/// \param      c,s  cosine and sine of the angle
/// \param[out] out  3x3, orthogonal as far as u and (c, s) are of length 1
SOLSYS_API void M3rot(const double* u, double c, double s, double* out);
/// @}

/// \name Spherical and planetographic coordinates
/// @{

/// Spherical coordinates of a position.
/// \param      xyz      3 elements
/// \param      modulus  its modulus, by the caller
/// \param[out] out      modulus, longitude, latitude. At a modulus up to 1e-13 the angles are
/// 0.
///                      Within 1e-13 of an axis they are those of the axis, and the -y axis has
///                      longitude -pi/2; otherwise the longitude is in [0, 2 pi).
SOLSYS_API void psf(const double* xyz, double modulus, double* out);

/// The same without the special cases of the axes.
/// \param      xyz      3 elements
/// \param      modulus  its modulus, by the caller; 0 gives zeros
/// \param[out] out      modulus, longitude in [0, 2 pi), latitude
SOLSYS_API void psf1(const double* xyz, double modulus, double* out);

/// Cartesian coordinates of a spherical vector. The longitude's sine follows from its cosine
/// and the latitude's cosine from its sine: near an axis the small one carries an absolute
/// error of up to 1e-8 of the modulus. \param      sph  modulus, longitude, latitude
/// \param[out] out  3 elements
SOLSYS_API void sfp(const double* sph, double* out);

/// As `sfp`.
/// \param      sph  modulus, longitude, latitude
/// \param[out] out  3 elements
SOLSYS_API void sfp1(const double* sph, double* out);

/// Reciprocal modulus and angles of a position.
/// \param      xyz  3 elements
/// \param[out] out  1/modulus, longitude in [0, 2 pi), latitude. A modulus below 1e-13 prints
///                  "Vector module is too small to convert to spherical coordinates" to
///                  standard output and leaves `out` alone.
SOLSYS_API void cartesianToSpherical(const double* xyz, double* out);

/// Planetographic to planetocentric Cartesian coordinates, body-fixed: z axis to the pole,
/// x axis to the prime meridian. Sines follow from cosines, as in `sfp`.
/// \param      a    equatorial radius
/// \param      f    flattening, 1 - polar radius / equatorial radius
/// \param      geo  height above the ellipsoid, longitude, planetographic latitude
/// \param[out] out  3 elements, in the unit of a
///
/// Source: Heiskanen & Moritz 1967, Physical Geodesy.
SOLSYS_API void Plg2Plc(double a, double f, const double* geo, double* out);

/// The inverse of `Plg2Plc`, by iteration of the latitude to 1e-14 rad. The height is the
/// difference of two lengths along the normal: good to 1e-14 a over the cosine of the latitude.
/// \param      a    equatorial radius
/// \param      f    flattening
/// \param      xyz  3 elements
/// \param[out] out  height, longitude in (-pi, pi], planetographic latitude
/// \return number of iterations; 0 on the equator and on
///         the axis, where the latitude is +-pi/2 and the height exact; -1 when the corrections
///         stopped shrinking, deep inside the body: the outputs are written all the same
SOLSYS_API int Plc2Plg(double a, double f, const double* xyz, double* out);
/// @}

/// \name Angles and scalars
/// @{

/// Fast sine: within 4e-16 of the exact value up to 2 pi, then within 2e-16 of the argument
/// (one-step reduction by pi/4, Taylor polynomials). From 1e9 on the standard library answers.
/// \param x  [rad]
/// \return sin x; not a number for what is not finite
SOLSYS_API double fmSin(double x);

/// Fast cosine, as `fmSin`.
/// \param x  [rad]
/// \return cos x
SOLSYS_API double fmCos(double x);

/// Sexagesimal parts to radians.
/// \param      record   the parts; '-' negates. Any parts: those beyond their range carry.
/// \param[out] radians  [rad]
/// \param      mode     3: hours. 4: hours of the 12-hour clock, 12 'a' midnight and 12 'p'
///                      noon. Any other: degrees.
/// \return the record's sign
SOLSYS_API char GMS2Rad(const GMSAngle* record, double* radians, short mode);

/// Radians to sexagesimal parts. 5e-8 of the unit is added before the cut, so that whole
/// seconds are not shown as 59.99...; from 59.99 on seconds carry. \param      radians  [rad];
/// what is not finite leaves zeros \param[out] record   the parts \param      mode     0 [0,
/// 360) degrees, sign '+'; 1 (-180, 180] degrees, 0 having '-';
///                      2 latitude, folded at 90 degrees; 3 hours; 4 the 12-hour clock ('a' or
///                      'p'); any other acts like 0
/// \return no meaning
SOLSYS_API int Rad2GMS(double radians, GMSAngle* record, short mode);

/// Rounds the seconds to a whole number, with carry into minutes and degrees; degrees are not
/// wrapped.
/// \param[in,out] record  the parts
SOLSYS_API void Round_DMS(GMSAngle* record);

/// Rounds half away from zero.
/// \param x  any number
/// \return trunc(x + 0.5) for x > 0, else trunc(x - 0.5)
SOLSYS_API double Round_LDouble(double x);

/// a if b >= 0, else -a: a itself is negated, not its magnitude.
/// \param a,b  any numbers
/// \return a or -a
SOLSYS_API double sign(double a, double b);

/// Power with odd roots of negative numbers: SafePow(-8, 1/3.) is -2.
/// \param base  any number
/// \param e     exponent
/// \return -pow(|base|, e) for a negative base when |e| exceeds its rounded value by more than
///         1e-16; otherwise pow(base, e), which is not a number for a negative base and e = 0.7
SOLSYS_API double SafePow(double base, double e);

/// Decimal text of a number with a terminating NUL.
/// \param      value   any
/// \param[out] buffer  12 bytes at least
/// \return the NUL's place
SOLSYS_API char* fast_itoa10(std::int32_t value, char* buffer);

/// Placeholder. \return 0
SOLSYS_API int solveCubic(void);
/// Placeholder. \return 0
SOLSYS_API int solveQuatric(void);

/// Root of a function between two points, by Brent's method.
/// \param a,b  end points, where f has opposite signs (not tested)
/// \param f    the function; called at most some times the number of halvings
/// \param tol  width wanted, besides the spacing of doubles; below 0 or not a number: 0
/// \return the root, good to tol + 4.5e-16 of it; not a number for end points that are not
///         finite. Any function, one that answers NaN included, ends the search after a bounded
///         number of calls.
///
/// Source: Forsythe, Malcolm & Moler 1977, Computer Methods for Mathematical Computations,
/// after Brent 1973.
SOLSYS_API double Zeroin(double a, double b, double (*f)(double), double tol);
/// @}
}
