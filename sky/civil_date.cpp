// Dates of the Julian and the Gregorian calendar and Julian day numbers, for all years.
#include <algorithm>

#include "core/calendar.h"
#include "sky/text.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {
namespace {

constexpr std::int64_t kLargestYear = 5000000;         // keeps day numbers within an int
constexpr std::int64_t kLargestCivilDay = 1800000000;  // and years

}  // namespace

int julian_day_number(const CivilDate& date) {
    // Months are taken on into years, days counted on from the first of the month.
    const std::int64_t months = 12LL * date.year + date.month - 1;
    const std::int64_t years = detail::floor_div(months, 12);
    const solsys::CivilDate first{std::clamp(years, -kLargestYear, kLargestYear),
                                  static_cast<int>(months - 12 * years) + 1, 1};
    const auto number = [&](Calendar calendar) {
        return static_cast<int>(std::clamp(day_number(first, calendar) + date.day - 1,
                                           -kLargestCivilDay, kLargestCivilDay));
    };
    const int gregorian = number(Calendar::gregorian);
    return gregorian >= kGregorianStart ? gregorian : number(Calendar::julian);
}

CivilDate date_of_julian_day(int number) {
    const auto date =
        civil_date(std::clamp(std::int64_t{number}, -kLargestCivilDay, kLargestCivilDay));
    return {static_cast<int>(date.year), date.month, date.day};
}

std::string to_string(const CivilDate& date) {
    std::string year = padded(date.year, 4);
    if (date.year > 9999) year.insert(0, 1, '+');
    return year + "-" + padded(date.month, 2) + "-" + padded(date.day, 2);
}

}  // namespace solsys::sky
