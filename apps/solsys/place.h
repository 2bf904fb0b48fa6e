// The place of a body at the model's instant, in the frames the command offers.
#pragma once

#include "apps/solsys/civil_time.h"
#include "solsys/solar_system.h"

namespace app {

constexpr double kDegrees = 57.29577951308232;  // per radian
constexpr double kLightDaysPerAu = 0.005775518331436995;

struct Place {
    double ra_deg = 0;  // apparent, true equator and equinox of date
    double dec_deg = 0;
    double distance_au = 0;  // NaN: not known
    double light_time_days = 0;
};

// Moves the model to an instant.
void move_to(CSWSolSys& model, Tt tt);
// Throws BadInput when the body cannot be computed there.
Place apparent_place(CSWSolSys& model, const SSO_ID& id);
// Astrometric: corrected for light time alone, on the mean equator and equinox of J2000; of
// stars with proper motion and parallax.
Place astrometric_place(CSWSolSys& model, const SSO_ID& id);

struct Horizontal {
    double azimuth_deg = 0;   // from north through east
    double altitude_deg = 0;  // without refraction
};
Horizontal horizontal_of(const CSWSolSys& model, const Place& apparent);

}  // namespace app
