/// \file
/// The model of the solar system at an instant for an observer.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/body_rotation.h"
#include "solsys/earth_rotation.h"
#include "solsys/element_records.h"
#include "solsys/element_sets.h"
#include "solsys/export.h"
#include "solsys/integrator.h"
#include "solsys/kepler.h"
#include "solsys/observer.h"
#include "solsys/ss_object.h"
#include "solsys/sso_id.h"
#include "solsys/stars.h"
#include "solsys/toolkit.h"

/// Precession of the host's own: the row-major matrix from the mean equator of J2000 to that of
/// the instant. Returns false to leave it to the built-in model.
using PrecessionFn = bool (*)(int day, double fraction, double* matrix);
/// Nutation of the host's own: the matrix from the mean to the true equator of date, the mean
/// obliquity and the nutation in obliquity and in longitude [rad]. Returns false to leave it to
/// the built-in model.
using NutationFn = bool (*)(int day, double fraction, double* matrix, double* obliquity,
                            double* d_epsilon, double* d_psi);

// The table's rows are longer than a line.
// clang-format off
/// Which models the frames and the apparent places of a model follow.
///
/// |  | classic | modern |
/// |---|---|---|
/// | precession | IAU 1976 | IAU 2006, with the frame bias |
/// | nutation | two terms | IAU 2000A, 1365 terms, fitted to IAU 2006 |
/// | "2K" axes | mean equator of J2000, taken for the axes of the ephemeris | ICRS, the axes of the ephemeris themselves |
/// | J2000 ecliptic (`Ecl`) | obliquity 0.4090928 rad | obliquity 84381.406 arcsec, bias; orbits by elements keep the classic one |
/// | `GetMtrxEq2K_EclCur` | true obliquity on the mean equator | the true ecliptic and equinox of date |
/// | equator of date off the Earth, `GetMtrxEqCur_EclCur` there | mean, by the true obliquity | mean, by the mean obliquity |
/// | instants | serve as TDB; states within 1 ms of one another are one | TT, converted to TDB; every state at its own instant |
/// | sidereal time, the Earth's matrix | IAU 1982 from UT of `ET_UT` | Earth rotation angle from UT1, minus the equation of the origins; polar motion |
/// | the Earth's ellipsoid | the catalogue's | WGS 84 |
/// | light time | to 2e-6 day, heliocentric | converged, barycentric |
/// | deflection of light | stars, by the Sun | all objects, by the Sun, Jupiter and Saturn |
/// | aberration | heliocentric velocity of the observer | barycentric velocity |
/// | stars | heliocentric observer, instant of observation | barycentric observer, light passing the barycentre |
/// | own objects (`uSCO`) | in a straight line, velocities added | as all others |
/// | an object that cannot be computed when its light left it | the model stays at that instant | the model stays where it was |
/// | constellations | boundaries looked up at B1850 | at B1875, for which they were drawn |
/// | magnitudes of the Sun and the planets | as printed before 2018 | Mallama & Hilton 2018; the Sun -26.74 |
///
/// Modern places agree with those of the IAU's reference routines on the same ephemeris within
/// 0.01 mas in ICRS axes, 0.05 mas on the true equator of date; the classic ones are 0.27
/// arcsec rms from them and up to 1.7 arcsec beside the Sun. UT of the searches stays that of
/// `ET_UT`, and so do the free functions of earth_orientation.h.
// clang-format on
enum SolsysReduction { REDUCTION_CLASSIC = 0, REDUCTION_MODERN = 1 };

