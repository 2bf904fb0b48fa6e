// What a time zone's clocks do: the changes that are listed, and the rule after the last.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "solsys/sky/zone.h"

namespace solsys::sky {

struct Zone::Rules {
    struct Transition {
        long long at = 0;  // seconds since 1970, UTC
        int offset = 0;    // seconds east of Greenwich from then on
    };
    // A day of change: the week-th weekday of a month (week 5: the last), or a day of the year.
    struct ChangeDay {
        int month = 0, week = 0, weekday = 0;
        int day_of_year = 0;     // where month is 0: from 0, or from 1 without February 29
        bool skip_leap = false;  // the latter
        int seconds = 7200;      // local clock time of the change
    };

    [[nodiscard]] int offset_at(long long unix_seconds) const;
    // Takes the rule of a POSIX TZ string such as "CET-1CEST,M3.5.0,M10.5.0/3"; false: none.
    bool take_posix(std::string_view text);

    std::vector<Transition> transitions;
    int first_offset = 0;
    int standard = 0, summer = 0;
    std::optional<ChangeDay> begin, end;  // of summer time

  private:
    [[nodiscard]] int offset_by_rule(long long unix_seconds) const;
};

// "[+-]h[h][:mm[:ss]]" or "[+-]hhmm" off the front of a text; empty when there is none.
std::optional<int> take_clock(std::string_view& text);

// Whether a zone may be so many seconds ahead of UTC (RFC 8536, section 3.2).
constexpr bool is_offset(long long seconds) { return seconds > -90000 && seconds < 93600; }

// A compiled zone file (TZif, RFC 8536) of the system; empty when it is none, has offsets that
// no zone has, or changes that are out of order.
std::optional<Zone::Rules> read_zone_file(std::string_view bytes);

// From the compiled tables: the name as it is written, and its rules.
std::optional<std::string_view> zone_name_in_table(std::string_view name);
std::optional<Zone::Rules> zone_rules_in_table(std::string_view name);
void suggest_zones(std::string_view name, std::vector<std::string>& out);

}  // namespace solsys::sky
