// A lunar eclipse as one site sees it.
#pragma once

#include "events/eclipses/ground.h"
#include "events/eclipses/lunar_path.h"

namespace solsys::eclipses {

struct Horizontal {
    double altitude, azimuth;  // topocentric, geometric; from north through east
    double semidiameter;       // topocentric
};
Horizontal moon_at(const LunarPath& path, const Site& site, double h);

struct LocalLunar {
    bool visible = false;
    double best = kNever;  // the time nearest to greatest eclipse with the Moon up
    double moonrise = kNever, moonset = kNever;  // during the eclipse
};
// Between the first and the last contact given.
LocalLunar local_lunar(const LunarPath& path, const Site& site, Pair span);

}  // namespace solsys::eclipses
