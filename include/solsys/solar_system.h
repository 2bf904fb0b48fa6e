/// \file
/// The model of the solar system at an instant for an observer.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/body_rotation.h"
#include "solsys/element_records.h"
#include "solsys/export.h"
#include "solsys/kepler.h"
#include "solsys/observer.h"
#include "solsys/ss_object.h"
#include "solsys/sso_id.h"
#include "solsys/stars.h"

/// Precession of the host's own: the row-major matrix from the mean equator of J2000 to that of
/// the instant. Returns false to leave it to the built-in model.
using PrecessionFn = bool (*)(int day, double fraction, double* matrix);
/// Nutation of the host's own: the matrix from the mean to the true equator of date, the mean
/// obliquity and the nutation in obliquity and in longitude [rad]. Returns false to leave it to
/// the built-in model.
using NutationFn = bool (*)(int day, double fraction, double* matrix, double* obliquity,
                            double* d_epsilon, double* d_psi);

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
/// Units are au, days and radians; instants are split Julian dates in dynamical time (TT, which
/// serves as TDB). In names, "2K" is the mean equator and equinox of J2000, "Cur" the true ones
/// of date (for an observer who is not on the Earth: the mean ones), "Ecl" the J2000 ecliptic.
/// Matrices are 9 doubles, row-major, applied to column vectors; a spherical vector is
/// (distance, longitude in [0, 2 pi), latitude). One model belongs to one thread; distinct
/// models may be used from distinct threads.
class SOLSYS_API CSWSolSys {
  public:
    /// Builds an empty model at J2000.0 seen from the Earth's centre; opens no file.
    CSWSolSys();
    ~CSWSolSys();
    CSWSolSys(const CSWSolSys&) = delete;
    CSWSolSys& operator=(const CSWSolSys&) = delete;

    /// \name Lifecycle and instant
    /// @{

    /// Creates the satellite theories, opens the ephemeris at `path` (a file, a folder, or
    /// empty for the default place) and builds the 229 catalogued bodies. Without an ephemeris
    /// the built-in theories serve. A second call adds nothing.
    /// \return false only when a satellite theory cannot be created
    bool InitSys(const char* path);
    /// Moves the model to an instant; below 1e-8 day of change it does nothing. The states of
    /// bodies follow; the frames do with `updateFrames`, the observer's place only with
    /// `UpdateSys` or `SetObserver`. A fraction that is NaN counts as 0 (with a debug message);
    /// an instant beyond the range of `int` is refused and the model stays where it was.
    void SetTime(int day, double fraction, bool updateFrames);
    /// `SetTime` with frames, then the observer's body frame and state.
    void UpdateSys(int day, double fraction);
    /// `UpdateSys`, and the instant with the observer's state into the save slot.
    void SetT3(int day, double fraction);
    /// Copies the instant and all that is derived from it and from the observer into the one
    /// save slot; `RestoreT3Data` copies it back (nothing when nothing was saved).
    void SaveT3Data();
    void RestoreT3Data();
    /// The current instant.
    void GetTime(int* day, double* fraction) const;
    /// A function of the instant for `FindNewMoon`; it may move the model.
    using InstantFn = double (*)(CSWSolSys& model, double jd, void* context);
    /// Zero of f between two instants by false position, to 1 second; the model's instant is
    /// kept. \return the left end of the last bracket; -1.0 (with a debug message) when f has
    /// the same sign at both ends
    double FindNewMoon(double t1, double t2, InstantFn f, void* context);
    /// Precession and nutation of the host's own; null restores the built-in models.
    void SetPrecessionFunction(PrecessionFn function);
    void SetNutationFunction(NutationFn function);
    /// Whether an ephemeris file serves this model.
    bool HasEphemeris() const;
    /// @}

    /// \name Observer
    /// @{
    /// Places the observer at once, at the current instant. Heights on a surface are in au. An
    /// observer moved to or from the Earth gains or loses nutation. A null record, or one with
    /// a location that is not finite, changes nothing; an observer whose body cannot be
    /// computed at the instant is placed relative to the Sun. Kinds without a place (4, 5)
    /// leave the observer's state as it was. Outside kind 2 the horizon is the body's own
    /// frame.
    ///
    /// Ground velocity is that of a rotation about the pole of the equator of date, for every
    /// body. An observer at a planet has no orbit frame (it is the J2000 equator); one at or on
    /// any other body has that of its motion about its central body.
    void SetObserver(const OBSERVER* observer);
    const OBSERVER& GetObserver() const;
    /// The observer's body, or null when it is not in the table.
    SS_Object* GetObserverSSO() const;
    /// Observer's heliocentric state, J2000 equator: 6 values [au, au/day].
    void GetObserverVec2K(double* out) const;
    /// The model's own flag, which SetObserver leaves alone: whether the frame of an observer
    /// aboard a spacecraft may come from an integration of its motion. Kept for that; until
    /// then the frame follows from the spacecraft's elements.
    void setUseGravityForRNB(bool use);
    /// @}

