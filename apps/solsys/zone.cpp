#include "apps/solsys/zone.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>

#include "apps/solsys/failure.h"
#include "solsys/calendar.h"

namespace app {
namespace {

constexpr double kUnixEpochJd = 2440587.5;

long long unix_seconds(Utc utc) {
    return std::llround(((utc.day - kUnixEpochJd) + utc.fraction) * 86400.0);
}

// Days since 1970 of a Gregorian date (Fliegel & Van Flandern 1968, Comm. ACM 11, 657).
long long days_since_1970(long long year, int month, int day) {
    const long long a = (month - 14) / 12;
    return day - 32075 + 1461 * (year + 4800 + a) / 4 + 367 * (month - 2 - a * 12) / 12 -
           3 * ((year + 4900 + a) / 100) / 4 - 2440588;
}

long long year_of(long long seconds) {
    // Civil year by bisection on the day count: exact and short.
    const long long days =
        static_cast<long long>(std::floor(static_cast<double>(seconds) / 86400));
    long long year = 1970 + days / 366;
    while (days_since_1970(year + 1, 1, 1) <= days) ++year;
    while (days_since_1970(year, 1, 1) > days) --year;
    return year;
}

std::int64_t big_endian(const std::string& bytes, std::size_t at, int size) {
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i)
        value =
            value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    if (size == 4) return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
    return static_cast<std::int64_t>(value);
}

// "[+-]h[h][:mm[:ss]]" off the front of a rule; false when there is none.
bool take_clock(const std::string& text, std::size_t& at, int& seconds) {
    int sign = 1;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        sign = text[at++] == '-' ? -1 : 1;
    int parts[3] = {0, 0, 0};
    for (int i = 0; i < 3; ++i) {
        const std::size_t begin = at;
        while (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) &&
               at - begin < 3)
            parts[i] = 10 * parts[i] + (text[at++] - '0');
        if (at == begin) return false;
        if (at >= text.size() || text[at] != ':') break;
        ++at;
    }
    seconds = sign * (3600 * parts[0] + 60 * parts[1] + parts[2]);
    return true;
}

bool take_name(const std::string& text, std::size_t& at) {
    const std::size_t begin = at;
    if (at < text.size() && text[at] == '<') {
        at = text.find('>', at);
        if (at == std::string::npos) return false;
        ++at;
        return true;
    }
    while (at < text.size() && std::isalpha(static_cast<unsigned char>(text[at]))) ++at;
    return at - begin >= 3;
}

}  // namespace

Zone::Zone(const std::string& name) : name_(name) {
    if (name == "UTC" || name == "Z" || name.empty()) {
        name_ = "UTC";
        return;
    }
    if (name[0] == '+' || name[0] == '-') {
        std::size_t at = 0;
        if (take_clock(name, at, first_offset_) && at == name.size() &&
            std::abs(first_offset_) <= 15 * 3600) {
            rule_.standard = rule_.summer = first_offset_;
            return;
        }
    } else if (name.find("..") == std::string::npos && name[0] != '/' &&
               read_zone_file("/usr/share/zoneinfo/" + name)) {
        return;
    }
    throw BadInput(
        fmt::format("'{}' is no time zone here: use an offset such as +02:00, or UTC, or an "
                    "IANA name where "
                    "the system keeps them",
                    name));
}

// The second block of a zone file (64-bit times) and the rule behind it (RFC 8536).
bool Zone::read_zone_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    constexpr std::size_t kHeader = 44;
    const auto count = [&](std::size_t header, int field) {
        return static_cast<std::size_t>(
            big_endian(bytes, header + 20 + 4 * static_cast<std::size_t>(field), 4) &
            0x7fffffff);
    };
    if (bytes.size() < kHeader || bytes.compare(0, 4, "TZif") != 0 || bytes[4] < '2')
        return false;
    // isutc, isstd, leap, time, type, char counts.
    const std::size_t first = count(0, 3) * 5 + count(0, 4) * 6 + count(0, 5) +
                              count(0, 2) * 8 + count(0, 1) + count(0, 0);
    const std::size_t second = kHeader + first;
    if (second > bytes.size() || bytes.size() - second < kHeader) return false;
    const std::size_t times = count(second, 3);
    const std::size_t types = count(second, 4);
    const std::size_t begin = second + kHeader;
    const std::size_t body = times * 9 + types * 6 + count(second, 5) + count(second, 2) * 12 +
                             count(second, 1) + count(second, 0);
    if (types == 0 || body > bytes.size() - begin) return false;
    const auto offset_of = [&](std::size_t type) {
        return static_cast<int>(big_endian(bytes, begin + times * 9 + type * 6, 4));
    };
    first_offset_ = offset_of(0);
    for (std::size_t i = 0; i < times; ++i) {
        const auto type = static_cast<unsigned char>(bytes[begin + times * 8 + i]);
        if (type >= types) return false;
        transitions_.push_back({big_endian(bytes, begin + i * 8, 8), offset_of(type)});
    }
    rule_.standard = rule_.summer =
        transitions_.empty() ? first_offset_ : transitions_.back().offset;
    std::string footer = bytes.substr(begin + body);
    std::erase(footer, '\n');
    return footer.empty() || parse_rule(footer);
}

