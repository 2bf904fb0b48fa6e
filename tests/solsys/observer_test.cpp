// Where SetObserver puts the observer.
#include <gtest/gtest.h>

#include <limits>

#include "solsys/toolkit.h"
#include "tests/support/models.h"

namespace {

using namespace solsys;
using solsys::test::direction;
using support::observer;

class Observer : public testing::Test {
  protected:
    Observer() { model->UpdateSys(2458000, 0.3); }
    State now() {
        double s[6];
        model->GetObserverVec2K(s);
        return load_state(s);
    }
    State place(const OBSERVER& o) {
        model->SetObserver(&o);
        return now();
    }
    State body(std::int32_t type, int number) {
        double s[6];
        EXPECT_TRUE(model->GetHelVec2K(SSO_ID(type, number), 1, s));
        return load_state(s);
    }
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
};

TEST_F(Observer, AtABodyMovesWithItAndStartsAtTheEarth) {
    EXPECT_EQ(norm(now().r - body(SSO_PLNT, 3).r), 0.0);
    EXPECT_EQ(model->GetObserverSSO(), model->GetSS_Object(SSO_ID(SSO_PLNT, 3)));
    const State off = place(support::on_moon(LOCATION_BODY, 502)) - body(SSO_MOON, 502);
    EXPECT_EQ(norm(off.r) + norm(off.v), 0.0);
}

// Distances from the centre of known ellipsoids, and the speed of the turning ground.
TEST_F(Observer, OnASurfaceIsWhereTheEllipsoidSays) {
    constexpr double kSites[][5] = {
        // planet, latitude, height [km], distance [km], speed: 2 pi R cos(lat) / day [km/s]
        {3, 0.0, 0.0, 6378.137, 0.46510},
        {3, kHalfPi, 0.0, 6356.752314, 0.0},
        {3, 0.0, 10.0, 6388.137, 0.46583},
        // Geocentric radius at 45 degrees (a^4+b^4 over a^2+b^2, root), its distance from the
        // axis 4517.59 km.
        {3, kPi / 4, 0.0, 6367.489544, 0.32943},
        // Mars turns about the z axis of the Earth's equator here: its pole is 37 degrees off.
        {4, -kHalfPi, 0.0, 3375.0, 0.1441}};
    for (const auto& [number, latitude, height, distance, speed] : kSites) {
        const int planet = static_cast<int>(number);
        const State there =
            place(observer(LOCATION_SURFACE, planet, height / kAuKm, 2.1, latitude)) -
            body(SSO_PLNT, planet);
        // The offset is a difference of numbers of 1 au: 1.1e-16 au are 17 micrometres.
        EXPECT_NEAR(norm(there.r) * kAuKm, distance, 1e-6) << latitude;
        EXPECT_NEAR(norm(there.v) * kAuKm / 86400, speed, 2e-4) << latitude;
    }
}

TEST_F(Observer, BodyFixedOffsetsFollowTheBodysAxes) {
    // Up the pole of Mars, as published for 2017 (317.68 deg, 52.89 deg), which moves by less
    // than 0.02 deg in the models about.
    const State there = place(observer(LOCATION_BODY_FIXED, 4, 0.01, 0.0, kHalfPi));
    const State mars = body(SSO_PLNT, 4);
    EXPECT_LT(norm(unit(there.r - mars.r) - direction(317.68 * kDegree, 52.89 * kDegree)),
              0.02 * kDegree);
    EXPECT_EQ(norm(there.v - mars.v), 0.0);
}

TEST_F(Observer, AtAHeliocentricPointIsThereAndAtRest) {
    const State there = place(observer(LOCATION_HELIOCENTRIC, 10, 1.5, 2.0, -0.3));
    EXPECT_EQ(norm(there.v), 0.0);
    const Vec3 ecliptic = load_matrix(model->GetMtrxEq2K_EclCur()) * there.r;
    EXPECT_LT(norm(ecliptic - 1.5 * direction(2.0, -0.3)), 1e-12);
    double sun[3];  // its own body is seen where it is
    ASSERT_TRUE(model->GetRefVec2K(SSO_ID(SSO_PLNT, 10), 0, sun));
    EXPECT_LT(norm(load(sun) + there.r), 1e-15);
}

TEST_F(Observer, AtAGalactocentricPointSeesTheSunAtItsDistance) {
    const State there = place(observer(LOCATION_GALACTOCENTRIC, 10, 1e9, 1.0, 0.5));
    double gal[9];
    model->GetMtrx_Eq2K_GalCur(gal);
    const Vec3 from_centre = load_matrix(gal) * there.r - Vec3{1753250853.100319, 0, 0};
    // Of 2e9: 1e-8 from the angles' half digits.
    EXPECT_LT(norm(from_centre - 1e9 * direction(1.0, 0.5)), 2e-5);
    EXPECT_EQ(norm(there.v), 0.0);
}

TEST_F(Observer, StaysWhereItWasForWhatIsNoPlace) {
    model->setUseGravityForRNB(false);
    const State before = place(observer(LOCATION_SURFACE, 3, 0, 1, 1));
    EXPECT_FALSE(model->GetObserver().gravity);  // the model's own flag, not the record's
    model->SetObserver(nullptr);
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(norm(place(observer(LOCATION_SURFACE, 4, 0, bad, 1)).r - before.r), 0.0);
        EXPECT_EQ(model->GetObserver().body_number, 3);
    }
    for (const std::int8_t kind : {std::int8_t{4}, std::int8_t{5}, std::int8_t{77}})
        EXPECT_EQ(norm(place(observer(kind, 3, 9, 9, 9)).r - before.r), 0.0) << int{kind};
}