/// The solar system at an instant for an observer.
///
/// A host constructs one, calls `InitSys` once with the place of the ephemeris, sets the
/// observer, and then, instant by instant, calls `UpdateSys` and asks its questions:
///
/// \code
///     CSWSolSys model;
///     model.InitSys("de405.bin");              // or "" for the built-in theory
///     OBSERVER site;                           // a place on the Earth
///     site.kind = LOCATION_SURFACE;
///     site.body_type = SSO_PLNT, site.body_number = 3;
///     site.location[1] = 0.1, site.location[2] = 0.9;
///     model.SetObserver(&site);
///     model.UpdateSys(2451545, 0.25);
///     double place[3];                         // distance [au], right ascension, declination
///     model.GetRADecVis(SSO_ID(SSO_PLNT, 5), place, 0.0);
/// \endcode
///
/// Units are au, days and radians; instants are split Julian dates (whole day, fraction) in
/// dynamical time (TT, which serves as TDB). In names, "2K" is the mean equator and equinox of
/// J2000, "Cur" the true ones of date (for an observer who is not on the Earth: the mean ones),
/// "Ecl" the J2000 ecliptic. Matrices are 9 doubles, row-major, applied to column vectors; the
/// equations below say v_target = M v_source. A spherical vector is (distance, longitude in
/// [0, 2 pi), latitude).
///
/// Bad input: members that write through a pointer answer false, and write nothing, when it is
/// null; numbers that are not finite give results that are not, or false. One model belongs to
/// one thread; distinct models may be used from distinct threads.
///
/// Short of memory, the constructor throws std::bad_alloc, with nothing left behind; members
/// let no exception out. They answer false (or their other refusal; an integrated body has its
/// osculating orbit), leave what they would have changed as it was, and serve again when there
/// is memory.
class SOLSYS_API CSWSolSys {
  public:
    /// Builds an empty model at J2000.0 seen from the Earth's centre; opens no file.
    CSWSolSys();
    /// Frees all that the model owns: objects, theories, integrators handed to objects.
    ~CSWSolSys();
    CSWSolSys(const CSWSolSys&) = delete;             ///< not copyable
    CSWSolSys& operator=(const CSWSolSys&) = delete;  ///< not copyable

    /// \name Lifecycle and instant
    /// @{

    /// Creates the satellite theories, opens the ephemeris at `path` and builds the 229
    /// catalogued bodies.
    ///
    /// \param path  UTF-8: a DE file, a folder of them, or empty or null for the default place
    ///              (see `DE_Ephemeris::open`).
    /// \return false only when memory is short; a missing ephemeris is no failure: the built-in
    ///         theories then serve.
    ///
    /// The DE file is the process's, not the model's: when one is open already, by whichever
    /// model, it is taken up and `path` is not looked at. `UseEphemeris(false)` keeps a model
    /// on the built-in theories. A second call opens anew if the file has been closed since,
    /// and lets the objects know; it adds no objects.
    bool InitSys(const char* path);
    /// Whether this model may read the DE file (true at construction). With false its planets
    /// and Moon come from the built-in theories, whatever the process has open; with true from
    /// the file again, if one is open. Takes effect at once, before `InitSys` as well as after.
    /// \return false, and nothing changes, when memory is short
    bool UseEphemeris(bool use);
    /// Whether a DE file is open and serves this model.
    bool HasEphemeris() const;
    /// Moves the model to an instant (TT); below 1e-8 day of change it does nothing. The states
    /// of bodies follow; the frames do with `updateFrames`, the observer's place only with
    /// `UpdateSys` or `SetObserver`. A fraction that is NaN counts as 0 (with a debug message).
    /// Afterwards the fraction lies in [0, 1) for positive Julian dates.
    /// \return false for an instant whose day is no `int`: the model stays where it was
    bool SetTime(int day, double fraction, bool updateFrames);
    /// `SetTime` with frames, then the observer's body frame and state. \return as `SetTime`
    bool UpdateSys(int day, double fraction);
    /// `UpdateSys`, and the instant (in the caller's own split) with the observer's state into
    /// the save slot. \return as `SetTime`
    bool SetT3(int day, double fraction);
    /// Copies the instant and all that is derived from it and from the observer, the observer's
    /// record included, into the one save slot.
    void SaveT3Data();
    /// Copies the save slot back, its instant in the ordinary split; nothing when nothing was
    /// saved.
    void RestoreT3Data();
    /// The current instant, TT.
    bool GetTime(int* day, double* fraction) const;
    /// A function of the instant (JD, TT) for `FindNewMoon`; it may move the model.
    using InstantFn = double (*)(CSWSolSys& model, double jd, void* context);
    /// Zero of f between two instants (JD, TT) by plain false position, until the bracket is a
    /// second wide.
    ///
    /// \return the left end of the last bracket; -1.0 (with a debug message) when f has the
    /// same
    ///         sign at both ends, and for a null f
    ///
    /// The model's instant is kept, by way of the save slot: what the host had saved there is
    /// overwritten. There is no limit of passes: for functions that are flat at one end (x^9)
    /// false position takes millions. It ends early only where the loop would never: when an
    /// iterate does not fall between the ends. `PhaseElongation` does not use it.
    double FindNewMoon(double t1, double t2, InstantFn f, void* context);
    /// Precession of the host's own; null restores the built-in model.
    void SetPrecessionFunction(PrecessionFn function);
    /// Nutation of the host's own; null restores the built-in model.
    void SetNutationFunction(NutationFn function);
    /// @}