// "CET-1CEST,M3.5.0,M10.5.0/3".
bool Zone::parse_rule(const std::string& text) {
    std::size_t at = 0;
    int west = 0;
    if (!take_name(text, at) || !take_clock(text, at, west)) return false;
    rule_.standard = rule_.summer = -west;
    if (at == text.size()) return true;
    if (!take_name(text, at)) return false;
    rule_.summer = rule_.standard + 3600;
    if (at < text.size() && text[at] != ',') {
        if (!take_clock(text, at, west)) return false;
        rule_.summer = -west;
    }
    for (std::optional<RuleDay>* day : {&rule_.begin, &rule_.end}) {
        RuleDay read;
        if (std::sscanf(text.c_str() + std::min(at, text.size()), ",M%d.%d.%d", &read.month,
                        &read.week, &read.weekday) != 3 ||
            read.month < 1 || read.month > 12)
            return true;  // a rule by day of year: standard time is shown
        at = text.find_first_of(",/", at + 1);
        if (at != std::string::npos && text[at] == '/') {
            ++at;
            if (!take_clock(text, at, read.seconds)) return false;
        }
        *day = read;
    }
    return true;
}

int Zone::offset_seconds(Utc utc) const {
    const long long now = unix_seconds(utc);
    if (!transitions_.empty() && now < transitions_.front().at) return first_offset_;
    if (!transitions_.empty() && now < transitions_.back().at) {
        const auto after = std::upper_bound(
            transitions_.begin(), transitions_.end(), now,
            [](long long t, const Transition& transition) { return t < transition.at; });
        return std::prev(after)->offset;
    }
    if (!rule_.begin || !rule_.end) return rule_.standard;

    const long long year = year_of(now + rule_.standard);
    const auto instant = [&](const RuleDay& day, int offset) {
        const long long first = days_since_1970(year, day.month, 1);
        const auto weekday_of_first = static_cast<int>(((first + 4) % 7 + 7) % 7);
        long long date =
            first + (day.weekday - weekday_of_first + 7) % 7 + 7LL * (day.week - 1);
        const long long next_month =
            days_since_1970(day.month == 12 ? year + 1 : year, day.month % 12 + 1, 1);
        while (date >= next_month) date -= 7;
        return date * 86400 + day.seconds - offset;
    };
    const long long begin = instant(*rule_.begin, rule_.standard);
    const long long end = instant(*rule_.end, rule_.summer);
    const bool summer = begin < end ? now >= begin && now < end : now >= begin || now < end;
    return summer ? rule_.summer : rule_.standard;
}

namespace {

// The front of the ISO text of a local time, with a blank for the T.
std::string local_text(Utc local, std::size_t after_t) {
    std::string text = iso_utc(local);
    const std::size_t t = text.find('T');
    text[t] = ' ';
    return text.substr(0, t + after_t);
}

}  // namespace

std::string Zone::date_time(Utc utc) const {
    return local_text(plus_days(utc, (offset_seconds(utc) + 30) / 86400.0), 6);
}

std::string Zone::seconds(Utc utc) const {
    return local_text(plus_days(utc, (offset_seconds(utc) + 0.5) / 86400.0), 9);
}

std::string Zone::clock(Utc utc) const {
    const std::string text = date_time(utc);
    return text.substr(text.size() - 5);
}

Utc Zone::midnight(Utc utc) const {
    const double offset = offset_seconds(utc) / 86400.0;
    const Utc local = plus_days(utc, offset + 0.5);
    return plus_days({local.day, -0.5}, -offset);
}

}  // namespace app
