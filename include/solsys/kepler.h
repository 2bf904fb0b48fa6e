/// \file
/// Two-body orbits: osculating elements to position and velocity, and back.
///
/// Lengths in au, times in days, angles in radians, velocities in au/day, gravitational
/// parameters in au^3/day^2. A time is a Julian date split into a whole day and a fraction; the
/// functions form the plain sum of both. The functions know no frame: the result is in the
/// frame of the orientation angles, or of the vectors P and Q, that are given (heliocentric
/// J2000 for catalogues). Where the Sun's parameter is needed and not given, it is the square
/// of the Gaussian constant, 0.0002959122082855911.
///
/// An orbit with |e - 1| <= 1.0000000000287557e-6 is moved as a parabola, one with e above that
/// as a hyperbola, one with e below it as an ellipse.
///
/// The functions that answer `bool` say false when an iteration reached its limit; the last
/// iterate is then written all the same. Non-finite input gives non-finite output and false, or
/// the status named, in bounded time. `velocity` zero asks for the position only and leaves the
/// velocity's doubles untouched. Pointers must not be null, unless said otherwise. Times are in
/// the scale of the elements' epoch: a dynamical one (TDB for catalogues).
///
/// Sources: Danby 1988, Fundamentals of Celestial Mechanics (elements from a state); Danby &
/// Burkardt 1983, Celest. Mech. 31, 95 (Kepler's equation); Meeus 1998, Astronomical
/// Algorithms, chapter 34 (parabolas).
#pragma once

#include <cstddef>
#include <cstdint>

#include "solsys/export.h"

/// A general set of osculating elements. Its epoch is epochDay + epochFraction.
struct Elements {
    double q;  ///< ellipse: semi-major axis a [au]; parabola and hyperbola: perihelion distance
    double e;  ///< eccentricity
    double i;  ///< inclination [rad]
    double node;  ///< longitude of the ascending node [rad]
    double peri;  ///< argument of perihelion [rad]
    /// Mean motion [rad/day]. Parabola: rate of Barker's quantity, sqrt(mu / (2 q^3)).
    /// Hyperbolas are moved with the mean motion that follows from mu, whatever stands here.
    double n;
    /// Mean anomaly at the epoch [rad]. Parabola: Barker's quantity D + D^3/3, D the tangent of
    /// half the true anomaly. Hyperbola: e sinh H - H.
    double M;
    double epochFraction;   ///< fraction of the epoch's Julian date [day]
    std::int32_t epochDay;  ///< day number of the epoch's Julian date
};

// The catalogue records hold the unit vectors P (towards perihelion) and Q (90 degrees ahead of
// it in the orbit's plane) in place of the three angles. They are laid out byte for byte as
// they are stored; the two packed ones have unaligned members, so read members by value and
// take no pointer or reference to one.
#pragma pack(push, 1)

/// Asteroid of the main catalogue: packed, 81 bytes, single precision.
struct tagAster_SPH {
    std::uint8_t identification[35];  ///< designation and photometry; not read here
    float a;                ///< semi-major axis [au]; perihelion distance if e is 1 or beyond
                            ///< and within the band of parabolas
    float e;                ///< eccentricity
    float P[3];             ///< unit vector towards perihelion
    float Q[3];             ///< unit vector 90 degrees ahead of P
    float n;                ///< mean motion [rad/day]; parabola: rate of Barker's quantity
    float M;                ///< mean anomaly (Barker's quantity) at the epoch [rad]
    std::uint8_t spare[2];  ///< not read here
    std::int32_t epochDay;  ///< the epoch is this number + 0.5, the start of a civil day
};

/// Comet of the main catalogue: packed, 147 bytes, double precision.
struct tagComet_SPH {
    std::uint8_t identification[55];  ///< designation and photometry; not read here
    double q;                         ///< perihelion distance [au]; ellipse: semi-major axis
    double e;                         ///< eccentricity
    double P[3];                      ///< unit vector towards perihelion
    double Q[3];                      ///< unit vector 90 degrees ahead of P
    double n;               ///< mean motion [rad/day]; parabola: rate of Barker's quantity
    double M;               ///< mean anomaly (Barker's quantity) at the epoch [rad]
    std::int32_t epochDay;  ///< the epoch is epochDay + epochFraction
    double epochFraction;   ///< [day]
};

#pragma pack(pop)

/// Compact asteroid record: naturally aligned, 56 bytes.
struct tagAster_SPH_5 {
    double epoch;           ///< full Julian date
    float P[3];             ///< unit vector towards perihelion
    float Q[3];             ///< unit vector 90 degrees ahead of P
    float a;                ///< semi-major axis [au]; perihelion distance if e is 1 or beyond
                            ///< and within the band of parabolas
    float e;                ///< eccentricity
    float M;                ///< mean anomaly (Barker's quantity) at the epoch [rad]
    float n;                ///< mean motion [rad/day]; parabola: rate of Barker's quantity
    std::uint8_t spare[4];  ///< not read here
    std::uint32_t number;   ///< object number, the key of the warm start
};

