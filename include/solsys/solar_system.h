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
    /// Moves the model to an instant; below 1e-8 day of change it does nothing. A fraction that
    /// is NaN counts as 0 (with a debug message); an instant beyond the range of `int` is
    /// refused and the model stays where it was.
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
    void SetObserver(const OBSERVER* observer);
    const OBSERVER& GetObserver() const;
    /// The observer's body, or null when it is not in the table.
    SS_Object* GetObserverSSO() const;
    /// Observer's heliocentric state, J2000 equator: 6 values [au, au/day].
    void GetObserverVec2K(double* out) const;
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
    bool GetMtrxTopo(OBSERVER* observer, double* matrix) const;
    const double* GetMtrxTopoCur() const;
    /// Local horizon (north, west, zenith) to the true equator of date.
    void GetLocal2CelestialMtrx(double* matrix) const;
    void GetMtrx_Eq2K_GalCur(double* matrix) const;
    void GetMtrx_EqCur_GalCur(double* matrix) const;
    /// @}

    /// \name Directions between frames
    /// `j2000`: the equatorial side is J2000 (true) or the true equator of date (false).
    /// Longitude and latitude in and out [rad]; an output may be an input. Azimuth is counted
    /// from north through east.
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
    void TransferLocationCoor(SphCoor* location, char to) const;
    /// A direction between two view frames: 0 equator of date, 1 local horizon, 2 body frame,
    /// 3 orbit frame, 4 ecliptic of date, 5 to 7 galactic.
    void TransferViewVec(const double* in, char from, double* out, char to) const;
    /// @}

    /// \name Body rotation
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
    /// J2000 equator to the body's own frame at an instant, and its transpose.
    bool GetMtrxEq2K_PlEq(const SSO_ID& body, int day, double fraction, double* out,
                          double* outTransposed);
    bool SetMtrxEq2K_PlEq(const SSO_ID& body);
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
    /// @{
    bool GetHelVec2K(const SSO_ID& id, char velocity, double* out);
    bool GetVecCentre2K(const SSO_ID& id, char velocity, double* out);
    bool GetHelVecCur(const SSO_ID& id, char velocity, double* out);
    bool GetHelEcl2K(const SSO_ID& id, char velocity, double* out);
    bool GetRefVec2K(const SSO_ID& id, char velocity, double* out);
    bool GetRefVecCur(const SSO_ID& id, char velocity, double* out);
    bool GetCurVec(const SSO_ID& id, double* out, bool toDate);
    /// Geometric distance [au], right ascension, declination.
    bool GetRADec(const SSO_ID& id, double* out, bool toDate);
    /// Apparent unit vector (J2000 equator) and light-time distance: 4 values. `lightTime` is a
    /// first guess [day], 0 for none.
    bool GetSSOVisVec2K(const SSO_ID& id, double* out, double lightTime);
    /// Apparent distance [au], right ascension and declination of date.
    bool GetRADecVis(const SSO_ID& id, double* out, double lightTime);
    bool GetAsterVecCentre2K(unsigned char velocity, double* out,
                             const tagAster_SPH_5* asteroid);
    /// @}

    /// \name Bodies by elements
    /// Adding under a number that is there replaces the record; records that are no orbit
    /// (e < 0, q or a <= 0, NaN) are refused with false. `Remove...` answers whether it was
    /// there.
    /// @{
    bool AddAsteroid(std::int32_t number, const AsteroidRecord& record);
    bool RemoveAsteroid(std::int32_t number);
    void ClearAsteroids();
    const AsteroidRecord* GetAsteroid(std::int32_t number) const;
    bool AddComet(std::int32_t number, const CometRecord& record);
    bool RemoveComet(std::int32_t number);
    void ClearComets();
    const CometRecord* GetComet(std::int32_t number) const;
    bool AddSpacecraft(std::int32_t number, const SpacecraftRecord* records, int count);
    bool RemoveSpacecraft(std::int32_t number);
    void ClearSpacecraft();
    bool AddUserObject(std::int32_t number, const UserObjectRecord& record);
    bool RemoveUserObject(std::int32_t number);
    void ClearUserObjects();
    /// Five-element records held for the object a host aims at: `astr` and `comt` of that
    /// number that are in no table are computed from them. Null releases.
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
    bool GetMagnitude(const SSO_ID& id, float* magnitude);
    /// \param[out] phase_angle  angle Sun - body - observer [rad]
    /// \param[out] illuminated  illuminated fraction of the disk, 0 to 1
    /// \param[out] elongation   angle Sun - observer - body [rad], positive east of the Sun
    /// \param[out] bright_limb  position angle of the midpoint of the bright limb [rad], from
    ///                          the north celestial pole of date through east
    /// \param[out] age          the Moon: days since the last new Moon; others: 0
    /// \return false for an object that cannot be computed (all five 0). Any may be null.
    bool PhaseElongation(const SSO_ID& id, double* phase_angle, double* illuminated,
                         double* elongation, double* bright_limb, double* age);
    double GetRadiEq(const SSO_ID& id, double* flattening = nullptr);
    double GetGravity(const SSO_ID& id);
    double GetParentGravity(const SSO_ID& id);
    double GetPeriodRotation(const SSO_ID& id);
    double GetAngVelocity(const SSO_ID& id);
    bool GetPolarAxes(const SSO_ID& id, double* out);
    double GetOrbitalPeriod(const SSO_ID& id);
    double GetSolarDay(const SSO_ID& id);
    /// Constellation of a direction on the true equator of date: 0 to 87 in the alphabetical
    /// order of the Latin names, 255 (as an unsigned byte) for none.
    char RADecInConstell(double ra, double dec) const;
    /// @}

  private:
    struct Model;
    std::unique_ptr<Model> model_;
};

/// Longitude and latitude of a place on a body as that body's maps count them: hemisphere
/// letters go into `GMSAngle::sign`. \return the letter written last
SOLSYS_API char LonLatForObjects(const SSO_ID* body, double longitude, double latitude,
                                 struct GMSAngle* lon_out, struct GMSAngle* lat_out);
