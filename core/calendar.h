// Calendar dates by whole-number arithmetic, exact over every year: for readers, civil clocks
// and checks of input. The exported DJ and JD keep their rule in doubles, which agrees with
// this one on every date that exists from JD 0 on.
#pragma once

#include <cstdint>

namespace solsys {

// Years are astronomical: 0 is 1 BC, -1 is 2 BC.
struct CivilDate {
    std::int64_t year;
    int month, day;

    friend constexpr bool operator==(const CivilDate&, const CivilDate&) = default;
};

// The Gregorian rule from 1582 October 15 on and the Julian one before; or one for all years.
enum class Calendar { historical, gregorian, julian };

constexpr std::int64_t kGregorianStart = 2299161;  // day number of 1582 October 15

namespace detail {

constexpr std::int64_t floor_div(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

// Days from the first of March of year 0 to a date, the leap days of centuries aside. Years
// that begin in March end with their leap day.
constexpr std::int64_t march_days(std::int64_t march_year, int month, int day) {
    const int m = month > 2 ? month - 3 : month + 9;
    return 365 * march_year + floor_div(march_year, 4) + (153 * m + 2) / 5 + day - 1;
}

constexpr bool is_gregorian(const CivilDate& date, Calendar calendar) {
    if (calendar != Calendar::historical) return calendar == Calendar::gregorian;
    if (date.year != 1582) return date.year > 1582;
    return date.month != 10 ? date.month > 10 : date.day >= 15;
}

}  // namespace detail

// The Julian day number that begins at noon of a date; its midnight is half a day earlier. Any
// month from 1 to 12 and any day count: those beyond the month run on.
// Richards 2013, in Urban & Seidelmann, Explanatory Supplement to the Astronomical Almanac,
// on calendars.
constexpr std::int64_t day_number(const CivilDate& date,
                                  Calendar calendar = Calendar::historical) {
    constexpr std::int64_t kJulianMarch0 = 1721118;  // of year 0, Julian calendar
    const std::int64_t y = date.month > 2 ? date.year : date.year - 1;
    const std::int64_t days = kJulianMarch0 + detail::march_days(y, date.month, date.day);
    if (!detail::is_gregorian(date, calendar)) return days;
    return days + 2 - detail::floor_div(y, 100) + detail::floor_div(y, 400);
}

// The date on whose noon a day number begins.
constexpr CivilDate civil_date(std::int64_t number, Calendar calendar = Calendar::historical) {
    constexpr std::int64_t kJulianMarch0 = 1721118, kGregorianMarch0 = 1721120;
    constexpr std::int64_t kDaysIn400Years = 146097;
    const bool gregorian = calendar == Calendar::gregorian ||
                           (calendar == Calendar::historical && number >= kGregorianStart);

    // Years and days since March of year 0; leap days of centuries first, where they count.
    std::int64_t days = number - (gregorian ? kGregorianMarch0 : kJulianMarch0);
    std::int64_t years = 0;
    if (gregorian) {
        const std::int64_t cycle = detail::floor_div(days, kDaysIn400Years);
        days -= cycle * kDaysIn400Years;
        std::int64_t century = days / 36524;
        if (century > 3) century = 3;  // the 400th year's own leap day
        days -= century * 36524;
        years = 400 * cycle + 100 * century;
    }
    const std::int64_t quad = detail::floor_div(days, 1461);
    days -= quad * 1461;
    std::int64_t year = days / 365;
    if (year > 3) year = 3;
    days -= year * 365;
    years += 4 * quad + year;

    const int m = static_cast<int>((5 * days + 2) / 153);  // months since March
    const int day = static_cast<int>(days) - (153 * m + 2) / 5 + 1;
    return {m < 10 ? years : years + 1, m < 10 ? m + 3 : m - 9, day};
}

// Whether a calendar has the date: the ten days left out in 1582 do not exist.
constexpr bool exists(const CivilDate& date, Calendar calendar = Calendar::historical) {
    if (date.month < 1 || date.month > 12 || date.day < 1 || date.day > 31) return false;
    return civil_date(day_number(date, calendar), calendar) == date;
}

}  // namespace solsys
