/// \file
/// Solar and lunar eclipses: search, circumstances, local view, maps.
///
/// Time scales: spans, records, curves and local circumstances are Universal Time (TT minus
/// `ET_UT::Get`); members that take a day number and a fraction, and `GetContacts`, take and
/// give dynamical time. A record counts its times in days from its own day number.
///
/// Angles are radians, longitudes east-positive in (-pi, pi], latitudes geodetic, azimuths and
/// position angles from north through east, altitudes geometric (no refraction). Lengths on the
/// fundamental plane are equatorial radii of the Earth. Heights of observers are kilometres.
///
/// Two ways to decide on an eclipse:
/// - The classic one: existence, type, gamma and magnitude come from a mean-lunation series
/// (good
///   to 0.005 in gamma), times from the ephemeris. A lunation is taken strictly after the
///   cursor, so a search that starts within a day of a syzygy can miss it, and one that ends
///   just before a syzygy can find it. A few limiting cases are missed or mislabelled
///   (docs/accuracy.md).
/// - The precise one (`SetPrecise`): everything comes from the ephemeris, by polynomials for
/// the
///   Besselian elements through five instants around greatest eclipse; found is exactly what
///   has its greatest eclipse in [start, end). No lunation of the span is passed over.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/astr_event.h"
#include "solsys/export.h"
#include "solsys/observer.h"
#include "solsys/solar_system.h"

/// Kinds of search.
enum : short { ECLIPSE_SOLAR = 0, ECLIPSE_LUNAR = 1 };

/// `ECLIPSE::type`.
enum : std::int16_t {
    ECLIPSE_TOTAL = 1,
    ECLIPSE_HYBRID = 2,  ///< annular and total along one path
    ECLIPSE_ANNULAR = 3,
    ECLIPSE_PARTIAL = 4,
    ECLIPSE_PENUMBRAL = 7  ///< lunar
};

/// `ECLIPSE::centrality`.
enum : std::int16_t { ECLIPSE_CENTRAL = 5, ECLIPSE_NON_CENTRAL = 6 };

/// Radii behind the cones of a solar eclipse (`SetRadii`).
enum : short {
    /// Catalogued radii: Sun 696000 km, Moon 1737.5 km (k = 0.272415), one k for both cones.
    ECLIPSE_RADII_CATALOGUE = 0,
    /// Those of the five-millennium canon: Sun 959.63 arcsec at 1 au, k = 0.272488 for the
    /// penumbra and 0.272281 for the umbra (Espenak & Meeus 2006, NASA/TP-2006-214141).
    ECLIPSE_RADII_CANON = 1
};

/// Radius of the Earth's shadow in a lunar eclipse (`SetShadow`); pm, ps parallaxes of Moon and
/// Sun, ss the Sun's semidiameter.
enum : short {
    /// 0.7404 - u and 1.2847 + u Earth radii at the Moon, u of the mean-lunation series.
    ECLIPSE_SHADOW_SERIES = 0,
    /// 1.01 pm + ps -+ ss (Danjon 1951; canon of lunar eclipses of 2009).
    ECLIPSE_SHADOW_DANJON = 1,
    /// 1.02 (0.99834 pm + ps -+ ss): enlarged by a fiftieth (Chauvenet 1891).
    ECLIPSE_SHADOW_FIFTIETH = 2
};

/// Places in `ECLIPSE::contact` and of `CSWEclipses::GetContacts`.
enum {
    ECLIPSE_P1 = 0,  ///< the penumbra begins (solar: touches the Earth; lunar: the Moon enters)
    ECLIPSE_P2,      ///< the penumbra is wholly on the Earth; the Moon is wholly in it
    ECLIPSE_P3,      ///< the penumbra begins to leave the Earth; the Moon begins to leave it
    ECLIPSE_P4,      ///< the penumbra ends
    ECLIPSE_U1,      ///< the same for the umbra
    ECLIPSE_U2,
    ECLIPSE_U3,
    ECLIPSE_U4
};

