/// \file
/// The library for every language that can call C: models, sites, bodies, places singly and in
/// batches, searches.
///
/// \code
///     solsys_model* model = NULL;
///     solsys_body* mars = NULL;
///     solsys_place place;
///     if (solsys_model_open(NULL, &model) != SOLSYS_OK ||
///         solsys_find_body("mars", NULL, &mars) != SOLSYS_OK ||
///         solsys_apparent_place(model, mars, &place) != SOLSYS_OK)
///         fprintf(stderr, "%s\n", solsys_last_message());
///     solsys_body_free(mars);
///     solsys_model_free(model);
/// \endcode
///
/// C99. What the functions do stands in `solsys/sky/`, where the same words name the same
/// things; angles are degrees, lengths say their unit, instants are UTC.
///
/// *Handles* are opaque; what a function hands out through `**out` belongs to the caller, who
/// ends it with its `_free` (null is fine there). On failure `*out` is null.
///
/// *Records* with a `size` grow in later versions: the caller sets it to `sizeof` the record
/// before each call, in and out, and the library reads and writes no more than that. Records
/// without one, and all constants, stay as they are for ever.
///
/// *Texts* are UTF-8 and end in a zero. Into a buffer of the caller's as much is written as
/// fits, whole characters only, with its zero.
///
/// *Not known* is NaN in a double, a NaN `fraction` in an instant, an empty text.
///
/// *Failures*: no function crashes on null, NaN or absurd numbers, and none throws. Outputs
/// hold nothing useful after a failure. Handles that were freed, or of another type, cannot be
/// told from good ones. A model, and lists of it, belong to one thread; distinct ones may be
/// used from distinct threads.
#ifndef SOLSYS_C_API_H
#define SOLSYS_C_API_H

#include <stddef.h>
#include <stdint.h>

#include "solsys/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/// \name Version and failures
/// @{

/// Of this header; `solsys_c_api_version()` answers that of the library, which serves every
/// header of the same or a lower number.
#define SOLSYS_C_API_VERSION 1
SOLSYS_API int32_t solsys_c_api_version(void);
/// "1.0.0": of the library.
SOLSYS_API const char* solsys_library_version(void);

typedef int32_t solsys_status;
enum {
    SOLSYS_OK = 0,
    SOLSYS_BAD_ARGUMENT = 1,    ///< null, not finite, of a wrong size, no such choice
    SOLSYS_NOT_FOUND = 2,       ///< a name, a file, a row of a list
    SOLSYS_NOT_COMPUTABLE = 3,  ///< outside the ephemeris; below the horizon of what is asked
    SOLSYS_OUT_OF_MEMORY = 4,
    SOLSYS_STOPPED = 5,  ///< by its control; what was found till then is handed out
    SOLSYS_INTERNAL_ERROR = 6
};
/// Why the last call of this thread failed, one line for people; "" when it did not. Valid
/// until the thread's next call.
SOLSYS_API const char* solsys_last_message(void);
/// @}

/// \name Instants
/// @{

/// UTC, as a whole Julian day and a fraction.
typedef struct solsys_instant {
    int32_t day;
    double fraction;
} solsys_instant;

/// The computer's clock.
SOLSYS_API solsys_status solsys_now(solsys_instant* out);
/// From a Julian date in two parts, in any split, of UTC or of TT.
SOLSYS_API solsys_status solsys_instant_from_utc(double day, double fraction,
                                                 solsys_instant* out);
SOLSYS_API solsys_status solsys_instant_from_tt(double day, double fraction,
                                                solsys_instant* out);
/// "2026-11-21T18:03:04Z", "now", "jd:2451545.0" ...; without an offset it is read off a clock
/// of `zone` ("Europe/Oslo"; null: UTC).
SOLSYS_API solsys_status solsys_parse_time(const char* text, const char* zone,
                                           solsys_instant* out);
/// ISO 8601 on a clock of `zone` (null: UTC, with "Z"), to 0 to 9 decimals of a second.
SOLSYS_API solsys_status solsys_time_text(solsys_instant t, const char* zone, int32_t decimals,
                                          char* buffer, size_t size);
/// Terrestrial time, and TT - UTC [s].
SOLSYS_API solsys_status solsys_terrestrial_time(solsys_instant t, solsys_instant* tt,
                                                 double* delta_t_seconds);
