// Where SetObserver puts the observer.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/toolkit.h"
#include "tests/support/models.h"

namespace {

using solsys::kAuKm;
using solsys::State;
using solsys::Vec3;

class Observer : public testing::Test {
  protected:
    Observer() { model->UpdateSys(2458000, 0.3); }

    State place(const OBSERVER& o) {
        model->SetObserver(&o);
        double s[6];
        model->GetObserverVec2K(s);
        return solsys::load_state(s);
    }
    State body(std::int32_t type, int number) {
        double s[6];
        EXPECT_TRUE(model->GetHelVec2K(SSO_ID(type, number), 1, s));
        return solsys::load_state(s);
    }

    std::unique_ptr<CSWSolSys> model = support::built_in_model();
};

TEST_F(Observer, StandsAtTheEarthsCentreUntilToldOtherwise) {
    double s[6];
    model->GetObserverVec2K(s);
    EXPECT_EQ(norm(solsys::load(s) - body(SSO_PLNT, 3).r), 0.0);
    EXPECT_EQ(model->GetObserverSSO(), model->GetSS_Object(SSO_ID(SSO_PLNT, 3)));
}

TEST_F(Observer, AtABodyMovesWithIt) {
    const State there = place(support::on_moon(LOCATION_BODY, 502));
    const State europa = body(SSO_MOON, 502);
    EXPECT_EQ(norm(there.r - europa.r), 0.0);
    EXPECT_EQ(norm(there.v - europa.v), 0.0);
}

// Distances from the centre of known ellipsoids, and the speed of the turning ground.
struct Site {
    const char* name;
    int planet;
    double latitude;
    double height_km;
    double distance_km;
    double speed_kms;  // 2 pi R cos(lat) / day
};
class Surface : public Observer, public testing::WithParamInterface<Site> {};
TEST_P(Surface, IsWhereTheEllipsoidSays) {
    const Site& site = GetParam();
    const State there = place(support::observer(LOCATION_SURFACE, site.planet,
                                                site.height_km / kAuKm, 2.1, site.latitude));
    const State relative = there - body(SSO_PLNT, site.planet);
    // The offset is a difference of numbers of 1 au: 1.1e-16 au are 17 micrometres.
    EXPECT_NEAR(norm(relative.r) * kAuKm, site.distance_km, 1e-6);
    EXPECT_NEAR(norm(relative.v) * kAuKm / 86400, site.speed_kms, 2e-4);
}
INSTANTIATE_TEST_SUITE_P(
    Sites, Surface,
    testing::Values(
        Site{"equator", 3, 0.0, 0.0, 6378.137, 0.46510},
        Site{"pole", 3, solsys::kHalfPi, 0.0, 6356.752314, 0.0},
        Site{"height", 3, 0.0, 10.0, 6388.137, 0.46583},
        // Geocentric radius at 45 degrees (a^4+b^4 over a^2+b^2, root), its distance from the
        // axis 4517.59 km.
        Site{"mid-latitude", 3, solsys::kPi / 4, 0.0, 6367.489544, 0.32943},
        // Mars turns about the z axis of the Earth's equator here: its pole is 37 degrees off.
        Site{"mars", 4, -solsys::kHalfPi, 0.0, 3375.0, 0.1441}),
    [](const auto& tested) {
        std::string name = tested.param.name;
        name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
        return name;
    });

TEST_F(Observer, OnTheGroundMovesAsItsPositionsDo) {
    const OBSERVER site = support::observer(LOCATION_SURFACE, 3, 1e-8, -1.2, 0.7);
    const auto relative_at = [&](double fraction) {
        model->UpdateSys(2458000, fraction);
        return place(site) - body(SSO_PLNT, 3);
    };
    const double h = 1e-3;  // day
    const Vec3 moved = (0.5 / h) * (relative_at(0.3 + h).r - relative_at(0.3 - h).r);
    const State now = relative_at(0.3);
    // (omega h)^2 / 6 = 6.6e-6 from the difference; the rest is rounding of the period.
    EXPECT_LT(norm(moved - now.v), 1e-5 * norm(now.v));
}

TEST_F(Observer, BodyFixedOffsetsFollowTheBodysAxes) {
    // One equatorial radius up the pole of Mars; the pole as published for 2017 (317.68 deg,
    // 52.89 deg), which moves by less than 0.02 deg in the models about.
    const State there =
        place(support::observer(LOCATION_BODY_FIXED, 4, 0.01, 0.0, solsys::kHalfPi));
    const State mars = body(SSO_PLNT, 4);
    const Vec3 pole = unit(there.r - mars.r);
    const double ra = 317.68 * solsys::kDegree, dec = 52.89 * solsys::kDegree;
    const Vec3 published{std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra),
                         std::sin(dec)};
    EXPECT_LT(norm(pole - published), 0.02 * solsys::kDegree);
    EXPECT_EQ(norm(there.v - mars.v), 0.0);
}

