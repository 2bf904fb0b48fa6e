// All that a model can move: its objects, and the bodies of its host.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "core/linalg.h"
#include "solsys/earth_satellites.h"
#include "solsys/element_tables.h"
#include "solsys/integrated_objects.h"
#include "solsys/object_table.h"
#include "solsys/ss_object.h"

namespace solsys {

struct Reduction;

// Type and number of an SSO_ID, without its name.
struct BodyKey {
    std::int32_t type = -1;
    std::int32_t number = -1;

    friend bool operator==(const BodyKey&, const BodyKey&) = default;
};
constexpr BodyKey kSunKey{SSO_PLNT, 10};
constexpr BodyKey kEarthKey{SSO_PLNT, 3};
inline BodyKey body_key(const SSO_ID& id) { return {id.type, id.number}; }
constexpr std::uint64_t key_of(BodyKey body) { return key_of(body.type, body.number); }

struct Bodies {
    FlatTable<std::unique_ptr<SS_Object>> objects;
    ElementTables elements;
    IntegratedObjects integrated;
    EarthSatellites satellites;
    Elements eros{};  // built in: (433), as a spacecraft's central body
    double eros_gm = 0;
    Mat3 ecl2k_from_j2000 = kIdentity;  // J2000 equator to the J2000 ecliptic of elements
    Reduction* modern = nullptr;        // the modern reduction; null: the classic one
    // The count of changes of source since which the built-in theories alone move the planets
    // and the Moon; none: a file serves.
    std::optional<std::uint32_t> theories_since;

    [[nodiscard]] SS_Object* find(BodyKey body) const {
        const auto* object = objects.find(key_of(body));
        return object != nullptr ? object->get() : nullptr;
    }
    // Whether the built-in theories alone move the planets and the Moon: neither a file nor
    // what a host has attached to one of them.
    [[nodiscard]] bool only_theories() const;
    // The count now, openings of files left out.
    [[nodiscard]] std::optional<std::uint32_t> source_changes() const;
};

}  // namespace solsys