/// @}

/// \name Sites
/// @{

/// A place on the Earth.
typedef struct solsys_site {
    size_t size;
    double latitude_deg;     ///< geodetic
    double longitude_deg;    ///< east positive
    double height_m;         ///< above sea level
    double above_horizon_m;  ///< above the surroundings as far as the horizon
    char name[96];
    char zone[64];  ///< IANA name; empty: UTC
    char country[8];
} solsys_site;

/// A city by any of its names; "51.5,-0.1,120".
SOLSYS_API solsys_status solsys_find_city(const char* name, solsys_site* out);
SOLSYS_API solsys_status solsys_parse_site(const char* text, solsys_site* out);
/// @}

/// \name Lists
/// What searches find. Rows are read by the getter of their kind: `SOLSYS_NOT_FOUND` behind the
/// end, `SOLSYS_BAD_ARGUMENT` for a list of another kind.
/// @{
typedef struct solsys_list solsys_list;
SOLSYS_API size_t solsys_list_count(const solsys_list* list);  ///< 0 of a null list
SOLSYS_API void solsys_list_free(solsys_list* list);
/// @}

/// \name Bodies
/// @{
typedef struct solsys_body solsys_body;

/// A planet, moon, star, deep-sky object, minor planet or comet of the built-in lists:
/// "jupiter", "moon:501", "sirius", "M31". `near` (may be null) chooses between several orbits
/// of a comet.
SOLSYS_API solsys_status solsys_find_body(const char* name, const solsys_instant* near,
                                          solsys_body** out);
/// "planets", "all": rows for `solsys_get_body`.
SOLSYS_API solsys_status solsys_find_bodies(const char* name, const solsys_instant* near,
                                            solsys_list** out);
SOLSYS_API solsys_status solsys_get_body(const solsys_list* list, size_t row,
                                         solsys_body** out);
/// "epoch=jd:2459800.5,a=2.77,e=0.078,i=10.6,node=80.3,peri=73.6,M=334.3,H=3.3,G=0.12".
SOLSYS_API solsys_status solsys_body_from_elements(const char* text, solsys_body** out);
/// From a file of orbits (MPCORB or CometEls lines); `object` null: the only one.
SOLSYS_API solsys_status solsys_body_from_file(const char* path, const char* object,
                                               const solsys_instant* near, solsys_body** out);
SOLSYS_API void solsys_body_free(solsys_body* body);
SOLSYS_API solsys_status solsys_body_name(const solsys_body* body, char* buffer, size_t size);
/// "plnt:5", which `solsys_find_body` takes.
SOLSYS_API solsys_status solsys_body_code(const solsys_body* body, char* buffer, size_t size);
/// @}

/// \name Models
/// @{
typedef struct solsys_model solsys_model;

/// On a DE file or a folder with one; null or empty: on the built-in theories. At J2000.0, seen
/// from the Earth's centre.
SOLSYS_API solsys_status solsys_model_open(const char* ephemeris, solsys_model** out);
SOLSYS_API void solsys_model_free(solsys_model* model);
enum { SOLSYS_CLASSIC = 0, SOLSYS_MODERN = 1 };
/// IAU 1976/1980 or IAU 2006/2000A; see `SolsysReduction`.
SOLSYS_API solsys_status solsys_model_set_reduction(solsys_model* model, int32_t reduction);
/// UT1 - UTC [s] and the pole [arcsec] for the modern reduction; NaN: not known.
SOLSYS_API solsys_status solsys_model_set_earth(solsys_model* model, double ut1_minus_utc,
                                                double pole_x, double pole_y);
/// Null: from the Earth's centre.
SOLSYS_API solsys_status solsys_model_observe_from(solsys_model* model,
                                                   const solsys_site* site);
SOLSYS_API solsys_status solsys_model_move_to(solsys_model* model, solsys_instant t);
/// What places come from: "built-in theory".
SOLSYS_API solsys_status solsys_model_source(const solsys_model* model, char* buffer,
                                             size_t size);
/// @}

/// \name Places
/// At the model's instant for its observer.
/// @{

