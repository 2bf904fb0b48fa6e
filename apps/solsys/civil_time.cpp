#include "apps/solsys/civil_time.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <optional>

#include "apps/solsys/failure.h"
#include "solsys/solsys.h"

namespace app {
namespace {

constexpr double kSecondsPerDay = 86400.0;
constexpr double kUnixEpochJd = 2440587.5;

Utc normalised(double day, double fraction) {
    const double whole = std::floor(fraction);
    return {static_cast<int>(day + whole), fraction - whole};
}

[[noreturn]] void reject(const std::string& text) {
    throw BadInput(fmt::format(
        "'{}' is no time: use ISO 8601 such as 2026-11-21T18:30:00Z, jd:2451545.0, or now",
        text));
}

// Reads fixed-format fields off the front of a text.
class Fields {
  public:
    explicit Fields(const std::string& text) : text_(text) {}

    [[nodiscard]] bool at_end() const { return position_ == text_.size(); }
    bool skip(char wanted) {
        if (at_end() || text_[position_] != wanted) return false;
        ++position_;
        return true;
    }
    [[nodiscard]] char peek() const { return at_end() ? '\0' : text_[position_]; }
    // At least `least` and at most `most` digits.
    int digits(int least, int most) {
        int value = 0;
        int count = 0;
        while (count < most && peek() >= '0' && peek() <= '9') {
            value = 10 * value + (text_[position_++] - '0');
            ++count;
        }
        if (count < least) reject(text_);
        return value;
    }
    // Digits after a decimal point, as a fraction of one.
    double decimals() {
        double value = 0;
        double unit = 1;
        if (peek() < '0' || peek() > '9') reject(text_);
        while (peek() >= '0' && peek() <= '9') {
            unit /= 10;
            value += unit * (text_[position_++] - '0');
        }
        return value;
    }

  private:
    const std::string& text_;
    std::size_t position_ = 0;
};

// Seconds east of UTC; nothing named is UTC.
int parse_offset(Fields& in, const std::string& text) {
    if (in.skip('Z') || in.skip('z') || in.at_end()) return 0;
    const int sign = in.peek() == '-' ? -1 : 1;
    if (!in.skip('+') && !in.skip('-')) reject(text);
    const int hours = in.digits(2, 2);
    in.skip(':');
    const int minutes = in.at_end() ? 0 : in.digits(2, 2);
    if (hours > 15 || minutes > 59) reject(text);
    return sign * (3600 * hours + 60 * minutes);
}

Utc now() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    const double seconds = std::chrono::duration<double>(since).count();
    return utc_from_jd(kUnixEpochJd + seconds / kSecondsPerDay);
}

Utc parse_julian_date(const std::string& text) {
    double jd = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 3, end, jd);
    if (error != std::errc{} || stop != end || !std::isfinite(jd) || std::fabs(jd) > 1e9)
        reject(text);
    return utc_from_jd(jd);
}

Utc parse_iso(const std::string& text) {
    Fields in(text);
    const bool before_christ = in.skip('-');
    if (!before_christ) in.skip('+');
    int year = in.digits(4, 5);
    if (before_christ) year = -year;
    if (!in.skip('-')) reject(text);
    const int month = in.digits(2, 2);
    if (!in.skip('-')) reject(text);
    const int day = in.digits(2, 2);
    int hour = 0;
    int minute = 0;
    double second = 0;
    int offset = 0;
    if (in.skip('T') || in.skip('t') || in.skip(' ')) {
        hour = in.digits(2, 2);
        if (in.skip(':')) {
            minute = in.digits(2, 2);
            if (in.skip(':')) {
                second = in.digits(2, 2);
                if (in.skip('.')) second += in.decimals();
            }
        }
        offset = parse_offset(in, text);
    }
    if (!in.at_end() || hour > 24 || minute > 59 || second >= 61 || year > 30000 ||
        (hour == 24 && (minute > 0 || second > 0)))
        reject(text);

    // The library numbers years historically: there is no year 0.
    const auto historical = static_cast<short>(year <= 0 ? year - 1 : year);
    int jd_day = 0;
    double jd_fraction = 0;
    DJ(&jd_day, &jd_fraction, historical, static_cast<short>(month), static_cast<short>(day), 0,
       0, 0.0);
    // A day that the calendar does not have comes back as another one.
    short back_year = 0, back_month = 0, back_day = 0, back_hour = 0, back_minute = 0;
    double day_fraction = 0, back_second = 0;
    JD(jd_day, jd_fraction, &back_year, &back_month, &back_day, &day_fraction, &back_hour,
       &back_minute, &back_second);
    if (back_year != historical || back_month != month || back_day != day) reject(text);

    const double seconds = 3600.0 * hour + 60.0 * minute + second - offset;
    return normalised(jd_day, jd_fraction + seconds / kSecondsPerDay);
}

}  // namespace

