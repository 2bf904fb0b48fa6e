#include "solsys/calendar.h"

#include <cmath>
#include <limits>

#include "core/instant.h"

namespace {

constexpr double kGregorianStart = 2299161;  // noon of 1582 October 15

bool is_gregorian(int year, int month, int day) {
    if (year != 1582) return year > 1582;
    if (month != 10) return month > 10;
    return day >= 15;
}

// False for NaN too.
bool fits_short(double value) {
    return value >= std::numeric_limits<short>::min() &&
           value <= std::numeric_limits<short>::max();
}

void store(solsys::Instant t, int* day, double* fraction) {
    *day = t.day;
    *fraction = t.fraction;
}

struct ClockTime {
    double hours, minutes, seconds;  // the first two whole
};

// A part of a day on the clock; seconds within 0.0001 of 60 are the next minute's 0.
ClockTime clock_time(double day_fraction) {
    const double hours = 24 * day_fraction;
    ClockTime clock{std::trunc(hours), 0, 0};
    const double minutes = 60 * (hours - clock.hours);
    clock.minutes = std::trunc(minutes);
    clock.seconds = 60 * (minutes - clock.minutes);
    if (std::fabs(clock.seconds - 60) > 0.0001) return clock;
    if (clock.minutes + 1 == 60) return {clock.hours + 1, 0, 0};
    return {clock.hours, clock.minutes + 1, 0};
}

}  // namespace

void DJ(int* day, double* fraction, short year, short month, short day_of_month, short hour,
        short minute, double second) {
    const int astronomical_year = year < 1 ? year + 1 : year;
    int y = astronomical_year;
    int m = month;
    if (m < 3) {
        y -= 1;
        m += 12;
    }
    double b = 0;
    if (is_gregorian(astronomical_year, month, day_of_month)) {
        const double century = y / 100.0;
        b = std::trunc(2 - century + std::trunc(century * 0.25));
    }
    const double c = std::trunc(y < 0 ? 365.25 * y - 0.75 : 365.25 * y);
    const double d = std::trunc(30.6001 * (m + 1));
    const double jd = c + d + day_of_month + 1720994.5 + b +
                      ((hour * 60.0 + minute) * 60.0 + second) / 86400.0;
    store(solsys::split(jd), day, fraction);
}

void JD(int day, double fraction, short* year, short* month, short* day_of_month,
        double* day_fraction, short* hour, short* minute, double* second) {
    *year = *month = *day_of_month = *hour = *minute = 0;
    *day_fraction = *second = 0;

    double whole = day;
    if (fraction < 0) {
        const double days = std::trunc(fraction);
        whole += days - 1;
        fraction = fraction - days + 1;
    }
    const double j = whole + fraction + 0.5;
    const double z = std::trunc(j);
    double a = z;
    if (z >= kGregorianStart) {
        const double alpha = std::trunc((z - 1867216.25) / 36524.25);
        a = z + 1 + alpha - std::floor(alpha / 4);
    }
    const double b = a + 1524;
    const double c = std::trunc((b - 122.1) / 365.25);
    const double d = std::trunc(365.25 * c);
    const double e = std::trunc((b - d) / 30.6001);

    const double date = b - d - std::trunc(30.6001 * e) + (j - z);
    const double m = e < 13.5 ? e - 1 : e - 13;
    double y = m > 2.5 ? c - 4716 : c - 4715;
    if (y < 1) y -= 1;  // historical: the year before 1 is -1

    if (!fits_short(y)) return;

    const double whole_date = std::trunc(date);
    const ClockTime clock = clock_time(date - whole_date);
    *year = static_cast<short>(y);
    *month = static_cast<short>(m);
    *day_of_month = static_cast<short>(whole_date);
    *day_fraction = date - whole_date;
    *hour = static_cast<short>(clock.hours);
    *minute = static_cast<short>(clock.minutes);
    *second = clock.seconds;
}

void BJ(char kind, short year, int* day, double* fraction) {
    const bool julian = kind == 'J' || kind == 'j';
    store(solsys::split(julian ? 2451545.0 + (year - 2000) * 365.25
                               : 2415020.31352 + (year - 1900) * 365.242198781),
          day, fraction);
}

void Adjust_JD(int* day, double* fraction) {
    constexpr double kEpoch = 2400000;
    const double t = (*day - kEpoch) + *fraction;
    if (!(std::fabs(t) < solsys::kLargestDay)) return;
    const double whole = std::trunc(t);
    *fraction = t - whole;
    *day = static_cast<int>(whole + kEpoch);
}
