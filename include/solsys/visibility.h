/// \file
/// Risings, culminations, settings and twilight of one object at a site.
///
/// Time scales: the searches (`InitSearch`, `SearchVisibility`, `SearchNext`,
/// `SearchCrossings`, `SearchRiseSet`, `GetZenith`, `GetBrief_OI`) and `GetCurVisibility` take
/// and give Julian dates of Universal Time. `GetCulmination`, `GetEventsTimeForElevation`,
/// `FindObjSinAltMinMax`, `FindNearestRiseSetTimes`, `GetHorizon` and `GetMtrxEq_Ec` take and
/// give dynamical time.
///
/// Heights: an `OBSERVER` on the surface handed to this class has its height in kilometres (the
/// model itself takes au; the class converts). Angles are radians, azimuths from north through
/// east, altitudes of an object's centre without refraction.
///
/// Rising and setting: the centre is 34 arcmin below the horizon (standard refraction); in the
/// day-by-day search the dip of the horizon, 0.0353 degrees times the square root of the height
/// in metres, comes on top, and for the Sun and the Moon the apparent semi-diameter. Twilight
/// is astronomical: the Sun's centre 18 degrees below the horizon.
///
/// Sources: rise, set and transit by iteration on the hour angle, e.g. Meeus 1998, Astronomical
/// Algorithms, chapter 15; -34 arcmin and the dip 2.12 arcmin sqrt(h in metres): Explanatory
/// Supplement to the Astronomical Almanac (1992).
///
/// Bad input: a null record, identifier or destination, an instant or angle that is not finite,
/// a day that is no 32-bit integer, an object that is in no table: the answer is false (0, an
/// empty list) and nothing is written but the resets each member names.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/astr_event.h"
#include "solsys/export.h"
#include "solsys/observer.h"
#include "solsys/solar_system.h"
#include "solsys/sso_id.h"

/// A point of the sky: equator and equinox of date [rad].
struct SpherePoint {
    double ra = 0;   ///< right ascension, [0, 2 pi)
    double dec = 0;  ///< declination
};

/// One day of one object, from a transit to the rising before it and the setting after it.
/// Times are JD UT; 0 stands for none.
///
/// The Sun: the four times at the end are its own, and `rise` and `set` are sunrise and sunset.
/// A level that the Sun does not cross that day leaves the transit time in its slot. On a day
/// of twilight without a sunrise `rise` and `set` (and their azimuths) are those of dawn and
/// dusk: tell it by `sunrise == transit`.
struct VISIBILITY {
    std::int32_t type = 0;        ///< type code, as in SSO_ID
    std::int32_t number = 0;      ///< number within the type
    double reserved1[4] = {};     ///< zero
    double rise = 0;              ///< rising [JD UT]
    double transit = 0;           ///< upper culmination [JD UT]
    double set = 0;               ///< setting [JD UT]
    double rise_azimuth = 0;      ///< [rad]
    double transit_altitude = 0;  ///< [rad]
    double set_azimuth = 0;       ///< [rad]
    /// When the object is above the level at the lower culmination before the transit: its time
    /// [JD UT] and the altitude there [rad]; then the same for the one after.
    double no_rise_time = 0;
    double no_rise_altitude = 0;  ///< see `no_rise_time`
    double no_set_time = 0;       ///< see `no_rise_time`
    double no_set_altitude = 0;   ///< see `no_rise_time`
    double magnitude = 0;         ///< visual, at transit
    double phase_angle = 0;       ///< [rad], at transit, as the four further below
    double distance = 0;  ///< from the observer at transit [au]; -1: a star without a parallax
    double diameter = 0;  ///< apparent diameter at transit [rad]; 0 unknown
    double illuminated = 0;    ///< fraction of the disk, 0 to 1
    double elongation = 0;     ///< from the Sun [rad], positive east
    double bright_limb = 0;    ///< position angle [rad]
    double age = 0;            ///< of the Moon [day]
    double reserved2[2] = {};  ///< zero
    double dawn = 0;           ///< the Sun: start of morning astronomical twilight [JD UT]
    double dusk = 0;           ///< the Sun: end of evening astronomical twilight [JD UT]
    double sunrise = 0;        ///< the Sun [JD UT]
    double sunset = 0;         ///< the Sun [JD UT]
};

