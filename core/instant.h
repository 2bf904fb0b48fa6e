// An instant as a split Julian date: a whole day number and a fraction of a day, so that
// differences keep their microseconds. The Julian day begins at noon.
#pragma once

#include <cmath>

#include "core/constants.h"

namespace solsys {

struct Instant {
    int day;
    double fraction;

    // The Julian date as one double (resolution about 40 microseconds).
    [[nodiscard]] constexpr double jd() const { return day + fraction; }
};

// Julian dates beyond this are not split: a day number has 32 bits, and room is left for what
// is added to it.
constexpr double kLargestDay = 2e9;

// A Julian date into its whole day, towards zero, and the rest. What is farther than
// kLargestDay or not a number stays whole in the fraction, with day 0.
inline Instant split(double jd) {
    const int day = std::fabs(jd) < kLargestDay ? static_cast<int>(jd) : 0;
    return {day, jd - day};
}

// The instant `days` later (earlier, when negative) with its whole days, towards zero, in `day`
// again: rounded as the fraction is, not as a Julian date. Beyond kLargestDay the day stays and
// the fraction takes all.
inline Instant plus(Instant t, double days) {
    const double rest = t.fraction + days;
    const double sum = t.day + rest;
    if (!(std::fabs(sum) < kLargestDay)) return {t.day, rest};
    const int day = static_cast<int>(sum);
    return {day, (static_cast<double>(t.day) - day) + rest};
}

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
