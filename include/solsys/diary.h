/// \file
/// The diary of the sky: seasons, events of the planets, phases and apsides of the Moon,
/// conjunctions, transits, meteor showers.
///
/// Times of spans and events are Julian dates of Universal Time. Places are those of the
/// Earth's centre unless a field says that it is for the site; apparent places carry light time
/// and aberration, and stars the deflection of light by the Sun too. Longitudes are ecliptic,
/// of the true equinox of date; right ascensions refer to the true equator of date. Angles are
/// radians; `SKYEVENT_NONE` stands for a value that does not exist or was not asked for.
///
/// Every search is certified for the Sun, the Moon and the planets: zeros of functions of time
/// are isolated by a bound on their second derivative (measured over 1600 to 2200, and enlarged
/// by half), so that none is stepped over; then they are refined to 1 s of the model. What is
/// flat is uncertain by more than that: see the kinds. Events in [start, end) are found.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solsys/astr_event.h"
#include "solsys/conjunctions.h"
#include "solsys/eclipses.h"
#include "solsys/export.h"
#include "solsys/observer.h"
#include "solsys/solar_system.h"
#include "solsys/stars.h"

/// Kinds of events; in brackets the type of the detail record.
enum : std::int32_t {
    /// [A] The Sun's apparent longitude is 0, 90, 180, 270 degrees.
    SKYEVENT_MARCH_EQUINOX = 1,
    SKYEVENT_JUNE_SOLSTICE = 2,
    SKYEVENT_SEPTEMBER_EQUINOX = 3,
    SKYEVENT_DECEMBER_SOLSTICE = 4,
    /// [A] Extremes of the geometric distance of the centres of Earth and Sun.
    SKYEVENT_EARTH_PERIHELION = 5,
    SKYEVENT_EARTH_APHELION = 6,
    /// [B] The Moon's apparent longitude exceeds the Sun's by 0, 90, 180, 270 degrees.
    SKYEVENT_NEW_MOON = 7,
    SKYEVENT_FIRST_QUARTER = 8,
    SKYEVENT_FULL_MOON = 9,
    SKYEVENT_LAST_QUARTER = 10,
    /// [C] Mercury and Venus: the apparent longitudes of planet and Sun agree, the planet
    /// before
    /// and beyond the Sun.
    SKYEVENT_INFERIOR_CONJUNCTION = 11,
    SKYEVENT_SUPERIOR_CONJUNCTION = 12,
    /// [C] Mercury and Venus: largest angle between planet and Sun.
    SKYEVENT_GREATEST_ELONGATION_EAST = 13,
    SKYEVENT_GREATEST_ELONGATION_WEST = 14,
    /// [C] The planet stands still in right ascension, or in longitude (`in_longitude`), and
    /// moves westward, or eastward, from then on. An outer planet moves by 0.1 arcsec in the
    /// hours about a station.
    SKYEVENT_STATIONARY_RETROGRADE = 15,
    SKYEVENT_STATIONARY_DIRECT = 16,
    /// [C] Venus: its magnitude is least, either side of inferior conjunction (the law of
    /// `GetMagnitude`, in single precision: within some minutes).
    SKYEVENT_GREATEST_BRILLIANCY = 17,
    /// [C] Extremes of the geometric distance of the planet's centre (Jupiter to Pluto: of the
    /// barycentre of its system) from the Sun's. The outer ones can have several in a row, as
    /// the Sun moves about the barycentre of the solar system.
    SKYEVENT_PERIHELION = 18,
    SKYEVENT_APHELION = 19,
    /// [D, an `ECLIPSE`] Greatest eclipse, by the precise search of `CSWEclipses`.
    SKYEVENT_SOLAR_ECLIPSE = 20,
    SKYEVENT_LUNAR_ECLIPSE = 21,
    /// [C] Mars to Pluto: the apparent longitudes of planet and Sun differ by 180, 0, 90 (the
    /// planet east of the Sun) and 270 degrees.
    SKYEVENT_OPPOSITION = 22,
    SKYEVENT_CONJUNCTION = 23,
    SKYEVENT_QUADRATURE_EAST = 24,
    SKYEVENT_QUADRATURE_WEST = 25,
    /// [C] Mars to Pluto: extremes of the distance that its light travels to the Earth's
    /// centre.
    /// The Moon: perigee and apogee, extremes of the geometric distance of the centres.
    SKYEVENT_CLOSEST = 26,
    SKYEVENT_FARTHEST = 27,
    /// [E] The Sun's longitude (geometric, equinox J2000.0) is that of the maximum of a shower.
    SKYEVENT_METEOR_SHOWER = 28,
    /// [C] The right ascensions of two objects agree: the Moon and a planet (or other object),
    /// two planets (or other objects), an object and a star.
    SKYEVENT_MOON_CONJUNCTION = 29,
    SKYEVENT_PLANET_CONJUNCTION = 30,
    SKYEVENT_STAR_CONJUNCTION = 31,
    /// [C] Mercury or Venus before the disk of the Sun (radius 959.63 arcsec at 1 au): least
    /// angle of the centres.
    SKYEVENT_TRANSIT = 32
};

