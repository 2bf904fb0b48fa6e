// What is known of the satellites' motions apart from the theories: periods, planes,
// resonances.
#include <gtest/gtest.h>

#include <random>

#include "ephemeris/satellites/sincos.h"
#include "tests/ephemeris/satellites/satellite_fixture.h"

using namespace solsys;
using namespace solsys::test;

namespace {

TEST(Orbits, AllSatellitesReturnAfterThePublishedPeriod) {
    Theories theories;
    const auto periods = published_periods();
    EXPECT_EQ(periods.size(), 214u);
    for (const auto& [body, period] : periods) {
        SCOPED_TRACE(body);
        const double gm = theories.of_system(body / 100).GetPrimaryGM(body % 100);
        for (const int day : {2441317, 2451545, 2460310}) {
            const Instant t{day, 0.5};
            const State now = theories.state(body, t);
            // The irregular satellites' apsides and nodes move by some degrees a period, and
            // Pluto moves under its small satellites. Half a period leads elsewhere, even at an
            // eccentricity of 0.75.
            const double back = angle_between(now.r, theories.state(body, later(t, period)).r);
            const double off =
                angle_between(now.r, theories.state(body, later(t, period / 2)).r);
            const bool regular = norm(now.r) < 0.025 && body != 802 && body / 100 != 9;
            EXPECT_LT(back / kDegree, regular ? 3.0 : 12.0);
            EXPECT_GT(off / kDegree, regular ? 100.0 : 25.0);
            // Kepler's third law, and no orbit more eccentric than 0.76.
            if (gm > 0) {
                const double a = std::cbrt(gm * std::pow(period / kTwoPi, 2));
                EXPECT_GT(norm(now.r) / a, 0.23);
                EXPECT_LT(norm(now.r) / a, 1.78);
            }
        }
    }
}

struct Family {
    const char* name;
    std::vector<int> bodies;
    double pole_ra, pole_dec;  // deg, J2000
    double tilt;               // deg: no orbit is inclined more
};

class OrbitPlanes : public testing::TestWithParam<Family> {};

// Regular satellites go round with the planet's rotation, near its equator. Poles: reports of
// the IAU working group on cartographic coordinates (for Uranus the pole of direct rotation;
// for Pluto the same, which is also the pole of Charon's orbit).
TEST_P(OrbitPlanes, FollowTheRotationOfThePrimary) {
    Theories theories;
    const Family& family = GetParam();
    for (const int body : family.bodies) {
        for (int day = 2433282; day < 2469900; day += 3331) {
            const State state = theories.state(body, {day, 0.7});
            const double tilt = angle_between(cross(state.r, state.v),
                                              direction(family.pole_ra, family.pole_dec)) /
                                kDegree;
            EXPECT_LT(tilt, family.tilt) << body << " on " << day;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, OrbitPlanes,
    testing::Values(
        Family{"Mars", {401, 402}, 317.681, 52.887, 3.0},
        Family{"Jupiter", {501, 502, 503, 504, 505, 514, 515, 516}, 268.057, 64.495, 1.5},
        Family{"Saturn",
               {601, 602, 603, 604, 605, 606, 607, 610, 611, 612, 613, 614,
                615, 616, 617, 618, 632, 633, 634, 635, 649, 653, 682},
               40.589,
               83.537,
               2.2},
        Family{"Uranus",
               {701, 702, 703, 704, 705, 706, 707, 708, 709, 710, 711, 712, 713, 714, 715, 725,
                726, 727},
               77.311,
               15.175,
               4.5},
        Family{"Neptune", {803, 804, 805, 806, 807, 808, 814}, 299.4, 42.95, 5.5},
        Family{"Pluto", {901, 902, 903, 904, 905}, 132.99, -6.16, 1.0}),
    [](const auto& suite) { return suite.param.name; });

TEST(OrbitPlanes, RetrogradeSatellitesAreRetrograde) {
    Theories theories;
    const Vec3 ecliptic_pole = direction(270, 66.56071892);
    struct {
        int body;
        Vec3 pole;
        double inclination, margin;  // deg
    } const cases[] = {
        // Triton: 156.8 deg to Neptune's equator; the pole of the equator itself moves by 1
        // deg.
        {801, direction(299.36, 43.46), 156.8, 1.5},
        {609, ecliptic_pole, 174, 2.5},             // Phoebe to the ecliptic
        {508, ecliptic_pole, 150, 8},               // Pasiphae
        {608, direction(40.589, 83.537), 15.5, 5},  // Iapetus to Saturn's equator
    };
    for (const auto& [body, pole, inclination, margin] : cases) {
        const State state = theories.state(body, {2451545, 0.0});
        EXPECT_NEAR(angle_between(cross(state.r, state.v), pole) / kDegree, inclination, margin)
            << body;
    }
}

double longitude_in_plane(Vec3 r, Vec3 pole) {
    const Vec3 x = unit(cross({0, 0, 1}, pole));
    return std::atan2(dot(r, cross(pole, x)), dot(r, x));
}

// Laplace: the mean longitudes of Io, Europa and Ganymede keep l1 - 3 l2 + 2 l3 = 180 degrees,
// to 0.1. True longitudes add the equations of the centre: 0.5 + 3 * 1.1 + 2 * 0.3 degrees at
// most.
TEST(Resonances, LaplaceRelationHolds) {
    Theories theories;
    const Vec3 pole = direction(268.057, 64.495);
    double mean = 0;
    constexpr int kInstants = 400;
    for (int k = 0; k < kInstants; ++k) {
        const Instant t{2433282 + 91 * k, 0.37};
        const auto longitude = [&](int body) {
            return longitude_in_plane(theories.state(body, t).r, pole);
        };
        const double angle = longitude(501) - 3 * longitude(502) + 2 * longitude(503);
        const double off = std::remainder(angle - kPi, kTwoPi) / kDegree;
        EXPECT_LT(std::fabs(off), 4.6);
        mean += off / kInstants;
    }
    EXPECT_NEAR(mean, 0, 0.3);
}

// Helene leads Dione; Telesto leads and Calypso follows Tethys, about 60 degrees off on
// average, librating by 15, 5 and 8 degrees.
TEST(Resonances, TrojansStayByTheirLagrangePoints) {
    Theories theories;
    const Vec3 pole = direction(40.589, 83.537);
    struct {
        int trojan, satellite;
        double side, libration;
    } const cases[] = {{612, 604, 60, 15}, {613, 603, 60, 5}, {614, 603, -60, 8}};
    for (const auto& [trojan, satellite, side, libration] : cases) {
        double mean = 0;
        constexpr int kInstants = 500;
        for (int k = 0; k < kInstants; ++k) {
            const Instant t{2415021 + 146 * k, 0.2};
            const double ahead =
                std::remainder(longitude_in_plane(theories.state(trojan, t).r, pole) -
                                   longitude_in_plane(theories.state(satellite, t).r, pole),
                               kTwoPi);
            EXPECT_NEAR(ahead / kDegree, side, libration + 4) << trojan;
            mean += ahead / kDegree / kInstants;
        }
        EXPECT_NEAR(mean, side, 3.0) << trojan;
    }
}

// Kerberos: node 313.3 degrees at its epoch, going back by 0.10896318 degrees a day.
TEST(MeanElements, NodeOfKerberosRegresses) {
    const PetitSat tables;
    const Vec3 pole = direction(133.03, -6.23);
    for (const double days : {0.0, 1000.0, 5000.0}) {
        double out[6];
        const Instant t = later({2451544, 0.5}, days);
        ASSERT_EQ(tables.EvalMeanElements(9, t.day, t.fraction, 3, 1, out), 0);
        const Vec3 node = cross(pole, unit(cross(load(out), load(out + 3))));
        const double expected = (313.3 - 0.10896318 * days) * kDegree;
        EXPECT_LT(std::fabs(std::remainder(longitude_in_plane(node, pole) - expected, kTwoPi)),
                  1e-7);
    }
}

// Arguments are reduced in extended precision with 2 pi in two pieces, the first of 37 bits, so
// that nothing is lost; the library's functions then see small ones, which all are good at.
long double reduced(double x) {
    constexpr long double kHead = 0x1.921fb54440000p+2, kTail = 0x1.68c234c4c6629p-37;
    const long double turns = std::nearbyint(x / kTwoPi);
    return (x - turns * kHead) - turns * kTail;
}

// Half an ulp of 1, and the last term of the series.
TEST(SinCos, AgreesWithExtendedPrecision) {
    std::mt19937_64 random(20260301);
    for (const double range : {1.0, 10.0, 1e3, 1e6}) {
        std::uniform_real_distribution<double> arguments(-range, range);
        for (int k = 0; k < 20000; ++k) {
            const double x = arguments(random);
            const satellites::SinCos value = satellites::sincos(x);
            EXPECT_NEAR(value.s, static_cast<double>(std::sin(reduced(x))), 2.3e-16) << x;
            EXPECT_NEAR(value.c, static_cast<double>(std::cos(reduced(x))), 2.3e-16) << x;
        }
    }
    EXPECT_TRUE(std::isnan(satellites::sincos(NAN).s));
    for (const double x : {1e9, -1e12, 1e15}) {
        const satellites::SinCos value = satellites::sincos(x);
        EXPECT_NEAR(std::hypot(value.s, value.c), 1, 0.5) << x;
    }
}

}  // namespace
