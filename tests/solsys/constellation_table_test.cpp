#include "solsys/constellation_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "core/constants.h"
#include "tests/support/csv.h"

namespace solsys {
namespace {

struct Zone {
    double ra_low, ra_up, dec_low;
    int index;
};

// The published table, read here on its own.
const std::vector<Zone>& zones() {
    static const std::vector<Zone> table = [] {
        std::vector<Zone> out;
        for (const auto& row : test::read_csv(SOLSYS_TEST_DATA "/constellation_boundaries.csv"))
            out.push_back({stod(row[0]), stod(row[1]), stod(row[2]), stoi(row[3])});
        return out;
    }();
    return table;
}

// Hours and degrees as printed, so that angles on a boundary are those of the table.
void expect_the_scan(double ra_h, double dec_deg) {
    int expected = kNoConstellation;
    for (const Zone& z : zones()) {
        if (dec_deg < z.dec_low || ra_h < z.ra_low || ra_h >= z.ra_up) continue;
        expected = z.index;
        break;
    }
    ASSERT_EQ(constellation_of(ra_h * (kPi / 12.0), dec_deg * kDegree), expected)
        << ra_h << ' ' << dec_deg;
}

TEST(Constellation, BoundariesBelongToTheEastAndTheNorth) {
    for (const Zone& z : zones())
        for (const double ra_h : {z.ra_low, z.ra_up, 0.5 * (z.ra_low + z.ra_up)})
            for (const double dec : {z.dec_low, z.dec_low - 1e-9, z.dec_low + 1e-9})
                if (ra_h < 24.0 && dec >= -90.0) expect_the_scan(ra_h, dec);
}

TEST(Constellation, OddAnglesAreAnswered) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(constellation_of(1.0, std::nextafter(-kHalfPi, -2.0)), 57);
    EXPECT_EQ(constellation_of(1.0, std::nextafter(kHalfPi, 2.0)), 83);
    for (const auto& [odd, ra] :
         {std::pair{kTwoPi, 0.0}, {-1.0, kTwoPi - 1.0}, {-1e-20, 0.0}, {4 * kTwoPi + 1.0, 1.0}})
        EXPECT_EQ(constellation_of(odd, 0.1), constellation_of(ra, 0.1)) << odd;
    EXPECT_EQ(constellation_of(kNaN, 0.1), kNoConstellation);
    EXPECT_EQ(constellation_of(0.1, kNaN), kNoConstellation);
    EXPECT_EQ(constellation_of(1.0 / 0.0, 0.1), kNoConstellation);
}

}  // namespace
}  // namespace solsys
