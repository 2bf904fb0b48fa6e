// Tables of the Earth's orientation: excerpts of two that were made independently, in different
// formats, tell the same; lines that are damaged are told.
#include "io/earth_orientation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

namespace solsys_io {
namespace {

const std::string kReference = SOLSYS_TEST_DATA "/reference/";

OrientationFile load(const std::string& name) {
    std::ifstream in(kReference + name);
    return read_orientation(in);
}

TEST(EarthOrientationFiles, TwoFormatsTellTheSame) {
    const OrientationFile finals = load("finals2000A_excerpt.txt");
    const OrientationFile c04 = load("eopc04_excerpt.txt");
    EXPECT_EQ(finals.format, OrientationFormat::kFinals2000A);
    EXPECT_EQ(c04.format, OrientationFormat::kC04);
    EXPECT_EQ(finals.rows.size(), 16U);
    EXPECT_EQ(finals.summary.problems + c04.summary.problems, 0U);
    int common = 0;
    for (const auto& a : finals.rows) {
        for (const auto& b : c04.rows) {
            if (a.mjd_utc != b.mjd_utc) continue;
            EXPECT_NEAR(a.ut1_minus_utc, b.ut1_minus_utc, 1e-4);
            EXPECT_NEAR(a.x, b.x, 5e-4);
            EXPECT_NEAR(a.y, b.y, 5e-4);
            ++common;
        }
    }
    EXPECT_GE(common, 10);
}

TEST(EarthOrientationFiles, NewerC04HasTheHourToo) {
    std::istringstream in(
        "# YR  MM  DD  HH       MJD        x(\")        y(\")  UT1-UTC(s)       dX(\")\n"
        "1962   1   1   0  37665.00   -0.012700    0.213000   0.0326338    0.000000\n");
    const OrientationFile file = read_orientation(in);
    ASSERT_EQ(file.rows.size(), 1U);
    EXPECT_EQ(file.format, OrientationFormat::kC04Hours);
    EXPECT_EQ(file.rows[0].mjd_utc, 37665);
    EXPECT_EQ(file.rows[0].ut1_minus_utc, 0.0326338);
}

TEST(EarthOrientationFiles, DamagedLinesAreToldAndTruncatedOnesReadNothingElse) {
    const std::string good =
        "16 2 1 57359.00 I -0.003225 0.000031  0.299494 0.000025  I 0.0262864 0.0000042";
    for (std::size_t length = 0; length <= good.size(); ++length) {
        const auto line =
            parse_orientation(good.substr(0, length), OrientationFormat::kFinals2000A);
        if (line.row) {
            EXPECT_EQ(line.row->mjd_utc, 57359);
        }
        orientation_format(good.substr(0, length));
    }
    std::istringstream in(
        "2015  12   3  57359  -0.0032  0.2995  0.0263  0.0013\n"
        "2015  12   4  57361  -0.0032  0.2995  0.0263  0.0013\n"  // another day's number
        "2015  12   5  57361  -0.0032  nan     0.0263  0.0013\n"
        "2015  12   6\n"
        "\n"
        "2015  12   7  57363  -0.0032  0.2995  0.0263  0.0013\n");
    std::string told;
    const OrientationFile file =
        read_orientation(in, [&](const Problem& p) { told += std::to_string(p.line) + ' '; });
    EXPECT_EQ(file.rows.size(), 2U);
    EXPECT_EQ(told, "2 3 4 ");
}

TEST(LeapSecondFiles, AgreeWithTheBuiltInTable) {
    std::ifstream in(kReference + "leap_seconds_list.txt");
    const LeapSecondFile file = read_leap_seconds(in);
    EXPECT_EQ(file.rows.size(), 28U);
    for (const auto& row : file.rows)
        EXPECT_EQ(TaiMinusUtc(row.mjd_utc), row.tai_minus_utc) << row.mjd_utc;
    ASSERT_TRUE(file.valid_until_mjd);
    EXPECT_EQ(*file.valid_until_mjd, 59028);  // 2020 June 28
    std::istringstream bad("2272060800 10\n2287785600\n");
    EXPECT_EQ(read_leap_seconds(bad).summary.problems, 1U);
}

}  // namespace
}  // namespace solsys_io
