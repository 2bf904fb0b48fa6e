// What distinguishes the types of objects, one row each. Whoever adds a type adds a row (and,
// for a new source of states, its table); everything else asks the row.
#pragma once

#include <cstdint>

#include "solsys/sso_id.h"

namespace solsys {

// Where an object of the type is looked up.
enum class Table : std::int8_t {
    none,
    objects,       // the catalogue's bodies
    asteroids,     // by elements; the held record before them
    comets,        // likewise
    spacecraft,    // by tracks of elements about several bodies
    user_objects,  // by states
    integrated,    // of these three: asteroids, comets, user's objects, by type
    satellites,    // of the Earth, by element sets
    stars          // stars and deep-sky objects, which have places but no states
};

// How its heliocentric state comes about.
enum class Road : std::int8_t {
    none,
    itself,        // the object computes it
    about_sun,     // the state about the Sun; answered even when there is none
    about_centre,  // the state about the central body, and that body's own
    about_earth,   // likewise about the Earth, which is not named as the central body
    blended        // the same, and blended with the next one's where the centre changes
};

// What it goes round.
enum class Centre : std::int8_t { none, sun, planet_by_number, of_record };

// Where its magnitude comes from.
enum class Brightness : std::int8_t {
    none,
    law_of_body,  // the object's own function
    hg,           // the record's H and G
    comet,        // the record's H and K
    by_distance,  // a magnitude at 1 au
    stored,       // the star record's
    meaningless   // 9999.0
};

constexpr double kUnknownRadius = -1.0;

struct Kind {
    std::int32_t type;
    Table table = Table::none;
    Road road = Road::none;
    Centre centre = Centre::none;
    Brightness brightness = Brightness::none;
    double radius_km = kUnknownRadius;  // of what has no radius of its own
    bool in_ecliptic = true;            // whether GetHelEcl2K serves it

    // All others are stars and labels of the host.
    [[nodiscard]] constexpr bool has_states() const { return road != Road::none; }
};

inline constexpr Kind kKinds[] = {
    {SSO_PLNT, Table::objects, Road::itself, Centre::sun, Brightness::law_of_body},
    {SSO_MOON, Table::objects, Road::itself, Centre::planet_by_number, Brightness::law_of_body},
    {SSO_ASTR, Table::asteroids, Road::about_sun, Centre::sun, Brightness::hg},
    {SSO_COMT, Table::comets, Road::about_sun, Centre::sun, Brightness::comet, 1.0},
    {SSO_FAST, Table::integrated, Road::about_sun, Centre::sun, Brightness::hg},
    {SSO_FCOM, Table::integrated, Road::about_sun, Centre::sun, Brightness::comet},
    {SSO_SCFT, Table::spacecraft, Road::blended, Centre::of_record, Brightness::meaningless,
     0.02},
    {SSO_USCO, Table::user_objects, Road::about_centre, Centre::of_record,
     Brightness::by_distance, 0.1, false},
    {SSO_FSCO, Table::integrated, Road::about_centre, Centre::of_record},
    {SSO_TLE, Table::satellites, Road::about_earth},
    {SSO_STAR, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_USTR, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_UDSO, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_CLST, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_NEBU, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_GALA, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_DSNV, Table::stars, Road::none, Centre::none, Brightness::stored},
    {SSO_CNST, Table::none, Road::none, Centre::none, Brightness::meaningless},
    {SSO_LETN},
    {SSO_MESH},
};

// The row of a type; one without properties for a code that is none of these.
constexpr const Kind& kind_of(std::int32_t type) {
    for (const Kind& kind : kKinds)
        if (kind.type == type) return kind;
    return kKinds[sizeof kKinds / sizeof kKinds[0] - 1];
}

}  // namespace solsys
