/// \file
/// Phases of the Moon.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// The Moon's phase, geocentric.
struct MoonPhase {
    /// Apparent ecliptic longitude of the Moon less that of the Sun, [0, 360); NaN where they
    /// cannot be computed.
    double angle_deg = 0;
    double illuminated = 0;  ///< fraction of the disk
};
/// Moves the model to the instant; its observer stays.
SOLSYS_API MoonPhase moon_phase(Model& model, const Instant& t);

/// A principal phase.
enum class Phase { kNew, kFirstQuarter, kFull, kLastQuarter };
/// "new Moon", "first quarter", "full Moon", "last quarter".
SOLSYS_API const char* to_string(Phase phase);

/// A principal phase and when it falls.
struct PhaseEvent {
    Instant at;                 ///< longitudes 0, 90, 180 or 270 degrees apart
    Phase phase = Phase::kNew;  ///< which
};
/// The principal phases of a span in order, to a second. Moves the model; its observer stays.
SOLSYS_API std::vector<PhaseEvent> principal_phases(Model& model, const Span& span);

}  // namespace solsys::sky
