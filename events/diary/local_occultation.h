// A body or a star covered by the Moon for a site.
#pragma once

#include <array>

#include "events/diary/geocentric_sky.h"
#include "events/search/control.h"
#include "solsys/observer.h"

namespace solsys::diary {

// The contacts of an occultation around a conjunction, for an observer whose height is in au:
// the disk begins to be covered, is covered, begins to come out, is out [JD TT; 0: none].
// Leaves the model at the last instant with that observer.
std::array<double, 4> occultation_near(CSWSolSys& model, const OBSERVER& site,
                                       const Target& target, double conjunction);

}  // namespace solsys::diary
