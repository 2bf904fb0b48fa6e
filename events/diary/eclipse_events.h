// Which eclipse comes with a phase of the Moon.
#pragma once

#include "solsys/solar_system.h"

namespace solsys::diary {

// Type of the eclipse (as in ECLIPSE) about a new or full Moon at an instant [JD TT]; 0: none.
// Moves the model and its observer.
int eclipse_at(CSWSolSys& model, double phase_tt, bool full);

}  // namespace solsys::diary
