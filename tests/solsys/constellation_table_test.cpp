#include "solsys/constellation_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/constants.h"

namespace solsys {
namespace {

struct Zone {
    double ra_low, ra_up, dec_low;
    int index;
};

// The published table, read here on its own.
const std::vector<Zone>& zones() {
    static const std::vector<Zone> table = [] {
        std::vector<Zone> rows;
        std::ifstream file(SOLSYS_TEST_DATA "/constellation_boundaries.csv");
        std::string line;
        while (std::getline(file, line)) {
            Zone z{};
            if (std::sscanf(line.c_str(), "%lf,%lf,%lf,%d", &z.ra_low, &z.ra_up, &z.dec_low,
                            &z.index) == 4) {
                rows.push_back(z);
            }
        }
        return rows;
    }();
    return table;
}

// Hours and degrees as printed, so that angles on a boundary are those of the table.
int by_scan(double ra_h, double dec_deg) {
    for (const Zone& z : zones()) {
        if (dec_deg >= z.dec_low && ra_h >= z.ra_low && ra_h < z.ra_up) return z.index;
    }
    return kNoConstellation;
}

int lookup(double ra_h, double dec_deg) {
    return constellation_of(ra_h * (kPi / 12.0), dec_deg * kDegree);
}

TEST(Constellation, AgreesWithAPlainScan) {
    ASSERT_EQ(zones().size(), 357u);
    std::mt19937 random(3);
    std::uniform_real_distribution<double> ra(0.0, 24.0), z(-1.0, 1.0);
    for (int i = 0; i < 100000; ++i) {
        const double ra_h = ra(random), dec = std::asin(z(random)) / kDegree;
        ASSERT_EQ(lookup(ra_h, dec), by_scan(ra_h, dec)) << ra_h << ' ' << dec;
    }
}

TEST(Constellation, BoundariesBelongToTheEastAndTheNorth) {
    for (const Zone& z : zones()) {
        for (const double ra_h : {z.ra_low, z.ra_up, 0.5 * (z.ra_low + z.ra_up)}) {
            for (const double dec : {z.dec_low, z.dec_low - 1e-9, z.dec_low + 1e-9}) {
                if (ra_h >= 24.0 || dec < -90.0) continue;
                EXPECT_EQ(lookup(ra_h, dec), by_scan(ra_h, dec)) << ra_h << ' ' << dec;
            }
        }
    }
}

TEST(Constellation, NamesKnownPlaces) {
    struct Place {
        double ra_deg, dec_deg;  // equinox B1850
        int index;
    };
    for (const Place& p :
         {Place{359.039755225, 89.164653751, 83}, Place{250.411492925, 89.655764469, 83},
          Place{179.039755225, -89.164653751, 57},
          Place{99.611702683, -16.564611862, 13},   // Sirius
          Place{264.034914244, -28.938280532, 71},  // the galactic centre
          Place{358.078913055, -0.835228807, 65},   // the equinox of J2000
          Place{299.775892736, -12.773620122, 71}, Place{110.475706401, -16.322568491, 13},
          Place{302.096976675, 28.928371322, 87}, Place{24.757294001, 18.442537745, 65},
          Place{202.464793858, 24.133822210, 24}, Place{46.364752394, 59.704986337, 17}}) {
        EXPECT_EQ(lookup(p.ra_deg / 15.0, p.dec_deg), p.index) << p.ra_deg;
    }
}

TEST(Constellation, EveryConstellationIsFoundAndOddAnglesAreAnswered) {
    std::vector<bool> seen(88);
    for (double dec = -89.75; dec < 90; dec += 0.5) {
        for (double ra_h = 0.01; ra_h < 24; ra_h += 0.03) {
            seen.at(static_cast<std::size_t>(lookup(ra_h, dec))) = true;
        }
    }
    for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_TRUE(seen[i]) << i;

    for (double ra = 0; ra < kTwoPi; ra += 0.01) {
        EXPECT_EQ(constellation_of(ra, 89.0 * kDegree), 83);
        EXPECT_EQ(constellation_of(ra, -kHalfPi), 57);
        EXPECT_EQ(constellation_of(ra, std::nextafter(-kHalfPi, -2.0)), 57);
        EXPECT_EQ(constellation_of(ra, std::nextafter(kHalfPi, 2.0)), 83);
    }
    EXPECT_EQ(constellation_of(kTwoPi, 0.1), constellation_of(0.0, 0.1));
    EXPECT_EQ(constellation_of(-1.0, 0.1), constellation_of(kTwoPi - 1.0, 0.1));
    EXPECT_EQ(constellation_of(-1e-20, 0.1), constellation_of(0.0, 0.1));
    EXPECT_EQ(constellation_of(4 * kTwoPi + 1.0, 0.1), constellation_of(1.0, 0.1));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(constellation_of(nan, 0.1), kNoConstellation);
    EXPECT_EQ(constellation_of(0.1, nan), kNoConstellation);
    EXPECT_EQ(constellation_of(1.0 / 0.0, 0.1), kNoConstellation);
}

}  // namespace
}  // namespace solsys
