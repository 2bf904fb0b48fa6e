#include "frames/orientation_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace solsys {
namespace {

constexpr double kHole = 5.5;           // days: the longest step between rows of one piece
constexpr double kFirstUtcMjd = 36934;  // 1960 January 1
constexpr double kMostUt1 = 1.0;        // s
constexpr double kMostPole = 2.0;       // arcsec
constexpr std::ptrdiff_t kPoints = 4;

bool plausible(const EarthOrientationRow& r) {
    return std::isfinite(r.mjd_utc) && r.mjd_utc >= kFirstUtcMjd && r.mjd_utc < 1e6 &&
           std::fabs(r.ut1_minus_utc) <= kMostUt1 && std::fabs(r.x) <= kMostPole &&
           std::fabs(r.y) <= kMostPole;
}

bool earlier(const EarthOrientationRow& a, const EarthOrientationRow& b) {
    return a.mjd_utc < b.mjd_utc;
}

bool joined(const EarthOrientationRow& a, const EarthOrientationRow& b) {
    return b.mjd_utc - a.mjd_utc <= kHole;
}

using Rows = std::vector<EarthOrientationRow>;

// From the two rows around an instant to four of the same piece, two on either side where there
// are that many.
void widen(const Rows& rows, Rows::const_iterator& first, Rows::const_iterator& last) {
    const auto middle = first;
    while (last - first + 1 < kPoints) {
        const bool before = first != rows.begin() && joined(*(first - 1), *first);
        const bool after = last + 1 != rows.end() && joined(*last, *(last + 1));
        if (!before && !after) return;
        if (before && (!after || middle - first < last - middle)) {
            --first;
        } else {
            ++last;
        }
    }
}

EarthOrientationRow lagrange(std::span<const EarthOrientationRow> rows, double mjd) {
    EarthOrientationRow sum{mjd, 0, 0, 0};
    for (const EarthOrientationRow& row : rows) {
        double w = 1;
        for (const EarthOrientationRow& other : rows) {
            if (&other != &row) w *= (mjd - other.mjd_utc) / (row.mjd_utc - other.mjd_utc);
        }
        sum.ut1_minus_utc += w * row.ut1_minus_utc;
        sum.x += w * row.x;
        sum.y += w * row.y;
    }
    return sum;
}

}  // namespace

EarthOrientationReport OrientationTable::set(std::span<const EarthOrientationRow> rows,
                                             const LeapSeconds& leap_seconds) {
    EarthOrientationReport report;
    Rows sorted;
    for (const EarthOrientationRow& row : rows) {
        if (!plausible(row)) {
            ++report.rejected;
            continue;
        }
        if (!sorted.empty() && earlier(row, sorted.back())) ++report.out_of_order;
        sorted.push_back(row);
        sorted.back().ut1_minus_utc -= leap_seconds.tai_minus_utc(row.mjd_utc);
    }
    std::stable_sort(sorted.begin(), sorted.end(), earlier);
    // Of equal dates the last one stays.
    const auto kept =
        std::unique(sorted.rbegin(), sorted.rend(),
                    [](const auto& a, const auto& b) { return a.mjd_utc == b.mjd_utc; });
    report.repeated = static_cast<int>(std::distance(sorted.begin(), kept.base()));
    rows_ = Rows(kept.base(), sorted.end());

    report.rows = static_cast<int>(rows_.size());
    for (std::size_t i = 1; i < rows_.size(); ++i)
        report.holes += rows_[i].mjd_utc - rows_[i - 1].mjd_utc > kHole;
    if (!rows_.empty()) {
        report.first_mjd = rows_.front().mjd_utc;
        report.last_mjd = rows_.back().mjd_utc;
    }
    return report;
}

std::optional<EarthOrientationRow> OrientationTable::at(double mjd,
                                                        const LeapSeconds& leap_seconds) const {
    if (rows_.empty() || !(mjd >= rows_.front().mjd_utc && mjd <= rows_.back().mjd_utc))
        return std::nullopt;
    const auto after = std::upper_bound(rows_.begin(), rows_.end(),
                                        EarthOrientationRow{mjd, 0, 0, 0}, earlier);
    auto first = after - 1;
    auto last = first;  // a row of that very date is the answer
    if (first->mjd_utc != mjd) {
        if (!joined(*first, *after)) return std::nullopt;
        last = after;
        widen(rows_, first, last);
    }
    EarthOrientationRow row = lagrange({first, last + 1}, mjd);
    row.ut1_minus_utc += leap_seconds.tai_minus_utc(mjd);
    return row;
}

}  // namespace solsys

double TaiMinusUtc(double mjd_utc) { return solsys::LeapSeconds{}.tai_minus_utc(mjd_utc); }
double LeapSecondsValidUntil() { return solsys::kLeapSecondsValidUntil; }