/// One eclipse. Times are UT in days from noon of the Julian day `day` (JD UT = day + time); a
/// time that does not exist is -1.0, whether or not that could be a time.
///
/// Local records (`CheckForLocation`): solar: `begin`, `greatest`, `end` are first contact,
/// maximum and fourth contact, `total_begin` and `total_end` second and third contact (total or
/// annular), `type` what the site sees; all contacts are given, those below the horizon too.
struct ECLIPSE {
    double greatest = 0;
    /// Solar: the penumbra touches and leaves the Earth (P1, P4). Lunar: the partial phase, of
    /// a penumbral eclipse the penumbral one; the classic search counts that one by the umbra.
    double begin = 0;
    double end = 0;
    /// (latitude, longitude). Solar: where the penumbra first touches the Earth, greatest
    /// eclipse, where it leaves. Lunar: only [1], which has the Moon in the zenith at greatest.
    double place[3][2] = {};
    double gamma = 0;  ///< least distance of the axis from the Earth's centre, north positive
    /// Solar: radii l2 (negative: total) and l1 of the cones on the fundamental plane at
    /// greatest eclipse. Lunar: radii of umbra and penumbra at the Moon.
    double umbra = 0;
    double penumbra = 0;
    double magnitude = 0;
    double total_begin = 0;  ///< lunar, and local solar; 0 or -1: none
    double total_end = 0;
    double local_magnitude = 0;  ///< local: the greatest that the site sees
    double obscuration = 0;      ///< local solar: covered fraction of the disk at that moment
    std::int32_t day = 0;        ///< ET day number of the syzygy
    std::int16_t present = 0;    ///< solar: 1 when there is an eclipse
    std::int16_t centrality = 0;
    std::int16_t type = 0;
    /// What follows is this library's own.
    std::int16_t kind = ECLIPSE_SOLAR;
    std::int32_t lunation = 0;  ///< counted from the new Moon of 2000 January 6; lunar: the one
                                ///< that began with the new Moon before; Brown's is 953 more
    std::int32_t saros = 0;
    double delta_t = 0;  ///< TT - UT used [s]
    double contact[8] = {-1, -1, -1, -1,
                         -1, -1, -1, -1};  ///< see ECLIPSE_P1; not of local ones
    double penumbral_magnitude = 0;        ///< lunar
    /// Local: altitude, azimuth and position angle, of solar eclipses at first, second contact,
    /// maximum, third and fourth contact (of the contact point on the Sun's limb; at maximum of
    /// the Moon's centre), of lunar ones at P1, U1, U2, greatest, U3, U4, P4 (without position
    /// angle). What does not happen: 0.
    double altitude[7] = {};
    double azimuth[7] = {};
    double position_angle[7] = {};
    double rise = -1;  ///< local: rising and setting of the upper limb during the eclipse
    double set = -1;
    /// Local: whether any of it is above the horizon (upper limb, refraction 34 arcmin).
    std::int16_t visible = 0;
};

/// Besselian elements at one instant; lengths in equatorial radii of the Earth.
struct BesselElems {
    double x = 0;  ///< the axis on the fundamental plane, east positive
    double y = 0;  ///< north positive
    double sin_d = 0;
    double cos_d = 0;
    /// Greenwich hour angle of the axis [rad, 0 to 2 pi). It lags by the Earth's turn during
    /// Delta T: `BessEl` is handed a UT instant while sidereal time takes a dynamical one.
    /// Local circumstances and maps put that turn back.
    double mu = 0;
    double l2 = 0;  ///< umbral cone on the fundamental plane; negative: total
    double l1 = 0;  ///< penumbral cone
    double tan_f1 = 0;
    double tan_f2 = 0;
};

/// A point of a curve on the Earth.
struct EclipsePoint {
    double latitude = 0;
    double longitude = 0;
    double time = 0;  ///< JD UT
};
/// Consecutive points are near each other on the globe; the longitude goes from pi to -pi where
/// the date line is crossed.
using EclipseCurve = std::vector<EclipsePoint>;

/// The central line, point by point.
struct EclipsePathPoint {
    double latitude = 0;
    double longitude = 0;
    double time = 0;          ///< JD UT
    double duration = 0;      ///< of totality or annularity [s]
    double width = 0;         ///< of the path, across it on the ground [km]
    double sun_altitude = 0;  ///< [rad]
    double magnitude = 0;     ///< ratio of the diameters
    bool total = false;
};

/// Receives eclipses as they are found.
class SOLSYS_API EclipseCallback {
  public:
    /// Takes over a newly allocated record; false ends the search.
    virtual bool OnEclipse(ECLIPSE* eclipse) = 0;
    virtual ~EclipseCallback() = default;
};

/// Whether an eclipse is possible at the next lunation by the mean-lunation series (Meeus,
/// Astronomical Formulae for Calculators).
/// \param[in]     kind      0 the new Moon strictly after the instant, 1 the full Moon after
/// it,
///                          any other the new Moon at or before it (then as kind 1: no limit)
/// \param[in,out] day, fraction  the instant, ET; on return the corrected time of the syzygy
/// (of
///                          the mean one when the latitude argument already excludes an
///                          eclipse)
/// \param[out]    u         radius of the umbra on the fundamental plane [Earth radii]
/// \param[out]    gamma     least distance of the axis [Earth radii]
/// \param[out]    n         kind 1: hourly motion factor of the Moon; otherwise left alone
/// \return false when there is none, for null pointers and for instants beyond the range of int
SOLSYS_API bool PossibilityOfEclipse(short kind, int* day, double* fraction, double* u,
                                     double* gamma, double* n);