/// "None" in a detail record.
constexpr double SKYEVENT_NONE = 1000.0;

/// Detail record A, kinds 1 to 6.
struct SKYEVENT_SUN {
    double longitude = 0;             ///< of the Sun, apparent, true equinox of date
    double distance = 0;              ///< of the centres of Sun and Earth, geometric [au]
    double azimuth = SKYEVENT_NONE;   ///< of the Sun for the site, from north through east
    double altitude = SKYEVENT_NONE;  ///< of its centre, without refraction
};

/// Detail record B, kinds 7 to 10.
struct SKYEVENT_PHASE {
    double longitude = 0;  ///< of the Moon, apparent
    double latitude = 0;
    double distance = 0;  ///< of the centres of Moon and Earth [km]
    /// 0 no eclipse; new Moon: 1 total, 2 hybrid, 3 annular, 4 partial; full Moon: 1 total,
    /// 4 partial, 7 penumbral.
    std::int32_t eclipse = 0;
    /// From the phase to the nearest perigee and the nearest apogee, negative before it [h].
    double hours_to_perigee = SKYEVENT_NONE;
    double hours_to_apogee = SKYEVENT_NONE;
    double azimuth = SKYEVENT_NONE;   ///< of the Moon for the site
    double altitude = SKYEVENT_NONE;  ///< of its centre
};

/// Detail record C, kinds 11 to 19, 22 to 27 and 29 to 32. The first object is what the event
/// is about; the second one what it stands with: the Sun (11 to 14, 22 to 25, 32), the other
/// object (29 to 31; a star: type `star`, number 0 unless the model holds it), else none (type
/// 0).
struct SKYEVENT_BODY {
    std::int32_t type1 = 0, number1 = 0;
    std::int32_t type2 = 0, number2 = 0;
    double separation = SKYEVENT_NONE;  ///< angle between the two objects
    /// Direction of the first object from the second, from north (of date) through east.
    double position_angle = SKYEVENT_NONE;
    double elongation = SKYEVENT_NONE;  ///< of the first object from the Sun, positive east
    double magnitude = SKYEVENT_NONE;   ///< of the first object
    double magnitude2 = SKYEVENT_NONE;  ///< of the second object
    std::int32_t constellation = 255;   ///< of the first object: 0 to 87; 255 for none
    /// Of the first object from the Earth's centre; 18 and 19: from the Sun's [au].
    double distance = SKYEVENT_NONE;
    /// [JD UT]. 32: exterior and interior contact at ingress, interior and exterior at egress,
    /// for the Earth's centre. 29 and 31, local events asked for: the Moon begins to cover the
    /// object's disk, covers it all, begins to uncover it, has uncovered it, for the site,
    /// whether above its horizon or not (a star: the first two agree, and the last two).
    double contact[4] = {SKYEVENT_NONE, SKYEVENT_NONE, SKYEVENT_NONE, SKYEVENT_NONE};
    double azimuth = SKYEVENT_NONE;   ///< of the first object for the site
    double altitude = SKYEVENT_NONE;  ///< of its centre
    std::int32_t in_longitude = 0;    ///< 15, 16: 1 in ecliptic longitude, 0 in right ascension
};

/// Detail record E, kind 28, and request of `CalcShower`. Radiants of the working list of
/// visual meteor showers (International Meteor Organization, 2024), J2000.0, at the maximum.
struct SHOWER {
    std::int32_t number = 0;  ///< of the IAU Meteor Data Center, given
    std::int32_t year = 0;    ///< of the maximum, given; astronomical (0 is 1 BC)
    double start = 0;         ///< activity begins [JD UT], good to a day
    double peak = 0;          ///< [JD UT]
    double end = 0;           ///< activity ends [JD UT], good to a day
    double ra = 0;            ///< of the radiant at the maximum [rad]
    double dec = 0;
    double speed = 0;             ///< of the meteors before the atmosphere [km/s]
    double population_index = 0;  ///< r
    double zhr = SKYEVENT_NONE;   ///< zenithal hourly rate; none where it varies
    double moon_illuminated = 0;  ///< illuminated fraction of the Moon at the maximum, 0 to 1
    double azimuth = SKYEVENT_NONE;   ///< of the radiant for the site
    double altitude = SKYEVENT_NONE;  ///< of the radiant for the site
    char code[4] = {};                ///< three letters, as in "PER"
    char name[32] = {};
};

/// One event.
struct SkyEvent {
    double time = 0;         ///< [JD UT]
    std::int32_t kind = 0;   ///< 1 to 32
    void* detail = nullptr;  ///< a record of the kind's type, owned by the entry; or null
};

