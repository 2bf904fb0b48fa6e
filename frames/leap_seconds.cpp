#include "frames/leap_seconds.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace solsys {
namespace {

struct Row {
    int year, month;
    double mjd, offset, reference_mjd, rate;
};
constexpr Row kRows[] = {
#include "leap_seconds.inc"
};
constexpr double kFirstLeapMjd = 41317;  // 1972 January 1
static_assert(std::size(kRows) == 42 && kRows[0].mjd == 36934);

double value(const LeapSecondRow& row, double mjd) {
    return row.offset + (mjd - row.reference_mjd) * row.rate;
}

bool plausible(const LeapSecondRow& row) {
    return std::isfinite(row.mjd) && std::isfinite(row.reference_mjd) && row.rate == 0 &&
           row.offset >= 10 && row.offset <= 1000;
}

}  // namespace

bool LeapSeconds::replace(std::span<const LeapSecondRow> rows, double valid_until_mjd) {
    const bool ascending =
        std::is_sorted(rows.begin(), rows.end(),
                       [](const auto& a, const auto& b) { return !(a.mjd >= b.mjd); }) &&
        std::adjacent_find(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
            return a.mjd == b.mjd;
        }) == rows.end();
    if (rows.empty() || !ascending || !std::isfinite(valid_until_mjd) ||
        !std::all_of(rows.begin(), rows.end(), plausible))
        return false;
    newer_ = std::vector<LeapSecondRow>(rows.begin(), rows.end());
    std::erase_if(newer_, [](const auto& row) { return row.mjd < kFirstLeapMjd; });
    valid_until_ = valid_until_mjd;
    return true;
}

double LeapSeconds::tai_minus_utc(double mjd) const {
    if (!newer_.empty() && mjd >= newer_.front().mjd) {
        const auto after =
            std::upper_bound(newer_.begin(), newer_.end(), mjd,
                             [](double m, const LeapSecondRow& row) { return m < row.mjd; });
        return value(*std::prev(after), mjd);
    }
    if (!(mjd >= kRows[0].mjd))
        return std::isnan(mjd)
                   ? mjd
                   : kRows[0].offset + (kRows[0].mjd - kRows[0].reference_mjd) * kRows[0].rate;
    const auto after = std::upper_bound(std::begin(kRows), std::end(kRows), mjd,
                                        [](double m, const Row& row) { return m < row.mjd; });
    const Row& row = *std::prev(after);
    return row.offset + (mjd - row.reference_mjd) * row.rate;
}

Instant LeapSeconds::utc_from_tt(Instant tt) const {
    const double tai = mjd_of(tt) - kTtMinusTai / kSecondsPerDay;
    // Twice: the first guess may fall on the wrong side of a step.
    double leap = tai_minus_utc(tai);
    leap = tai_minus_utc(tai - leap / kSecondsPerDay);
    return {tt.day, tt.fraction - (kTtMinusTai + leap) / kSecondsPerDay};
}

}  // namespace solsys