    /// \name Reduction
    /// @{
    /// The classic reduction is in force until another is chosen; what is derived from the
    /// instant follows at once, the save slot when it is restored. Precession and nutation
    /// functions of the host's own take precedence under both.
    void SetReduction(SolsysReduction reduction);
    SolsysReduction GetReduction() const;
    /// UT1 - UTC [s] and the pole [arcsec] for the modern reduction, where the table does not
    /// answer; NaN takes them back. False, and nothing changed, beyond 1 s or 2 arcsec. They
    /// need no reduction in force.
    ///
    /// Without UT1 - UTC from either source (none given, or before 1960, when there was no UTC)
    /// UT1 is TT - Delta T of `ET_UT`, that is UTC since 1972: within 0.9 s of UT1, 13 arcsec
    /// in hour angles. Without a pole there is no polar motion.
    bool SetUT1(double ut1MinusUtc);
    bool SetPolarMotion(double x, double y);
    /// A table of both, in any order; it replaces the last one (none: null or count 0). Between
    /// its rows UT1 - TAI and the pole are interpolated through four of them; outside its span
    /// and inside its holes the values above serve. \return what was wrong with the rows
    EarthOrientationReport SetEarthOrientation(const EarthOrientationRow* rows, int count);
    /// What serves at the model's instant, and where it comes from; `row` may be null.
    EarthOrientationSource GetEarthOrientation(EarthOrientationRow* row) const;
    /// Leap seconds from 1972 on instead of the built-in ones, which are known to hold until
    /// `LeapSecondsValidUntil`. To be set before the table of UT1. False, and nothing changed,
    /// for rows out of order, not finite or not between 10 and 1000 s.
    bool SetLeapSeconds(const LeapSecond* rows, int count, double validUntil);
    /// Greenwich sidereal time of the model's instant [rad, 0 to 2 pi) by its reduction; the
    /// frames must be those of the instant.
    double GetSiderealTime(bool apparent) const;
    /// @}

    /// \name Observer
    /// @{

    /// Places the observer at once, at the current instant. Heights on a surface are in au. An
    /// observer moved to or from the Earth gains or loses nutation.
    ///
    /// \return false, and nothing changes, for a null record or one with a location that is not
    ///         finite
    ///
    /// An observer whose body cannot be computed at the instant has no place: everything
    /// relative to the observer then answers false (its state is that about the Sun). Kinds
    /// without a place (4, 5) leave the observer's state as it was. Outside kind 2 the horizon
    /// is the body's own frame.
    ///
    /// Ground velocity is that of a rotation about the pole of the equator of date, for every
    /// body. An observer at a planet has no orbit frame (it is the J2000 equator); one at or on
    /// any other body has that of its motion about its central body.
    bool SetObserver(const OBSERVER* observer);
    /// The record of the observer; stays valid for the model's life.
    const OBSERVER& GetObserver() const;
    /// The observer's body, or null when it is not in the table.
    SS_Object* GetObserverSSO() const;
    /// Observer's heliocentric state, J2000 equator: 6 values [au, au/day]. False when the
    /// observer's body cannot be computed (the state is then that about the body).
    bool GetObserverVec2K(double* out) const;
    /// The model's own flag, which SetObserver leaves alone: whether the orbit frame of an
    /// observer aboard a spacecraft has gravity for its direction to the centre, that of all
    /// bodies together (see integrator.h); else it is the central body's.
    void setUseGravityForRNB(bool use);
    /// @}

    /// \name Frames of the instant
    /// Pointers stay valid for the model's life and show the current instant; before the first
    /// one all are the identity but the fixed ones. Source: IAU 1976 precession (Lieske et al.
    /// 1977, Astron. Astrophys. 58, 1) and the short nutation of earth_orientation.h, unless
    /// the host replaces them.
    /// @{

