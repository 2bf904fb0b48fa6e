/// \file
/// Civil time: clocks, dates and time zones, and times as people write them.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "solsys/export.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A date; see `Instant` for the calendar and the numbering of years.
struct CivilDate {
    int year = 2000;  ///< astronomical: 0 is 1 BC
    int month = 1;    ///< 1 to 12
    int day = 1;      ///< 1 to 31

    /// The same day.
    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};
/// Julian day number of the noon of a date. Months and days outside their range are taken on.
[[nodiscard]] SOLSYS_API int julian_day_number(const CivilDate& date);
/// The date whose noon has this Julian day number.
[[nodiscard]] SOLSYS_API CivilDate date_of_julian_day(int day_number);
/// "2026-11-21".
[[nodiscard]] SOLSYS_API std::string to_string(const CivilDate& date);

/// What a clock and a calendar on the wall show.
struct CivilTime {
    CivilDate date;     ///< of the calendar
    int hour = 0;       ///< 0 to 23
    int minute = 0;     ///< 0 to 59
    double second = 0;  ///< [0, 60)
};

/// A time zone: UTC, a fixed offset, or one of the IANA names.
///
/// Rules come from the system's zone database (/usr/share/zoneinfo) where there is one, else
/// from the tables that are compiled in (from 1970 on; before that the state of 1970).
class SOLSYS_API Zone {
  public:
    /// UTC.
    Zone();
    /// "UTC", "+02:00", "-0330", "Europe/Oslo" (any case).
    static Result<Zone> find(std::string_view name);
    /// The same from the compiled tables alone, whatever the system has.
    static Result<Zone> find_compiled(std::string_view name);

    /// As the zone database writes it.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// Seconds east of Greenwich.
    [[nodiscard]] int offset_seconds(const Instant& t) const;
    /// What the zone's clock shows.
    [[nodiscard]] CivilTime civil(const Instant& t) const;
    /// The instant of a clock reading. Of a reading that occurs twice the first; one that the
    /// clocks skip is read with the offset before the jump.
    [[nodiscard]] Instant instant(const CivilTime& reading) const;

    /// The civil date of an instant.
    [[nodiscard]] CivilDate date(const Instant& t) const;
    /// The civil day: from its midnight to the next, 23 to 25 hours.
    [[nodiscard]] Span day(const CivilDate& date) const;
    /// The civil day that an instant falls in.
    [[nodiscard]] Span day(const Instant& t) const { return day(date(t)); }

    /// \name Text
    /// @{
    [[nodiscard]] std::string clock(const Instant& t) const;      ///< "19:03", rounded
    [[nodiscard]] std::string date_time(const Instant& t) const;  ///< "2026-11-21 19:03"
    [[nodiscard]] std::string seconds(const Instant& t) const;    ///< "2026-11-21 19:03:04"
    /// "2026-11-21T19:03:04.567+01:00".
    [[nodiscard]] std::string iso(const Instant& t, int decimals = 3) const;
    /// @}

    struct SOLSYS_LOCAL Rules;  ///< transitions and the rule after them

  private:
    std::string name_ = "UTC";
    std::shared_ptr<const Rules> rules_;
};

/// A time as people write it. Without an offset of its own it is a reading of the zone's clock.
///
/// "now", "today", "tomorrow", "yesterday" (midnights), each also with a step: "now+1d",
/// "today-6h"; ISO 8601 in full, with missing parts ("2026", "2026-12", "2026-12-01T20"), or
/// compact ("20261201T200000Z"); "jd:2451545.0", a bare Julian date of seven digits, and
/// "mjd:51544.5", in UTC.
SOLSYS_API Result<Instant> parse_time(std::string_view text, const Zone& zone = {});

/// A step of time: so many days, or calendar months.
struct Step {
    double days = 1;  ///< of 86400 s
    int months = 0;   ///< not 0: whole months, and `days` says nothing
};
/// "1d", "6h", "10m" or "10min", "30s", "2w", "1mo", "1y", or a plain number of days; above 0.
SOLSYS_API Result<Step> parse_step(std::string_view text);
/// The n-th step after a start; months keep the day of the month where there is one, else take
/// the last day, and the clock of the zone.
SOLSYS_API Instant after_steps(const Instant& start, const Step& step, int n,
                               const Zone& zone = {});

}  // namespace solsys::sky
