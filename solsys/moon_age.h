// True new Moons: when the apparent ecliptic longitudes of Moon and Sun, seen from the Earth's
// centre, agree.
#pragma once

#include <optional>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/bodies.h"

namespace solsys {

struct NewMoons {
    double before = 0;  // JD (TT) of the last one at or before an instant ...
    double after = 0;   // ... and of the next
};

// Those around an instant, to a second; nothing when Moon or Earth cannot be computed there.
// `ecl_from_j2000`: the ecliptic of date, of the instant itself (it turns by 0.004 arcsec in a
// lunation). Bracketed by the mean new Moons, so that the search always ends.
std::optional<NewMoons> new_moons_around(const Bodies& bodies, Instant t,
                                         const Mat3& ecl_from_j2000);

}  // namespace solsys
