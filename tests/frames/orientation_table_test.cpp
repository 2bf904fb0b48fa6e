// Tables of the Earth's orientation as they come: holes, disorder, repetitions, leap seconds.
#include "frames/orientation_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace solsys {
namespace {

// UT1 - TAI and the pole as smooth functions of the date; UTC has its leap seconds.
EarthOrientationRow truth(double mjd, const LeapSeconds& leap) {
    const double t = mjd - 57754;
    return {mjd, -36.6 - 0.0012 * t + 1e-6 * t * t + leap.tai_minus_utc(mjd),
            0.1 + 1e-3 * t + 2e-6 * t * t, 0.3 - 1e-3 * t};
}

std::vector<EarthOrientationRow> daily(int from, int to, const LeapSeconds& leap) {
    std::vector<EarthOrientationRow> rows;
    for (int mjd = from; mjd <= to; ++mjd) rows.push_back(truth(mjd, leap));
    return rows;
}

TEST(OrientationTable, InterpolatesAcrossALeapSecondAndTellsWhatWasWrong) {
    const LeapSeconds leap;
    auto rows = daily(57740, 57770, leap);
    std::swap(rows[3], rows[4]);       // disorder
    rows.push_back({57745, 0, 0, 0});  // repeated below: the last one counts
    rows.push_back(truth(57745, leap));
    rows.push_back({std::nan(""), 0, 0, 0});  // rejected
    rows.push_back({57746, 12, 0, 0});
    const auto later = daily(57790, 57791, leap);  // after a hole
    rows.insert(rows.end(), later.begin(), later.end());

    OrientationTable table;
    const EarthOrientationReport report = table.set(rows, leap);
    EXPECT_EQ(report.rows, 33);
    EXPECT_EQ(report.rejected, 2);
    EXPECT_EQ(report.repeated, 2);
    EXPECT_EQ(report.out_of_order, 2);
    EXPECT_EQ(report.holes, 1);
    EXPECT_EQ(report.first_mjd, 57740);
    EXPECT_EQ(report.last_mjd, 57791);

    // The functions are parabolas at most: four rows give them to rounding, two in a straight
    // line.
    for (double mjd :
         {57740.0, 57740.3, 57753.2, 57753.99, 57754.0, 57754.7, 57769.9, 57770.0}) {
        const auto row = table.at(mjd, leap);
        ASSERT_TRUE(row) << mjd;
        const EarthOrientationRow expected = truth(mjd, leap);
        EXPECT_NEAR(row->ut1_minus_utc, expected.ut1_minus_utc, 1e-12) << mjd;
        EXPECT_NEAR(row->x, expected.x, 1e-13) << mjd;
        EXPECT_NEAR(row->y, expected.y, 1e-13) << mjd;
    }
    EXPECT_NEAR(table.at(57790.5, leap)->y, truth(57790.5, leap).y, 1e-13);
    for (double mjd : {57739.9, 57770.1, 57789.9, 57791.1, std::nan("")})
        EXPECT_FALSE(table.at(mjd, leap)) << mjd;
    EXPECT_EQ(table.set({}, leap).rows, 0);
    EXPECT_TRUE(table.empty());
}

}  // namespace
}  // namespace solsys
