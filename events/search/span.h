// The span of time that a search walks, and the two time scales it stands between: hosts speak
// Universal Time, the model runs in dynamical time (TT, which serves as TDB).
#pragma once

#include <cmath>

#include "core/instant.h"
#include "solsys/time_scales.h"

namespace solsys::search {

using solsys::split;

// Whether a Julian date can be split into a day number and a fraction; NaN and infinities
// cannot.
inline bool is_instant(double jd) { return std::fabs(jd) < kLargestDay; }

// Delta T [day] at a Julian date of either scale. Needs ET_UT::Init, which a SearchModel keeps.
inline double delta_t(double jd) {
    const Instant t = split(jd);
    return ET_UT::Get(t.day, t.fraction) / kSecondsPerDay;
}

// JD UT from JD TT, and back. Each takes Delta T at the argument as it stands: there and back
// differ by less than 1e-8 day over 1600 to 2200.
inline double ut_from_tt(double jd_tt) { return jd_tt - delta_t(jd_tt); }
inline double tt_from_ut(double jd_ut) { return jd_ut + delta_t(jd_ut); }

// JD TT. The cursor is where the search goes on; one whose end is not after its start is over
// from the beginning.
struct Span {
    double start = 0;
    double end = 0;
    double cursor = 0;

    [[nodiscard]] bool over() const { return !(cursor < end); }
    // The fraction behind the cursor, 0 to 1.
    [[nodiscard]] double done() const {
        if (over()) return 1;
        return cursor > start ? (cursor - start) / (end - start) : 0;
    }
};

// From JD UT; an empty span when either is no instant.
inline Span span_of_ut(double start_ut, double end_ut) {
    if (!is_instant(start_ut) || !is_instant(end_ut)) return {};
    const double start = tt_from_ut(start_ut);
    return {start, tt_from_ut(end_ut), start};
}

}  // namespace solsys::search
