// The bodies that a host adds to a model by their elements or states.
#pragma once

#include <memory>
#include <vector>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/element_records.h"
#include "solsys/object_table.h"

namespace solsys {

struct SpacecraftTrack {
    std::vector<SpacecraftRecord> records;  // ascending epochs
};

struct ElementTables {
    FlatTable<AsteroidRecord> asteroids;
    FlatTable<CometRecord> comets;
    FlatTable<SpacecraftTrack> spacecraft;
    FlatTable<UserObjectRecord> user_objects;
    std::unique_ptr<tagAster_SPH_5> held_asteroid;
    std::unique_ptr<tagComet_SPH_5> held_comet;
    // Asteroids that spacecraft or own objects have as their central body: these are moved on
    // the built-in elements of (433) Eros and weigh what it does.
    std::vector<std::int32_t> central_asteroids;

    [[nodiscard]] bool is_central_asteroid(std::int32_t number) const;
    [[nodiscard]] const tagAster_SPH_5* held_for_asteroid(std::int32_t number) const;
    [[nodiscard]] const tagComet_SPH_5* held_for_comet(std::int32_t number) const;
};

// Add a checked record under a number, replacing what is there; false, and nothing changes, for
// a record that is no orbit. A mean motion of 0 is derived (spacecraft: when their central
// body's mass is at hand).
bool add(ElementTables& tables, std::int32_t number, const AsteroidRecord& record);
bool add(ElementTables& tables, std::int32_t number, const CometRecord& record);
bool add(ElementTables& tables, std::int32_t number, const SpacecraftRecord* records,
         int count);
bool add(ElementTables& tables, std::int32_t number, const UserObjectRecord& record);

// Remove one, or all; whether the first was there.
bool remove_spacecraft(ElementTables& tables, std::int32_t number);
bool remove_user_object(ElementTables& tables, std::int32_t number);
void clear_spacecraft(ElementTables& tables);
void clear_user_objects(ElementTables& tables);

// Whether elements are finite numbers of an orbit: q (or a) above 0, e not below.
bool is_orbit(const Elements& elements);
// Whether a state is: neither at the centre nor bound for it.
bool is_orbit(const UserObjectRecord& record);

// Mean motion [rad/day] of an orbit as `Kepler` takes it: q is the semi-major axis of an
// ellipse and the pericentre distance otherwise; on a parabola n t is Barker's sum s + s^3/3.
double mean_motion(double q, double e, double mu);

}  // namespace solsys
