// What is known of the satellites' motions apart from the theories: periods, planes,
// resonances.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "ephemeris/satellites/turns.h"
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
            const double a = std::cbrt(gm * std::pow(period / kTwoPi, 2));
            if (gm > 0) {
                EXPECT_NEAR(norm(now.r) / a, 1, 0.78);
            }
        }
    }
}

// Regular satellites go round with the planet's rotation, near its equator; some others are
// known for their planes. Poles: reports of the IAU working group on cartographic coordinates
// (for Uranus and Pluto the pole of direct rotation).
TEST(Orbits, LieInTheirPlanes) {
    struct Plane {
        Vec3 pole;
        double inclination, margin;  // deg
    };
    const std::map<int, Plane> equators = {
        {4, {pole_at(317.681, 52.887), 0, 3.0}}, {5, {pole_at(268.057, 64.495), 0, 1.5}},
        {6, {pole_at(40.589, 83.537), 0, 2.2}},  {7, {pole_at(77.311, 15.175), 0, 4.5}},
        {8, {pole_at(299.4, 42.95), 0, 5.5}},    {9, {pole_at(132.99, -6.16), 0, 1.0}}};
    const Vec3 ecliptic_pole = pole_at(270, 66.56071892);
    const std::map<int, Plane> others = {
        // Triton to Neptune's equator, whose own pole moves by 1 deg.
        {801, {pole_at(299.36, 43.46), 156.8, 1.5}},
        {609, {ecliptic_pole, 174, 2.5}},            // Phoebe
        {508, {ecliptic_pole, 150, 8}},              // Pasiphae
        {608, {pole_at(40.589, 83.537), 15.5, 5}}};  // Iapetus to Saturn's equator
    Theories theories;
    int planes = 0;
    for (const auto& [body, period] : published_periods()) {
        const bool regular = period < 40 && body < 1000;
        if (!regular && !others.contains(body)) continue;
        ++planes;
        const Plane& plane = others.contains(body) ? others.at(body) : equators.at(body / 100);
        for (int day = 2433282; day < 2469900; day += 3331) {
            const State s = theories.state(body, {day, 0.7});
            EXPECT_NEAR(angle_between(cross(s.r, s.v), plane.pole) / kDegree, plane.inclination,
                        plane.margin)
                << body << " on " << day;
        }
    }
    EXPECT_EQ(planes, 67);
}

double longitude_in_plane(Vec3 r, Vec3 pole) {
    const Vec3 x = unit(cross({0, 0, 1}, pole));
    return std::atan2(dot(r, cross(pole, x)), dot(r, x));
}

// Laplace: the mean longitudes of Io, Europa and Ganymede keep l1 - 3 l2 + 2 l3 = 180 degrees,
// to 0.1; true longitudes add the equations of the centre, 0.5 + 3 * 1.1 + 2 * 0.3 degrees at
// most. Helene leads Dione; Telesto leads and Calypso follows Tethys, about 60 degrees off on
// average, librating by 15, 5 and 8 degrees.
TEST(Resonances, Hold) {
    Theories theories;
    const struct {
        std::vector<std::pair<int, double>> sum;  // multiples of longitudes
        double value, amplitude, margin;          // deg, of an instant and of the mean
        Vec3 pole;
    } cases[] = {{{{501, 1}, {502, -3}, {503, 2}}, 180, 4.6, 0.3, pole_at(268.057, 64.495)},
                 {{{612, 1}, {604, -1}}, 60, 19, 3, pole_at(40.589, 83.537)},
                 {{{613, 1}, {603, -1}}, 60, 9, 3, pole_at(40.589, 83.537)},
                 {{{614, 1}, {603, -1}}, -60, 12, 3, pole_at(40.589, 83.537)}};
    for (const auto& [sum, value, amplitude, margin, pole] : cases) {
        double mean = 0;
        constexpr int kInstants = 400;
        for (int k = 0; k < kInstants; ++k) {
            double angle = -value;
            for (const auto& [body, times] : sum) {
                const Vec3 r = theories.state(body, {2424000 + 110 * k, 0.37}).r;
                angle += times * longitude_in_plane(r, pole) / kDegree;
            }
            EXPECT_NEAR(std::remainder(angle, 360), 0, amplitude) << sum[0].first;
            mean += std::remainder(angle, 360) / kInstants;
        }
        EXPECT_NEAR(mean, 0, margin) << sum[0].first;
    }
}

}  // namespace