    /// v_cur = M v_2K: precession, then nutation (for an observer off the Earth precession
    /// alone).
    const double* GetMtrxEq2K_EqCur() const;
    /// v_ecl = M v_2K, to the J2000 ecliptic: fixed.
    const double* GetMtrxEq2K_Ecl2K() const;
    /// v_ecl = M v_2K, to the ecliptic of date, by way of the mean equator.
    const double* GetMtrxEq2K_EclCur() const;
    /// v_ecl = M v_cur, from the true equator to the ecliptic of date.
    const double* GetMtrxEqCur_EclCur() const;
    /// v_mean = M v_2K, to the mean equator of date.
    const double* GetMtrxPrecession() const;
    /// v_true = M v_mean, both of date.
    const double* GetMtrxNutation() const;
    /// Mean obliquity, nutation in obliquity and in longitude [rad].
    bool GetNutationAngles(double* obliquity, double* d_epsilon, double* d_psi) const;
    /// v_body = M v_horizon: the local horizon (columns north, west, zenith) in the body-fixed
    /// frame, at a record's longitude and latitude whatever its kind.
    bool GetMtrxTopo(OBSERVER* observer, double* matrix) const;
    /// The same at the model's observer.
    const double* GetMtrxTopoCur() const;
    /// v_cur = M v_horizon, from the local horizon (north, west, zenith).
    bool GetLocal2CelestialMtrx(double* matrix) const;
    /// v_gal = M v_2K: fixed, at every instant and before the first.
    bool GetMtrx_Eq2K_GalCur(double* matrix) const;
    /// v_gal = M v_cur: the fixed matrix times the transpose of `GetMtrxEq2K_EqCur`.
    bool GetMtrx_EqCur_GalCur(double* matrix) const;
    /// @}

    /// \name Directions between frames
    /// `j2000`: the equatorial side is J2000 (true) or the true equator of date (false).
    /// Longitude and latitude in and out [rad]; longitudes come out in [0, 2 pi); an output may
    /// be an input. Azimuth is counted from north through east. False, and nothing written, for
    /// a null pointer. To rounding, except for directions whose latitude or longitude is within
    /// 1e-4 rad of 0 or pi: the fast trigonometry leaves up to 2e-8 rad there.
    /// @{

    /// Equator to horizon (azimuth, altitude without refraction).
    bool FromRAToAzm(bool j2000, const double* ra, const double* dec, double* azm,
                     double* alt) const;
    /// Horizon to equator.
    bool FromAzmToRA(bool j2000, const double* azm, const double* alt, double* ra,
                     double* dec) const;
    /// Equator to the ecliptic of date.
    bool FromRAToEclAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    /// Ecliptic of date to equator.
    bool FromEclAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    /// Equator to the frame of the observer's body.
    bool FromRAToPlEq(bool j2000, const double* ra, const double* dec, double* lon,
                      double* lat) const;
    /// Frame of the observer's body to equator.
    bool FromPlEqToRA(bool j2000, const double* lon, const double* lat, double* ra,
                      double* dec) const;
    /// Equator to the orbit frame of the observer's body.
    bool FromRAToOrbAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    /// Orbit frame of the observer's body to equator.
    bool FromOrbAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    /// Equator to galactic coordinates.
    bool FromRAToGalAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    /// Galactic coordinates to equator.
    bool FromGalAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    /// Vector on the true equator of date to the local horizon (north, west, zenith).
    bool VecFromRAToAzm(const double* in, double* out) const;
    /// A location vector [au] between two frame codes (see observer.h); an unknown code counts
    /// as the J2000 equator.
    bool TransferLocationVec(const double* in, char from, double* out, char to) const;
    /// A spherical location into another frame code, in place.
    bool TransferLocationCoor(SphCoor* location, char to);
    /// A direction between two view frames: 0 equator of date, 1 local horizon, 2 body frame,
    /// 3 orbit frame, 4 ecliptic of date, 5 to 7 galactic; others count as 0.
    bool TransferViewVec(const double* in, char from, double* out, char to) const;
    /// @}

    /// \name Body rotation
    /// The registry of rotations is the process's: fill it before models are used from several
    /// threads.
    /// @{