/// A passage through an altitude, as `SearchCrossings` finds it.
struct CROSSING {
    double time = 0;         ///< [JD UT]
    double azimuth = 0;      ///< of the object's centre there [rad], from north through east
    std::int32_t sense = 0;  ///< 1 rising, -1 setting
};

/// One day of the object, from one lower culmination to the next. Rising and setting are at
/// -34 arcmin for every object.
struct RISESETDAY {
    double start_azimuth = 0;   ///< at the start of the interval [rad]
    double start_altitude = 0;  ///< likewise
    /// [JD UT]; 0 when the object is above the level at the lower culmination before.
    double rise = 0;
    double rise_azimuth = 0;  ///< [rad]
    /// [JD UT]; -2 when the object stays below the level (all else is then 0).
    double transit = 0;
    double transit_altitude = 0;  ///< [rad]
    /// [JD UT]; 0 when the object is above the level at the lower culmination after.
    double set = 0;
    double set_azimuth = 0;    ///< [rad]
    double end_azimuth = 0;    ///< at the end of the interval [rad]
    double end_altitude = 0;   ///< likewise
    double reserved1 = 0;      ///< zero
    double phase_angle = 0;    ///< [rad], at transit, as the four below
    double reserved2[2] = {};  ///< zero
    double illuminated = 0;    ///< fraction of the disk, 0 to 1
    double elongation = 0;     ///< from the Sun [rad], positive east
    double bright_limb = 0;    ///< position angle [rad]
    double age = 0;            ///< of the Moon [day]
};

/// Request and answer of `SearchRiseSet`.
struct RISESETVIS {
    std::uint64_t header = 0;        ///< the host's own
    std::int32_t day = 0;            ///< start of the interval, written: day number ...
    double fraction = 0;             ///< ... and fraction, UT
    std::uint64_t reserved[2] = {};  ///< the host's own
    double from = 0;                 ///< start of the interval [JD UT], given
    double to = 0;                   ///< end of the interval [JD UT], given
    /// The days found so far; made by the first `SearchRiseSet` when null, freed by
    /// `FreeRiseSetVector`.
    std::vector<RISESETDAY>* days = nullptr;
    double moonrise = 0;  ///< [JD UT]; 0 not within the interval, -1 the level is not crossed
    double moonset = 0;   ///< likewise
    double dawn = 0;      ///< the Sun [JD UT]; 0 not computed, -1 the level is not crossed
    double dusk = 0;      ///< likewise
    double sunrise = 0;   ///< likewise
    double sunset = 0;    ///< likewise
};

/// Request and answer of `GetCurVisibility`.
struct tagCURVISIBILITY {
    std::int32_t type = 0;           ///< type code of the object, given
    std::int32_t number = 0;         ///< its number, given
    std::uint32_t spare = 0;         ///< goes into `SSO_ID::spare2`, given
    std::uint8_t flag = 0;           ///< cleared
    std::uint32_t reserved = 0;      ///< the host's own
    std::int32_t day = 0;            ///< instant, UT, given: day number ...
    double fraction = 0;             ///< ... and fraction
    double ra = 0;                   ///< apparent, of date [rad]
    double dec = 0;                  ///< likewise
    std::uint8_t horizontal = 0;     ///< 1 when the next two hold: an observer on the surface
    double azimuth = 0;              ///< from north through east [rad]
    double altitude = 0;             ///< without refraction [rad]
    std::int16_t constellation = 0;  ///< 0 to 87; 255 for none
    float magnitude = 0;             ///< visual; 20 unknown
    double distance = 0;             ///< [au]; -1: a star without a parallax
    double semidiameter = -1;        ///< apparent [rad]; -1 unknown
    double phase_angle = 0;          ///< [rad]
    double illuminated = 0;          ///< fraction of the disk, 0 to 1
    double bright_limb = 0;          ///< position angle [rad]
    double elongation = 0;           ///< [rad], positive east
    double age = 0;                  ///< of the Moon [day]
};

/// Brief physical data of a body; -1 stands for unknown.
struct PHYSINFO {
    /// Planets inside the Earth's orbit: from the Sun; moons other than ours: from their planet
    /// [rad].
    double max_elongation = -1;
    double escape_velocity = -1;  ///< [km/s]
    double mass = -1;             ///< [kg]
    /// Planets: the Sun's mass over theirs; moons: their mass over the Moon's.
    double mass_ratio = -1;
};

