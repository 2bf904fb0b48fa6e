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
