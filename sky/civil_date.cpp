// Dates of the Julian and the Gregorian calendar and Julian day numbers, for all years.
#include <algorithm>

#include "sky/text.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {
namespace {

constexpr int kGregorianFrom = 2299161;  // 1582 October 15
constexpr int kLargestYear = 5000000;    // keeps day numbers within an int

constexpr long long floor_div(long long a, long long b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0));
}

// Years that begin with March put the leap day last (Richards in Urban & Seidelmann 2013,
// Explanatory Supplement, 15.11).
int day_number(int year, int month, int day, bool gregorian) {
    const int shifted = month - 3;
    const long long y = year + floor_div(shifted, 12);
    const long long m = shifted - 12 * floor_div(shifted, 12);
    const long long days = day + (153 * m + 2) / 5 + 365 * y + floor_div(y, 4) + 1721117;
    return static_cast<int>(gregorian ? days - floor_div(y, 100) + floor_div(y, 400) + 2
                                      : days);
}

}  // namespace

int julian_day_number(const CivilDate& date) {
    const int year = std::clamp(date.year, -kLargestYear, kLargestYear);
    const int gregorian = day_number(year, date.month, date.day, true);
    return gregorian >= kGregorianFrom ? gregorian
                                       : day_number(year, date.month, date.day, false);
}

CivilDate date_of_julian_day(int number) {
    long long days =
        std::clamp(number, -1800000000, 1800000000) - 1721118LL;  // since March 1, 0
    if (number >= kGregorianFrom) {
        // To the day count of the Julian calendar: a day for each century year that is none.
        const long long centuries = floor_div(4 * (days - 2) + 3, 146097);
        days += centuries - floor_div(centuries, 4) - 2;
    }
    auto year = static_cast<int>(floor_div(4 * days + 3, 1461));
    const auto day_of_year = static_cast<int>(days - floor_div(1461LL * year, 4));
    const int month = (5 * day_of_year + 2) / 153;
    const int day = day_of_year - (153 * month + 2) / 5 + 1;
    if (month >= 10) ++year;
    return {year, month < 10 ? month + 3 : month - 9, day};
}

std::string to_string(const CivilDate& date) {
    std::string year = padded(date.year, 4);
    if (date.year > 9999) year.insert(0, 1, '+');
    return year + "-" + padded(date.month, 2) + "-" + padded(date.day, 2);
}

}  // namespace solsys::sky
