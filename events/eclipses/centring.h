// Elements of an eclipse laid through five instants about its greatest phase.
#pragma once

#include <cmath>

#include "core/instant.h"
#include "solsys/time_scales.h"

namespace solsys::eclipses {

// The instant h hours after t, whole days in the day number.
inline Instant later(Instant t, double h) { return plus(t, h / 24); }

// Lays the path's series about an instant near the eclipse, and again about the greatest phase
// found, until that is near the middle of the five. False where the model has no place of the
// Sun or the Moon, or the shadow stands still.
template <class Path, class Lay>
bool centre_on_greatest(Path& path, Instant syzygy, Lay&& lay) {
    constexpr double kOffCentre = 0.2;  // hours
    constexpr int kMaxCentrings = 4;
    path.t0 = later(syzygy, 0);
    for (int i = 0; i < kMaxCentrings; ++i) {
        if (!lay(path) || !std::isfinite(path.greatest)) return false;
        if (std::fabs(path.greatest) <= kOffCentre) break;
        path.t0 = later(path.t0, path.greatest);
    }
    path.delta_t = ET_UT::Get(path.t0.day, path.t0.fraction);
    return true;
}

}  // namespace solsys::eclipses