TEST_F(Observer, OnABodyKnownByItsTurnOnly) {
    // A body of 1 km whose pole is that of the J2000 equator (the ground is carried about that
    // of date, 2 mrad away) and which turns once in two days.
    const BodyRotationParams turning = EncodeBodyRotation(0, kHalfPi, 0, kPi);
    CSWSolSys::AddBodyRotationParams({SSO_MESH, 4711}, &turning);
    OBSERVER site = observer(LOCATION_SURFACE, 4711, 0, 0.4, 0.0);
    site.body_type = SSO_MESH;
    const State there = place(site);
    EXPECT_EQ(model->GetObserverSSO(), nullptr);
    EXPECT_NEAR(norm(there.r) * kAuKm, 1.0, 1e-9);
    EXPECT_NEAR(norm(there.v) / norm(there.r), kPi, 1e-5);

    site.body_number = 4712;  // nothing known at all
    EXPECT_EQ(norm(place(site).r), 0.0);
    EXPECT_EQ(model->GetMtrxTopoCur()[0], 1.0);
}

TEST_F(Observer, TheOrbitFrameLooksAtTheCentralBody) {
    place(support::on_moon(LOCATION_BODY, 301));
    double s[6], down[3], forward[3];
    ASSERT_TRUE(model->GetVecCentre2K(SSO_ID(SSO_MOON, 301), 1, s));
    model->TransferLocationVec(s, LOCATION_EQUATOR_2K, down, LOCATION_BODY);
    model->TransferLocationVec(s + 3, LOCATION_EQUATOR_2K, forward, LOCATION_BODY);
    EXPECT_NEAR(down[0], -Vmod(s, 3), 1e-15);
    EXPECT_LT(forward[1], -0.99 * Vmod(s + 3, 3));  // the second axis points back
    EXPECT_NEAR(forward[2], 0.0, 1e-15);
    // It stays while the observer moves about the same body.
    place(support::on_moon(LOCATION_BODY_FIXED, 301, 1e-5));
    model->TransferLocationVec(s, LOCATION_EQUATOR_2K, forward, LOCATION_BODY);
    EXPECT_EQ(norm(load(forward) - load(down)), 0.0);
    // A planet goes round the Sun: no such frame.
    place(observer(LOCATION_BODY, 5));
    model->TransferLocationVec(s, LOCATION_EQUATOR_2K, down, LOCATION_BODY);
    EXPECT_EQ(norm(load(down) - load(s)), 0.0);
}

}  // namespace