TEST_F(Observer, AtAHeliocentricPointIsThereAndAtRest) {
    const OBSERVER point = support::observer(LOCATION_HELIOCENTRIC, 10, 1.5, 2.0, -0.3);
    const State there = place(point);
    EXPECT_EQ(norm(there.v), 0.0);
    double v[3];
    store(there.r, v);
    double spherical[3];
    model->TransferLocationVec(v, LOCATION_EQUATOR_2K, v, LOCATION_HELIOCENTRIC);
    psf1(v, Vmod(v, 3), spherical);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(spherical[i], point.location[i], 1e-12);
    // Its own body is seen where it is.
    double sun[3];
    ASSERT_TRUE(model->GetRefVec2K(SSO_ID(SSO_PLNT, 10), 0, sun));
    EXPECT_LT(norm(solsys::load(sun) + there.r), 1e-15);
}

TEST_F(Observer, AtAGalactocentricPointSeesTheSunAtItsDistance) {
    const State there = place(support::observer(LOCATION_GALACTOCENTRIC, 10, 1e9, 1.0, 0.5));
    const Vec3 offset{1e9 * std::cos(0.5) * std::cos(1.0), 1e9 * std::cos(0.5) * std::sin(1.0),
                      1e9 * std::sin(0.5)};
    double gal[9];
    model->GetMtrx_Eq2K_GalCur(gal);
    const Vec3 from_centre = solsys::load_matrix(gal) * there.r - Vec3{1753250853.100319, 0, 0};
    EXPECT_LT(norm(from_centre - offset), 2e-5);  // of 2e9: 1e-8 from the angles' half digits
    EXPECT_EQ(norm(there.v), 0.0);
}

TEST_F(Observer, KindsWithoutAPlaceStayWhereTheyWere) {
    const State before = place(support::observer(LOCATION_SURFACE, 3, 0, 1, 1));
    for (const std::int8_t kind : {std::int8_t{4}, std::int8_t{5}, std::int8_t{77}}) {
        const State after = place(support::observer(kind, 3, 9, 9, 9));
        EXPECT_EQ(norm(after.r - before.r), 0.0);
    }
}

TEST_F(Observer, RefusesWhatIsNoPlace) {
    const OBSERVER good = support::observer(LOCATION_SURFACE, 3, 0, 1, 1);
    const State before = place(good);
    model->SetObserver(nullptr);
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        const State after = place(support::observer(LOCATION_SURFACE, 4, 0, bad, 1));
        EXPECT_EQ(norm(after.r - before.r), 0.0);
        EXPECT_EQ(model->GetObserver().body_number, 3);
    }
}

TEST_F(Observer, KeepsTheModelsOwnGravityFlag) {
    model->setUseGravityForRNB(false);
    place(support::observer(LOCATION_SURFACE, 3));
    EXPECT_FALSE(model->GetObserver().gravity);
}

TEST_F(Observer, OnABodyKnownByItsTurnOnly) {
    // A body of 1 km whose pole is that of the J2000 equator (the ground is carried about that
    // of date, 2 mrad away) and which turns once in two days.
    const BodyRotationParams turning = EncodeBodyRotation(0, solsys::kHalfPi, 0, solsys::kPi);
    CSWSolSys::AddBodyRotationParams({SSO_MESH, 4711}, &turning);
    OBSERVER site = support::observer(LOCATION_SURFACE, 4711, 0, 0.4, 0.0);
    site.body_type = SSO_MESH;
    const State there = place(site);
    EXPECT_EQ(model->GetObserverSSO(), nullptr);
    EXPECT_NEAR(norm(there.r) * kAuKm, 1.0, 1e-9);
    EXPECT_NEAR(norm(there.v) / norm(there.r), solsys::kPi, 1e-5);

    site.body_number = 4712;  // nothing known at all
    EXPECT_EQ(norm(place(site).r), 0.0);
    EXPECT_EQ(model->GetMtrxTopoCur()[0], 1.0);
}

TEST_F(Observer, TheOrbitFrameLooksAtTheCentralBody) {
    place(support::on_moon(LOCATION_BODY, 301));
    double s[6];
    ASSERT_TRUE(model->GetVecCentre2K(SSO_ID(SSO_MOON, 301), 1, s));
    double down[3];
    double forward[3];
    model->TransferLocationVec(s, LOCATION_EQUATOR_2K, down, LOCATION_BODY);
    model->TransferLocationVec(s + 3, LOCATION_EQUATOR_2K, forward, LOCATION_BODY);
    EXPECT_NEAR(down[0], -Vmod(s, 3), 1e-15);
    EXPECT_LT(forward[1], -0.99 * Vmod(s + 3, 3));  // the second axis points back
    EXPECT_NEAR(forward[2], 0.0, 1e-15);
    // A planet goes round the Sun: no such frame.
    place(support::observer(LOCATION_BODY, 5));
    model->TransferLocationVec(s, LOCATION_EQUATOR_2K, down, LOCATION_BODY);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(down[i], s[i]);
}

}  // namespace