/// A direction on an equator, and how far; NaN for a distance that is not known.
typedef struct solsys_place {
    double ra_deg;  ///< [0, 360)
    double dec_deg;
    double distance_au;
    double light_time_days;
} solsys_place;
/// A direction over the horizon of the site.
typedef struct solsys_horizontal {
    double azimuth_deg;   ///< from north through east
    double altitude_deg;  ///< without refraction
} solsys_horizontal;
/// A longitude and a latitude.
typedef struct solsys_lon_lat {
    double lon_deg;  ///< [0, 360)
    double lat_deg;
} solsys_lon_lat;

/// On the true equator of date, with light time and aberration.
SOLSYS_API solsys_status solsys_apparent_place(solsys_model* model, const solsys_body* body,
                                               solsys_place* out);
/// On the J2000 equator, with light time alone.
SOLSYS_API solsys_status solsys_astrometric_place(solsys_model* model, const solsys_body* body,
                                                  solsys_place* out);
/// Position [au] and velocity [au/day], J2000 equator: 6 values.
SOLSYS_API solsys_status solsys_heliocentric_state(solsys_model* model, const solsys_body* body,
                                                   double* out);
/// Of an apparent place: over the horizon, on the ecliptic of date, galactic.
SOLSYS_API solsys_status solsys_horizontal_of(const solsys_model* model,
                                              const solsys_place* apparent,
                                              solsys_horizontal* out);
SOLSYS_API solsys_status solsys_ecliptic_of(const solsys_model* model,
                                            const solsys_place* apparent, solsys_lon_lat* out);
SOLSYS_API solsys_status solsys_galactic_of(const solsys_model* model,
                                            const solsys_place* apparent, solsys_lon_lat* out);

/// How a body looks to the observer.
typedef struct solsys_appearance {
    size_t size;
    double magnitude;
    double phase_angle_deg;
    double illuminated_fraction;
    double elongation_deg;   ///< positive east of the Sun
    double bright_limb_deg;  ///< position angle
    double angular_diameter_arcsec;
    char constellation[8];  ///< "Boo"
} solsys_appearance;
/// How a body looks, at its apparent place.
SOLSYS_API solsys_status solsys_appearance_of(solsys_model* model, const solsys_body* body,
                                              solsys_appearance* out);
/// The index (0 to 87) of the constellation of a direction of date.
SOLSYS_API solsys_status solsys_constellation_at(const solsys_model* model, double ra_deg,
                                                 double dec_deg, int32_t* index);
/// "Bootes" and "Boo"; either buffer may be null.
SOLSYS_API solsys_status solsys_constellation_name(int32_t index, char* name, size_t name_size,
                                                   char* abbreviation, size_t short_size);
/// @}

/// \name Watching and stopping
/// @{
typedef struct solsys_control solsys_control;

/// For the longer calls, which take null as well. `progress` (may be null) is told the fraction
/// done, 0 to 1, in the calling thread.
SOLSYS_API solsys_status solsys_control_new(void (*progress)(double done, void* context),
                                            void* context, solsys_control** out);
/// From any thread: the call ends soon, with `SOLSYS_STOPPED`. For good.
SOLSYS_API void solsys_control_stop(solsys_control* control);
SOLSYS_API void solsys_control_free(solsys_control* control);
/// @}

/// \name Batches
/// All bodies at all instants: `out[body * instant_count + instant]`, sites before that. What
/// cannot be computed is NaN (index -1); `*done` (may be null) counts the others. `out_count`
/// must be the product of the counts.
/// @{
SOLSYS_API solsys_status
solsys_apparent_places(solsys_model* model, const solsys_body* const* bodies, size_t body_count,
                       const solsys_instant* instants, size_t instant_count, solsys_place* out,
                       size_t out_count, size_t* done, solsys_control* control);
SOLSYS_API solsys_status solsys_astrometric_places(
    solsys_model* model, const solsys_body* const* bodies, size_t body_count,
    const solsys_instant* instants, size_t instant_count, solsys_place* out, size_t out_count,
    size_t* done, solsys_control* control);
/// Six values each: `out_count` is six times the product.
SOLSYS_API solsys_status solsys_heliocentric_states(
    solsys_model* model, const solsys_body* const* bodies, size_t body_count,
    const solsys_instant* instants, size_t instant_count, double* out, size_t out_count,
    size_t* done, solsys_control* control);
SOLSYS_API solsys_status solsys_magnitudes(solsys_model* model,
                                           const solsys_body* const* bodies, size_t body_count,
                                           const solsys_instant* instants, size_t instant_count,
                                           double* out, size_t out_count, size_t* done,
                                           solsys_control* control);
