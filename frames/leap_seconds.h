// TAI - UTC: steps since 1972, steps and rates from 1960.
#pragma once

#include <span>
#include <vector>

#include "core/instant.h"

namespace solsys {

constexpr double kTtMinusTai = 32.184;  // s

// From 0h UTC of the day `mjd` on: TAI - UTC = offset + (MJD(UTC) - reference) rate [s].
struct LeapSecondRow {
    double mjd;
    double offset;
    double reference_mjd = 0;
    double rate = 0;
};

// Modified Julian date up to which the built-in table is known to hold (IERS Bulletin C of July
// 2026: no leap second up to the end of December 2026): 2027 June 28.
constexpr double kLeapSecondsValidUntil = 61584;

// A table in force: the built-in rows, or those with newer ones in place of them from 1972 on.
// Before 1960 January 1 there was no UTC: `tai_minus_utc` answers as on that day.
class LeapSeconds {
  public:
    LeapSeconds() = default;
    // Rows in ascending order, from 1972 on (an earlier one replaces nothing). False, and the
    // table as it was, when they are out of order, not finite, or leave a value that is no
    // plausible one (10 to 1000 s).
    bool replace(std::span<const LeapSecondRow> rows, double valid_until_mjd);

    [[nodiscard]] double tai_minus_utc(double mjd_utc) const;
    // UTC as a Modified Julian date of the instant; during a leap second the end of the day.
    [[nodiscard]] Instant utc_from_tt(Instant tt) const;
    [[nodiscard]] double valid_until_mjd() const { return valid_until_; }

  private:
    std::vector<LeapSecondRow> newer_;
    double valid_until_ = kLeapSecondsValidUntil;
};

constexpr int kMjdZeroDay = 2400000;  // and a half: MJD = JD - 2400000.5
constexpr double mjd_of(Instant t) {
    return (static_cast<double>(t.day) - kMjdZeroDay) + (t.fraction - 0.5);
}

}  // namespace solsys
