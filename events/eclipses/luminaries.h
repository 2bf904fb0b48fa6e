// Where the eclipses take the Sun, the Moon and the turn of the Earth from: all else in this
// folder stands on these functions, so that another reduction is brought in here alone.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"
#include "events/eclipses/besselian.h"
#include "solsys/solar_system.h"

namespace solsys::eclipses {

struct Luminaries {
    Vec3 moon, sun;    // geocentric, apparent, true equator and equinox of date [au]
    double greenwich;  // apparent sidereal angle of Greenwich at this very instant [rad]
};

// Puts the model's observer at the Earth's centre.
void observe_from_geocentre(CSWSolSys& model);

// Moves the model to an instant (dynamical time); its observer is to be at the Earth's centre.
// False when Sun or Moon cannot be computed there.
bool luminaries_at(CSWSolSys& model, Instant t, Luminaries& out);

enum class RadiiChoice { kCatalogue, kCanon };
Radii radii_of(CSWSolSys& model, RadiiChoice choice);

}  // namespace solsys::eclipses
