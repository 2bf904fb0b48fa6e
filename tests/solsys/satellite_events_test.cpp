// Satellites at dated events: occulted stars, shadows, librations; and the faces that they turn
// to their planets.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/sky_models.h"

namespace {

using namespace solsys;
using namespace solsys::test;

const SSO_ID kMoon(SSO_MOON, 301);

Vec3 apparent(CSWSolSys& model, const SSO_ID& id) {
    double v[4] = {};  // the direction and the distance
    EXPECT_TRUE(model.GetSSOVisVec2K(id, v, 0.0));
    return load(v);
}

// A star that a satellite hid from a place on the Earth.
struct Occultation {
    const char* name;
    int moon;
    int day;
    double utc_hours, tt_minus_utc;  // h, s
    double ra, dec;                  // of the star, J2000.0 [deg]
};
class Occulted : public testing::TestWithParam<std::tuple<Source, Occultation>> {};

TEST_P(Occulted, StarLiesBehindTheSatellite) {
    const auto& [source, event] = GetParam();
    const auto model = make_model(source);
    const OBSERVER paris = site(2.23, 48.80, 0);
    model->SetObserver(&paris);
    StarObject star;
    star.ra = event.ra * kDegree, star.dec = event.dec * kDegree;
    const auto separation = [&](double minutes) {
        const double hours = event.utc_hours + minutes / 60 + event.tt_minus_utc / 3600;
        model->UpdateSys(event.day, 0.5 + hours / 24);
        double direction[3];
        model->GetRADecVisStar(&star, nullptr, direction, false);
        return angle_between(apparent(*model, {SSO_MOON, event.moon}), load(direction)) /
               kArcsec;
    };
    // Two minutes of the published times' rounding are 0.1 to 0.34 arcsec; planet, satellite
    // and star are each good to 0.1.
    EXPECT_LT(separation(0), 0.35);
    EXPECT_GT(separation(-15), 2 * separation(0));
    EXPECT_GT(separation(15), 2 * separation(0));
}

// Middle of the event at Meudon. Titan: Hubbard et al. 1993, Astron. Astrophys. 269, 541.
// Triton: Marques Oliveira et al. 2022, Astron. Astrophys. 659, A136.
INSTANTIATE_TEST_SUITE_P(
    Published, Occulted,
    testing::Combine(testing::Values(Source::kDe405, Source::kBuiltIn),
                     testing::Values(Occultation{"TitanAnd28Sgr", 606, 2447710, 22 + 41 / 60.0,
                                                 56.184, 281.5858213, -22.3922011},
                                     Occultation{"TritonIn2017", 801, 2458031, 23 + 48 / 60.0,
                                                 69.184, 343.5768183, -8.0023106})),
    [](const auto& test) {
        return std::string(std::get<1>(test.param).name) + name_of(std::get<0>(test.param));
    });

// Titan's shadow on Saturn, every 16 days of 2025 until October 6, and not after.
TEST(Titan, CastsItsShadowOnSaturnUntilOctober2025) {
    const auto model = make_model(Source::kBuiltIn);
    SS_Object& titan = *model->GetSS_Object({SSO_MOON, 606});
    SS_Object& saturn = *model->GetSS_Object({SSO_PLNT, 6});
    double ra, dec, w;
    ASSERT_TRUE(saturn.GetRotationElements(2460900, 0, &ra, &dec, &w));
    const Vec3 pole = direction(ra, dec);
    // How far the axis of the shadow passes from the centre, in radii of the outline.
    const auto least_miss = [&](int day) {
        double least = 1e9;
        for (double hour = 0; hour < 24; hour += 0.25) {
            double relative[6], heliocentric[6];
            EXPECT_EQ(titan.GetState(day, 0.5 + hour / 24, true, relative), SS_OK);
            EXPECT_EQ(titan.ComputeState(day, 0.5 + hour / 24, true, heliocentric), SS_OK);
            const Vec3 r = load(relative), sunward = -1.0 * unit(load(heliocentric));
            if (dot(r, sunward) < 0) continue;
            const Vec3 miss = kAuKm * (r - dot(r, sunward) * sunward);
            const Vec3 north = unit(pole - dot(pole, sunward) * sunward);
            const double y = dot(miss, north), x = dot(miss, cross(north, sunward));
            least = std::min(least, std::hypot(x / 60268.0, y / 54364.0));
        }
        return least;
    };
    const int june_16 = 2460842, october_6 = 2460954;
    for (int day = june_16; day <= october_6; day += 16) EXPECT_LT(least_miss(day), 1.0) << day;
    EXPECT_LT(least_miss(october_6), 1.0);
    EXPECT_GT(least_miss(october_6 + 16), 1.05);  // Titan's own radius is 0.047
}

// Meeus 1998, Astronomical Algorithms, example 53.a: 1992 April 12, 0h TD. His physical
// librations refer to the Moon's principal axes, of which the first lies 79.08 arcsec south of
// the mean Earth direction that the published elements (and this library) count from.
TEST(Moon, TurnsThePublishedFaceToTheEarthAndTheSun) {
    for (const Source source : {Source::kDe405, Source::kBuiltIn}) {
        const auto model = make_model(source);
        model->UpdateSys(2448724, 0.5);
        double m[9], heliocentric[6];
        ASSERT_TRUE(model->GetMtrxPl_Eq(kMoon, m, false));
        ASSERT_EQ(model->GetSS_Object(kMoon)->ComputeState(2448724, 0.5, false, heliocentric),
                  SS_OK);
        const auto selenographic = [&](Vec3 from_moon) {
            const Vec3 v =
                rotate_y(79.0768 * kArcsec) * transpose_times(load_matrix(m), unit(from_moon));
            return std::pair{std::atan2(v.y, v.x) / kDegree, std::asin(v.z) / kDegree};
        };
        const auto [earth_l, earth_b] = selenographic(-1.0 * apparent(*model, kMoon));
        const auto [sun_l, sun_b] = selenographic(-1.0 * load(heliocentric));
        // Printed to 0.01; annual aberration, which the places hold, is worth 0.006.
        EXPECT_NEAR(earth_l, -1.23, 0.012);
        EXPECT_NEAR(earth_b, 4.20, 0.012);
        EXPECT_NEAR(sun_l, 67.89, 0.015);
        EXPECT_NEAR(sun_b, 1.46, 0.012);
    }
}

// Where on `body` another one stands in the zenith, by the rotation elements [deg].
double longitude_below(SS_Object& body, Instant t, Vec3 to_other) {
    double ra, dec, w;
    EXPECT_TRUE(body.GetRotationElements(t.day, t.fraction, &ra, &dec, &w));
    const Vec3 pole = direction(ra, dec);
    const Vec3 node = direction(ra + kHalfPi, 0);
    const Vec3 meridian = std::cos(w) * node + std::sin(w) * cross(pole, node);
    EXPECT_LT(std::fabs(dot(unit(to_other), pole)), std::sin(8 * kDegree));
    return std::atan2(dot(to_other, cross(pole, meridian)), dot(to_other, meridian)) / kDegree;
}

struct Locked {
    int moon;
    double libration;  // largest longitude of the planet over a century [deg]
};
class SynchronousSatellite : public testing::TestWithParam<Locked> {};

// Prime meridians face the planet, but for the libration of the eccentricity, the craters that
// define some of them, and the phases of long librations (Mimas).
TEST_P(SynchronousSatellite, KeepsItsFaceTowardsThePlanet) {
    const auto model = make_model(Source::kBuiltIn);
    SS_Object& moon = *model->GetSS_Object({SSO_MOON, GetParam().moon});
    for (int day = 2433000; day < 2469000; day += 97) {
        double r[3];
        ASSERT_EQ(moon.GetState(day, 0.37, false, r), SS_OK);
        EXPECT_LT(std::fabs(longitude_below(moon, {day, 0.37}, -1.0 * load(r))),
                  GetParam().libration)
            << day;
    }
}

INSTANTIATE_TEST_SUITE_P(All, SynchronousSatellite,
                         testing::Values(Locked{301, 8.2}, Locked{401, 3.2}, Locked{402, 0.3},
                                         Locked{501, 1.2}, Locked{502, 3}, Locked{503, 3},
                                         Locked{504, 2.2}, Locked{601, 14}, Locked{602, 6},
                                         Locked{603, 1.2}, Locked{604, 1.2}, Locked{605, 3.2},
                                         Locked{606, 6}, Locked{608, 9.2}, Locked{701, 1.2},
                                         Locked{702, 1.5}, Locked{703, 1.5}, Locked{704, 1.5},
                                         Locked{705, 2}, Locked{801, 3}, Locked{901, 2.6}),
                         [](const auto& test) { return std::to_string(test.param.moon); });

}  // namespace
