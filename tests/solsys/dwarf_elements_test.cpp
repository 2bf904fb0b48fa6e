#include "solsys/dwarf_elements.h"

#include <gtest/gtest.h>

#include "core/constants.h"
#include "core/linalg.h"

namespace solsys {
namespace {

// The same orbits with their planes worked out on the ecliptic by spherical trigonometry.
TEST(DwarfElements, ArriveOnTheEcliptic) {
    constexpr double kPlanes[][4] = {// body; inclination, node, argument of perihelion [deg]
                                     {9, 17.139277182, 110.304519401, 113.779340168},
                                     {13, 29.002150149, 79.445243764, 296.072539076},
                                     {14, 28.204247971, 121.946135961, 239.957400361}};
    for (const auto& [number, i, node, peri] : kPlanes) {
        Elements e{};
        ASSERT_TRUE(dwarf_planet_elements(static_cast<int>(number), &e));
        // The state takes its cosines from its sines, which costs 1e-8 rad where a sine is near
        // one: 6e-7 deg, or 0.002 arcsec.
        EXPECT_NEAR(e.i / kDegree, i, 1e-6) << number;
        EXPECT_NEAR(e.node / kDegree, node, 1e-6) << number;
        EXPECT_NEAR(e.peri / kDegree, peri, 1e-6) << number;
    }
}

// Perihelia, aphelia and distances as published (JPL Small-Body Database, Minor Planet Center).
TEST(DwarfElements, PassPublishedDistances) {
    constexpr double kPassages[][4] = {// body, Julian date, distance and tolerance [au]
                                       {9, 2447774.5, 29.66, 0.02},  // 1989 September 5
                                       {9, 2457217.5, 32.90, 0.02},  // 2015 July 14, flyby
                                       {11, 2457088.5, 2.88, 0.03},  // 2015 March 6, arrival
                                       {12, 2453600.5, 96.9, 0.1},   // 2005 August
                                       {13, 2453460.5, 51.9, 0.1},   // 2005 March 31, discovery
                                       {14, 2453460.5, 51.2, 0.1}};
    for (const auto& [number, jd, distance, tolerance] : kPassages) {
        Elements elements{};
        ASSERT_TRUE(dwarf_planet_elements(static_cast<int>(number), &elements));
        double r[3], v[3];
        const int day = static_cast<int>(jd);
        ASSERT_TRUE(Kepler(0, kSunGm, day, jd - day, elements, r, v));
        EXPECT_NEAR(norm(load(r)), distance, tolerance) << number;
    }
}

}  // namespace
}  // namespace solsys