Tt tt_from_utc(Utc utc) {
    int day = 0;
    double fraction = 0;
    ET_UT::UT2ET(utc.jd(), day, fraction);
    const double delta_t = (day - utc.day) + (fraction - utc.fraction);
    // UT2ET takes one double; only its difference is wanted, and that to the last digit.
    const double seconds = std::round(delta_t * kSecondsPerDay * 1e3) / 1e3;
    const Utc tt = normalised(utc.day, utc.fraction + seconds / kSecondsPerDay);
    return {tt.day, tt.fraction};
}

Utc utc_from_tt(Tt tt) {
    // Delta T is a step function of the calendar: two passes settle it.
    double seconds = ET_UT::Get(tt.day, tt.fraction);
    seconds = ET_UT::Get(tt.day, tt.fraction - seconds / kSecondsPerDay);
    return normalised(tt.day, tt.fraction - seconds / kSecondsPerDay);
}

Utc utc_from_jd(double jd) {
    const double day = std::floor(jd);
    return normalised(day, jd - day);
}

Utc plus_days(Utc utc, double days) {
    const double whole = std::floor(days);
    return normalised(utc.day + whole, utc.fraction + (days - whole));
}

double days_from(Utc start, Utc end) {
    return (end.day - start.day) + (end.fraction - start.fraction);
}

Utc parse_time(const std::string& text) {
    if (text == "now") return now();
    if (text.starts_with("jd:") || text.starts_with("JD:")) return parse_julian_date(text);
    return parse_iso(text);
}

double parse_step(const std::string& text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    const std::string unit(stop, end);
    double days = 0;
    if (unit == "d" || unit.empty()) days = value;
    if (unit == "h") days = value / 24;
    if (unit == "m" || unit == "min") days = value / 1440;
    if (unit == "s") days = value / kSecondsPerDay;
    if (error != std::errc{} || !(days > 0) || !std::isfinite(days))
        throw BadInput(
            fmt::format("'{}' is no step: use for example 1d, 6h, 10m or 30s", text));
    return days;
}

std::string iso_utc(Utc utc) {
    // Round to the millisecond first, so that no field can show 60.
    const double milliseconds = std::round(utc.fraction * kSecondsPerDay * 1e3);
    const Utc rounded = normalised(utc.day, (milliseconds + 0.1) / (kSecondsPerDay * 1e3));
    short year = 0, month = 0, day = 0, hour = 0, minute = 0;
    double fraction = 0, second = 0;
    // Midnight at its start keeps the calendar clear of its own rounding.
    const double since_midnight = rounded.fraction + 0.5;
    JD(rounded.day + (since_midnight >= 1 ? 1 : 0), -0.5 + 1e-6, &year, &month, &day, &fraction,
       &hour, &minute, &second);
    const auto total =
        static_cast<long long>(std::fmod(milliseconds + 43200e3, kSecondsPerDay * 1e3));
    const int astronomical = year <= 0 ? year + 1 : year;
    return fmt::format("{}{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z",
                       astronomical < 0 ? "-" : "", std::abs(astronomical), month, day,
                       total / 3600000, total / 60000 % 60, total / 1000 % 60, total % 1000);
}

}  // namespace app