    /// \name Frames of the instant
    /// Pointers stay valid for the model's life and show the current instant.
    /// @{
    const double* GetMtrxEq2K_EqCur() const;    ///< J2000 equator to true equator of date
    const double* GetMtrxEq2K_Ecl2K() const;    ///< J2000 equator to J2000 ecliptic
    const double* GetMtrxEq2K_EclCur() const;   ///< J2000 equator to ecliptic of date
    const double* GetMtrxEqCur_EclCur() const;  ///< true equator to ecliptic of date
    const double* GetMtrxPrecession() const;    ///< J2000 to mean equator of date
    const double* GetMtrxNutation() const;      ///< mean to true equator of date
    /// Mean obliquity, nutation in obliquity and in longitude [rad].
    void GetNutationAngles(double* obliquity, double* d_epsilon, double* d_psi) const;
    /// Local horizon (columns north, west, zenith) in the body-fixed frame: at a record's
    /// longitude and latitude, whatever its kind, and at the model's observer. False, and
    /// nothing written, for a null record.
    bool GetMtrxTopo(OBSERVER* observer, double* matrix) const;
    const double* GetMtrxTopoCur() const;
    /// Local horizon (north, west, zenith) to the true equator of date.
    void GetLocal2CelestialMtrx(double* matrix) const;
    /// J2000 equator, and true equator of date, to galactic axes.
    void GetMtrx_Eq2K_GalCur(double* matrix) const;
    void GetMtrx_EqCur_GalCur(double* matrix) const;
    /// @}

    /// \name Directions between frames
    /// `j2000`: the equatorial side is J2000 (true) or the true equator of date (false).
    /// Longitude and latitude in and out [rad]; an output may be an input. Azimuth is counted
    /// from north through east. To rounding, except for directions whose latitude or longitude
    /// is within 1e-4 rad of 0 or pi: the fast trigonometry leaves up to 2e-8 rad there.
    /// @{
    void FromRAToAzm(bool j2000, const double* ra, const double* dec, double* azm,
                     double* alt) const;
    void FromAzmToRA(bool j2000, const double* azm, const double* alt, double* ra,
                     double* dec) const;
    void FromRAToEclAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    void FromEclAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    void FromRAToPlEq(bool j2000, const double* ra, const double* dec, double* lon,
                      double* lat) const;
    void FromPlEqToRA(bool j2000, const double* lon, const double* lat, double* ra,
                      double* dec) const;
    void FromRAToOrbAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    void FromOrbAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    void FromRAToGalAng(bool j2000, const double* ra, const double* dec, double* lon,
                        double* lat) const;
    void FromGalAngToRA(bool j2000, const double* lon, const double* lat, double* ra,
                        double* dec) const;
    /// Vector on the true equator of date to the local horizon (north, west, zenith).
    void VecFromRAToAzm(const double* in, double* out) const;
    /// A location vector between two frame codes (see observer.h); an unknown code counts as
    /// the J2000 equator.
    void TransferLocationVec(const double* in, char from, double* out, char to) const;
    /// A spherical location into another frame code, in place.
    void TransferLocationCoor(SphCoor* location, char to);
    /// A direction between two view frames: 0 equator of date, 1 local horizon, 2 body frame,
    /// 3 orbit frame, 4 ecliptic of date, 5 to 7 galactic.
    void TransferViewVec(const double* in, char from, double* out, char to) const;
    /// @}