    /// Registers the rotation of a body, or of all bodies of a type (number -1). False for null
    /// parameters.
    static bool AddBodyRotationParams(const ObjectKey& key, const BodyRotationParams* params);
    /// How many rotations are registered.
    static int GetBodyRotationsCount();
    /// The rotation at a place of the registry; null beyond its ends.
    static const BodyRotationParams* GetBodyRotation(int index);
    /// The rotation under a key; null when there is none.
    static const BodyRotationParams* GetBodyRotation(const ObjectKey& key);
    /// v_equator = M v_body, J2000 or with `toDate` of date, from the angles of body_rotation.h
    /// in their encoded form: the pole's right ascension is 90 degrees minus the angle encoded;
    /// `w` is the prime meridian [rad].
    bool GetMtrxPl_EqFromEncodedAngles(double encodedRA, double sinDec, double w, double* out,
                                       bool toDate) const;
    /// The same from the angles themselves [rad]: the pole's right ascension is 90 degrees
    /// minus `alpha`.
    bool GetMtrxPl_EqFromAngles(double alpha, double dec, double w, double* out,
                                bool toDate) const;
    /// v_equator = M v_body at the current instant, J2000 or with `toDate` of date: by the
    /// body's rotation elements, else the registry's entry of the body, else that of its type
    /// (number -1); the Earth's by sidereal time. False, and nothing written, with none of
    /// them.
    bool GetMtrxPl_Eq(const SSO_ID& body, double* out, bool toDate);
    /// v_body = M v_2K, and the transpose, at an instant (TT), from the same sources. The
    /// Earth's is the true equator of the model's date, which does not turn; `plnt` 11 stands
    /// for the J2000 ecliptic. False, and nothing written, without a source.
    bool GetMtrxEq2K_PlEq(const SSO_ID& body, int day, double fraction, double* out,
                          double* outTransposed);
    /// Makes this frame of a body at the current instant the observer's (`UpdateSys` and
    /// `SetObserver` do so for the observer's body): the identity for a body without elements.
    /// \return true
    bool SetMtrxEq2K_PlEq(const SSO_ID& body);
    /// A surface point (height [km], longitude, planetographic latitude [rad]) as a vector from
    /// the body's centre on the equator of date [km]. False without a known radius or rotation.
    bool PlgToEq(const SSO_ID& body, const double* planetographic, double* out);
    /// The way back.
    bool EqToPlg(const SSO_ID& body, const double* vector, double* out);
    /// @}

    /// \name Objects
    /// The list members append to the vector and return its new size; 0 for a null vector; -1,
    /// and the vector as it was, when memory is short.
    /// @{

    int GetFullList(std::vector<SSO_ID>* list) const;     ///< all with states, by type code
    int GetPlanetsList(std::vector<SSO_ID>* list) const;  ///< `plnt`, the Sun among them
    int GetMoonsList(std::vector<SSO_ID>* list) const;    ///< `moon`
    int GetAstersList(std::vector<SSO_ID>* list) const;   ///< `astr`
    int GetCometsList(std::vector<SSO_ID>* list) const;   ///< `comt`
    /// The satellites of a planet; for anything but a `plnt` 0, and nothing is appended.
    int GetMoonsListFor(const SSO_ID& planet, std::vector<SSO_ID>* list) const;
    /// The object of a catalogued body, owned by the model; null for all others.
    SS_Object* GetSS_Object(const SSO_ID& id) const;
    /// Whether the object is catalogued or in a table of bodies by elements.
    bool CheckSSO(const SSO_ID* id) const;
    /// What the object goes round at the current instant; type and number -1: nothing known.
    SSO_ID GetCentralBodyID(const SSO_ID& id) const;
    /// @}

    /// \name Positions
    /// The velocity flag: 0 for 3 values, anything else for 6 [au, au/day]. False: unknown
    /// object, or not computable at the instant; the destination then holds zeros or a partial
    /// result. What is relative to the observer is also false when the observer's own body
    /// cannot be computed.
    ///
    /// Types: `plnt` and `moon` by the ephemeris and the theories; `astr`, `comt`, `scft` and
    /// `uSCO` by the records added to the model; `fAST`, `fCOM` and `fSCO` by integration, and
    /// by their osculating orbit where that does not come. Asteroids and comets that are in no
    /// table answer true from `GetHelVec2K`, with zeros (the place of the Sun), and from what
    /// builds on it; the other types answer false. The satellites `TLE_` come from their
    /// element sets (element_sets.h); one that has re-entered has no state: false.
    ///
    /// An asteroid that is the central body of a spacecraft or own object of the model is
    /// computed from the built-in elements of (433) Eros, and has its mass. Element orbits are
    /// moved as `Kepler` moves them, but without its halt at elliptic perihelia (within 1e-9
    /// rad of mean anomaly, which freezes a comet of q = 1 au, e = 0.99999 for 1.8 days before
    /// and after); own objects in universal variables.
    /// @{

