// Packed designations and dates: published examples, and the calendar of the library.
#include "io/designations.h"

#include <gtest/gtest.h>

#include <utility>

#include "io/fields.h"
#include "solsys/calendar.h"

namespace solsys_io {
namespace {

TEST(PackedDesignation, IsUnpackedAsPublished) {
    const std::pair<const char*, std::uint32_t> numbers[] = {
        {"00001", 1},       {"03202", 3202},    {"A0345", 100345}, {"a0017", 360017},
        {"K3289", 203289},  {"z9999", 619999},  {"~0000", 620000}, {"~000z", 620061},
        {"~AZaz", 3140113}, {"~zzzz", 15396335}};
    for (const auto& [packed, number] : numbers) EXPECT_EQ(unpack_number(packed), number);
    const std::pair<const char*, const char*> provisional[] = {
        {"J95X00A", "1995 XA"},    {"J95X01L", "1995 XL1"},   {"J95F13B", "1995 FB13"},
        {"J98SA8Q", "1998 SQ108"}, {"J98SC7V", "1998 SV127"}, {"J98SG2S", "1998 SS162"},
        {"K99AJ3Z", "2099 AZ193"}, {"K08Aa0A", "2008 AA360"}, {"K07Tf8A", "2007 TA418"},
        {"PLS2040", "2040 P-L"},   {"T1S3138", "3138 T-1"},   {"T3S4101", "4101 T-3"},
        {"_QC0000", "2026 CA620"}, {"_QC0aEM", "2026 CZ6190"}};
    for (const auto& [packed, words] : provisional)
        EXPECT_EQ(unpack_provisional(packed), words);
}

TEST(PackedDesignation, RefusesEverythingElse) {
    for (const char* text : {"", "1", "1234", "123456", "0001x", "~00-0", "*0000", "    1"})
        EXPECT_FALSE(unpack_number(text)) << text;
    for (const char* text : {"", "J95X00", "J95I00A", "J95X0AA", "J95X00I", "M95X00A",
                             "J9xX00A", "PLS20x0", "_QI0000", "_Q-0000", "_QC00?0", "J95Z00A"})
        EXPECT_FALSE(unpack_provisional(text)) << text;
    for (const char* text : {"", "K134", "K13DI", "K1340", "K13", "K132U", "H134I", "K134Iz"})
        EXPECT_FALSE(unpack_date(text)) << text;
}

double calendar_date(short year, short month, short day_of_month) {
    int day = 0;
    double fraction = 0;
    DJ(&day, &fraction, year, month, day_of_month, 0, 0, 0);
    return day + fraction;
}

TEST(PackedDate, AgreesWithTheCalendar) {
    const struct {
        const char* packed;
        short year, month, day;
    } dates[] = {{"J9611", 1996, 1, 1},  {"J961A", 1996, 1, 10},  {"J969U", 1996, 9, 30},
                 {"J96A1", 1996, 10, 1}, {"K01AM", 2001, 10, 22}, {"K134I", 2013, 4, 18},
                 {"K202T", 2020, 2, 29}, {"I00C1", 1800, 12, 1},  {"L00CV", 2100, 12, 31}};
    for (const auto& [packed, year, month, day] : dates)
        EXPECT_EQ(unpack_date(packed), calendar_date(year, month, day)) << packed;
}

TEST(JulianDate, AgreesWithTheCalendarThroughTheReform) {
    for (short year = 1560; year < 1620; ++year) {
        for (short month = 1; month <= 12; ++month) {
            for (short day_of_month = 1; day_of_month <= 28; ++day_of_month) {
                const auto jd = julian_date(year, month, day_of_month);
                if (year == 1582 && month == 10 && day_of_month > 4 && day_of_month < 15) {
                    EXPECT_FALSE(jd);
                    continue;
                }
                ASSERT_EQ(jd, calendar_date(year, month, day_of_month)) << year << " " << month;
            }
        }
    }
    EXPECT_TRUE(julian_date(1500, 2, 29));
    EXPECT_FALSE(julian_date(1900, 2, 29));
    EXPECT_FALSE(julian_date(2021, 2, 29));
    EXPECT_FALSE(julian_date(2021, 0, 1));
}

}  // namespace
}  // namespace solsys_io
