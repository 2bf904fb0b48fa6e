/// \file
/// Phases of the Moon.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"

namespace solsys::sky {

/// Geocentric: the apparent ecliptic longitude of the Moon less that of the Sun in [0, 360)
/// [deg], and how much of the disk is lit.
struct MoonPhase {
    double angle_deg = 0;
    double illuminated = 0;
};
/// Moves the model to the instant; its observer stays.
SOLSYS_API MoonPhase moon_phase(Model& model, const Instant& t);

enum class Phase { kNew, kFirstQuarter, kFull, kLastQuarter };
/// "new Moon", "first quarter", "full Moon", "last quarter".
SOLSYS_API const char* to_string(Phase phase);

struct PhaseEvent {
    Instant at;
    Phase phase = Phase::kNew;
};
/// The principal phases of a span in order, to a second. Moves the model; its observer stays.
SOLSYS_API std::vector<PhaseEvent> principal_phases(Model& model, const Span& span);

}  // namespace solsys::sky