    /// Heliocentric state, J2000 equator. A spacecraft between two records about different
    /// central bodies is blended linearly between the two orbits.
    bool GetHelVec2K(const SSO_ID& id, char velocity, double* out);
    /// State relative to the central body (`GetCentralBodyID`), J2000 equator.
    bool GetVecCentre2K(const SSO_ID& id, char velocity, double* out);
    /// Heliocentric state, equator of date.
    bool GetHelVecCur(const SSO_ID& id, char velocity, double* out);
    /// Heliocentric state, J2000 ecliptic. Spacecraft are not blended here, and `uSCO` is not
    /// computed (false).
    bool GetHelEcl2K(const SSO_ID& id, char velocity, double* out);
    /// Geometric state relative to the observer, J2000 equator: of the observer's own body, of
    /// a satellite of that body, and (on the Earth) of a `uSCO` without the detour over the
    /// Sun. On the Earth a `uSCO` is therefore taken to orbit the Earth.
    bool GetRefVec2K(const SSO_ID& id, char velocity, double* out);
    /// The same on the equator of date, always as a difference of heliocentric states.
    bool GetRefVecCur(const SSO_ID& id, char velocity, double* out);
    /// Geometric vector from the observer [au], of date or J2000; stars as `GetRADecVisStar`
    /// has it.
    bool GetCurVec(const SSO_ID& id, double* out, bool toDate);
    /// Geometric distance [au], right ascension, declination [rad], of date or J2000.
    bool GetRADec(const SSO_ID& id, double* out, bool toDate);
    /// Apparent unit vector (J2000 equator) and light-time distance [au]: 4 values. `lightTime`
    /// is a first guess [day], 0 for none.
    ///
    /// Light time (to 2e-6 day) and aberration are applied, the deflection of light is not:
    /// within 1e-9 rad of an independent chain of the same models. An object beyond 36500
    /// light-days gives its geometric vector, not normalised. If the object cannot be computed
    /// at the instant the light left it, the answer is false and the model stays at that
    /// instant.
    bool GetSSOVisVec2K(const SSO_ID& id, double* out, double lightTime);
    /// The vector along which the light came [au] and its length: light time alone, without
    /// deflection and aberration, as an astrometric place has it. 4 values; false as above.
    bool GetAstrometricVec2K(const SSO_ID& id, double* out, double lightTime);
    /// Apparent distance [au], right ascension and declination of date [rad]; all else as
    /// `GetSSOVisVec2K`. Stars as `GetRADecVisStar` has them.
    bool GetRADecVis(const SSO_ID& id, double* out, double lightTime);
    /// Geometric state of an asteroid from the observer, equator of date. P and Q of the record
    /// are on the J2000 equator. False for a null record.
    bool GetAsterVecCentre2K(unsigned char velocity, double* out,
                             const tagAster_SPH_5* asteroid);
    /// @}

    /// \name Bodies by elements
    /// Adding under a number that is there replaces the record; records that are no orbit
    /// (e < 0, q or a <= 0, a state without angular momentum, anything not finite) are refused
    /// with false, and so are all when memory is short. A mean motion of 0 is derived.
    /// `Remove...` answers whether it was there. Records answered by `Get...` stay valid until
    /// their table changes; null when there is none.
    /// @{

    bool AddAsteroid(std::int32_t number, const AsteroidRecord& record);
    bool RemoveAsteroid(std::int32_t number);
    void ClearAsteroids();
    const AsteroidRecord* GetAsteroid(std::int32_t number) const;
    bool AddComet(std::int32_t number, const CometRecord& record);
    bool RemoveComet(std::int32_t number);
    void ClearComets();
    const CometRecord* GetComet(std::int32_t number) const;
    /// The records of one spacecraft, in any order. It has no state before the first epoch.
    bool AddSpacecraft(std::int32_t number, const SpacecraftRecord* records, int count);
    bool RemoveSpacecraft(std::int32_t number);
    void ClearSpacecraft();
    bool AddUserObject(std::int32_t number, const UserObjectRecord& record);
    bool RemoveUserObject(std::int32_t number);
    void ClearUserObjects();
    /// @}

