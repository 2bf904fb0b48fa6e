/// \file
/// Instants, and spans between two of them.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "solsys/export.h"

namespace solsys::sky {

/// A Julian date as a day number and a fraction in [0, 1), so that nanoseconds survive.
struct JulianDate {
    int day = 0;          ///< whole days; a day begins at noon
    double fraction = 0;  ///< of a day

    /// Both in one number: 40 microseconds are lost.
    [[nodiscard]] double jd() const { return day + fraction; }
};

/// An instant, held as a Universal Time.
///
/// UTC is taken as UT and every day as 86400 s: a leap second shows as the first second of the
/// next day. Dynamical time follows by the table of `ET_UT` (from 1972: 32.184 s and the leap
/// seconds). Differences and sums count days of UTC, so that a step of a day keeps the hour.
/// TDB differs from TT by less than 2 ms and is taken as equal to it.
///
/// Dates are of the Julian calendar before 1582 October 15; years are astronomical: 0 is 1 BC.
class SOLSYS_API Instant {
  public:
    /// J2000.0 in UT: 2000 January 1, 12h.
    Instant() = default;
    /// From a Julian date; the fraction may be any finite number. What is not finite, or beyond
    /// 2e9 days, gives day 0.
    static Instant from_utc(JulianDate utc);
    /// The same from a Julian date in one number [day, UTC].
    static Instant from_utc(double jd);
    /// From Terrestrial Time; limits as for UTC.
    static Instant from_tt(JulianDate tt);
    /// The same from a Julian date in one number [day, TT].
    static Instant from_tt(double jd);
    /// The computer's clock.
    static Instant now();
    /// ISO 8601 with a zone: "2026-11-21T18:03:04.5Z", "20261121T180304+0200", a date alone
    /// (0h UTC). Empty for what is none; `parse_time` (zone.h) reads more, and local times.
    static std::optional<Instant> from_iso(std::string_view text);

    /// \name As Julian dates [day]
    /// Split, or in one number, which holds 40 microseconds.
    /// @{
    /// Universal Time.
    [[nodiscard]] JulianDate utc() const { return {day_, fraction_}; }
    /// Terrestrial Time.
    [[nodiscard]] JulianDate tt() const;
    /// Barycentric Dynamical Time, taken as Terrestrial Time.
    [[nodiscard]] JulianDate tdb() const { return tt(); }
    /// Universal Time in one number.
    [[nodiscard]] double jd_utc() const { return day_ + fraction_; }
    /// Terrestrial Time in one number.
    [[nodiscard]] double jd_tt() const { return tt().jd(); }
    /// @}
    /// TT - UTC [s].
    [[nodiscard]] double delta_t_seconds() const;

    /// "2026-11-21T18:03:04.567Z", rounded to the decimals of a second (0 to 9). A year outside
    /// 0 to 9999 has a sign.
    [[nodiscard]] std::string iso(int decimals = 3) const;

    /// Later by days of UTC; negative: earlier.
    [[nodiscard]] Instant plus_days(double days) const;
    /// Later by seconds of 1/86400 day of UTC.
    [[nodiscard]] Instant plus_seconds(double seconds) const {
        return plus_days(seconds / 86400.0);
    }

    /// To the last bit of the fraction.
    friend bool operator==(const Instant& a, const Instant& b) = default;
    /// The earlier is the less.
    friend std::partial_ordering operator<=>(const Instant& a, const Instant& b) = default;

  private:
    int day_ = 2451545;
    double fraction_ = 0;
};

/// Days of UTC from one instant to another.
[[nodiscard]] SOLSYS_API double days_between(const Instant& from, const Instant& to);

/// A stretch of time, both ends included.
struct Span {
    Instant from;  ///< the beginning
    Instant to;    ///< the end

    /// Its length in days of UTC; negative when the ends are exchanged.
    [[nodiscard]] double days() const { return days_between(from, to); }
    /// Whether an instant lies in it; the ends do.
    [[nodiscard]] bool holds(const Instant& t) const { return from <= t && t <= to; }
};

}  // namespace solsys::sky