/// What a line about an object says: what it is, how bright, where, and its day.
struct BRIEF_INFO {
    std::int32_t type = 0;  ///< type code
    std::int32_t number = 0;
    float magnitude = 20.0F;           ///< at the instant; 20 unknown
    std::int16_t constellation = 255;  ///< at the instant: 0 to 87; 255 for none
    /// Rising, upper culmination and setting of the object's day [JD UT], the day whose
    /// transit comes nearest to half a day after the instant; 0 for none.
    double rise = 0;
    double transit = 0;        ///< likewise
    double set = 0;            ///< likewise
    double best_altitude = 0;  ///< the altitude at upper culmination [rad]
};

/// Risings, culminations and settings of one object seen from a site.
///
/// Construct over a model, `InitSearch`, then `SearchVisibility` once or `SearchNext` until it
/// answers false; or `SearchRiseSet`, interval by interval. The other members need no search:
/// those that take no observer use the one the model has. Every member that searches moves the
/// model's instant (and, where it takes an observer or runs a search, the model's observer) and
/// leaves it at the last instant evaluated; `CSWSolSys::SaveT3Data` and `RestoreT3Data` bring
/// the instant back.
///
/// The hour-angle searches (all but `SearchCrossings`, `FindObjSinAltMinMax` and
/// `FindNearestRiseSetTimes`) are made for a site on the Earth. They go from transit to transit
/// and so pass over real crossings, at high latitudes above all: of a year at 14 latitudes from
/// pole to pole 173 of 4,769 moonrises and moonsets, half the Sun's at the poles.
/// `SearchCrossings` passes over none.
///
/// All work is bounded: iterations are capped, and a search whose span reaches beyond the
/// theories of the observer's body ends at their edge. One object serves one thread.
///
/// Short of memory, the constructor throws std::bad_alloc; members let no exception out: they
/// answer false, an empty list, or -1 for a count, and a search stands where it stood.
class SOLSYS_API CSWVisibility : public CSWAstrEv_dll {
  public:
    /// Over the host's model, which must outlive this; or, given null, over a model of its own
    /// on the ephemeris that `StarwickPath::GetEphemerisPath` names (should that fail: the
    /// debug text "Solar system not installed\n", and everything answers false).
    explicit CSWVisibility(CSWSolSys* model = nullptr);
    ~CSWVisibility();
    CSWVisibility(const CSWVisibility&) = delete;             ///< not copied
    CSWVisibility& operator=(const CSWVisibility&) = delete;  ///< not copied

    /// Starts a search. Moves the model to its start and empties both lists of results.
    ///
    /// \param[in] start,end  of the span [JD UT]; an end before the start, or either no
    /// instant:
    ///                       an empty span.
    /// \param[in] id         the object.
    /// \param[in] observer   on the surface with the height in km; null, or not finite: the one
    ///                       in force stays, at first 37 degrees east, 55 degrees north, 0.1
    ///                       km.
    void InitSearch(double start, double end, SSO_ID id, OBSERVER* observer);

    /// All days of the interval into the list (`GetResults`). \return how many it holds
    int SearchVisibility();
    /// The next day on which the object is up.
    ///
    /// \param[out] day  zeroed, with the identifier, when there is none.
    /// \return false at the end of the interval, for an unknown object, for a null record, and
    ///         for a spacecraft (`fSCO`, `scft`) that orbits the observer's own body.
    ///
    /// A transit at or below -34 arcmin (the Sun: -18 degrees) is passed over. Transits from
    /// half a day before the start to half a day after the end can be met. Times are refined to
    /// 0.1 s of the altitudes that the model gives (worst of a year: 0.11 s).
    bool SearchNext(VISIBILITY* day);
    /// The list of the last `SearchVisibility`; valid until the next search.
    const std::vector<VISIBILITY>& GetResults() const;