/// Frees an event that a callback took over, and its record. Null does nothing.
SOLSYS_API void FreeSkyEvent(SkyEvent* event);

/// What a host installs to get every event as it is found.
class SOLSYS_API SkyEventCallback {
  public:
    /// Takes over a newly allocated entry (free it with `FreeSkyEvent`). \return whether the
    /// search is to go on
    virtual bool OnEvent(SkyEvent* event) = 0;
    virtual ~SkyEventCallback() = default;
};

/// Builds the calendar of the sky of a span.
///
/// Construct over a model, `InitSearch`, then `SearchAll` or any of the other searches, any
/// number of times: events are appended to the list in the order of the searches, in each
/// search kind by kind, and handed to the callback. Every search answers the count of the list.
/// A search moves the model's instant and observer and leaves them at the last one evaluated.
/// One object serves one thread; `Stop` and `IsCalculationsInterrupt` may be called from any. A
/// stop ends the running search at its next step; what was found stays in the list. Short of
/// memory, the constructor throws std::bad_alloc, and a search answers -1 with the list as
/// before it.
class SOLSYS_API CSkyDiaryEvents : public CSWAstrEv_dll {
  public:
    /// Over the host's model, which must outlive this; or, given null, over a model of its own
    /// on the ephemeris that `StarwickPath::GetEphemerisPath` names (should that fail: the
    /// debug text "Solar system not installed\n", and the searches find nothing).
    explicit CSkyDiaryEvents(CSWSolSys* model);
    ~CSkyDiaryEvents();
    CSkyDiaryEvents(const CSkyDiaryEvents&) = delete;
    CSkyDiaryEvents& operator=(const CSkyDiaryEvents&) = delete;

    /// Starts over: clears the stop flag, empties the list, places the model at the start and
    /// its observer at the Earth's centre.
    ///
    /// \param site        observer on the Earth's surface (height in km), copied; may be null
    /// \param start, end  span [JD UT]. Empty or not finite: nothing is found.
    /// \param local       fill the fields for the site (azimuth and altitude, occultations)
    void InitSearch(OBSERVER* site, double start, double end, bool local);

    /// `SearchEquinox`; `SearchInner` for Mercury and Venus; `SearchOuter` for Mars to Pluto;
    /// `SearchMoonPhases`; `SearchConjPlanetsMoon`; `SearchConjPlanetsPlanets`. \return the
    /// count of the list; 0 when stopped or without a model
    int SearchAll();

    int SearchEquinox();             ///< Kinds 1 to 6.
    int SearchInner(SSO_ID planet);  ///< Kinds 11 to 19 and 32 of Mercury or Venus.
    int SearchOuter(SSO_ID planet);  ///< Kinds 15, 16, 18, 19 and 22 to 27 of Mars to Pluto.
    int SearchMoonPhases();          ///< Kinds 7 to 10.
    int SearchMoonApsides();         ///< Kinds 26 and 27 of the Moon.
    int SearchEclipses();            ///< Kinds 20 and 21.
    int SearchShowers();             ///< Kind 28.
    /// Kind 29, the Moon with Mercury, Venus, Mars ... Pluto, in this order.
    int SearchConjPlanetsMoon();
    /// Kind 30, the 28 pairs of planets in rising order.
    int SearchConjPlanetsPlanets();
    /// Kind 29 when one of the objects is the Moon, else kind 30. Bodies that are neither the
    /// Sun, the Moon nor planets are searched with a bound on their motion that satellites of
    /// the Earth exceed. Unknown objects, or the same object twice: nothing.
    int SearchConjSSOSSO(SSO_ID const& first, SSO_ID const& second);
    /// Kind 31. A null star: nothing.
    int ConjStarSSO(SSO_ID object, StarObject* star);
    /// Fills the record of a shower from its number and year. \return false, and nothing else
    /// written, for null, an unknown number or a year beyond the model
    bool CalcShower(SHOWER* shower);
    bool SearchNext(CONJUN* event);  ///< Always false: events come by list and callback.

    /// Empties the list. \return true
    bool ResListReset();
    /// The events found so far; valid until the list changes. The list owns the records.
    const std::vector<SkyEvent>& GetResults() const;
    /// Installs what gets every event, null for none. Not owned.
    void SetCallback(SkyEventCallback* callback);
    /// Calls a function once a step with the fraction of the running search done, 0 to 1.
    void SetProgressHandler(void (*progress)(double fraction, void* context), void* context);

    /// Ends a running search at its next step; from any thread. The flag stays until the next
    /// `InitSearch`.
    void Stop();
    /// Whether the stop flag is set.
    bool IsCalculationsInterrupt() const;
    /// Whether conjunctions (29 to 31) go into the list and to the callback. Off at first: the
    /// searches for them then find nothing.
    void ShowConjunctions(bool show);

  private:
    struct SOLSYS_LOCAL State;
    std::unique_ptr<State> state_;
};
