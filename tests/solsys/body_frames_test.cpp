// Body-fixed frames of the model: poles and prime meridians where published elements point.
#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/earth_orientation.h"
#include "tests/support/models.h"

namespace {

using solsys::kDegree;
using solsys::Mat3;
using solsys::Vec3;

constexpr int kDay = 2451545;

Vec3 direction(double lon, double lat) {
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

// Pole and W at J2000.0 with the rate of W, degrees: Archinal et al. 2018, Celest. Mech. Dyn.
// Astron. 130, 22, periodic terms left out, which is why some tolerances are wider.
struct Published {
    std::int32_t type;
    int number;
    double ra, dec, w, rate;
    double tolerance;
};
class Pole : public testing::TestWithParam<Published> {
  protected:
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
};

TEST_P(Pole, AndPrimeMeridianPointWherePublished) {
    const Published& p = GetParam();
    const double days = 3;
    model->UpdateSys(kDay + 3, 0.0);
    double m[9];
    ASSERT_TRUE(model->GetMtrxPl_Eq(SSO_ID(p.type, p.number), m, false));
    const Mat3 j2000_from_body = solsys::load_matrix(m);
    const Vec3 pole = j2000_from_body * Vec3{0, 0, 1};
    const Vec3 meridian = j2000_from_body * Vec3{1, 0, 0};
    const double ra = p.ra * kDegree, dec = p.dec * kDegree;
    EXPECT_LT(norm(pole - direction(ra, dec)), p.tolerance * kDegree);
    // W from the node of the body's equator, in the sense of its rotation.
    const Vec3 node = direction(ra + solsys::kHalfPi, 0);
    const double w =
        std::atan2(dot(meridian, cross(direction(ra, dec), node)), dot(meridian, node));
    EXPECT_NEAR(std::remainder(w - (p.w + p.rate * days) * kDegree, solsys::kTwoPi), 0.0,
                p.tolerance * kDegree);
    EXPECT_NEAR(
        dot(cross(j2000_from_body * Vec3{1, 0, 0}, j2000_from_body * Vec3{0, 1, 0}), pole), 1.0,
        1e-14);
}
INSTANTIATE_TEST_SUITE_P(
    Bodies, Pole,
    testing::Values(Published{SSO_PLNT, 10, 286.13, 63.87, 84.176, 14.1844, 0.002},
                    Published{SSO_PLNT, 1, 281.0103, 61.4155, 329.5988, 6.1385108, 0.02},
                    Published{SSO_PLNT, 2, 272.76, 67.16, 160.20, -1.4813688, 0.002},
                    Published{SSO_PLNT, 5, 268.056595, 64.495303, 284.95, 870.536, 0.02},
                    Published{SSO_PLNT, 6, 40.589, 83.537, 38.90, 810.7939024, 0.002},
                    Published{SSO_PLNT, 7, 257.311, -15.175, 203.81, -501.1600928, 0.002},
                    Published{SSO_PLNT, 9, 132.993, -6.163, 302.695, 56.3625225, 0.002},
                    // Mean pole and motion; the lunar terms reach 4 degrees.
                    Published{SSO_MOON, 301, 269.9949, 66.5392, 38.3213, 13.17635815, 5.5},
                    Published{SSO_MOON, 501, 268.05, 64.50, 200.39, 203.4889538, 0.2}));

class Rotation : public testing::Test {
  protected:
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
    double a[9] = {}, b[9] = {};
};

TEST_F(Rotation, OfTheEarthIsSiderealTimeOnTheEquatorOfDate) {
    model->UpdateSys(2459123, 0.777);
    ASSERT_TRUE(model->GetMtrxPl_Eq(SSO_ID(SSO_PLNT, 3), a, true));
    const double theta = SiderialTime(true, 2459123, 0.777);
    EXPECT_NEAR(a[0], std::cos(theta), 1e-15);
    EXPECT_NEAR(a[3], std::sin(theta), 1e-15);
    EXPECT_EQ(a[8], 1.0);
    ASSERT_TRUE(model->GetMtrxPl_Eq(SSO_ID(SSO_PLNT, 3), b, false));
    const Mat3 back = solsys::load_matrix(model->GetMtrxEq2K_EqCur()) * solsys::load_matrix(b);
    EXPECT_NEAR(back.r0.x, a[0], 1e-15);
    EXPECT_NEAR(back.r2.z, 1.0, 1e-15);
}

TEST_F(Rotation, FromTheJ2000EquatorIsTheTransposeAndHoldsItsOwnInstant) {
    model->UpdateSys(kDay, 0.0);
    const SSO_ID mars(SSO_PLNT, 4);
    double back[9];
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq(mars, kDay + 10, 0.25, a, back));
    model->UpdateSys(kDay + 10, 0.25);
    ASSERT_TRUE(model->GetMtrxPl_Eq(mars, b, false));
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(a[3 * i + j], back[3 * j + i]);
            EXPECT_NEAR(a[3 * i + j], b[3 * j + i], 1e-15);
        }
}

