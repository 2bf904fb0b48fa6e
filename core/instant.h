// An instant as a split Julian date: a whole day number and a fraction of a day, so that
// differences keep their microseconds. The Julian day begins at noon.
#pragma once

#include "core/constants.h"

namespace solsys {

struct Instant {
    int day;
    double fraction;

    // The Julian date as one double (resolution about 40 microseconds).
    [[nodiscard]] constexpr double jd() const { return day + fraction; }
};

// t - reference in days, without the loss of forming either sum. Any two days: the whole days
// are subtracted as doubles, exactly.
constexpr double days_between(Instant reference, Instant t) {
    return (static_cast<double>(t.day) - reference.day) + (t.fraction - reference.fraction);
}
constexpr double days_since_j2000(Instant t) {
    return (static_cast<double>(t.day) - kJ2000Day) + t.fraction;
}
constexpr double centuries_since_j2000(Instant t) {
    return days_since_j2000(t) / kDaysPerJulianCentury;
}

}  // namespace solsys
