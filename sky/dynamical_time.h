// The dynamical time of one instant after another.
#pragma once

#include <limits>

#include "core/constants.h"
#include "core/instant.h"
#include "solsys/sky/instant.h"

namespace solsys::sky {

// Instant::tdb of one instant after another. Delta T is looked up once a half day, for which it
// holds: its steps, and the months of its polynomials, begin at noon or at midnight.
class DynamicalTime {
  public:
    solsys::Instant operator()(const Instant& t) {
        const JulianDate utc = t.utc();
        const bool after_midnight = utc.fraction >= 0.5;
        if (utc.day != day_ || after_midnight != after_midnight_) {
            day_ = utc.day, after_midnight_ = after_midnight;
            delta_t_ = t.delta_t_seconds() / kSecondsPerDay;
        }
        const double fraction = utc.fraction + delta_t_;
        if (fraction >= 0 && fraction < 1) return {utc.day, fraction};
        const JulianDate tdb = t.tdb();
        return {tdb.day, tdb.fraction};
    }

  private:
    int day_ = std::numeric_limits<int>::min();
    bool after_midnight_ = false;
    double delta_t_ = 0;  // day
};

}  // namespace solsys::sky