    /// \name Body rotation
    /// Body-fixed to equatorial matrices: of J2000, or with `toDate` of date. The angles of the
    /// first two are those of body_rotation.h, where the pole's right ascension is 90 degrees
    /// minus `alpha`. `GetMtrxPl_Eq` and `GetMtrxEq2K_PlEq` take the body's rotation elements,
    /// else the registry's entry of the body, else that of its type (number -1); with none of
    /// them they answer false and leave the output alone.
    /// @{
    static void AddBodyRotationParams(const ObjectKey& key, const BodyRotationParams* params);
    static int GetBodyRotationsCount();
    static const BodyRotationParams* GetBodyRotation(int index);
    static const BodyRotationParams* GetBodyRotation(const ObjectKey& key);
    void GetMtrxPl_EqFromEncodedAngles(double encodedRA, double sinDec, double w, double* out,
                                       bool toDate) const;
    void GetMtrxPl_EqFromAngles(double alpha, double dec, double w, double* out,
                                bool toDate) const;
    bool GetMtrxPl_Eq(const SSO_ID& body, double* out, bool toDate);
    /// J2000 equator to the body's own frame at an instant, and its transpose. The Earth's is
    /// the true equator of the model's date, which does not turn; `plnt` 11 stands for the
    /// J2000 ecliptic.
    bool GetMtrxEq2K_PlEq(const SSO_ID& body, int day, double fraction, double* out,
                          double* outTransposed);
    /// Makes this frame of a body at the current instant the observer's (`UpdateSys` and
    /// `SetObserver` do so for the observer's body): the identity for a body without elements.
    /// \return true
    bool SetMtrxEq2K_PlEq(const SSO_ID& body);
    /// A surface point (height [km], longitude, latitude) as a vector from the body's centre
    /// on the equator of date [km], and back. False without a known radius or rotation.
    bool PlgToEq(const SSO_ID& body, const double* planetographic, double* out);
    bool EqToPlg(const SSO_ID& body, const double* vector, double* out);
    /// @}

    /// \name Objects
    /// The list members append to the vector and return its new size.
    /// @{
    int GetFullList(std::vector<SSO_ID>* list) const;
    int GetPlanetsList(std::vector<SSO_ID>* list) const;
    int GetMoonsList(std::vector<SSO_ID>* list) const;
    int GetAstersList(std::vector<SSO_ID>* list) const;
    int GetCometsList(std::vector<SSO_ID>* list) const;
    int GetMoonsListFor(const SSO_ID& planet, std::vector<SSO_ID>* list) const;
    SS_Object* GetSS_Object(const SSO_ID& id) const;
    bool CheckSSO(const SSO_ID* id) const;
    SSO_ID GetCentralBodyID(const SSO_ID& id) const;
    /// @}

    /// \name Positions
    /// The velocity flag: 0 for 3 values, anything else for 6. False: unknown object, or not
    /// computable at the instant; the destination then holds zeros or a partial result.
    ///
    /// Types: `plnt` and `moon` by the ephemeris and the theories; `astr`, `comt`, `scft` and
    /// `uSCO` by the records added to the model. Asteroids and comets that are in no table
    /// answer true from `GetHelVec2K`, with zeros (the place of the Sun), and from what builds
    /// on it; the other types answer false. The integrated kinds `fAST`, `fCOM` and `fSCO` and
    /// the satellites `TLE_` have no source in this version: they answer as an object that is
    /// not in its table, `fAST` and `fCOM` true with zeros, `fSCO` and `TLE_` false.
    /// @{

    /// Heliocentric state. A spacecraft between two records about different central bodies is
    /// blended linearly between the two orbits.
    bool GetHelVec2K(const SSO_ID& id, char velocity, double* out);
    /// State relative to the central body (`GetCentralBodyID`). An asteroid that is the central
    /// body of the spacecraft or own object resolved last is computed from the built-in
    /// elements of (433) Eros.
    bool GetVecCentre2K(const SSO_ID& id, char velocity, double* out);
    bool GetHelVecCur(const SSO_ID& id, char velocity, double* out);
    /// J2000 ecliptic. Spacecraft are not blended here, and `uSCO` is not computed (false).
    bool GetHelEcl2K(const SSO_ID& id, char velocity, double* out);
    /// Geometric state relative to the observer: of the observer's own body, of a satellite of
    /// that body, and (on the Earth) of a `uSCO` without the detour over the Sun. On the Earth
    /// a `uSCO` is therefore taken to orbit the Earth.
    bool GetRefVec2K(const SSO_ID& id, char velocity, double* out);
    /// The same on the equator of date, always as a difference of heliocentric states.
    bool GetRefVecCur(const SSO_ID& id, char velocity, double* out);
    /// Geometric vector from the observer, of date or J2000; stars as `GetRADecVisStar` has it.
    bool GetCurVec(const SSO_ID& id, double* out, bool toDate);
    /// Geometric distance [au], right ascension, declination.
    bool GetRADec(const SSO_ID& id, double* out, bool toDate);
    /// Apparent unit vector (J2000 equator) and light-time distance: 4 values. `lightTime` is a
    /// first guess [day], 0 for none.
    ///
    /// Light time (to 2e-6 day) and aberration are applied, the deflection of light is not. An
    /// object beyond 36500 light-days gives its geometric vector, not normalised. If the object
    /// cannot be computed at the instant the light left it, the answer is false and the model
    /// stays at that instant.
    bool GetSSOVisVec2K(const SSO_ID& id, double* out, double lightTime);
    /// Apparent distance [au], right ascension and declination of date.
    bool GetRADecVis(const SSO_ID& id, double* out, double lightTime);
    /// Geometric state of an asteroid from the observer, equator of date. P and Q of the record
    /// are on the J2000 equator.
    bool GetAsterVecCentre2K(unsigned char velocity, double* out,
                             const tagAster_SPH_5* asteroid);
    /// @}

