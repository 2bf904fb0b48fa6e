#include "solsys/dwarf_elements.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"

namespace solsys {
namespace {

Vec3 position(int number, double jd) {
    Elements elements{};
    EXPECT_TRUE(dwarf_planet_elements(number, &elements));
    double r[3], v[3];
    const int day = static_cast<int>(jd);
    EXPECT_TRUE(Kepler(0, kSunGm, day, jd - day, elements, r, v));
    return load(r);
}

// The same orbits with their planes worked out on the ecliptic by spherical trigonometry.
TEST(DwarfElements, ArriveOnTheEcliptic) {
    struct Plane {
        int number;
        double i, node, peri;  // deg
    };
    for (const Plane& p : {Plane{9, 17.139277182, 110.304519401, 113.779340168},
                           Plane{13, 29.002150149, 79.445243764, 296.072539076},
                           Plane{14, 28.204247971, 121.946135961, 239.957400361}}) {
        Elements e{};
        ASSERT_TRUE(dwarf_planet_elements(p.number, &e));
        // The state takes its cosines from its sines, which costs 1e-8 rad where a sine is near
        // one: 6e-7 deg, or 0.002 arcsec.
        EXPECT_NEAR(e.i / kDegree, p.i, 1e-6) << p.number;
        EXPECT_NEAR(e.node / kDegree, p.node, 1e-6) << p.number;
        EXPECT_NEAR(e.peri / kDegree, p.peri, 1e-6) << p.number;
    }
}

// Perihelia, aphelia and distances as published (JPL Small-Body Database, Minor Planet Center).
TEST(DwarfElements, PassPublishedDistances) {
    struct Passage {
        int number;
        double jd, distance, tolerance;  // au
    };
    for (const Passage& p : {Passage{9, 2447774.5, 29.66, 0.02},  // 1989 September 5
                             Passage{9, 2457217.5, 32.90, 0.02},  // 2015 July 14, New Horizons
                             Passage{11, 2457088.5, 2.88, 0.03},  // 2015 March 6, Dawn
                             Passage{12, 2453600.5, 96.9, 0.1},   // 2005 August
                             Passage{13, 2453460.5, 51.9, 0.1},   // 2005 March 31, discovery
                             Passage{14, 2453460.5, 51.2, 0.1}}) {  // 2005
        EXPECT_NEAR(norm(position(p.number, p.jd)), p.distance, p.tolerance) << p.number;
    }
}

TEST(DwarfElements, RefuseOtherNumbers) {
    for (const int number : {0, 8, 10, 15, 301, -1}) {
        Elements e{};
        e.q = 5;
        EXPECT_FALSE(dwarf_planet_elements(number, &e)) << number;
        EXPECT_EQ(e.q, 5);
    }
}

}  // namespace
}  // namespace solsys
