// Calendar dates and Julian dates, against reference dates, day counting and edge cases.
#include "solsys/calendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "core/calendar.h"
#include "tests/support/csv.h"

namespace {

using solsys::test::read_csv;

struct Date {
    short year = 7, month = 7, day = 7, hour = 7, minute = 7;
    double day_fraction = 7, second = 7;
};
Date date_of(int day, double fraction) {
    Date d;
    JD(day, fraction, &d.year, &d.month, &d.day, &d.day_fraction, &d.hour, &d.minute,
       &d.second);
    return d;
}
struct Split {
    int day = -7;
    double fraction = -7;
};
Split split_of(short year, short month, short day, short hour = 0, short minute = 0,
               double second = 0) {
    Split s;
    DJ(&s.day, &s.fraction, year, month, day, hour, minute, second);
    return s;
}
short small(const std::string& cell) { return static_cast<short>(std::stoi(cell)); }

// Columns of a reference row from `first` on: date, fraction of the day, time.
void expect_date(const solsys::test::CsvRow& row, std::size_t first, const Split& s) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    const Date d = date_of(s.day, s.fraction);
    const short whole[] = {d.year, d.month, d.day, 0, d.hour, d.minute};
    for (const std::size_t i : {0, 1, 2, 4, 5}) EXPECT_EQ(whole[i], small(row[first + i])) << i;
    EXPECT_NEAR(d.day_fraction, std::stod(row[first + 3]), 1e-9);
    // A double Julian date resolves 4e-5 s; two roundings.
    EXPECT_NEAR(d.second, std::stod(row[first + 6]), 1e-4);
}

TEST(Calendar, ReferenceDatesGoThereAndBack) {
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/calendar_dates.csv")) {
        const Split s = split_of(small(row[0]), small(row[1]), small(row[2]), small(row[3]),
                                 small(row[4]), std::stod(row[5]));
        EXPECT_EQ(s.day, std::stoi(row[6]));
        EXPECT_NEAR(s.fraction, std::stod(row[7]), 5e-10);
        expect_date(row, 8, s);
    }
    // The edges of the inverse.
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/julian_dates.csv"))
        expect_date(row, 2, {std::stoi(row[0]), std::stod(row[1])});
}

// Counting days needs no formula: the date of every midnight follows that of the one before.
TEST(Calendar, EveryDayFollowsTheOneBefore) {
    int year = -4713, month = 1, day = 2;
    constexpr int kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int jd = 0; jd < 2700000; ++jd) {
        const Date d = date_of(jd, 0.5);
        ASSERT_TRUE(d.year == year && d.month == month && d.day == day && d.hour == 0) << jd;
        if (jd % 11 == 0) {
            const Split s = split_of(d.year, d.month, d.day);
            ASSERT_TRUE(s.day == jd && s.fraction == 0.5) << jd;
        }
        const int astronomical = year < 0 ? year + 1 : year;
        ASSERT_EQ(solsys::civil_date(jd + 1), (solsys::CivilDate{astronomical, month, day}));
        if (year == 1582 && month == 10 && day == 4) day = 14;  // the reform
        const bool gregorian = jd >= 2299160;
        const bool leap = astronomical % 4 == 0 &&
                          (!gregorian || astronomical % 100 != 0 || astronomical % 400 == 0);
        if (++day > kLengths[month - 1] + (leap && month == 2 ? 1 : 0)) {
            day = 1;
            if (++month > 12) {
                month = 1;
                if (++year == 0) year = 1;
            }
        }
    }
}

TEST(Calendar, WhatIsNoDateGivesZeros) {
    const double infinity = std::numeric_limits<double>::infinity();
    const Split bad[] = {{2451545, std::nan("")}, {2451545, infinity}, {0, -infinity},
                         {2451545, 1e300},        {0, -1e300},         {2147483647, 0.9},
                         {-2147483647 - 1, -0.9}};
    for (const auto& [day, fraction] : bad) {
        const Date d = date_of(day, fraction);
        EXPECT_TRUE(d.year == 0 && d.month == 0 && d.second == 0) << day << " " << fraction;
    }
    EXPECT_EQ(split_of(2000, 1, 1, 0, 0, 1e300).day, 0);
    EXPECT_EQ(split_of(2000, 1, 1, 0, 0, infinity).fraction, infinity);
    EXPECT_TRUE(std::isnan(split_of(2000, 1, 1, 0, 0, std::nan("")).fraction));
    const Split extreme = split_of(-32768, -32768, -32768, -32768, -32768, -1e9);
    EXPECT_TRUE(std::isfinite(extreme.day + extreme.fraction));
}

TEST(Epoch, IsSplit) {
    const struct {
        char kind;
        short year;
        int day;
        double fraction;
    } epochs[] = {{'B', 1950, 2433282, 0.42345905}, {'b', 2000, 2451544, 0.53339810},
                  {'B', 1850, 2396758, 0.20358095}, {'x', 1984, 2445700, 0.658217604},
                  {'j', 2000, 2451545, 0},          {'J', 1900, 2415020, 0},
                  {'J', -1000, 1355795, 0}};
    for (const auto& epoch : epochs) {
        Split s;
        BJ(epoch.kind, epoch.year, &s.day, &s.fraction);
        EXPECT_EQ(s.day, epoch.day);
        EXPECT_NEAR(s.fraction, epoch.fraction, 5e-10);
    }
}

TEST(AdjustJD, MovesWholeDaysAndKeepsTheInstant) {
    for (const Split& c :
         {Split{2451544, 1.25}, {2451545, -3.75}, {2451545, 0.1}, {2451545, -1e-9}}) {
        Split s = c;
        Adjust_JD(&s.day, &s.fraction);
        EXPECT_TRUE(s.fraction >= 0 && s.fraction < 1) << s.fraction;
        // The sum from JD 2400000 on resolves 7e-12 day.
        EXPECT_NEAR((s.day - c.day) + (s.fraction - c.fraction), 0, 1e-11);
    }
    Split early{2399999, 0.5}, wild{5, 1e300};
    Adjust_JD(&early.day, &early.fraction);
    EXPECT_TRUE(early.day == 2400000 && early.fraction == -0.5);
    Adjust_JD(&wild.day, &wild.fraction);
    EXPECT_TRUE(wild.day == 5 && wild.fraction == 1e300);
}

}  // namespace