    /// Every passage of the object of `InitSearch` through an elevation in the whole interval
    /// into a list of its own (`GetCrossings`); the cursor of `SearchNext` stays where it is.
    ///
    /// \param[in] elevation   altitude without refraction [rad]: -0.0098902 for the horizon
    /// with
    ///                        standard refraction; a site at height h metres sees 0.0353
    ///                        degrees times sqrt(h) further down.
    /// \param[in] upperLimb   true: of the upper limb, where the object's radius is known (the
    ///                        Sun and the Moon rise so); false: of the centre.
    /// \return how many the list holds; 0 for an elevation that is not finite, an object that
    ///         cannot be computed, and an observer who is not on the surface of the Earth.
    ///
    /// None is missed, at any latitude: the second derivative of the sine of the altitude is
    /// bounded, and an interval is left only when the bound says what is in it. Two passages
    /// less than a second apart are taken for none. Instants agree to 0.1 s with the altitudes
    /// that the model gives: each minute of a year sampled at 14 latitudes from pole to pole,
    /// heights 0 and 3 km, ten bodies and three stars shows the same passages.
    int SearchCrossings(double elevation, bool upperLimb);
    /// The list of the last `SearchCrossings`, in order of time; valid until the next search.
    const std::vector<CROSSING>& GetCrossings() const;

    /// Days of the object of `InitSearch` in the interval of the record, with the first
    /// moonrise and moonset in it and the Sun's events about its transit in it. Days are
    /// appended to the record's list. Each call goes on after the last day that the one before
    /// found. A day without a transit in the interval appends one entry with the places at its
    /// ends, and for the Moon its rising and setting. \return false for a null record or an
    /// interval that is not finite
    bool SearchRiseSet(RISESETVIS* request);
    /// Frees the list of days and sets its pointer to null.
    void FreeRiseSetVector(RISESETVIS* request);

    /// The instant in [from, to] at which the hour angle of the object is the negative of
    /// `hourAngle`: local apparent sidereal time + hourAngle = right ascension.
    ///
    /// \param[in]  from,to    [JD TT].
    /// \param[out] time       [JD TT], to 0.1 s; written even when it lies outside [from, to].
    /// \param[out] altitude   [rad].
    /// \param[in]  hourAngle  [rad]: 0 the upper culmination, pi and -pi the lower one after
    ///                        and before, 2 pi the next upper one. The iteration starts at a
    ///                        quarter of the interval, at three quarters for a positive one.
    /// \return whether the time found lies in [from, to]
    ///
    /// Spacecraft (`fSCO`, `uSCO`): as `GetCulmination4Spacecraft2`.
    bool GetCulmination(SSO_ID* id, double from, double to, double* time, double* altitude,
                        double hourAngle);
    /// Walks by minutes to the greatest altitude (`hourAngle` 0) or the least one (otherwise),
    /// from `from` on, or from `to` backwards when `hourAngle` is negative; then by thirds of a
    /// step to 1 s. Arguments and answer as `GetCulmination`.
    bool GetCulmination4Spacecraft(SSO_ID* id, double from, double to, double* time,
                                   double* altitude, double hourAngle);
    /// The first extremum of the altitude in [from, to], the last one when `hourAngle` is
    /// negative: a maximum for 0 and 2 pi, a minimum otherwise; to 1 s. At most a year is
    /// searched, and extrema less than two minutes apart may be passed over together.
    /// Arguments and answer as `GetCulmination`; nothing is written when there is none.
    bool GetCulmination4Spacecraft2(SSO_ID* id, double from, double to, double* time,
                                    double* altitude, double hourAngle);

    /// When the object goes through an altitude, by iteration on the hour angle from an
    /// instant.
    ///
    /// \param[in]  elevation  altitude of the centre [rad].
    /// \param[in]  time       where the iteration starts [JD TT].
    /// \param[out] eventTime  [JD TT], to 3 s and mostly far better; 0 when the altitude is not
    ///                        reached (the iteration then ends at the culmination, more than 20
    ///                        arcsec away from it).
    /// \param[out] azimuth    there [rad].
    /// \param[in]  sign       1 rising, -1 setting.
    /// \return false when the iteration does not converge; `eventTime` is then 0
    bool GetEventsTimeForElevation(SSO_ID* id, double elevation, double time, double& eventTime,
                                   double& azimuth, short sign);
    /// The same between a lower culmination and the transit after it (`sign` 1) or between a
    /// transit and the lower culmination after it (-1), started at the lower culmination.
    /// Spacecraft: by bisection, to 10 arcsec.
    ///
    /// For all others the interval only says where to start. Where the lower culmination itself
    /// says "never up" or "never down", as at 62 degrees of latitude and beyond when the
    /// declination changes fast, the answer is true with an event time of 0 although the
    /// altitude is crossed inside the interval (the Moon in 2026: 21 of 1,014 intervals at 65
    /// degrees north). `SearchCrossings` finds those.
    bool GetEventsTimeForElevation(SSO_ID* id, double elevation, double from, double to,
                                   double& eventTime, double& azimuth, short sign);