TEST_F(Rotation, SpecialBodiesHaveTheModelsOwnFrames) {
    model->UpdateSys(2459123, 0.777);
    double back[9];
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq(SSO_ID(SSO_PLNT, 3), 0, 0.0, a, back));
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq(SSO_ID(SSO_PLNT, 11), 0, 0.0, b, back));
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(a[i], model->GetMtrxEq2K_EqCur()[i]);
        EXPECT_EQ(b[i], model->GetMtrxEq2K_Ecl2K()[i]);
    }
}

TEST_F(Rotation, OfABodyWithoutElementsLeavesTheOutputAlone) {
    for (const SSO_ID& body : {SSO_ID(SSO_PLNT, 13), SSO_ID(SSO_MOON, 550),
                               SSO_ID(SSO_ASTR, 77), SSO_ID(SSO_PLNT, 99)}) {
        a[0] = b[0] = 7;
        EXPECT_FALSE(model->GetMtrxPl_Eq(body, a, true));
        EXPECT_FALSE(model->GetMtrxEq2K_PlEq(body, kDay, 0.0, a, b));
        EXPECT_EQ(a[0], 7);
        EXPECT_EQ(b[0], 7);
        double out[3];
        EXPECT_FALSE(model->PlgToEq(body, b, out));
        EXPECT_FALSE(model->EqToPlg(body, b, out));
    }
}

TEST_F(Rotation, RegisteredForOneBodyOrForItsType) {
    const auto encode = [](double dec) { return EncodeBodyRotation(1.0, dec, 0.0, 0.0); };
    const BodyRotationParams own = encode(0.5), of_type = encode(0.25), late = encode(0.1);
    CSWSolSys::AddBodyRotationParams({SSO_CLST, 5}, &own);
    CSWSolSys::AddBodyRotationParams({SSO_CLST, -1}, &of_type);
    CSWSolSys::AddBodyRotationParams({SSO_CLST, 5}, &late);
    ASSERT_TRUE(model->GetMtrxPl_Eq(SSO_ID(SSO_CLST, 5), a, false));
    EXPECT_NEAR(a[8], std::sin(0.5), 1e-7);
    ASSERT_TRUE(model->GetMtrxPl_Eq(SSO_ID(SSO_CLST, 6), a, false));
    EXPECT_NEAR(a[8], std::sin(0.25), 1e-7);
    EXPECT_EQ(CSWSolSys::GetBodyRotation(ObjectKey{SSO_CLST, 6}), nullptr);
    EXPECT_EQ(CSWSolSys::GetBodyRotation(CSWSolSys::GetBodyRotationsCount()), nullptr);
}

TEST_F(Rotation, CarriesSurfacePointsThereAndBack) {
    model->UpdateSys(2459123, 0.777);
    for (const SSO_ID& body : {SSO_ID(SSO_PLNT, 3), SSO_ID(SSO_PLNT, 6), SSO_ID(SSO_MOON, 301)})
        for (double lat = -1.5; lat < 1.55; lat += 0.25) {
            const double place[3] = {12.5, 0.7, lat};  // km
            double v[3];
            double back[3];
            ASSERT_TRUE(model->PlgToEq(body, place, v));
            ASSERT_TRUE(model->EqToPlg(body, v, back));
            EXPECT_NEAR(back[0], 12.5, 2e-3);  // the radius times half the digits of an angle
            EXPECT_NEAR(back[1], 0.7, 3e-8);
            EXPECT_NEAR(back[2], lat, 3e-8);
        }
}

TEST_F(Rotation, ASurfacePointIsWhereAnObserverThereStands) {
    const OBSERVER site = support::observer(LOCATION_SURFACE, 6, 0, 0.7, 0.6);
    model->SetObserver(&site);
    model->UpdateSys(2459123, 0.777);
    const double place[3] = {0, 0.7, 0.6};
    double v[3];
    double saturn[3];
    ASSERT_TRUE(model->PlgToEq(SSO_ID(SSO_PLNT, 6), place, v));
    ASSERT_TRUE(model->GetCurVec(SSO_ID(SSO_PLNT, 6), saturn, true));
    // Seen from the site, the centre lies opposite.
    EXPECT_LT(norm(solsys::load(v) + solsys::kAuKm * solsys::load(saturn)), 1e-3);
}

}  // namespace
