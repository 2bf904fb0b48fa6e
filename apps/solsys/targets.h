// What positions are asked for: bodies of the library, and stars, minor planets and comets,
// which bring their own records.
#pragma once

#include <string>
#include <variant>

#include "apps/solsys/civil_time.h"
#include "io/comets.h"
#include "io/minor_planets.h"
#include "solsys/solar_system.h"

namespace app {

struct Target {
    using Record = std::variant<std::monostate, StarObject, AsteroidRecord, CometRecord>;

    SSO_ID id;  // number 0: the object has none
    std::string name;
    Record record;
};

// The identifier carries the name too.
Target named_target(const SSO_ID& id, std::string name, Target::Record record = {});

// A body's name or code, else an asteroid or a comet of the shipped sample, else a star of the
// shipped list. Of a comet with several orbits, that with the epoch nearest to `near`. Throws
// BadInput for what is none of them.
Target parse_target(const std::string& text, Utc near);

// The same among the sample's minor planets and comets alone: "ceres" is (1) Ceres by its
// osculating elements.
Target parse_sample_target(const std::string& text, Utc near);

Target target_of(const solsys_io::MinorPlanet& planet);
Target target_of(const solsys_io::Comet& comet);

// Makes a target known to the model. Throws BadInput for what the catalogue does not hold and
// for elements that are no orbit.
void add_to(CSWSolSys& model, const Target& target);

}  // namespace app
