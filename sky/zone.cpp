#include "solsys/sky/zone.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "sky/text.h"
#include "sky/units.h"
#include "sky/zone_rules.h"

namespace solsys::sky {
namespace {

constexpr const char* kSystemZones = "/usr/share/zoneinfo/";
constexpr int kLargestUtOffset = 15 * 3600;

long long unix_seconds(const Instant& t) {
    return std::llround(((t.utc().day - kUnixEpochJd) + t.utc().fraction) * 86400.0);
}

std::optional<Zone::Rules> system_rules(std::string_view name) {
    // Nothing but a name: no way out of the folder.
    if (name.find("..") != std::string_view::npos || name.starts_with('/') ||
        name.find('\\') != std::string_view::npos)
        return std::nullopt;
    const std::string path = kSystemZones + std::string(name);
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;  // "Europe"
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return read_zone_file(bytes);
}

// Local time at a UT offset [s, east positive] as a Julian date; to a nanosecond, so that a
// midnight that came from a date reads as one.
JulianDate local_time(const Instant& t, double ut_offset) {
    constexpr double kPerDay = 86400e9;
    JulianDate local = t.plus_seconds(ut_offset).utc();
    local.fraction = std::round(local.fraction * kPerDay) / kPerDay;
    return local;
}

// The noon of the civil day of a local time, and the part of the day since midnight.
struct DayAndTime {
    int day = 0;
    double since_midnight = 0;
};
DayAndTime day_and_time(JulianDate local) {
    const double shifted = local.fraction + 0.5;
    return shifted >= 1 ? DayAndTime{local.day + 1, shifted - 1}
                        : DayAndTime{local.day, shifted};
}

Failure no_zone(std::string_view name) {
    std::vector<std::string> close;
    suggest_zones(name, close);
    std::string message = "no time zone " + in_quotes(name) + ": ";
    message += close.empty()
                   ? "use an IANA name such as Europe/Oslo, an offset such as +02:00, "
                     "or UTC"
                   : "perhaps " + joined(close, " or ");
    return {message};
}

// Whole units of 10^-decimals seconds since midnight, rounded, and the day they belong to.
std::string time_text(JulianDate local, int decimals, const char* separator) {
    long long per_second = 1;
    for (int i = 0; i < decimals; ++i) per_second *= 10;
    DayAndTime at = day_and_time(local);
    auto units = std::llround(at.since_midnight * 86400.0 * static_cast<double>(per_second));
    if (units >= 86400 * per_second) units = 0, ++at.day;
    const long long seconds = units / per_second;
    std::string text = to_string(date_of_julian_day(at.day)) + separator +
                       padded(seconds / 3600, 2) + ":" + padded(seconds / 60 % 60, 2) + ":" +
                       padded(seconds % 60, 2);
    if (decimals > 0) text += "." + padded(units % per_second, decimals);
    return text;
}

}  // namespace

Zone::Zone() : rules_(std::make_shared<const Rules>()) {}

Result<Zone> Zone::find_compiled(std::string_view name) {
    const auto known = zone_name_in_table(name);
    auto rules = zone_rules_in_table(name);
    if (!known || !rules) return no_zone(name);
    Zone zone;
    zone.name_ = std::string(*known);
    zone.rules_ = std::make_shared<const Rules>(std::move(*rules));
    return zone;
}

Result<Zone> Zone::find(std::string_view name) {
    Zone zone;
    if (folded(name) == "utc" || folded(name) == "z" || folded(name) == "gmt") return zone;
    if (name.starts_with('+') || name.starts_with('-')) {
        std::string_view rest = name;
        const auto offset = take_clock(rest);
        if (!offset || !rest.empty() || std::abs(*offset) > kLargestUtOffset)
            return no_zone(name);
        Rules rules;
        rules.initial_offset = rules.standard_offset = rules.daylight_offset = *offset;
        zone.name_ = std::string(name);
        zone.rules_ = std::make_shared<const Rules>(rules);
        return zone;
    }
    // The table knows how names are written; the system knows the newest rules.
    const std::string_view known = zone_name_in_table(name).value_or(name);
    if (auto rules = system_rules(known)) {
        zone.name_ = std::string(known);
        zone.rules_ = std::make_shared<const Rules>(std::move(*rules));
        return zone;
    }
    return find_compiled(name);
}

int Zone::offset_seconds(const Instant& t) const { return rules_->offset_at(unix_seconds(t)); }

CivilDate Zone::date(const Instant& t) const {
    return date_of_julian_day(day_and_time(local_time(t, offset_seconds(t))).day);
}

CivilTime Zone::civil(const Instant& t) const {
    const DayAndTime at = day_and_time(local_time(t, offset_seconds(t)));
    const double seconds = at.since_midnight * 86400.0;
    const int minutes = static_cast<int>(seconds / 60);
    return {date_of_julian_day(at.day), minutes / 60, minutes % 60, seconds - 60.0 * minutes};
}

Instant Zone::instant(const CivilTime& time) const {
    const double of_day = (3600.0 * time.hour + 60.0 * time.minute + time.second) / 86400.0;
    const Instant as_utc =
        Instant::from_utc(JulianDate{julian_day_number(time.date), of_day - 0.5});
    // The offsets a day before and after are those on either side of a transition near by. A
    // local time that comes twice (a fold) is its first; one that is skipped (a gap) is read
    // by the offset before.
    const int before = offset_seconds(as_utc.plus_days(-1));
    const int after = offset_seconds(as_utc.plus_days(1));
    const Instant first = as_utc.plus_seconds(-before);
    if (offset_seconds(first) == before) return first;
    const Instant second = as_utc.plus_seconds(-after);
    return offset_seconds(second) == after ? second : first;
}

Span Zone::day(const CivilDate& date) const {
    const int number = julian_day_number(date);
    return {instant({date_of_julian_day(number)}), instant({date_of_julian_day(number + 1)})};
}

std::string Zone::date_time(const Instant& t) const {
    const std::string text = time_text(local_time(t, offset_seconds(t) + 30), 0, " ");
    // Cut, not rounded: half a minute has been added.
    return text.substr(0, text.size() - 3);
}

std::string Zone::clock(const Instant& t) const {
    const std::string text = date_time(t);
    return text.substr(text.size() - 5);
}

std::string Zone::seconds(const Instant& t) const {
    return time_text(local_time(t, offset_seconds(t)), 0, " ");
}

std::string Zone::iso(const Instant& t, int decimals) const {
    const int offset = offset_seconds(t);
    const int minutes = std::abs(offset) / 60;
    return time_text(local_time(t, offset), std::min(std::max(decimals, 0), 9), "T") +
           (offset < 0 ? "-" : "+") + padded(minutes / 60, 2) + ":" + padded(minutes % 60, 2);
}

}  // namespace solsys::sky
