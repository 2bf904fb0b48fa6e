// What a time zone's clocks do: the transitions that are listed, and the rule after the last.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "solsys/sky/zone.h"

namespace solsys::sky {

struct Zone::Rules {
    struct Transition {
        long long at = 0;  // seconds since 1970, UTC
        int offset = 0;    // UT offset from then on [s, east positive]
    };
    // When a rule changes the clocks, every year: the week-th weekday of a month (week 5: the
    // last), or a day of the year.
    struct TransitionRule {
        int month = 0, week = 0, weekday = 0;
        int day_of_year = 0;       // where month is 0: from 0, or from 1 without February 29
        bool no_leap_day = false;  // the latter
        int seconds = 7200;        // wall clock time of the change, as it was before
    };

    [[nodiscard]] int offset_at(long long unix_seconds) const;
    // Takes a POSIX TZ string, the rule for ever, such as "CET-1CEST,M3.5.0,M10.5.0/3"; false:
    // none.
    bool take_tz_string(std::string_view text);

    std::vector<Transition> transitions;
    int initial_offset = 0;                        // before the first transition
    int standard_offset = 0, daylight_offset = 0;  // of the rule
    std::optional<TransitionRule> daylight_begin, daylight_end;

  private:
    [[nodiscard]] int offset_by_rule(long long unix_seconds) const;
};

// "[+-]h[h][:mm[:ss]]" or "[+-]hhmm" off the front of a text; empty when there is none.
std::optional<int> take_clock(std::string_view& text);

// Whether a zone may be so many seconds ahead of UTC (RFC 8536, section 3.2).
constexpr bool is_offset(long long seconds) { return seconds > -90000 && seconds < 93600; }

// A compiled zone file (TZif, RFC 8536) of the system; empty when it is none, has offsets that
// no zone has, or transitions that are out of order.
std::optional<Zone::Rules> read_zone_file(std::string_view bytes);

// From the compiled tables: the name as it is written, and its rules.
std::optional<std::string_view> zone_name_in_table(std::string_view name);
std::optional<Zone::Rules> zone_rules_in_table(std::string_view name);
void suggest_zones(std::string_view name, std::vector<std::string>& out);

}  // namespace solsys::sky