    /// The next extremum of the altitude, to 1 s: a change of sign of its rate.
    ///
    /// \param[in]  from   [JD TT].
    /// \param[in]  span   [day]; negative: backwards.
    /// \param[out] time   [JD TT].
    /// \param[out] value  sine of the altitude there.
    /// \return 1 for a maximum, -1 for a minimum, 0 when there is none
    ///
    /// The rate is looked at in steps of half of P R / (P + R), P the orbital period of the
    /// object and R the rotation of the observer's body. Beyond 88 degrees of latitude two
    /// extrema may fall within a step and are passed over.
    int FindObjSinAltMinMax(SSO_ID* id, double from, double span, double* time, double* value);
    /// Rise, culmination and set nearest to an instant, at an altitude.
    ///
    /// \param[in]  time       [JD TT].
    /// \param[in]  span       how far to look to either side [day]; at most about 40 years of
    ///                        days are looked at.
    /// \param[in]  elevation  altitude of the centre [rad].
    /// \param[out] times      rise, culmination, set [JD TT], to 1 s
    /// \param[out] azimuths   azimuth at rise, altitude at culmination, azimuth at set [rad];
    /// or
    ///                        null
    /// \return false when the object does not rise, or does not set, within the span
    bool FindNearestRiseSetTimes(SSO_ID* id, double time, double span, double elevation,
                                 double* times, double* azimuths);

    /// The object at an instant for an observer; null or not finite: the one in force.
    ///
    /// \return false when it cannot be computed: in no table (bodies, stars, held records), no
    ///         instant, or the observer's own body without a place there. The two flags are
    ///         then 0 and the semi-diameter -1, all else as it was.
    bool GetCurVisibility(OBSERVER* observer, tagCURVISIBILITY* visibility);
    /// Points of the horizon at equal steps of azimuth from north on, sorted by descending
    /// right ascension.
    ///
    /// \param[in] day,fraction  instant [JD TT].
    /// \param[in] observer      null or not finite: the one in force.
    /// \param[in] count         of points; 0 or less: none.
    /// \return the list, empty for what is no instant; valid until the next call
    const std::vector<SpherePoint>* GetHorizon(int day, double fraction, OBSERVER* observer,
                                               short count);
    /// Where the zenith points when twilight begins and ends and when the Sun rises and sets on
    /// the day that starts at an instant.
    ///
    /// \param[in]  day,fraction  instant [JD UT].
    /// \param[out] morning       4 values: right ascension and declination [rad] at dawn and at
    ///                           sunrise; 1000 stands for none.
    /// \param[out] evening       the same at dusk and at sunset.
    /// \return how many of the four levels the Sun crosses; 0, and nothing written, for a null
    ///         destination
    ///
    /// A level that the Sun does not cross counts at its transit. When it stays below -18
    /// degrees all day, slots 0 and 1 of both hold the zenith of the instant given.
    int GetZenith(int day, double fraction, OBSERVER* observer, double* morning,
                  double* evening);
    /// Moves the model and answers its matrix (9 values, row-major) from the true equator to
    /// the ecliptic of date: v_ecliptic = M v_equator.
    ///
    /// \param[in] day,fraction  instant [JD TT].
    /// \return false, and nothing written, for what is no instant and for a null destination
    bool GetMtrxEq_Ec(int day, double fraction, double* matrix);

    /// Brief data of planets and moons at the model's instant: escape velocity from GM and
    /// equatorial radius, mass by the Sun's 1.9891e30 kg, greatest elongations by osculating
    /// semi-major axes. \return false, all -1, for others
    bool GetPhysInfo(SSO_ID id, PHYSINFO* info);
    /// The short information at an instant [JD UT], from the model's place on a surface, or
    /// else from the observer of the search. \return false when the object cannot be computed,
    /// with the record as a new one but for the identifier
    bool GetBrief_OI(int day, double fraction, SSO_ID id, BRIEF_INFO* info);

  private:
    struct SOLSYS_LOCAL State;
    std::unique_ptr<State> state_;
};
