/// \file
/// Bodies by name: planets, moons, stars, deep-sky objects, minor planets and comets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "solsys/element_records.h"
#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/result.h"
#include "solsys/sso_id.h"
#include "solsys/stars.h"

namespace solsys::sky {

/// What a place can be asked of. Bodies that the library does not know by itself bring their
/// record, which `Model::add` hands over.
struct Body {
    /// What a body brings along: nothing (a catalogued one), a star, or orbital elements.
    using Record = std::variant<std::monostate, StarObject, AsteroidRecord, CometRecord>;

    SSO_ID id;         ///< carries the name too; number 0: the object has none
    std::string name;  ///< for people
    Record record;     ///< see `Record`
    /// Of bodies by orbital elements: their epoch [JD TT]; 0 for others.
    double elements_epoch = 0;

    Body() = default;
    /// With a record of its own; `elements_epoch` is the caller's to set.
    SOLSYS_API Body(const SSO_ID& body_id, std::string body_name, Record body_record = {});
    /// One of the 229 catalogued bodies, under its English name.
    SOLSYS_API explicit Body(const SSO_ID& body_id);

    /// Whether the record is a star's (or a deep-sky object's).
    [[nodiscard]] bool is_star() const { return std::holds_alternative<StarObject>(record); }
    /// Whether the body moves by elements of its own.
    [[nodiscard]] bool has_elements() const { return elements_epoch != 0; }
};

/// The Sun: "plnt:10".
[[nodiscard]] SOLSYS_API Body sun();
/// The Earth's Moon: "moon:301".
[[nodiscard]] SOLSYS_API Body moon();

/// A body by name ("jupiter", "Io", "the moon"), by code ("plnt:5", "moon:501", "hip:32349",
/// "astr:4"), a star ("sirius", "alpha Cen", "α Cen", "9 CMa", "hr:2491", "hd:48915"), a
/// deep-sky object ("M31", "NGC 224", "Pleiades"), a minor planet or a comet of the built-in
/// sample ("vesta", "433", "halley"). Case, accents, blanks and dashes do not matter. Of a
/// comet with several orbits that with the epoch nearest to `near`.
///
/// The failure names what was meant perhaps.
SOLSYS_API Result<Body> find_body(std::string_view name, const Instant& near = {});

/// The same for one name or a group: "planets" (Mercury to Neptune), "all" (Sun, Moon and
/// planets with Pluto), "moons" is none.
SOLSYS_API Result<std::vector<Body>> find_bodies(std::string_view name,
                                                 const Instant& near = {});

/// A minor planet or comet of the sample alone.
SOLSYS_API Result<Body> find_small_body(std::string_view name, const Instant& near = {});

/// The name that the identifier carries, else the English name of a catalogued body, else the
/// code.
[[nodiscard]] SOLSYS_API std::string name_of(const SSO_ID& id);
/// "plnt:5", "moon:501"; the type code and the number of stars are "star:32349".
[[nodiscard]] SOLSYS_API std::string code_of(const SSO_ID& id);

}  // namespace solsys::sky