    /// \name Bodies by elements
    /// Adding under a number that is there replaces the record; records that are no orbit
    /// (e < 0, q or a <= 0, a state without angular momentum, anything not finite) are refused
    /// with false. `Remove...` answers whether it was there. Records answered by `Get...` stay
    /// valid until their table changes.
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
    /// Five-element records held for the object a host aims at: `astr` and `comt` of that
    /// number that are in no table are computed from them, P and Q being on the J2000 ecliptic.
    /// Null releases.
    void HoldAsteroid(const tagAster_SPH_5* record);
    void HoldComet(const tagComet_SPH_5* record);
    /// @}

    /// \name Stars and deep-sky objects
    /// @{
    bool AddStar(const SSO_ID& id, const StarObject& star);
    bool RemoveStar(const SSO_ID& id);
    void ClearStars();
    const StarObject* GetStar(const SSO_ID& id) const;
    /// Apparent place of a star. `angles` (distance, right ascension, declination) may be null.
    bool GetRADecVisStar(const StarObject* star, double* angles, double* vector, bool toDate);
    /// @}

    /// \name Magnitudes, phases, physical data
    /// @{
    /// Visual magnitude from the geometric positions of the instant. 9999.0 for kinds that have
    /// none (`scft`, `cnst`). False, with 20.0, for objects that are unknown, cannot be
    /// computed or have no magnitude law.
    bool GetMagnitude(const SSO_ID& id, float* magnitude);
    /// How the body is lit and where it stands beside the Sun, light time considered.
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
    /// searches. The model's instant and its save slot are left as they were.
    bool PhaseElongation(const SSO_ID& id, double* phase_angle, double* illuminated,
                         double* elongation, double* bright_limb, double* age);
    /// Equatorial radius [km]; -1.0 unknown. The flattening is 0 unless catalogued.
    double GetRadiEq(const SSO_ID& id, double* flattening = nullptr);
    /// GM [au^3/day^2] of the body, and of the body that it goes round; -1.0 unknown.
    double GetGravity(const SSO_ID& id);
    double GetParentGravity(const SSO_ID& id);
    /// Sidereal rotation period [day], 0 when not known; -1.0 for an uncatalogued body.
    double GetPeriodRotation(const SSO_ID& id);
    /// 2 pi over the rotation period [rad/day]; infinite when that is 0.
    double GetAngVelocity(const SSO_ID& id);
    /// Right ascension and declination of the north pole and prime-meridian angle [rad].
    bool GetPolarAxes(const SSO_ID& id, double* out);
    /// Sidereal orbital period [day]; -1.0 for an open orbit and for an unknown body.
    double GetOrbitalPeriod(const SSO_ID& id);
    /// Mean length of the body's day from noon to noon [day]; -1.0 when its rotation is not
    /// known. The sense of the rotation is that about the pole of `GetPolarAxes`, the orbit's
    /// is taken as forwards: for Pluto, whose pole is the one it turns forwards about, the day
    /// comes out 1.4e-4 too long.
    double GetSolarDay(const SSO_ID& id);
    /// Constellation of a direction on the true equator of date: 0 to 87 in the alphabetical
    /// order of the Latin names, 255 (as an unsigned byte) for none. The boundaries are looked
    /// up after precession to B1850.0, 25 years before the equinox they were drawn for: within
    /// 0.4 degree of a boundary the answer can be the neighbour (two directions in a hundred).
    char RADecInConstell(double ra, double dec) const;
    /// @}

  private:
    struct SOLSYS_LOCAL Model;
    class SOLSYS_LOCAL Positions;  // where the states come from
    class SOLSYS_LOCAL Lunations;  // the new Moons around the instant

    // All that follows from the observer's record at the current instant.
    void DeriveObserver();
    void PlaceOnSurface();

    std::unique_ptr<Model> model_;
};

/// Longitude and latitude of a place on a body as that body's maps count them: hemisphere
/// letters go into `GMSAngle::sign`. \return the letter written last
SOLSYS_API char LonLatForObjects(const SSO_ID* body, double longitude, double latitude,
                                 struct GMSAngle* lon_out, struct GMSAngle* lat_out);