    /// \name Integrated bodies
    /// Bodies moved by numerical integration (see integrator.h) from their osculating elements,
    /// or an own object from its state, among the planets: `fAST`, `fCOM`, `fSCO`. The first
    /// question about another time integrates as far as that; states within what has been
    /// integrated cost an evaluation. Where the integration does not come (beyond the
    /// ephemeris, after a collision, ended by the callback) the osculating orbit serves.
    /// Elements are refused as above. Own objects go about the Sun, a planet or the Moon; those
    /// about another body move on two-body orbits.
    /// @{
    bool AddIntegratedAsteroid(std::int32_t number, const AsteroidRecord& record,
                               const SmallForces& forces = {});
    bool AddIntegratedComet(std::int32_t number, const CometRecord& record,
                            const SmallForces& forces = {});
    bool AddIntegratedUserObject(std::int32_t number, const UserObjectRecord& record,
                                 const SmallForces& forces = {});
    bool RemoveIntegratedAsteroid(std::int32_t number);
    bool RemoveIntegratedComet(std::int32_t number);
    bool RemoveIntegratedUserObject(std::int32_t number);
    void ClearIntegratedAsteroids();
    void ClearIntegratedComets();
    void ClearIntegratedUserObjects();
    const AsteroidRecord* GetIntegratedAsteroid(std::int32_t number) const;
    const CometRecord* GetIntegratedComet(std::int32_t number) const;
    const UserObjectRecord* GetIntegratedUserObject(std::int32_t number) const;
    /// Integrates an `astr` or `comt` of the tables, or no longer. A new record under its
    /// number ends that. False: not there.
    bool SetIntegrated(const SSO_ID& id, bool integrated = true,
                       const SmallForces& forces = {});
    /// Whether the state last asked of an object came by integration.
    bool IsIntegrated(const SSO_ID& id) const;
    /// Told every 64 steps of an integration what part of it is done (0 to 1). False ends
    /// it: the osculating orbit serves that object from then on, until this is called again.
    void SetIntegrCallBack(bool (*callback)(double done, void* context), void* context);
    /// @}

    /// \name Satellites of the Earth
    /// Type `TLE_`, moved by the model of the element sets from the record added
    /// (element_sets.h). Under a number that is there the record is replaced.
    /// `GetCentralBodyID` knows none for them, `GetMagnitude` neither; their place is
    /// geocentric with the Earth's own added.
    /// @{

    /// False for elements out of range, and for lines that do not hold a set.
    bool AddSatellite(std::int32_t number, const TLERecord& record);
    bool AddSatellite(std::int32_t number, const char* line1, const char* line2);
    bool RemoveSatellite(std::int32_t number);
    void ClearSatellites();
    const TLERecord* GetSatellite(std::int32_t number) const;
    /// @}

    /// \name Records held
    /// @{
    /// Holds (a copy of) the five-element record of the object a host aims at, P and Q on the
    /// J2000 ecliptic: the `astr` of its number is then computed from it, before any table.
    /// Null releases. False when memory is short.
    bool HoldAsteroid(const tagAster_SPH_5* record);
    /// The same for the `comt` of the record's number.
    bool HoldComet(const tagComet_SPH_5* record);
    /// @}

    /// \name Stars and deep-sky objects
    /// Types `star`, `uSTR`, `uDSO`, `clst`, `nebu`, `gala`, `dsnv`.
    /// @{

    /// Adds or replaces; false for another type and for a place that is not finite.
    bool AddStar(const SSO_ID& id, const StarObject& star);
    /// Whether it was there.
    bool RemoveStar(const SSO_ID& id);
    void ClearStars();  ///< removes all
    /// The record, valid until the table changes; null when there is none.
    const StarObject* GetStar(const SSO_ID& id) const;
    /// Apparent place of a star for the observer at the instant: proper motion, parallax,
    /// radial velocity, deflection by the Sun, aberration.
    ///
    /// \param star         J2000.0 place and motions
    /// \param[out] angles  distance [au] (-1.0 without a parallax), right ascension,
    ///                     declination [rad]; may be null
    /// \param[out] vector  unit vector, times the distance where that is known [au]
    /// \param toDate       on the equator of date, else of J2000
    /// \return false, and nothing written, for a null star or vector and for an observer whose
    ///         body cannot be computed
    bool GetRADecVisStar(const StarObject* star, double* angles, double* vector, bool toDate);
    /// @}

    /// \name Magnitudes, phases, physical data
    /// @{