SOLSYS_API solsys_status solsys_horizontals(solsys_model* model, const solsys_site* sites,
                                            size_t site_count, const solsys_body* const* bodies,
                                            size_t body_count, const solsys_instant* instants,
                                            size_t instant_count, solsys_horizontal* out,
                                            size_t out_count, size_t* done,
                                            solsys_control* control);
/// `places` are rows of one per instant, as `solsys_apparent_places` fills them.
SOLSYS_API solsys_status solsys_constellations(solsys_model* model,
                                               const solsys_instant* instants,
                                               size_t instant_count, const solsys_place* places,
                                               size_t place_count, int8_t* out, size_t* done,
                                               solsys_control* control);
/// Angles [deg] pair by pair; a single place goes with all of the other side.
SOLSYS_API solsys_status solsys_separations(const solsys_place* first, size_t first_count,
                                            const solsys_place* second, size_t second_count,
                                            double* out, size_t out_count);
/// @}

/// \name Risings
/// @{

/// An altitude to go through.
typedef struct solsys_altitude {
    double degrees;      ///< without refraction
    int32_t upper_limb;  ///< not 0: of the upper limb instead of the centre
} solsys_altitude;
/// A visit above the horizon, as `solsys::sky::Rising`.
typedef struct solsys_rising {
    size_t size;
    solsys_instant rise, transit, set;
    double rise_azimuth_deg, transit_altitude_deg, set_azimuth_deg;
    /// Of the Sun.
    solsys_instant astronomical_dawn, nautical_dawn, civil_dawn;
    solsys_instant civil_dusk, nautical_dusk, astronomical_dusk;
} solsys_rising;
/// A passage through one of the altitudes asked for; `rising` is 0 or 1.
typedef struct solsys_passage {
    solsys_instant at;
    double azimuth_deg;
    int32_t which;  ///< of the altitudes, from 0
    int32_t rising;
} solsys_passage;

/// The horizon: 34 arcmin of refraction and the site's dip below zero.
SOLSYS_API solsys_status solsys_horizon_of(const solsys_site* site, const solsys_body* body,
                                           solsys_altitude* out);
/// A row for each visit above the horizon; spans of these two up to a thousand years.
/// `up_at_start` (may be null): whether the body is up where the span begins.
SOLSYS_API solsys_status solsys_risings(solsys_model* model, const solsys_site* site,
                                        const solsys_body* body, solsys_instant from,
                                        solsys_instant to, solsys_list** out,
                                        int32_t* up_at_start);
/// The same with a control, and without a limit of years.
SOLSYS_API solsys_status solsys_watched_risings(solsys_model* model, const solsys_site* site,
                                                const solsys_body* body, solsys_instant from,
                                                solsys_instant to, solsys_control* control,
                                                solsys_list** out, int32_t* up_at_start);
SOLSYS_API solsys_status solsys_get_rising(const solsys_list* list, size_t row,
                                           solsys_rising* out);
/// Every passage through up to 16 altitudes.
SOLSYS_API solsys_status solsys_passages(solsys_model* model, const solsys_site* site,
                                         const solsys_body* body,
                                         const solsys_altitude* altitudes,
                                         size_t altitude_count, solsys_instant from,
                                         solsys_instant to, solsys_list** out);
/// The same with a control, and without a limit of years.
SOLSYS_API solsys_status solsys_watched_passages(solsys_model* model, const solsys_site* site,
                                                 const solsys_body* body,
                                                 const solsys_altitude* altitudes,
                                                 size_t altitude_count, solsys_instant from,
                                                 solsys_instant to, solsys_control* control,
                                                 solsys_list** out);
SOLSYS_API solsys_status solsys_get_passage(const solsys_list* list, size_t row,
                                            solsys_passage* out);
/// @}

