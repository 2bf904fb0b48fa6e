#include "solsys/sky/instant.h"

#include <chrono>
#include <cmath>

#include "core/constants.h"
#include "sky/text.h"
#include "sky/units.h"
#include "solsys/sky/zone.h"
#include "solsys/time_scales.h"

namespace solsys::sky {
namespace {

constexpr double kLargestDay = 2e9;

JulianDate normalised(double day, double fraction) {
    const double whole = std::floor(fraction);
    if (!(std::fabs(day + whole) <= kLargestDay)) return {0, 0};
    JulianDate date{static_cast<int>(day + whole), fraction - whole};
    // A negative fraction too small to be told from 1 at the other end.
    if (date.fraction >= 1) date = {date.day + 1, 0};
    return date;
}

JulianDate split(double jd) {
    const double day = std::floor(jd);
    return normalised(day, jd - day);
}

}  // namespace

Instant Instant::from_utc(JulianDate utc) {
    const JulianDate date = normalised(utc.day, utc.fraction);
    Instant t;
    t.day_ = date.day;
    t.fraction_ = date.fraction;
    return t;
}

Instant Instant::from_utc(double jd) { return from_utc(split(jd)); }

Instant Instant::from_tt(JulianDate tt) {
    const JulianDate date = normalised(tt.day, tt.fraction);
    // Delta T is a step function of the calendar: two passes settle it.
    double seconds = ET_UT::Get(date.day, date.fraction);
    seconds = ET_UT::Get(date.day, date.fraction - seconds / kSecondsPerDay);
    return from_utc(JulianDate{date.day, date.fraction - seconds / kSecondsPerDay});
}

Instant Instant::from_tt(double jd) { return from_tt(split(jd)); }

Instant Instant::now() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return from_utc(kUnixEpochJd +
                    std::chrono::duration<double>(since).count() / kSecondsPerDay);
}

double Instant::delta_t_seconds() const { return ET_UT::Get(day_, fraction_); }

JulianDate Instant::tt() const {
    return normalised(day_, fraction_ + delta_t_seconds() / kSecondsPerDay);
}

Instant Instant::plus_days(double days) const {
    const double whole = std::floor(days);
    const JulianDate date = normalised(day_ + whole, fraction_ + (days - whole));
    return from_utc(date);
}

double days_between(const Instant& from, const Instant& to) {
    return (to.utc().day - from.utc().day) + (to.utc().fraction - from.utc().fraction);
}

std::string Instant::iso(int decimals) const {
    std::string text = Zone().iso(*this, decimals);
    return text.replace(text.rfind('+'), std::string::npos, "Z");
}

std::optional<Instant> Instant::from_iso(std::string_view text) {
    if (text.find_first_of("-T") == std::string_view::npos && text.size() != 8)
        return std::nullopt;
    if (text.find(':') == 2 || text.find(':') == 3) return std::nullopt;  // jd:, mjd:
    if (const auto t = parse_time(text)) return *t;
    return std::nullopt;
}

}  // namespace solsys::sky
