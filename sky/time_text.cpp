// Times and steps as people write them.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "sky/text.h"
#include "sky/zone_rules.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {
namespace {

constexpr double kLargestJd = 1e9;
constexpr double kMjdZero = 2400000.5;

Failure no_time(std::string_view text) {
    return {in_quotes(text) +
            " is no time: use 2026-11-21T18:30, 2026-11-21T18:30:00Z, today, now+1d or "
            "jd:2451545.0"};
}

std::optional<double> real_number(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

// A Julian date of the text behind a mark, or standing alone with seven digits.
std::optional<Instant> julian(std::string_view text) {
    const std::string mark = folded(text.substr(0, text.find(':') + 1));
    double zero = 0;
    if (mark == "jd:" || mark == "mjd:") {
        text.remove_prefix(mark.size());
        if (mark == "mjd:") zero = kMjdZero;
    } else if (text.find_first_not_of("0123456789.") != std::string_view::npos ||
               std::min(text.find('.'), text.size()) != 7) {
        return std::nullopt;
    }
    const auto number = real_number(trimmed_text(text));
    if (!number || std::fabs(*number) > kLargestJd) return std::nullopt;
    // The day and its part apart, so that a modified date keeps its digits.
    const double day = std::floor(*number);
    return Instant::from_utc(JulianDate{static_cast<int>(day), *number - day}).plus_days(zero);
}

// Fixed fields off the front of an ISO 8601 text.
class Fields {
  public:
    explicit Fields(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool done() const { return rest_.empty(); }
    [[nodiscard]] std::string_view rest() const { return rest_; }
    bool skip(char wanted) {
        if (!rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    // Exactly so many digits.
    std::optional<int> digits(std::size_t count) {
        if (rest_.size() < count || !all_digits(rest_.substr(0, count))) return std::nullopt;
        int value = 0;
        std::from_chars(rest_.data(), rest_.data() + count, value);
        rest_.remove_prefix(count);
        return value;
    }
    [[nodiscard]] std::size_t digits_ahead() const {
        return std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    }
    // ".25" or ",25" as a part of one.
    std::optional<double> decimals() {
        if (!rest_.starts_with('.') && !rest_.starts_with(',')) return 0.0;
        rest_.remove_prefix(1);
        const std::size_t count = digits_ahead();
        if (count == 0) return std::nullopt;
        double value = 0;
        double unit = 1;
        for (std::size_t i = 0; i < count; ++i) value += (unit /= 10) * (rest_[i] - '0');
        rest_.remove_prefix(count);
        return value;
    }

  private:
    std::string_view rest_;
};

// "2026", "2026-12", "2026-12-01", "20261201", "-0044-03-15", "+12026-01-01".
std::optional<CivilDate> take_date(Fields& in) {
    const bool before = in.skip('-');
    const bool sign = before || in.skip('+');
    const std::size_t ahead = in.digits_ahead();
    CivilDate date;
    const bool compact = !sign && ahead == 8;
    const auto year = in.digits(compact ? 4 : sign && ahead <= 6 ? ahead : 4);
    if (!year || ahead < 4) return std::nullopt;
    date.year = before ? -*year : *year;
    date.month = date.day = 1;
    for (int* const part : {&date.month, &date.day}) {
        if (!compact && !in.skip('-')) break;
        const auto value = in.digits(2);
        if (!value) return std::nullopt;
        *part = *value;
    }
    if (date_of_julian_day(julian_day_number(date)) != date) return std::nullopt;
    return date;
}

// "18", "18:30", "1830", "18:30:04.5", "183004.5".
bool take_time(Fields& in, CivilTime& time) {
    const auto hour = in.digits(2);
    if (!hour) return false;
    time.hour = *hour;
    const bool colons = in.skip(':');
    if (colons || in.digits_ahead() >= 2) {
        const auto minute = in.digits(2);
        if (!minute) return false;
        time.minute = *minute;
        if (colons ? in.skip(':') : in.digits_ahead() >= 2) {
            const auto second = in.digits(2);
            const auto part = in.decimals();
            if (!second || !part) return false;
            time.second = *second + *part;
        }
    }
    const bool at_24 = time.hour == 24 && time.minute == 0 && time.second == 0;
    return (time.hour < 24 || at_24) && time.minute < 60 && time.second < 61;
}

std::optional<Instant> iso(std::string_view text, const Zone& zone) {
    Fields in(text);
    CivilTime time;
    const auto date = take_date(in);
    if (!date) return std::nullopt;
    time.date = *date;
    if (in.skip('T') || in.skip('t') || in.skip(' ')) {
        if (!take_time(in, time)) return std::nullopt;
    }
    if (in.done()) return zone.instant(time);
    if (in.rest() == "Z" || in.rest() == "z") return Zone().instant(time);
    std::string_view rest = in.rest();
    if (!rest.starts_with('+') && !rest.starts_with('-')) return std::nullopt;
    const auto offset = take_clock(rest);
    if (!offset || !rest.empty() || std::abs(*offset) > 15 * 3600) return std::nullopt;
    return Zone().instant(time).plus_seconds(-*offset);
}

std::optional<Instant> word(std::string_view text, const Zone& zone) {
    const Instant now = Instant::now();
    if (text == "now") return now;
    const int today = julian_day_number(zone.date(now));
    for (const auto& [name, days] :
         {std::pair{"today", 0}, std::pair{"tomorrow", 1}, std::pair{"yesterday", -1}})
        if (text == name) return zone.day(date_of_julian_day(today + days)).from;
    return std::nullopt;
}

}  // namespace

Result<Instant> parse_time(std::string_view given, const Zone& zone) {
    const std::string_view text = trimmed_text(given);
    if (const auto t = julian(text)) return *t;
    // A word, perhaps with a step after it.
    const std::size_t sign = text.find_first_of("+-");
    if (const auto start = word(text.substr(0, sign), zone)) {
        if (sign == std::string_view::npos) return *start;
        const auto step = parse_step(text.substr(sign + 1));
        if (!step) return no_time(given);
        Step signed_step = *step;
        if (text[sign] == '-') signed_step.days *= -1, signed_step.months *= -1;
        return after_steps(*start, signed_step, 1, zone);
    }
    if (const auto t = iso(text, zone)) return *t;
    return no_time(given);
}

Result<Step> parse_step(std::string_view given) {
    const std::string_view text = trimmed_text(given);
    const auto unit_at = std::min(text.find_first_not_of("0123456789.eE+-"), text.size());
    const auto number = real_number(text.substr(0, unit_at));
    const std::string_view unit = text.substr(unit_at);
    const Failure none{in_quotes(given) +
                       " is no step: use for example 1d, 6h, 10m, 30s, 2w, 1mo or 1y"};
    if (!number || !(*number > 0)) return none;
    struct Unit {
        const char* name;
        double per_day;
    };
    for (const Unit& known : {Unit{"d", 1}, Unit{"", 1}, Unit{"h", 24}, Unit{"m", 1440},
                              Unit{"min", 1440}, Unit{"s", 86400}, Unit{"w", 1.0 / 7}})
        if (unit == known.name) return Step{*number / known.per_day, 0};
    const double whole = std::round(*number);
    if ((unit == "mo" || unit == "y") && *number == whole && whole < 100000)
        return Step{0, static_cast<int>(whole) * (unit == "y" ? 12 : 1)};
    return none;
}

Instant after_steps(const Instant& start, const Step& step, int n, const Zone& zone) {
    if (step.months == 0) return start.plus_days(step.days * n);
    CivilTime time = zone.civil(start);
    const int wanted_day = time.date.day;
    const long long months =
        12LL * time.date.year + (time.date.month - 1) + static_cast<long long>(step.months) * n;
    const long long year = months / 12 - (months % 12 < 0);
    time.date = {static_cast<int>(year), static_cast<int>(months - 12 * year) + 1, 1};
    const int first = julian_day_number(time.date);
    const int next = julian_day_number({time.date.year, time.date.month + 1, 1});
    time.date.day = std::min(wanted_day, next - first);
    return zone.instant(time);
}

}  // namespace solsys::sky
