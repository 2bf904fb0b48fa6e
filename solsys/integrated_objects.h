// The bodies of a model whose motion is integrated: what they start from, and their motions.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "ephemeris/integrator/integrated_motion.h"
#include "solsys/element_records.h"
#include "solsys/object_table.h"

namespace solsys {

struct IntegratedObjects {
    FlatTable<AsteroidRecord> asteroids;                   // fAST
    FlatTable<CometRecord> comets;                         // fCOM
    FlatTable<UserObjectRecord> user_objects;              // fSCO
    FlatTable<std::unique_ptr<IntegratedMotion>> motions;  // of these, and of astr and comt
    mutable std::shared_ptr<Perturbers> perturbers;        // made when first needed
    Trajectory::Progress progress;

    // The elements of an fAST or fCOM; null: not there.
    [[nodiscard]] const Elements* elements(std::uint64_t key) const;
    // The motion of an object; null: it has none.
    [[nodiscard]] IntegratedMotion* motion(std::uint64_t key) const;
    // Gives an object a motion, in place of any other that it had.
    void begin(std::uint64_t key, MassiveBody centre, Instant epoch, const State& start,
               const SmallForces& forces);
    // Takes the motion from an object, or from all of a type.
    void forget(std::int32_t type, std::int32_t number) { motions.erase(key_of(type, number)); }
    void forget(std::int32_t type);
    // The direction against gravity at a place about a body, among all others; that from the
    // body's centre where it is not known.
    Vec3 up_from(std::int32_t centre_type, std::int32_t centre_number, Instant t,
                 const State& state) const;
    // What shares the places of the perturbing bodies.
    const std::shared_ptr<Perturbers>& shared_perturbers() const;
};

// The body that a motion can go about: the Sun, a planet or the Moon; none for others.
std::optional<MassiveBody> massive_body(std::int32_t type, std::int32_t number);

}  // namespace solsys
