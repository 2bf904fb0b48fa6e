// One element set prepared for its model.
#pragma once

#include <optional>

#include "core/instant.h"
#include "ephemeris/tle/gravity.h"
#include "ephemeris/tle/sgp4_coefficients.h"

namespace solsys {

// What the model takes of a published set: radians, Kozai's mean motion in revolutions a day.
struct MeanElements {
    Instant epoch;  // UTC
    double motion_rev_day;
    double e, i, node, w, M;
    double bstar;  // drag term, 1/equatorial radius
};

// Sidereal time and angles as the 2006 revision has them, or as the centres that issue the sets
// are thought to.
enum class Sgp4Mode { improved, afspc };

struct Sgp4Set {
    Sgp4Kind kind;
    Sgp4Coefficients<double> c;
};

// The prepared set; none for elements out of range or whose coefficients are not finite.
std::optional<Sgp4Set> sgp4_set(const MeanElements& elements,
                                const GravityConstants& gravity = kWgs72,
                                Sgp4Mode mode = Sgp4Mode::improved);

// The steps of the preparation that deep space adds: into c, which has the near-earth ones.
void add_lunisolar_terms(const MeanElements& elements, Sgp4Coefficients<double>& c);
// The resonance of the orbit, its coefficients into c.
Sgp4Kind add_resonance(const MeanElements& elements, Sgp4Mode mode,
                       Sgp4Coefficients<double>& c);

}  // namespace solsys