/// \name Conjunctions
/// @{
enum { SOLSYS_BY_RIGHT_ASCENSION = 0, SOLSYS_BY_LONGITUDE = 1, SOLSYS_CLOSEST = 2 };
/// Two bodies side by side.
typedef struct solsys_conjunction {
    solsys_instant at;
    double separation_deg;
    double position_angle_deg;  ///< of the first body from the second
    double elongation_deg;      ///< of the first body from the Sun, positive east
} solsys_conjunction;
/// Several bodies within a small circle.
typedef struct solsys_gathering {
    solsys_instant at;                   ///< when the circle around all of them is least
    double radius_deg, ra_deg, dec_deg;  ///< of that circle
    solsys_instant from, to;             ///< as long as they stay within the limit
    double elongation_deg;               ///< of its centre from the Sun, positive east
} solsys_gathering;

/// All of a span in order, `way` as above; of the closest those within `closest_limit_deg`.
/// `control` may be null.
SOLSYS_API solsys_status solsys_conjunctions(solsys_model* model, const solsys_body* first,
                                             const solsys_body* second, solsys_instant from,
                                             solsys_instant to, int32_t way,
                                             double closest_limit_deg, solsys_control* control,
                                             solsys_list** out);
/// A row of that list, from 0.
SOLSYS_API solsys_status solsys_get_conjunction(const solsys_list* list, size_t row,
                                                solsys_conjunction* out);
/// All bodies within a circle of the radius `limit_deg`, once each time they come together.
SOLSYS_API solsys_status solsys_gatherings(solsys_model* model,
                                           const solsys_body* const* bodies, size_t body_count,
                                           solsys_instant from, solsys_instant to,
                                           double limit_deg, solsys_control* control,
                                           solsys_list** out);
/// A row of that list, from 0.
SOLSYS_API solsys_status solsys_get_gathering(const solsys_list* list, size_t row,
                                              solsys_gathering* out);
/// @}

/// \name Eclipses
/// @{
enum { SOLSYS_SOLAR = 0, SOLSYS_LUNAR = 1 };
/// A point on the ground: geodetic latitude, longitude east positive.
typedef struct solsys_ground_point {
    double latitude_deg, longitude_deg;
    solsys_instant at;
} solsys_ground_point;
/// An eclipse for the Earth as a whole; `kind`: SOLSYS_SOLAR or SOLSYS_LUNAR.
typedef struct solsys_eclipse {
    size_t size;
    int32_t kind;
    int32_t saros;
    int32_t lunation;
    int32_t central;
    char type[16];  ///< "total", "hybrid", "annular", "partial", "penumbral"
    solsys_instant greatest, begin, end;
    double magnitude, gamma;
    solsys_ground_point nearest;       ///< at greatest eclipse
    double path_width_km, duration_s;  ///< of central solar ones
    solsys_instant contacts[8];        ///< as `ECLIPSE_P1` and so on
} solsys_eclipse;
/// A moment of an eclipse at a site.
typedef struct solsys_eclipse_moment {
    solsys_instant at;
    double altitude_deg, azimuth_deg;
    double position_angle_deg;  ///< of the contact
} solsys_eclipse_moment;
/// An eclipse at a site, as `solsys::sky::LocalEclipse`.
typedef struct solsys_local_eclipse {
    size_t size;
    int32_t visible;
    char type[16];
    double magnitude, obscuration;
    solsys_eclipse_moment first, second, maximum, third, fourth;
    solsys_instant rise, set;  ///< during the eclipse
} solsys_local_eclipse;
/// A curve of an eclipse on the map; its points by `solsys_get_map_points`.
typedef struct solsys_map_curve {
    size_t size;
    int32_t kind;        ///< as `MapCurveKind` counts
    char kind_text[28];  ///< "central line"
    double value;        ///< magnitude
    solsys_instant at;   ///< isochrones
    char label[32];      ///< "0.8", "11:30", "U1"
    size_t point_count;
} solsys_map_curve;

SOLSYS_API solsys_status solsys_find_eclipses(solsys_model* model, int32_t kind,
                                              solsys_instant from, solsys_instant to,
                                              solsys_control* control, solsys_list** out);
SOLSYS_API solsys_status solsys_get_eclipse(const solsys_list* list, size_t row,
                                            solsys_eclipse* out);
/// `SOLSYS_NOT_COMPUTABLE` when the site sees nothing of it.
SOLSYS_API solsys_status solsys_local_eclipse_of(solsys_model* model,
                                                 const solsys_list* eclipses, size_t row,
                                                 const solsys_site* site,
                                                 solsys_local_eclipse* out);