/// Compact comet record: naturally aligned, 96 bytes.
struct tagComet_SPH_5 {
    double P[3];            ///< unit vector towards perihelion
    double Q[3];            ///< unit vector 90 degrees ahead of P
    double q;               ///< perihelion distance [au]; ellipse: semi-major axis
    double e;               ///< eccentricity
    double M;               ///< mean anomaly (Barker's quantity) at the epoch [rad]
    double n;               ///< mean motion [rad/day]; parabola: rate of Barker's quantity
    double epoch;           ///< full Julian date
    std::uint8_t spare[4];  ///< not read here
    std::int32_t number;    ///< object number, the key of the warm start
};

static_assert(offsetof(Elements, q) == 0 && offsetof(Elements, epochFraction) == 56 &&
              offsetof(Elements, epochDay) == 64);
static_assert(sizeof(tagAster_SPH) == 81);
static_assert(offsetof(tagAster_SPH, a) == 35 && offsetof(tagAster_SPH, e) == 39 &&
              offsetof(tagAster_SPH, P) == 43 && offsetof(tagAster_SPH, Q) == 55 &&
              offsetof(tagAster_SPH, n) == 67 && offsetof(tagAster_SPH, M) == 71 &&
              offsetof(tagAster_SPH, epochDay) == 77);
static_assert(sizeof(tagComet_SPH) == 147);
static_assert(offsetof(tagComet_SPH, q) == 55 && offsetof(tagComet_SPH, e) == 63 &&
              offsetof(tagComet_SPH, P) == 71 && offsetof(tagComet_SPH, Q) == 95 &&
              offsetof(tagComet_SPH, n) == 119 && offsetof(tagComet_SPH, M) == 127 &&
              offsetof(tagComet_SPH, epochDay) == 135 &&
              offsetof(tagComet_SPH, epochFraction) == 139);
static_assert(sizeof(tagAster_SPH_5) == 56 && alignof(tagAster_SPH_5) == alignof(double));
static_assert(offsetof(tagAster_SPH_5, P) == 8 && offsetof(tagAster_SPH_5, Q) == 20 &&
              offsetof(tagAster_SPH_5, a) == 32 && offsetof(tagAster_SPH_5, e) == 36 &&
              offsetof(tagAster_SPH_5, M) == 40 && offsetof(tagAster_SPH_5, n) == 44 &&
              offsetof(tagAster_SPH_5, number) == 52);
static_assert(sizeof(tagComet_SPH_5) == 96 && alignof(tagComet_SPH_5) == alignof(double));
static_assert(offsetof(tagComet_SPH_5, Q) == 24 && offsetof(tagComet_SPH_5, q) == 48 &&
              offsetof(tagComet_SPH_5, e) == 56 && offsetof(tagComet_SPH_5, M) == 64 &&
              offsetof(tagComet_SPH_5, n) == 72 && offsetof(tagComet_SPH_5, epoch) == 80 &&
              offsetof(tagComet_SPH_5, number) == 92);

/// Position and velocity from elements.
///
/// \param[in]  velocity  zero: position only.
/// \param[in]  mu        gravitational parameter of the central body; not guarded.
/// \param[in]  day,fraction  Julian date wanted, dynamical time.
/// \param[in]  elements  osculating elements.
/// \param[out] r         position [au].
/// \param[out] v         velocity [au/day].
/// \return false when an iteration reached its limit.
///
/// Ellipses above e = 0.99995 are solved in the time since perihelion, which is first reduced
/// to within one period. A mean anomaly within 1e-9 rad of an apsis is taken as the apsis.
///
/// Accuracy of the anomaly against extended precision: hyperbolas and parabolas to rounding;
/// near-parabolic ellipses 6e-10 of it within a radian of perihelion and 1e-7 rad up to
/// aphelion; other ellipses 1.1e-10 rad, and 3e-10 at perihelion for e above 0.9999.
SOLSYS_API bool Kepler(short velocity, double mu, int day, double fraction, Elements elements,
                       double r[3], double v[3]);

/// As `Kepler`, except that the time since perihelion of a near-parabolic ellipse is not
/// reduced to one period, for an integrator that counts time through.
SOLSYS_API bool KeplerForIntegr(short velocity, double mu, int day, double fraction,
                                Elements elements, double r[3], double v[3]);

/// State of a catalogue asteroid.
///
/// \param[in]  velocity  zero: position only, three doubles are written.
/// \param[in]  day,fraction  Julian date wanted, in the scale of the record's epoch.
/// \param[in]  record    the elements; P and Q are taken as they are, not made unit vectors.
/// \param[out] out       position [au], then velocity [au/day], along the axes of P and Q.
/// \return false when an iteration reached its limit, or for what is not finite.
///
/// For an ellipse above e = 0.99995 the time of perihelion is reckoned from the bare epochDay,
/// half a day before the epoch that every other orbit of this record is moved from.
SOLSYS_API bool KeplerPQ(short velocity, int day, double fraction, const tagAster_SPH* record,
                         double out[6]);