/// Besselian elements from the places of Moon and Sun (Explanatory Supplement
/// to the Astronomical Almanac 1992).
/// \param[in] day, fraction  instant of `mu`, see `BesselElems::mu`
/// \param[in] moon, sun      geocentric, apparent, true equator of date [au], 3 values each
/// \param[in] moonRadius, sunRadius, earthRadius  [km]
/// Null pointers: nothing is written.
SOLSYS_API void BessEl(int day, double fraction, const double* moon, double moonRadius,
                       const double* sun, double sunRadius, double earthRadius,
                       BesselElems* elements);

/// Lunation number (0: new Moon of 2000 January 6) of a new Moon (kind 0), or of the new Moon
/// before a full Moon (kind 1), at about this instant [JD TT].
SOLSYS_API int EclipseLunation(double jd, short kind);
/// Saros series of an eclipse by its lunation number (van den Bergh's numbering).
SOLSYS_API int EclipseSaros(int lunation, short kind);

/// Searches eclipses and computes their circumstances.
///
/// \code
///     CSWEclipses eclipses(&model);
///     eclipses.SetPrecise(true);
///     eclipses.InitSearch(2451179.5, 2451544.5);       // the year 1999
///     eclipses.SearchEclipses(ECLIPSE_SOLAR);
///     for (const ECLIPSE& e : eclipses.GetResults()) ...
/// \endcode
///
/// A search moves the model's instant and observer and does not restore them. Without a model
/// (the default one could not be initialised) every search answers empty. Short of memory, the
/// constructor throws std::bad_alloc; the searches answer -1, with their list and place as
/// before, and the maps false, with an empty vector.
class SOLSYS_API CSWEclipses : public CSWAstrEv_dll {
  public:
    /// Borrows the model; given none, makes one on the ephemeris of the default place.
    explicit CSWEclipses(CSWSolSys* model);
    ~CSWEclipses();
    CSWEclipses(const CSWEclipses&) = delete;
    CSWEclipses& operator=(const CSWEclipses&) = delete;

    /// \name Search
    /// @{
    /// Prepares a geocentric search over [start, end], JD UT; empties the list and clears the
    /// stop flag. A span that is reversed, empty or not finite finds nothing.
    void InitSearch(double start, double end);
    /// The same for a site (`LOCATION_SURFACE` on the Earth; height in km). Null, or a site
    /// that is not finite: `SearchEclipsesForLocation` finds nothing.
    void InitSearchForLocation(double start, double end, OBSERVER* observer);
    /// The next eclipse of a kind; false at the end of the span or when stopped.
    bool SearchNext(ECLIPSE* eclipse, short kind);
    /// All eclipses to the end of the span into the list, each to the callback.
    /// \return the number of records in the list
    int SearchEclipses(short kind);
    /// The same, keeping what is visible at the site, as local records.
    int SearchEclipsesForLocation(short kind);
    /// The list; valid until the next search.
    const std::vector<ECLIPSE>& GetResults() const;
    /// Ends a running search, from any thread, before its next lunation.
    void Stop();
    /// The callback; null: none. Not owned.
    void SetCallback(EclipseCallback* callback);
    /// Told the fraction done (0 to 1) once a lunation; null: nobody. It changes no result.
    using ProgressHandler = void (*)(double fraction, void* context);
    void SetProgressHandler(ProgressHandler handler, void* context);
    /// Decides by the ephemeris instead of the series (off at first). Switching it on also
    /// chooses ECLIPSE_RADII_CANON and ECLIPSE_SHADOW_DANJON, switching it off
    /// ECLIPSE_RADII_CATALOGUE and ECLIPSE_SHADOW_SERIES.
    void SetPrecise(bool precise);
    bool IsPrecise() const;
    void SetRadii(short radii);
    void SetShadow(short shadow);
    /// @}

    /// \name Circumstances
    /// @{
    /// The eclipse at a syzygy (day, fraction: ET; gamma, u, n: of `PossibilityOfEclipse`).
    /// False when there is none. In the precise mode gamma only is ignored.
    bool CircumstanceSolarEclipse(int day, double fraction, double gamma, double u,
                                  ECLIPSE* eclipse);
    bool CircumstanceLunarEclipse(int day, double fraction, double gamma, double u, double n,
                                  ECLIPSE* eclipse);
    /// Elements from the model at an instant (ET), with catalogued radii, and the flattening
    /// quantities kept for `FindContact`. Moves the model.
    void BesselianElements(int day, double fraction, BesselElems* elements);
    /// First and last contact of a cone with the Earth, into what `GetContacts` gives: by
    /// Newton's method from either guess (ET fractions of `day`). -1.0: no convergence.
    void FindContact(bool umbral, bool outer, int day, double t0, double t1);
    /// P1, P2, P3, P4, U1, U2, U3, U4 found last [ET fractions of the day].
    void GetContacts(double contacts[8]) const;
    /// When the limits of the path on the Earth (of the umbra; of a partial eclipse, of the
    /// penumbra) begin and end: southern 1, northern 1, southern 2, northern 2 [JD UT]; -1:
    /// that limit does not touch the Earth. \return false for a record that is no solar eclipse
    bool FindTimeLimits(const ECLIPSE* eclipse, double times[4]);
    /// When a magnitude (0 to 1) is first and last reached anywhere on the Earth [JD UT].
    bool FindPhaseTimeLimits(const ECLIPSE* eclipse, double magnitude, double times[2]);
    /// Fills the three places of a record (see `ECLIPSE::place`).
    bool GetSpecialPoints(ECLIPSE* eclipse);
    /// @}