/// The curves of its map: rows for `solsys_get_map_curve`.
SOLSYS_API solsys_status solsys_eclipse_map(solsys_model* model, const solsys_list* eclipses,
                                            size_t row, solsys_list** curves);
SOLSYS_API solsys_status solsys_get_map_curve(const solsys_list* curves, size_t row,
                                              solsys_map_curve* out);
/// The first `capacity` points of a curve.
SOLSYS_API solsys_status solsys_get_map_points(const solsys_list* curves, size_t row,
                                               solsys_ground_point* out, size_t capacity);
/// @}

/// \name Diary
/// @{

/// An event of the sky, told in words and numbers; SKYEVENT_... stand in `solsys/diary.h`.
typedef struct solsys_diary_event {
    size_t size;
    solsys_instant at;
    int32_t kind;                ///< 1 to 32, as SKYEVENT_...
    int32_t constellation;       ///< 0 to 87; -1
    char text[160];              ///< "Jupiter 0.1° south of Saturn"
    char first[96], second[96];  ///< the bodies
    double separation_deg, position_angle_deg, elongation_deg;
    double magnitude, second_magnitude;
    double distance_au;
    double longitude_deg, latitude_deg;
    double hours_to_perigee, hours_to_apogee;
    double zhr, moon_illuminated;
    solsys_instant contacts[4];
    double azimuth_deg, altitude_deg;  ///< for the model's site
} solsys_diary_event;

/// Every event of a span, for the model's site where it has one. `kinds` null: all.
SOLSYS_API solsys_status solsys_diary(solsys_model* model, solsys_instant from,
                                      solsys_instant to, const int32_t* kinds,
                                      size_t kind_count, solsys_control* control,
                                      solsys_list** out);
SOLSYS_API solsys_status solsys_get_diary_event(const solsys_list* list, size_t row,
                                                solsys_diary_event* out);
/// "full-moon" of 9; 0 of an unknown name.
SOLSYS_API solsys_status solsys_diary_kind_name(int32_t kind, char* buffer, size_t size);
SOLSYS_API int32_t solsys_diary_kind(const char* name);
/// @}

/// \name Satellites of the Earth
/// @{

/// What is known of a satellite beside its elements.
typedef struct solsys_satellite {
    size_t size;
    char name[64];
    solsys_instant epoch;  ///< of the elements
    double period_minutes;
    double standard_magnitude;  ///< at 1000 km, half lit
} solsys_satellite;
/// Where a satellite stands at a moment of its pass.
typedef struct solsys_satellite_place {
    solsys_instant at;
    double azimuth_deg, altitude_deg;
    double range_km, height_km;
    double sun_visible;  ///< of the Sun's disc, from the satellite: 0 in the umbra, 1 sunlit
    double sun_altitude_deg;
    double magnitude;
} solsys_satellite_place;
/// A satellite above the horizon of a site.
typedef struct solsys_pass {
    size_t size;
    solsys_satellite_place rise, culmination, set;
    solsys_satellite_place best;  ///< where it is brightest, while it can be seen
} solsys_pass;

/// Two- or three-line sets, or messages as JSON or CSV; sets that are none are left out.
SOLSYS_API solsys_status solsys_parse_satellites(const char* text, solsys_list** out);
SOLSYS_API solsys_status solsys_read_satellites(const char* path, solsys_list** out);
SOLSYS_API solsys_status solsys_get_satellite(const solsys_list* list, size_t row,
                                              solsys_satellite* out);
/// Where the satellite of a row stands. `standard_magnitude` NaN: that of the list, if known.
SOLSYS_API solsys_status solsys_satellite_at(solsys_model* model, const solsys_site* site,
                                             const solsys_list* satellites, size_t row,
                                             double standard_magnitude, solsys_instant t,
                                             solsys_satellite_place* out);
/// Its passes above an altitude (-10 to 89) that culminate above another.
SOLSYS_API solsys_status solsys_passes(solsys_model* model, const solsys_site* site,
                                       const solsys_list* satellites, size_t row,
                                       double standard_magnitude, solsys_instant from,
                                       solsys_instant to, double horizon_deg,
                                       double culmination_deg, solsys_control* control,
                                       solsys_list** out);
SOLSYS_API solsys_status solsys_get_pass(const solsys_list* list, size_t row, solsys_pass* out);
/// @}

#ifdef __cplusplus
}
#endif

#endif
