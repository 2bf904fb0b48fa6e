#include "sky/zone_rules.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <limits>

namespace solsys::sky {
namespace {

constexpr int kUnixEpochDay = 2440588;  // Julian day number of 1970 January 1

constexpr long long kFarthestTransition =
    86400LL * 1000000000;  // s: no calendar is meant beyond

long long days_since_1970(int year, int month, int day) {
    return julian_day_number({year, month, day}) - kUnixEpochDay;
}

bool is_leap(int year) {
    return days_since_1970(year, 3, 1) - days_since_1970(year, 2, 28) == 2;
}

std::optional<int> take_number(std::string_view& text, std::size_t most_digits) {
    std::size_t digits = 0;
    int value = 0;
    while (digits < most_digits && digits < text.size() && text[digits] >= '0' &&
           text[digits] <= '9')
        value = 10 * value + (text[digits++] - '0');
    if (digits == 0) return std::nullopt;
    text.remove_prefix(digits);
    return value;
}

bool take(std::string_view& text, char wanted) {
    if (!text.starts_with(wanted)) return false;
    text.remove_prefix(1);
    return true;
}

// The abbreviation of a local time type: letters, or anything in angle brackets.
bool take_abbreviation(std::string_view& text) {
    std::size_t end = 0;
    if (text.starts_with('<')) {
        end = text.find('>');
        if (end == std::string_view::npos) return false;
        ++end;
    } else {
        while (end < text.size() && std::isalpha(static_cast<unsigned char>(text[end]))) ++end;
        if (end < 3) return false;
    }
    text.remove_prefix(end);
    return true;
}

// The date and time of a transition: "M3.5.0/2", "J60", "59".
std::optional<Zone::Rules::TransitionRule> take_transition_rule(std::string_view& text) {
    Zone::Rules::TransitionRule rule;
    if (take(text, 'M')) {
        const auto month = take_number(text, 2);
        const auto week = take(text, '.') ? take_number(text, 1) : std::nullopt;
        const auto weekday = take(text, '.') ? take_number(text, 1) : std::nullopt;
        if (!month || !week || !weekday || *month < 1 || *month > 12) return std::nullopt;
        rule.month = *month, rule.week = *week, rule.weekday = *weekday;
    } else {
        rule.no_leap_day = take(text, 'J');
        const auto day = take_number(text, 3);
        if (!day) return std::nullopt;
        rule.day_of_year = *day;
    }
    if (take(text, '/')) {
        const auto seconds = take_clock(text);
        if (!seconds) return std::nullopt;
        rule.seconds = *seconds;
    }
    return rule;
}

// Seconds since 1970, as the wall clock counts them, of a rule in a year.
long long local_instant(const Zone::Rules::TransitionRule& rule, int year) {
    long long date = 0;
    if (rule.month == 0) {
        date = days_since_1970(year, 1, 1) + rule.day_of_year;
        if (rule.no_leap_day) date += (is_leap(year) && rule.day_of_year >= 60) - 1;
    } else {
        const long long first = days_since_1970(year, rule.month, 1);
        const auto weekday_of_first = static_cast<int>(((first + 4) % 7 + 7) % 7);
        date = first + (rule.weekday - weekday_of_first + 7) % 7 + 7LL * (rule.week - 1);
        while (date >= days_since_1970(year, rule.month + 1, 1)) date -= 7;
    }
    return date * 86400 + rule.seconds;
}

}  // namespace

std::optional<int> take_clock(std::string_view& text) {
    const int sign = text.starts_with('-') ? -1 : 1;
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 4) {
        const int value = *take_number(text, 4);
        return sign * (3600 * (value / 100) + 60 * (value % 100));
    }
    const auto hours = take_number(text, 3);
    if (!hours) return std::nullopt;
    int seconds = 3600 * *hours;
    for (int unit = 60; unit >= 1 && take(text, ':'); unit /= 60) {
        const auto part = take_number(text, 2);
        if (!part || *part > 59) return std::nullopt;
        seconds += unit * *part;
    }
    return sign * seconds;
}

bool Zone::Rules::take_tz_string(std::string_view text) {
    if (!take_abbreviation(text)) return false;
    const auto west = take_clock(text);
    if (!west || !is_offset(-*west)) return false;
    standard_offset = daylight_offset = -*west;
    if (text.empty()) return true;
    if (!take_abbreviation(text)) return false;
    daylight_offset = standard_offset + 3600;
    if (!text.empty() && !text.starts_with(',')) {
        const auto daylight_west = take_clock(text);
        if (!daylight_west || !is_offset(-*daylight_west)) return false;
        daylight_offset = -*daylight_west;
    }
    if (!take(text, ',')) return false;
    daylight_begin = take_transition_rule(text);
    if (!daylight_begin || !take(text, ',')) return false;
    daylight_end = take_transition_rule(text);
    return daylight_end && text.empty();
}

int Zone::Rules::offset_at(long long now) const {
    if (!transitions.empty() && now < transitions.front().at) return initial_offset;
    if (transitions.empty() || now >= transitions.back().at) return offset_by_rule(now);
    const auto after = std::upper_bound(
        transitions.begin(), transitions.end(), now,
        [](long long t, const Transition& transition) { return t < transition.at; });
    return std::prev(after)->offset;
}

// After the last transition its offset holds until the rule makes one of its own.
int Zone::Rules::offset_by_rule(long long now) const {
    if (!daylight_begin || !daylight_end) return standard_offset;
    now = std::clamp(now, -kFarthestTransition, kFarthestTransition);
    const long long local_day = (now + standard_offset) / 86400 - (now + standard_offset < 0);
    const int this_year = date_of_julian_day(static_cast<int>(local_day) + kUnixEpochDay).year;
    struct Change {
        long long at;
        int offset;
    };
    Change latest{std::numeric_limits<long long>::min(), standard_offset};
    for (const int year : {this_year - 1, this_year})
        for (const Change& change :
             {Change{local_instant(*daylight_begin, year) - standard_offset, daylight_offset},
              Change{local_instant(*daylight_end, year) - daylight_offset, standard_offset}})
            if (change.at <= now && change.at > latest.at) latest = change;
    if (!transitions.empty() && latest.at <= transitions.back().at)
        return transitions.back().offset;
    return latest.offset;
}

}  // namespace solsys::sky
