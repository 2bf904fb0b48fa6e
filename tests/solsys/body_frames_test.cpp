// Body-fixed frames of the model: poles and prime meridians where published elements point.
#include <gtest/gtest.h>

#include "solsys/earth_orientation.h"
#include "tests/support/models.h"

namespace {

using namespace solsys;
using solsys::test::direction;
using solsys::test::distance;

const SSO_ID kEarth(SSO_PLNT, 3), kMars(SSO_PLNT, 4), kSaturn(SSO_PLNT, 6);
constexpr int kDay = 2451545;

class BodyFrames : public testing::Test {
  protected:
    BodyFrames() { model->UpdateSys(2459123, 0.777); }
    Mat3 j2000_from_body(const SSO_ID& body) {
        EXPECT_TRUE(model->GetMtrxPl_Eq(body, a, false));
        return load_matrix(a);
    }
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
    double a[9] = {}, b[9] = {};
};

// Pole and W at J2000.0 with the rate of W: Archinal et al. 2018, Celest. Mech. Dyn. Astron.
// 130, 22, periodic terms left out, which is why some tolerances are wider.
TEST_F(BodyFrames, PolesAndPrimeMeridiansPointWherePublished) {
    constexpr double kPublished[][6] = {
        // body; right ascension, declination, W, rate, tolerance [deg, deg/day]
        {10, 286.13, 63.87, 84.176, 14.1844, 0.002},
        {1, 281.0103, 61.4155, 329.5988, 6.1385108, 0.02},
        {2, 272.76, 67.16, 160.20, -1.4813688, 0.002},
        {5, 268.056595, 64.495303, 284.95, 870.536, 0.02},
        {6, 40.589, 83.537, 38.90, 810.7939024, 0.002},
        {7, 257.311, -15.175, 203.81, -501.1600928, 0.002},
        {9, 132.993, -6.163, 302.695, 56.3625225, 0.002},
        // Mean pole and motion; the lunar terms reach 4 degrees.
        {301, 269.9949, 66.5392, 38.3213, 13.17635815, 5.5},
        {501, 268.05, 64.50, 200.39, 203.4889538, 0.2}};
    model->UpdateSys(kDay + 3, 0.0);
    for (const auto& [body, ra, dec, w0, rate, tolerance] : kPublished) {
        const Mat3 axes = transpose(
            j2000_from_body({body > 100 ? SSO_MOON : SSO_PLNT, static_cast<int>(body)}));
        const Vec3 pole = direction(ra * kDegree, dec * kDegree);
        EXPECT_LT(norm(axes.r2 - pole), tolerance * kDegree) << body;
        // W from the node of the body's equator, in the sense of its rotation.
        const Vec3 node = direction(ra * kDegree + kHalfPi, 0);
        const double w = std::atan2(dot(axes.r0, cross(pole, node)), dot(axes.r0, node));
        EXPECT_NEAR(std::remainder(w - (w0 + rate * 3) * kDegree, kTwoPi), 0.0,
                    tolerance * kDegree)
            << body;
        EXPECT_NEAR(dot(cross(axes.r0, axes.r1), axes.r2), 1.0, 1e-14);
    }
}

TEST_F(BodyFrames, TheEarthTurnsBySiderealTimeOnTheEquatorOfDate) {
    ASSERT_TRUE(model->GetMtrxPl_Eq(kEarth, a, true));
    const Mat3 turn = rotate_z(-SiderialTime(true, 2459123, 0.777));
    EXPECT_LT(distance(load_matrix(a), turn), 2e-15);
    EXPECT_LT(distance(load_matrix(model->GetMtrxEq2K_EqCur()) * j2000_from_body(kEarth), turn),
              3e-15);
}

TEST_F(BodyFrames, FromTheJ2000EquatorIsTheTransposeAtItsOwnInstant) {
    double back[9];
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq(kMars, kDay + 10, 0.25, b, back));
    EXPECT_EQ(distance(load_matrix(back), transpose(load_matrix(b))), 0.0);
    model->UpdateSys(kDay + 10, 0.25);
    EXPECT_LT(distance(load_matrix(back), j2000_from_body(kMars)), 1e-15);

    // Two bodies have frames of the model's own.
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq(kEarth, 0, 0.0, a, back));
    ASSERT_TRUE(model->GetMtrxEq2K_PlEq({SSO_PLNT, 11}, 0, 0.0, b, back));
    EXPECT_EQ(distance(load_matrix(a), load_matrix(model->GetMtrxEq2K_EqCur())), 0.0);
    EXPECT_EQ(distance(load_matrix(b), load_matrix(model->GetMtrxEq2K_Ecl2K())), 0.0);
}

TEST_F(BodyFrames, WithoutElementsTheOutputIsLeftAlone) {
    a[0] = b[0] = 7;
    for (const SSO_ID& body : {SSO_ID(SSO_PLNT, 13), SSO_ID(SSO_MOON, 550),
                               SSO_ID(SSO_ASTR, 77), SSO_ID(SSO_PLNT, 99)}) {
        EXPECT_FALSE(model->GetMtrxPl_Eq(body, a, true));
        EXPECT_FALSE(model->GetMtrxEq2K_PlEq(body, kDay, 0.0, a, b));
        EXPECT_FALSE(model->PlgToEq(body, b, a));
        EXPECT_FALSE(model->EqToPlg(body, b, a));
        EXPECT_TRUE(a[0] == 7 && b[0] == 7);
    }
}

TEST_F(BodyFrames, AreRegisteredForOneBodyOrForItsType) {
    const auto add = [](int number, double dec) {
        const BodyRotationParams params = EncodeBodyRotation(1.0, dec, 0.0, 0.0);
        CSWSolSys::AddBodyRotationParams({SSO_CLST, number}, &params);
    };
    add(5, 0.5), add(-1, 0.25), add(5, 0.1);  // the last comes too late
    EXPECT_NEAR(j2000_from_body({SSO_CLST, 5}).r2.z, std::sin(0.5), 1e-7);
    EXPECT_NEAR(j2000_from_body({SSO_CLST, 6}).r2.z, std::sin(0.25), 1e-7);
    EXPECT_EQ(CSWSolSys::GetBodyRotation(ObjectKey{SSO_CLST, 6}), nullptr);
    EXPECT_EQ(CSWSolSys::GetBodyRotation(CSWSolSys::GetBodyRotationsCount()), nullptr);
}

TEST_F(BodyFrames, CarrySurfacePointsThereAndBack) {
    double v[3], back[3];
    for (const SSO_ID& body : {kEarth, kSaturn, SSO_ID(SSO_MOON, 301)})
        for (double lat = -1.5; lat < 1.55; lat += 0.25) {
            const double place[3] = {12.5, 0.7, lat};  // km
            ASSERT_TRUE(model->PlgToEq(body, place, v));
            ASSERT_TRUE(model->EqToPlg(body, v, back));
            EXPECT_NEAR(back[0], 12.5, 2e-3);  // the radius times half the digits of an angle
            EXPECT_NEAR(back[1], 0.7, 3e-8);
            EXPECT_NEAR(back[2], lat, 3e-8);
        }
    // A point is where an observer there stands: seen from it, the centre lies opposite.
    const OBSERVER site = support::observer(LOCATION_SURFACE, 6, 0, 0.7, 0.6);
    model->SetObserver(&site);
    const double place[3] = {0, 0.7, 0.6};
    ASSERT_TRUE(model->PlgToEq(kSaturn, place, v));
    ASSERT_TRUE(model->GetCurVec(kSaturn, back, true));
    EXPECT_LT(norm(load(v) + kAuKm * load(back)), 1e-3);
}

}  // namespace