/// State of a catalogue comet; arguments and answer as for the asteroid.
SOLSYS_API bool KeplerPQComets(short velocity, int day, double fraction,
                               const tagComet_SPH* record, double out[6]);

/// State of an asteroid by its compact record; arguments and answer as for the catalogue's.
///
/// The iteration starts from the last anomaly solved when the record has the number solved last
/// (one process-wide pair, shared with the comets' overload), so stepping one object through
/// time is cheap; the answer does not depend on the start beyond the tolerance of 1e-10 rad.
/// Safe to call from several threads: a foreign start only costs iterations.
///
/// Accuracy, the record's single precision aside: 5e-8 rad of anomaly at worst, close to the
/// apsides, where the sine that follows from the fast cosine has half the digits; 1e-10
/// elsewhere. Within 1e-8 rad of perihelion the iteration may not settle: false, the position
/// as good.
SOLSYS_API bool KeplerPQ5(short velocity, int day, double fraction,
                          const tagAster_SPH_5* record, double out[6]);

/// State of a comet by its compact record; arguments and answer as for the catalogue's. The
/// warm start serves its hyperbolic orbits.
SOLSYS_API bool KeplerPQ5(short velocity, int day, double fraction,
                          const tagComet_SPH_5* record, double out[6]);

/// Position and velocity from the elements of a mean ellipse.
///
/// \param[in]  velocity  zero: position and distance only.
/// \param[in]  mu        gravitational parameter of the central body.
/// \param[in]  a,e,i     semi-major axis [au], eccentricity, inclination [rad].
/// \param[in]  node      longitude of the ascending node [rad].
/// \param[in]  perihelion_longitude  node + argument of perihelion [rad].
/// \param[in]  mean_longitude  at the time wanted [rad].
/// \param[out] r         position [au], in the frame of the angles.
/// \param[out] distance  its length [au].
/// \param[out] v         velocity [au/day]; may be null with `velocity` zero.
/// \return false, with a distance of 0 and nothing else written, for e above 0.999999 or not a
///         number.
///
/// Below e = 0.2 the true anomaly is the equation of the centre to the fifth power of e, good
/// to 2.2 e^6 rad: 3.4e-8 at e = 0.05 and 1.4e-4 at e = 0.2. Up to e = 0.99995 the position is
/// good to 4e-12 a, above to 4e-9 a.
SOLSYS_API bool ElementsToVector(short velocity, double mu, double a, double e, double i,
                                 double node, double perihelion_longitude,
                                 double mean_longitude, double r[3], double* distance,
                                 double v[3]);

/// Osculating elements from position and velocity.
///
/// \param[in]  mu   gravitational parameter of the central body; not guarded.
/// \param[in]  r,v  position [au] and velocity [au/day] relative to it; the angles of the
/// answer
///                  refer to their axes.
/// \param[out] out  the elements.
///
/// Fills all of `out` but the epoch, which is the caller's. Orbits with |1/a| <= 1e-9 1/au are
/// given as parabolas. A planar orbit has its node at 0 (direct) or pi (retrograde), a circular
/// one its perihelion wherever rounding puts it. The argument of perihelion of a planar orbit
/// is counted from the node eastwards, so that of a retrograde one is the negative of the angle
/// that `Kepler` takes. No guard against a radial orbit. \return true.
SOLSYS_API bool VectorToElements(double mu, const double r[3], const double v[3],
                                 Elements* out);

/// State from elliptic elements at a given mean anomaly.
///
/// \param[in]  elements  a, e, i, M, argument of pericentre, node: the mean anomaly stands
///                       before the two angles.
/// \param[in]  mu        gravitational parameter of the central body.
/// \param[out] out       position, then velocity; written on success only.
/// \return the number of iteration passes (at least 1); -1 for elements that are no ellipse
///         (e < 0, e >= 1, i < 0, i >= pi, a or mu below 2^-49, or not a number); -1000 when
///         Kepler's equation does not converge in 1000 passes.
SOLSYS_API int KepElla(const double elements[6], double mu, double out[6]);

/// Rectangular coordinates of a body in the plane through a reference direction.
///
/// \param[in]  reference  distance (not used), right ascension, declination of the reference.
/// \param[in]  body       distance, right ascension, declination of the body.
/// \param[out] out  with r, delta of the body, delta0 of the reference and d the difference of
///                  right ascension, body less reference:
///                  -r cos(delta) sin(d), towards the west;
///                  r (cos(delta0) sin(delta) - sin(delta0) cos(delta) cos(d)), north;
///                  r (sin(delta0) sin(delta) - cos(delta0) cos(delta) cos(d)), which is not
///                  the depth along the line of sight: that has a plus between its terms.
SOLSYS_API void FundamentalCoor(const double reference[3], const double body[3], double out[3]);
