#include "io/fields.h"

namespace solsys_io {
namespace {

bool is_gregorian(int year, int month, int day) {
    if (year != 1582) return year > 1582;
    if (month != 10) return month > 10;
    return day >= 15;
}

int days_in_month(int year, int month) {
    constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool gregorian = year > 1582;
    const bool leap = year % 4 == 0 && (!gregorian || year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : kDays[month - 1];
}

}  // namespace

std::optional<double> julian_date(int year, int month, int day) {
    // Four digits are what the formats hold.
    if (year < -4712 || year > 9999 || month < 1 || month > 12 || day < 1 ||
        day > days_in_month(year, month))
        return std::nullopt;
    if (year == 1582 && month == 10 && day > 4 && day < 15) return std::nullopt;

    // Years that begin in March, counted from March of year -4800, a multiple of 400.
    const int y = month > 2 ? year + 4800 : year + 4799;
    const int m = month > 2 ? month - 3 : month + 9;
    const int days = (153 * m + 2) / 5 + day - 1 + 365 * y + y / 4;
    const int number =
        is_gregorian(year, month, day) ? days - y / 100 + y / 400 - 32044 : days - 32082;
    return number - 0.5;
}

}  // namespace solsys_io
