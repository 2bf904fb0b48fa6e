// The library as a host meets it: the shared library and the public headers, nothing else.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "solsys/solsys.h"

namespace {

constexpr double kDegree = 0.017453292519943295;
constexpr double kArcsec = kDegree / 3600;

struct Published {
    const char* name;
    int body;
    int day;
    double fraction;
    double ra, dec;   // apparent, degrees
    double distance;  // au
};
class AlmanacPlace : public testing::TestWithParam<Published> {};

TEST_P(AlmanacPlace, IsFoundFromTheEarthsCentre) {
    const Published& p = GetParam();
    CSWSolSys model;
    ASSERT_TRUE(model.InitSys(""));
    model.UpdateSys(p.day, p.fraction);
    double place[3];
    ASSERT_TRUE(model.GetRADecVis(SSO_ID(SSO_PLNT, p.body), place, 0.0));
    // The short nutation is good to 0.2 arcsec, the equinox of the frames to 0.1.
    EXPECT_NEAR(place[1], p.ra * kDegree, 0.5 * kArcsec);
    EXPECT_NEAR(place[2], p.dec * kDegree, 0.5 * kArcsec);
    EXPECT_NEAR(place[0], p.distance, 2e-6);
}
// Meeus 1998, Astronomical Algorithms, examples 25.b and 33.a (both with the full VSOP87).
INSTANTIATE_TEST_SUITE_P(
    Meeus, AlmanacPlace,
    testing::Values(Published{"Sun", 10, 2448908, 0.5, 198.378121, -7.783817, 0.997608},
                    Published{"Venus", 2, 2448976, 0.5, 316.172725, -18.888011, 0.910947}),
    [](const auto& tested) { return tested.param.name; });

TEST(Host, WalksFromOneEndToTheOther) {
    EXPECT_TRUE(ET_UT::Init(""));
    {
        CSWSolSys model;
        ASSERT_TRUE(model.InitSys("/no/such/ephemeris"));
        OBSERVER site;
        site.kind = LOCATION_SURFACE;
        site.body_type = SSO_PLNT, site.body_number = 3;
        site.location[1] = 24.9 * kDegree, site.location[2] = 60.2 * kDegree;
        model.SetObserver(&site);
        std::vector<SSO_ID> bodies;
        ASSERT_EQ(model.GetFullList(&bodies), 229);

        for (int day = 2459000; day < 2459030; day += 7) {
            model.UpdateSys(day, 0.25);
            for (const SSO_ID& id : bodies) {
                double place[3];
                ASSERT_TRUE(model.GetRADecVis(id, place, 0.0)) << id.number;
                EXPECT_TRUE(place[1] >= 0 && place[1] < 360 * kDegree);
                double azm = 0, alt = 0, ra = 0, dec = 0;
                model.FromRAToAzm(false, &place[1], &place[2], &azm, &alt);
                model.FromAzmToRA(false, &azm, &alt, &ra, &dec);
                EXPECT_NEAR(std::cos(ra - place[1]), 1.0, 1e-12);
                EXPECT_NEAR(dec, place[2], 5e-8);
            }
            // The Moon's parallax: a site and the centre of the Earth see it apart.
            double from_site[3];
            double from_centre[3];
            const SSO_ID moon(SSO_MOON, 301);
            ASSERT_TRUE(model.GetRADec(moon, from_site, false));
            OBSERVER centre = site;
            centre.kind = LOCATION_BODY_FIXED;
            centre.location[1] = centre.location[2] = 0;
            model.SetObserver(&centre);
            ASSERT_TRUE(model.GetRADec(moon, from_centre, false));
            model.SetObserver(&site);
            const double apart =
                std::hypot((from_site[1] - from_centre[1]) * std::cos(from_site[2]),
                           from_site[2] - from_centre[2]);
            EXPECT_GT(apart, 0.1 * kDegree);
            EXPECT_LT(apart, 1.1 * kDegree);
        }
    }
    ET_UT::Finish();
}

TEST(Host, SeesObjectsThroughTheirInterface) {
    CSWSolSys model;
    ASSERT_TRUE(model.InitSys(""));
    auto* ceres = dynamic_cast<SS_DwarfPlanetObject*>(model.GetSS_Object({SSO_PLNT, 11}));
    ASSERT_NE(ceres, nullptr);
    EXPECT_NEAR(ceres->GetElements().q, 2.77, 0.01);
    auto* moon = dynamic_cast<SS_MoonObject*>(model.GetSS_Object({SSO_MOON, 301}));
    ASSERT_NE(moon, nullptr);
    // A host's own Moon, held at one place.
    moon->SetPositionCallback([](int, double, bool, double* out) {
        out[0] = 1e-3, out[1] = 0, out[2] = 0;
        return int{SS_OK};
    });
    double place[3];
    model.UpdateSys(2459000, 0.0);
    ASSERT_TRUE(model.GetRADec(SSO_ID(SSO_MOON, 301), place, false));
    EXPECT_EQ(place[0], 1e-3);
}

}  // namespace
