// An element set ready for states.
#pragma once

#include <optional>

#include "core/instant.h"
#include "core/linalg.h"
#include "ephemeris/tle/sgp4_kernel.h"
#include "ephemeris/tle/sgp4_set.h"
#include "solsys/element_sets.h"

namespace solsys {

struct PreparedElements {
    Sgp4Set set;

    [[nodiscard]] double minutes_at(Instant utc) const;
    [[nodiscard]] double period_minutes() const;
    // TEME [km, km/s]; left alone without a state. A TLEStatus. `resonance` may be kept from
    // state to state of one set.
    int teme_state(double minutes, ResonanceState<double>& resonance, double* state) const;
    int teme_state(double minutes, double* state) const;
    // Geocentric, J2000 equator [au, au/day]; likewise.
    int j2000_state(Instant tt, ResonanceState<double>& resonance, State& state) const;
};

// None for elements out of range.
std::optional<PreparedElements> prepared(const TLERecord& record,
                                         const GravityConstants& gravity = kWgs72,
                                         Sgp4Mode mode = Sgp4Mode::improved);

}  // namespace solsys
