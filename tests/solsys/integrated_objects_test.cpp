// Bodies of a model that are moved by integration.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "core/linalg.h"
#include "solsys/de_ephemeris.h"
#include "solsys/solar_system.h"

namespace {

using solsys::load;
using solsys::Vec3;

constexpr double kDegree = 3.14159265358979323846 / 180;
const SSO_ID kIntegrated(SSO_FAST, 3), kByElements(SSO_ASTR, 3);

// (3) Juno, osculating on 2022 August 9.
AsteroidRecord juno() {
    AsteroidRecord record;
    record.elements = {2.670422183695509,
                       0.256775023053242,
                       12.992225866813 * kDegree,
                       169.8459410858143 * kDegree,
                       247.8039388757044 * kDegree,
                       0.225857326596 * kDegree,
                       306.6224068399492 * kDegree,
                       0.5,
                       2459800};
    record.H = 5.12F, record.G = 0.32F;
    return record;
}

class IntegratedObjects : public testing::Test {
  protected:
    IntegratedObjects() {
        DE_Ephemeris::clear();
        model_.InitSys("");
        model_.AddAsteroid(3, juno());
        model_.AddIntegratedAsteroid(3, juno());
    }
    Vec3 place(const SSO_ID& id, int day) {
        model_.SetTime(day, 0.25, false);
        double r[3] = {};
        EXPECT_TRUE(model_.GetHelVec2K(id, 0, r));
        return load(r);
    }
    CSWSolSys model_;
};

// The same start, other positions twenty years on; one integration serves both ways of asking.
TEST_F(IntegratedObjects, LeaveTheirOsculatingOrbitAsTimeGoesBy) {
    EXPECT_LT(norm(place(kIntegrated, 2459800) - place(kByElements, 2459800)), 1e-9);
    const Vec3 there = place(kIntegrated, 2452500);
    EXPECT_GT(norm(there - place(kByElements, 2452500)), 0.005);
    ASSERT_TRUE(model_.SetIntegrated(kByElements));
    EXPECT_EQ(norm(there - place(kByElements, 2452500)), 0);
    double place_of_date[3], same[3];
    model_.UpdateSys(2452500, 0.25);
    ASSERT_TRUE(model_.GetRADecVis(kIntegrated, place_of_date, 0));
    ASSERT_TRUE(model_.GetRADecVis(kByElements, same, 0));
    EXPECT_THAT(same, testing::ElementsAreArray(place_of_date));
    EXPECT_TRUE(model_.SetIntegrated(kByElements, false));
    EXPECT_GT(norm(there - place(kByElements, 2452500)), 0.005);
    EXPECT_FALSE(model_.SetIntegrated(SSO_ID(SSO_ASTR, 77)));
    EXPECT_FALSE(model_.SetIntegrated(SSO_ID(SSO_PLNT, 5)));
}

// A kind is cleared by itself, and what is added again starts by its elements.
TEST_F(IntegratedObjects, AreClearedKindByKind) {
    const Vec3 by_elements = place(kByElements, 2452500);
    ASSERT_TRUE(model_.SetIntegrated(kByElements));
    const Vec3 there = place(kByElements, 2452500);
    EXPECT_GT(norm(there - by_elements), 0.005);
    model_.ClearIntegratedAsteroids();
    EXPECT_EQ(model_.GetIntegratedAsteroid(3), nullptr);
    EXPECT_EQ(norm(place(kByElements, 2452500) - there), 0);
    model_.ClearAsteroids();
    ASSERT_TRUE(model_.AddAsteroid(3, juno()));
    EXPECT_EQ(norm(place(kByElements, 2452500) - by_elements), 0);
}

TEST_F(IntegratedObjects, FallBackOnTheOsculatingOrbit) {
    EXPECT_FALSE(model_.IsIntegrated(kByElements));
    place(kIntegrated, 2459000);
    EXPECT_TRUE(model_.IsIntegrated(kIntegrated));
    AsteroidRecord late = juno();  // two years before the theory ends
    late.elements.epochDay = 2816200;
    ASSERT_TRUE(model_.AddIntegratedAsteroid(4, late));
    model_.AddAsteroid(4, late);
    const SSO_ID last(SSO_FAST, 4), last_by_elements(SSO_ASTR, 4);
    EXPECT_GT(norm(place(last, 2816400) - place(last_by_elements, 2816400)), 0);
    EXPECT_EQ(norm(place(last, 2820000) - place(last_by_elements, 2820000)), 0);
    EXPECT_FALSE(model_.IsIntegrated(last));

    int calls = 0;
    model_.SetIntegrCallBack(
        [](double done, void* count) {
            return done >= 0 && done <= 1 && ++*static_cast<int*>(count) < 2;
        },
        &calls);
    EXPECT_EQ(norm(place(kIntegrated, 2440000) - place(kByElements, 2440000)), 0);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(norm(place(kIntegrated, 2459000) - place(kByElements, 2459000)), 0);
    EXPECT_EQ(calls, 2);
    model_.SetIntegrCallBack(nullptr, nullptr);
    EXPECT_GT(norm(place(kIntegrated, 2440000) - place(kByElements, 2440000)), 1e-3);
}

TEST_F(IntegratedObjects, AnswerWhatTheirKindsDo) {
    const SSO_ID comet(SSO_FCOM, 8);
    CometRecord record{juno().elements, 7, 12};
    ASSERT_TRUE(model_.AddIntegratedComet(8, record));
    model_.AddComet(8, record);
    float m = 0, same = 0;
    for (const auto& [one, other] :
         {std::pair{kIntegrated, kByElements}, std::pair{comet, SSO_ID(SSO_COMT, 8)}}) {
        model_.UpdateSys(2459800, 0.5);
        EXPECT_TRUE(model_.GetMagnitude(one, &m));
        EXPECT_TRUE(model_.GetMagnitude(other, &same));
        EXPECT_NEAR(m, same, 1e-5);
        EXPECT_EQ(model_.GetOrbitalPeriod(one), model_.GetOrbitalPeriod(other));
        EXPECT_EQ(model_.GetParentGravity(one), model_.GetParentGravity(other));
        EXPECT_EQ(model_.GetCentralBodyID(one), SSO_ID(SSO_PLNT, 10));
        EXPECT_TRUE(model_.CheckSSO(&one));
        std::vector<SSO_ID> all;
        model_.GetFullList(&all);
        EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
        EXPECT_EQ(std::count(all.begin(), all.end(), one), 1);
    }
    EXPECT_NE(model_.GetIntegratedComet(8), nullptr);
    EXPECT_TRUE(model_.RemoveIntegratedComet(8));
    EXPECT_FALSE(model_.RemoveIntegratedComet(8));
    EXPECT_FALSE(model_.CheckSSO(&comet));
    AsteroidRecord bad = juno();
    bad.elements.e = -1;
    EXPECT_FALSE(model_.AddIntegratedAsteroid(4, bad));
    EXPECT_FALSE(model_.AddIntegratedUserObject(4, {}));
}

// The node of a low orbit goes back by 3/2 J2 n (R/p)^2 cos i.
TEST_F(IntegratedObjects, GoRoundTheEarthAsItsOblatenessHasIt) {
    constexpr double kAu = 149597870.7,
                     kEarthGm = 398600.44 * 86400.0 * 86400.0 / (kAu * kAu * kAu);
    const double a = 7400 / kAu, i = 50 * kDegree, n = std::sqrt(kEarthGm / a) / a;
    UserObjectRecord record;
    record.epoch_day = 2459800;
    record.state[0] = a;
    record.state[4] = n * a * std::cos(i), record.state[5] = n * a * std::sin(i);
    ASSERT_TRUE(model_.AddIntegratedUserObject(1, record));
    const SSO_ID satellite(SSO_FSCO, 1);
    EXPECT_EQ(model_.GetCentralBodyID(satellite), SSO_ID(SSO_PLNT, 3));
    EXPECT_EQ(model_.GetParentGravity(satellite), model_.GetGravity(SSO_ID(SSO_PLNT, 3)));
    EXPECT_NEAR(model_.GetOrbitalPeriod(satellite) * n, 2 * 180 * kDegree, 1e-3);
    double s[6];
    const int days = 4;
    model_.SetTime(2459800 + days, 0, false);
    ASSERT_TRUE(model_.GetVecCentre2K(satellite, 1, s));
    const Vec3 normal = cross(load(s), load(s + 3));
    const double rate = 1.5 * 1.08263e-3 * n * std::pow(6378.137 / 7400, 2) * std::cos(i);
    EXPECT_NEAR(std::atan2(normal.x, -normal.y) / (-rate * days), 1, 0.01);

    double earth[3], heliocentric[3];
    ASSERT_TRUE(model_.GetHelVec2K(SSO_ID(SSO_PLNT, 3), 0, earth));
    ASSERT_TRUE(model_.GetHelVec2K(satellite, 0, heliocentric));
    EXPECT_LT(norm(load(heliocentric) - load(earth) - load(s)), 1e-15);
}

// Aboard a spacecraft the plumb line leaves the Earth's centre by 3/2 J2 (R/r)^2 sin 2 phi.
TEST_F(IntegratedObjects, PlumbLinesAboardSpacecraftFollowGravity) {
    SpacecraftRecord record;
    record.central_number = 3;
    record.epoch_day = 2459800;
    record.q = 7000 / 149597870.7, record.i = 1.2, record.peri = 0.7;
    record.n = 92.8;
    ASSERT_TRUE(model_.AddSpacecraft(5, &record, 1));
    OBSERVER aboard;
    aboard.kind = LOCATION_BODY;
    aboard.body_type = SSO_SCFT, aboard.body_number = 5;
    Vec3 down[2];
    double sin_latitude = 0;
    for (const bool gravity : {false, true}) {
        model_.setUseGravityForRNB(gravity);
        model_.SetObserver(&aboard);
        model_.UpdateSys(2459800, 0.02);
        double r[3];
        ASSERT_TRUE(model_.GetVecCentre2K(SSO_ID(SSO_SCFT, 5), 0, r));
        const Vec3 nadir = -unit(load(r));
        sin_latitude = -nadir.z;
        const double ra = std::atan2(nadir.y, nadir.x), dec = std::asin(nadir.z);
        double lon, lat;
        model_.FromRAToOrbAng(true, &ra, &dec, &lon, &lat);
        down[gravity] = {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon),
                         std::sin(lat)};
    }
    const double latitude = std::asin(sin_latitude);
    const double bent =
        1.5 * 1.08263e-3 * std::pow(6378.137 / 7000, 2) * std::fabs(std::sin(2 * latitude));
    ASSERT_GT(bent, 1e-4);
    EXPECT_NEAR(norm(cross(down[0], down[1])) / bent, 1, 0.02);
}

// A dwarf planet with an integrator takes its satellites along.
TEST_F(IntegratedObjects, DwarfPlanetsTakeTheirSatellitesAlong) {
    const SSO_ID haumea(SSO_PLNT, 14), moon(SSO_MOON, 1401);
    const int day = 2463600;
    const Vec3 before = place(haumea, day), moon_before = place(moon, day);
    model_.GetSS_Object(haumea)->AttachIntegrator(new IntegRA15);
    ASSERT_NE(model_.GetSS_Object(haumea)->GetIntegrator(), nullptr);
    const Vec3 moved = place(haumea, day) - before;
    EXPECT_GT(norm(moved), 1e-5);
    EXPECT_LT(norm(moved), 0.1);
    EXPECT_LT(norm(place(moon, day) - moon_before - moved), 1e-13);
}

}  // namespace
