// Directions and locations between frames, for observers of every kind.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "solsys/earth_orientation.h"
#include "tests/support/models.h"

namespace {

using namespace solsys;
using solsys::test::direction;
using support::observer;

constexpr double kVector[3] = {0.3, -1.2, 0.7};

struct Place {
    const char* name;
    OBSERVER observer;
};

class FromPlaces : public testing::TestWithParam<Place> {
  protected:
    FromPlaces() {
        model->SetObserver(&GetParam().observer);
        model->UpdateSys(2459123, 0.777);
    }
    Vec3 location(const double* v, int from, int to) {
        double out[3] = {v[0], v[1], v[2]};  // in place
        EXPECT_TRUE(model->TransferLocationVec(out, static_cast<char>(from), out,
                                               static_cast<char>(to)));
        return load(out);
    }
    Vec3 view(const double* v, int from, int to) {
        double out[3] = {v[0], v[1], v[2]};
        EXPECT_TRUE(
            model->TransferViewVec(out, static_cast<char>(from), out, static_cast<char>(to)));
        return load(out);
    }
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
};

using Conversion = bool (CSWSolSys::*)(bool, const double*, const double*, double*,
                                       double*) const;
constexpr std::pair<Conversion, Conversion> kPairs[] = {
    {&CSWSolSys::FromRAToAzm, &CSWSolSys::FromAzmToRA},
    {&CSWSolSys::FromRAToEclAng, &CSWSolSys::FromEclAngToRA},
    {&CSWSolSys::FromRAToPlEq, &CSWSolSys::FromPlEqToRA},
    {&CSWSolSys::FromRAToOrbAng, &CSWSolSys::FromOrbAngToRA},
    {&CSWSolSys::FromRAToGalAng, &CSWSolSys::FromGalAngToRA}};

TEST_P(FromPlaces, EveryAngleComesBackFromItsFrame) {
    std::mt19937 random{20260101};
    std::uniform_real_distribution<double> turn{0, kTwoPi}, height{-1, 1};
    for (const auto& [there, back] : kPairs)
        for (const bool j2000 : {false, true}) {
            std::vector<double> errors;
            for (int i = 0; i < 1000; ++i) {
                const double ra = turn(random), dec = std::asin(height(random));
                double lon = 0, lat = 0, ra2 = 0, dec2 = 0;
                (*model.*there)(j2000, &ra, &dec, &lon, &lat);
                ASSERT_TRUE(lon >= 0 && lon < kTwoPi && std::fabs(lat) <= kHalfPi);
                (*model.*back)(j2000, &lon, &lat, &ra2, &dec2);
                ASSERT_TRUE(ra2 >= 0 && ra2 < kTwoPi);
                errors.push_back(norm(direction(ra, dec) - direction(ra2, dec2)));
            }
            // The unit vectors take one of sine and cosine from the other, which has half its
            // digits next to an axis: within 2e-8 there, to rounding elsewhere.
            std::sort(errors.begin(), errors.end());
            EXPECT_LT(errors[500], 2e-15);
            EXPECT_LT(errors.back(), 5e-8);
        }
}

TEST_P(FromPlaces, VectorsComeToEveryFrameByEveryRoad) {
    const auto check = [&](auto&& transfer, int codes) {
        for (int a = 0; a < codes; ++a)
            for (int b = 0; b < codes; ++b) {
                const Vec3 direct = transfer(kVector, a, b);
                EXPECT_NEAR(norm(direct), norm(load(kVector)), 1e-14);
                for (int c = 0; c < codes; ++c) {
                    double over[3];
                    store(transfer(kVector, a, c), over);
                    EXPECT_LT(norm(direct - transfer(over, c, b)), 1e-14)
                        << a << " to " << b << " by " << c;
                }
            }
    };
    check([&](auto... args) { return location(args...); }, 10);
    check([&](auto... args) { return view(args...); }, 8);
}

TEST_P(FromPlaces, SphericalLocationsComeBackFromEveryFrame) {
    for (std::int8_t a = 0; a < 10; ++a)
        for (std::int8_t b = 0; b < 10; ++b) {
            // From the centre of the Galaxy the solar system is a point: nothing comes back.
            if (b == LOCATION_GALACTOCENTRIC && a != b) continue;
            SphCoor there;
            there.frame = a;
            const double r = a == LOCATION_SURFACE          ? 1e-6
                             : a == LOCATION_GALACTOCENTRIC ? 1e9
                                                            : 1.25;
            there.location[0] = r, there.location[1] = 0.8, there.location[2] = 0.4;
            EXPECT_TRUE(model->TransferLocationCoor(&there, b));
            EXPECT_EQ(there.frame, b);
            model->TransferLocationCoor(&there, a);
            // As for the angles above, next to an axis half the digits are left; a surface
            // height is small beside the distance of 4e-5 au at most that it is taken from.
            EXPECT_NEAR(there.location[0], r, 5e-8 * (a == LOCATION_SURFACE ? 4e-5 : r))
                << int{a} << " by " << int{b};
            EXPECT_NEAR(there.location[1], 0.8, 1e-7) << int{a} << " by " << int{b};
            EXPECT_NEAR(there.location[2], 0.4, 1e-7) << int{a} << " by " << int{b};
        }
}

INSTANTIATE_TEST_SUITE_P(
    Observers, FromPlaces,
    testing::Values(Place{"EarthCentre", observer(LOCATION_BODY_FIXED, 3)},
                    Place{"EarthSurface", observer(LOCATION_SURFACE, 3, 1e-8, 0.23, 0.91)},
                    Place{"EarthPole", observer(LOCATION_SURFACE, 3, 0, 1.0, kHalfPi)},
                    Place{"MarsSurface", observer(LOCATION_SURFACE, 4, 0, 4.0, -0.3)},
                    Place{"Moon", support::on_moon(LOCATION_SURFACE, 301, 0, 0.4, 0.1)},
                    Place{"AtGanymede", support::on_moon(LOCATION_BODY, 503)},
                    Place{"Heliocentric", observer(LOCATION_HELIOCENTRIC, 10, 2, 1, 0.5)},
                    Place{"Galactic", observer(LOCATION_GALACTOCENTRIC, 10, 1e9, 1, 0.5)}),
    [](const auto& tested) { return tested.param.name; });

class EarthSite : public testing::TestWithParam<std::pair<double, double>> {};

TEST(Directions, ThatAreNoNumbersHaveNoAngles) {
    const auto model = support::built_in_model();
    const double bad = std::numeric_limits<double>::quiet_NaN(), good = 0.5;
    for (const auto& [there, back] : kPairs)
        for (const Conversion convert : {there, back})
            for (const auto& [lon, lat] : {std::pair{&bad, &good}, {&good, &bad}}) {
                double to_lon = 0, to_lat = 0;
                ((*model).*convert)(true, lon, lat, &to_lon, &to_lat);
                EXPECT_TRUE(std::isnan(to_lon) && std::isnan(to_lat));
            }
}

// Spherical trigonometry, which the chains of matrices know nothing of.
TEST_P(EarthSite, HorizonAgreesWithTheHourAngle) {
    const auto [lambda, phi] = GetParam();
    const auto model = support::built_in_model();
    OBSERVER site = observer(LOCATION_SURFACE, 3, 0, lambda, phi);
    model->SetObserver(&site);
    model->UpdateSys(2459123, 0.777);
    const double theta = SiderialTime(true, 2459123, 0.777) + lambda;
    for (double ra = 0.1; ra < kTwoPi; ra += 0.7)
        for (double dec = -1.3; dec < 1.5; dec += 0.4) {
            const double h = theta - ra;
            const double sin_alt =
                std::sin(phi) * std::sin(dec) + std::cos(phi) * std::cos(dec) * std::cos(h);
            const double north =
                std::cos(phi) * std::sin(dec) - std::sin(phi) * std::cos(dec) * std::cos(h);
            const double east = -std::cos(dec) * std::sin(h);
            double azm = 0, alt = 0;
            model->FromRAToAzm(false, &ra, &dec, &azm, &alt);
            EXPECT_NEAR(std::sin(alt), sin_alt, 1e-13);
            EXPECT_NEAR(std::remainder(azm - std::atan2(east, north), kTwoPi) * std::cos(alt),
                        0.0, 1e-13);
        }
    // The rows of the matrix of the horizon alone: north, west, zenith; any model has it.
    double m[9] = {7};
    EXPECT_FALSE(CSWSolSys().GetMtrxTopo(nullptr, m));
    EXPECT_EQ(m[0], 7);
    ASSERT_TRUE(CSWSolSys().GetMtrxTopo(&site, m));
    const Mat3 axes = transpose(load_matrix(m));
    EXPECT_LT(norm(axes.r2 - direction(lambda, phi)), 3e-8);
    EXPECT_LT(norm(axes.r1 - direction(lambda - kHalfPi, 0)), 3e-8);
    EXPECT_LT(norm(axes.r0 - cross(axes.r1, axes.r2)), 1e-14);
}
INSTANTIATE_TEST_SUITE_P(Sites, EarthSite,
                         testing::Values(std::pair(0.3, 0.9), std::pair(-2.1, -0.6),
                                         std::pair(4.5, 0.01), std::pair(3.0, -1.5),
                                         std::pair(2.0, kHalfPi)));

// Centre and pole of the Galaxy in J2000, as carried over from the definition in B1950; the
// adopted axes are 4.3 arcmin off along its equator and 0.9 arcmin off at its pole.
TEST(Galaxy, IsWhereItsAxesPoint) {
    double m[9];
    CSWSolSys model;
    model.UpdateSys(2451545, 0.0);
    model.GetMtrx_Eq2K_GalCur(m);
    const Mat3 galactic = load_matrix(m);
    EXPECT_LT(norm(galactic.r0 - direction(266.40510 * kDegree, -28.93617 * kDegree)), 1.5e-3);
    EXPECT_LT(norm(galactic.r2 - direction(192.85948 * kDegree, 27.12825 * kDegree)), 3e-4);
}

}  // namespace
