#include "solsys/time_scales.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/csv.h"

namespace {

TEST(DeltaT, ReferenceValues) {
    for (const auto& row : solsys::test::read_csv(SOLSYS_TEST_DATA "/reference/delta_t.csv")) {
        const double expected = std::stod(row[3]);
        // The single-precision steps are the same; only the order of a few double sums differs.
        EXPECT_NEAR(ET_UT::Get(std::stoi(row[1]), std::stod(row[2])), expected,
                    1e-14 * std::fabs(expected))
            << row[0];
    }
}

TEST(DeltaT, EveryKeyOfTheTableStartsItsValue) {
    const auto rows = solsys::test::read_csv(SOLSYS_TEST_DATA "/delta_t.csv");
    ASSERT_EQ(rows.size(), 233U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int day = std::stoi(rows[i][2]);
        EXPECT_EQ(ET_UT::Get(day, 0.5), std::stod(rows[i][4])) << rows[i][0];
        if (i == 0) continue;
        EXPECT_EQ(ET_UT::Get(day, 0.5 - 1e-5), std::stod(rows[i - 1][4])) << rows[i][0];
    }
}

TEST(DeltaT, AnswersInstantsOutsideEveryCalendar) {
    EXPECT_EQ(ET_UT::Get(2147483647, 0.9), 69.184);
    const double u = (2000 - 1820 + (-2147483648.0 - 2451545) / 365.25) / 100;
    EXPECT_NEAR(ET_UT::Get(-2147483647 - 1, 0.0), 32 * u * u - 20, 1e-6 * 32 * u * u);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {infinity, -infinity, std::nan("")})
        EXPECT_TRUE(std::isnan(ET_UT::Get(2451545, bad)));
}

TEST(DynamicalTime, AddsDeltaTToTheSplitDate) {
    const struct {
        double jd;
        int day;
        double fraction;
    } cases[] = {{2451545.0, 2451545, 64.184 / 86400},
                 {2457754.5, 2457754, 0.5008007407407408},
                 // past the end of the day: not brought back
                 {2457754.9999, 2457754, 2457754.9999 - 2457754 + 69.184 / 86400},
                 {1e300, 0, 1e300}};
    for (const auto& c : cases) {
        int day = 0;
        double fraction = 0;
        ET_UT::UT2ET(c.jd, day, fraction);
        EXPECT_EQ(day, c.day);
        EXPECT_NEAR(fraction, c.fraction, c.day == 2457754 ? 1e-15 : 1e-18);
    }
}

TEST(DeltaTModel, IsHeldWhileItHasUsers) {
    ASSERT_EQ(ET_UT::GetSegments(), nullptr);
    ET_UT::Finish();  // without a user: nothing to end
    EXPECT_TRUE(ET_UT::Init(nullptr));
    EXPECT_TRUE(ET_UT::Init(""));
    ET_UT::Finish();
    const ET_UT::ET_UT_Poly* segments = ET_UT::GetSegments();
    ASSERT_NE(segments, nullptr);

    // The last segment goes through the table's last value a year after its last key.
    const ET_UT::ET_UT_Poly& last = segments[5];
    EXPECT_NEAR(last.c0, -56.26619796010438, 1e-12);
    const double T = (2457754.5 + 365.25 - last.start_day) / 36525;
    EXPECT_NEAR(last.c0 + T * (last.c1 + T * (last.c2 + T * last.c3)), 69.184, 1e-12);
    // The others follow each other, centuries from J2000, and meet to their rounding.
    for (int i = 1; i < 5; ++i) {
        EXPECT_EQ(segments[i].start_day, segments[i - 1].end_day);
        const auto at_joint = [T = (segments[i].start_day - 2451545) / 36525.0](const auto& s) {
            return s.c0 + T * (s.c1 + T * (s.c2 + T * s.c3));
        };
        EXPECT_NEAR(at_joint(segments[i]), at_joint(segments[i - 1]), 1.2) << i;
    }

    ET_UT::Finish();
    EXPECT_EQ(ET_UT::GetSegments(), nullptr);
    EXPECT_EQ(ET_UT::Get(2451545, 0.0), 64.184);  // needs no user
}

}  // namespace