    /// Visual magnitude from the geometric positions of the instant. 9999.0 for kinds that have
    /// none (`scft`, `cnst`). False, with 20.0, for objects that are unknown, cannot be
    /// computed or have no magnitude law.
    bool GetMagnitude(const SSO_ID& id, float* magnitude);
    /// How the body is lit and where it stands beside the Sun, light time considered.
    /// \param id                the body
    /// \param[out] phase_angle  angle Sun - body - observer [rad]
    /// \param[out] illuminated  illuminated fraction of the disk, 0 to 1
    /// \param[out] elongation   angle Sun - observer - body [rad], positive east of the Sun
    /// \param[out] bright_limb  position angle of the midpoint of the bright limb [rad], from
    ///                          the north celestial pole of date through east
    /// \param[out] age          the Moon: days since the last new Moon (the apparent ecliptic
    ///                          longitudes of Moon and Sun from the Earth's centre agree),
    ///                          within 2 s; others: 0
    /// \return false for an object that cannot be computed, and for an observer at its centre
    ///         (all five 0). Any may be null. The Sun: fully lit, the angles 0.
    ///
    /// The new Moons around the instant are kept, so that only the first query of a lunation
    /// searches. The model's instant and its save slot are left as they were. Source: Meeus
    /// 1998, Astronomical Algorithms, chapters 41 and 48.
    bool PhaseElongation(const SSO_ID& id, double* phase_angle, double* illuminated,
                         double* elongation, double* bright_limb, double* age);
    /// Equatorial radius [km]; -1.0 unknown. The flattening (may be null) is 0 unless
    /// catalogued.
    double GetRadiEq(const SSO_ID& id, double* flattening = nullptr);
    /// GM of the body [au^3/day^2]; -1.0 unknown.
    double GetGravity(const SSO_ID& id);
    /// GM of the body that it goes round [au^3/day^2]; -1.0 unknown.
    double GetParentGravity(const SSO_ID& id);
    /// Sidereal rotation period [day], 0 when not known; -1.0 for an uncatalogued body.
    double GetPeriodRotation(const SSO_ID& id);
    /// 2 pi over the rotation period [rad/day]; infinite when that is 0; -1.0 for an
    /// uncatalogued body.
    double GetAngVelocity(const SSO_ID& id);
    /// Right ascension and declination of the pole and prime-meridian angle [rad] at the
    /// current instant: 3 values. False (with zeros) for the 167 of the 229 catalogued bodies
    /// that have no published rotation elements, and for uncatalogued ones.
    bool GetPolarAxes(const SSO_ID& id, double* out);
    /// Sidereal orbital period [day]; -1.0 for an open orbit and for an unknown body.
    double GetOrbitalPeriod(const SSO_ID& id);
    /// Mean length of the body's day from noon to noon [day]; -1.0 when its rotation is not
    /// known. The sense of the rotation is that of the spin axis against the normal of the
    /// orbit (a satellite's planet's) about the Sun.
    double GetSolarDay(const SSO_ID& id);
    /// Constellation of a direction [rad] on the true equator of date: 0 to 87 in the
    /// alphabetical order of the Latin names, 255 (as an unsigned byte) for none. The
    /// boundaries are looked up after precession to B1850.0, 25 years before the equinox they
    /// were drawn for: within 0.4 degree of a boundary the answer can be the neighbour (two
    /// directions in a hundred). Source: Roman 1987, Publ. Astron. Soc. Pacific 99, 695.
    char RADecInConstell(double ra, double dec) const;
    /// @}

    /// The inside of the model, for the library's own code; not for hosts, who see no more of
    /// the type than its name.
    struct SOLSYS_LOCAL Model;
    SOLSYS_LOCAL Model& Inside() const;  ///< for the library's own code

  private:
    std::unique_ptr<Model> model_;
};

/// Longitude and latitude of a place on a body as that body's maps count them: hemisphere
/// letters go into `GMSAngle::sign`.
///
/// \param body                the body; null or number -1: none, longitude without a letter
/// \param longitude,latitude  planetographic, east longitude [rad]
/// \param[out] lon_out        degrees, minutes, seconds; west of 1, 4, 5, 6, 8 and the
/// satellites
///                            of Mars to Saturn and 802 to 899, signed on the Earth and the
///                            Moon, east of all others
/// \param[out] lat_out        likewise, N or S
/// \return the letter of the longitude; 0 without a body or with a null destination
SOLSYS_API char LonLatForObjects(const SSO_ID* body, double longitude, double latitude,
                                 GMSAngle* lon_out, GMSAngle* lat_out);