    /// \name Local circumstances
    /// Times: JD UT. Unusable observers or times answer 0 or false.
    /// @{
    /// Magnitude of the solar eclipse at a site at an instant; 0: none. The horizon is ignored.
    double GetSolarEclipsePhase(OBSERVER* observer, double time);
    double GetSolarEclipsePhase(double latitude, double longitude, double time);
    /// The Sun's geometric altitude.
    double GetSunAltitude(OBSERVER* observer, double time);
    /// Magnitude, obscuration and the position angle of the Moon's centre from the Sun's.
    /// \return whether there is an eclipse there and then
    bool GetEclParams(OBSERVER* observer, double time, double* magnitude, double* obscuration,
                      double* position_angle);
    /// Topocentric apparent radii [rad].
    bool GetSunMoonVisRad(OBSERVER* observer, double time, double* sun, double* moon);
    /// The disks at a site, in radii of the Sun: the Moon's centre from the Sun's towards east
    /// and north, and the Moon's radius. False when they are far apart.
    bool GetEclipsedSun(OBSERVER* observer, double time, double out[3]);
    /// Lunar: the Moon's centre from the shadow's axis towards east and north, the radii of the
    /// Moon, the umbra and the penumbra, seen from the Earth's centre [rad; with
    /// ECLIPSE_SHADOW_SERIES in Earth radii at the Moon].
    bool GetMoonInShadow(const ECLIPSE* eclipse, double time, double out[5]);
    /// The record of a found eclipse as the search's site sees it. False when nothing of it is
    /// above the horizon there (the record is filled when the site is touched at all).
    bool CheckForLocation(const ECLIPSE* eclipse, short kind, ECLIPSE* local);
    /// The same for any site.
    bool EclipseParamsForLocation(const ECLIPSE* eclipse, short kind, ECLIPSE* local,
                                  OBSERVER* observer);
    /// @}

    /// \name Maps
    /// Curves of a found eclipse, replacing what the vector holds. False for records that are
    /// not of the kind or not computable; a curve that does not exist leaves the vector empty.
    /// Solar ones describe the sea-level ellipsoid without refraction.
    /// @{
    bool GetCentralLine(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves);
    /// The central line with duration and width; `step`: seconds between points, on the whole
    /// minute when it is a multiple of 60.
    bool GetCentralPath(const ECLIPSE* eclipse, double step,
                        std::vector<EclipsePathPoint>* path);
    /// The central line at an instant [JD UT]. False when the axis misses the Earth then.
    bool GetPathPoint(const ECLIPSE* eclipse, double time, EclipsePathPoint* point);
    /// The place of greatest duration of a central eclipse.
    bool GetGreatestDuration(const ECLIPSE* eclipse, EclipsePathPoint* point);
    /// Northern, then southern limits.
    bool GetUmbralLimits(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves);
    bool GetPenumbralLimits(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves);
    /// Where the eclipse begins or ends at sunrise or sunset.
    bool GetRiseSetCurves(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves);
    /// Where the greatest phase comes at sunrise or sunset.
    bool GetMaximumAtHorizon(const ECLIPSE* eclipse, std::vector<EclipseCurve>* curves);
    /// Where the greatest magnitude is the one given (0 to 1).
    bool GetMagnitudeCurve(const ECLIPSE* eclipse, double magnitude,
                           std::vector<EclipseCurve>* curves);
    /// Where the greatest phase comes at the same moment, every `step` minutes of UT.
    bool GetIsochrones(const ECLIPSE* eclipse, double step, std::vector<EclipseCurve>* curves);
    /// Lunar: for P1, U1, U2, greatest, U3, U4, P4 (those that exist) the circle of places that
    /// have the Moon's centre on the horizon (refraction 34 arcmin); the Moon is up on the side
    /// of the place that has it in the zenith.
    bool GetVisibilityRegion(const ECLIPSE* eclipse, std::vector<EclipseCurve>* circles);
    /// @}

  private:
    struct SOLSYS_LOCAL State;
    std::unique_ptr<State> state_;
};
