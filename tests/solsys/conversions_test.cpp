// Directions and locations between frames, for observers of every kind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/earth_orientation.h"
#include "tests/support/models.h"

namespace {

using solsys::kHalfPi;
using solsys::kPi;
using solsys::kTwoPi;
using solsys::Vec3;

Vec3 direction(double lon, double lat) {
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

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
    std::unique_ptr<CSWSolSys> model = support::built_in_model();
    std::mt19937 random{20260101};
    std::uniform_real_distribution<double> turn{0, kTwoPi};
    std::uniform_real_distribution<double> height{-1, 1};
};

using Conversion = void (CSWSolSys::*)(bool, const double*, const double*, double*,
                                       double*) const;
constexpr std::pair<Conversion, Conversion> kPairs[] = {
    {&CSWSolSys::FromRAToAzm, &CSWSolSys::FromAzmToRA},
    {&CSWSolSys::FromRAToEclAng, &CSWSolSys::FromEclAngToRA},
    {&CSWSolSys::FromRAToPlEq, &CSWSolSys::FromPlEqToRA},
    {&CSWSolSys::FromRAToOrbAng, &CSWSolSys::FromOrbAngToRA},
    {&CSWSolSys::FromRAToGalAng, &CSWSolSys::FromGalAngToRA}};

TEST_P(FromPlaces, EveryAngleComesBackFromItsFrame) {
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

TEST_P(FromPlaces, AVectorToTheHorizonAgreesWithItsAngles) {
    const double ra = 1.1, dec = -0.3;
    double v[3];
    store(direction(ra, dec), v);
    model->VecFromRAToAzm(v, v);
    double azm = 0, alt = 0;
    model->FromRAToAzm(false, &ra, &dec, &azm, &alt);
    EXPECT_LT(norm(solsys::load(v) - direction(-azm, alt)), 1e-14);
    double celestial_from_horizon[9];
    model->GetLocal2CelestialMtrx(celestial_from_horizon);
    EXPECT_LT(norm(solsys::load_matrix(celestial_from_horizon) * solsys::load(v) -
                   direction(ra, dec)),
              1e-14);
}

TEST_P(FromPlaces, TheZenithIsHighest) {
    double m[9];
    model->GetLocal2CelestialMtrx(m);
    const Vec3 zenith{m[2], m[5], m[8]};
    const double ra = std::atan2(zenith.y, zenith.x), dec = std::asin(zenith.z);
    double azm = 0, alt = 0;
    model->FromRAToAzm(false, &ra, &dec, &azm, &alt);
    EXPECT_NEAR(alt, kHalfPi, 3e-8);
}

TEST_P(FromPlaces, MatricesTurnAndDoNotStretch) {
    double gal[9];
    double horizon[9];
    model->GetMtrx_EqCur_GalCur(gal);
    model->GetLocal2CelestialMtrx(horizon);
    for (const double* matrix :
         {model->GetMtrxEq2K_EqCur(), model->GetMtrxEq2K_Ecl2K(), model->GetMtrxEq2K_EclCur(),
          model->GetMtrxEqCur_EclCur(), model->GetMtrxPrecession(), model->GetMtrxNutation(),
          model->GetMtrxTopoCur(), static_cast<const double*>(gal),
          static_cast<const double*>(horizon)}) {
        const auto m = solsys::load_matrix(matrix);
        const auto square = m * transpose(m);
        EXPECT_LT(norm(square.r0 - Vec3{1, 0, 0}), 1e-14);
        EXPECT_LT(norm(square.r1 - Vec3{0, 1, 0}), 1e-14);
        EXPECT_LT(norm(square.r2 - Vec3{0, 0, 1}), 1e-14);
    }
}

TEST_P(FromPlaces, LocationsAndViewsComeBackFromEveryFrameByEveryRoad) {
    const double v[3] = {0.3, -1.2, 0.7};
    const auto check = [&](auto transfer, int codes) {
        for (int a = 0; a < codes; ++a)
            for (int b = 0; b < codes; ++b) {
                double direct[3];
                double over[3];
                transfer(v, a, direct, b);
                EXPECT_NEAR(norm(solsys::load(direct)), norm(solsys::load(v)), 1e-14);
                for (int c = 0; c < codes; ++c) {
                    transfer(v, a, over, c);
                    transfer(over, c, over, b);  // in place
                    EXPECT_LT(norm(solsys::load(direct) - solsys::load(over)), 1e-14)
                        << a << " to " << b << " by " << c;
                }
            }
    };
    check(
        [&](const double* in, int from, double* out, int to) {
            model->TransferLocationVec(in, static_cast<char>(from), out, static_cast<char>(to));
        },
        10);
    check(
        [&](const double* in, int from, double* out, int to) {
            model->TransferViewVec(in, static_cast<char>(from), out, static_cast<char>(to));
        },
        8);
}

TEST_P(FromPlaces, TheTwoTransfersMeanTheSameFrames) {
    // Location code, view code: body, ecliptic, galactic, equator of date, orbit.
    const std::pair<char, char> same[] = {{0, 3}, {1, 2}, {6, 5}, {8, 0}};
    const double v[3] = {0.3, -1.2, 0.7};
    for (const auto& [location, view] : same) {
        if (location == 1 && GetParam().observer.body_number == 10) continue;
        double a[3];
        double b[3];
        model->TransferLocationVec(v, LOCATION_EQUATOR_CUR, a, location);
        model->TransferViewVec(v, 0, b, view);
        EXPECT_LT(norm(solsys::load(a) - solsys::load(b)), 1e-14) << int{location};
    }
}

TEST_P(FromPlaces, SphericalLocationsComeBackFromEveryFrame) {
    for (std::int8_t a = 0; a < 10; ++a)
        for (std::int8_t b = 0; b < 10; ++b) {
            // From the centre of the Galaxy the solar system is a point: nothing comes back.
            if (b == LOCATION_GALACTOCENTRIC && a != b) continue;
            SphCoor location;
            location.frame = a;
            location.location[0] = a == LOCATION_SURFACE          ? 1e-6
                                   : a == LOCATION_GALACTOCENTRIC ? 1e9
                                                                  : 1.25;
            location.location[1] = 0.8, location.location[2] = 0.4;
            const SphCoor start = location;
            model->TransferLocationCoor(&location, b);
            EXPECT_EQ(location.frame, b);
            model->TransferLocationCoor(&location, a);
            // As for the angles above, next to an axis half the digits are left; a surface
            // height is small beside the distance of 4e-5 au at most that it is taken from.
            const double modulus = a == LOCATION_SURFACE ? 4e-5 : start.location[0];
            EXPECT_NEAR(location.location[0], start.location[0], 5e-8 * modulus)
                << int{a} << " by " << int{b};
            for (int i = 1; i < 3; ++i)
                EXPECT_NEAR(location.location[i], start.location[i], 1e-7)
                    << int{a} << " by " << int{b} << ", component " << i;
        }
}

INSTANTIATE_TEST_SUITE_P(
    Observers, FromPlaces,
    testing::Values(
        Place{"EarthCentre", support::observer(LOCATION_BODY_FIXED, 3)},
        Place{"EarthSurface", support::observer(LOCATION_SURFACE, 3, 1e-8, 0.23, 0.91)},
        Place{"EarthPole", support::observer(LOCATION_SURFACE, 3, 0, 1.0, kHalfPi)},
        Place{"MarsSurface", support::observer(LOCATION_SURFACE, 4, 0, 4.0, -0.3)},
        Place{"Moon", support::on_moon(LOCATION_SURFACE, 301, 0, 0.4, 0.1)},
        Place{"AtGanymede", support::on_moon(LOCATION_BODY, 503)},
        Place{"Heliocentric", support::observer(LOCATION_HELIOCENTRIC, 10, 2, 1, 0.5)},
        Place{"Galactocentric", support::observer(LOCATION_GALACTOCENTRIC, 10, 1e9, 1, 0.5)}),
    [](const auto& tested) { return tested.param.name; });

class EarthSite : public testing::TestWithParam<std::pair<double, double>> {};

// Spherical trigonometry, which the chains of matrices know nothing of.
TEST_P(EarthSite, HorizonAgreesWithTheHourAngle) {
    const auto [lambda, phi] = GetParam();
    const auto model = support::built_in_model();
    const OBSERVER site = support::observer(LOCATION_SURFACE, 3, 0, lambda, phi);
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
}

TEST_P(EarthSite, HorizonMatrixIsNorthWestZenith) {
    const auto [lambda, phi] = GetParam();
    OBSERVER site = support::observer(LOCATION_SURFACE, 3, 0, lambda, phi);
    const CSWSolSys model;
    double m[9];
    ASSERT_TRUE(model.GetMtrxTopo(&site, m));
    const auto horizon = solsys::load_matrix(m);
    const Vec3 zenith = horizon * Vec3{0, 0, 1};
    const Vec3 west = horizon * Vec3{0, 1, 0};
    EXPECT_LT(norm(zenith - direction(lambda, phi)), 3e-8);
    EXPECT_LT(norm(west - direction(lambda - kHalfPi, 0)), 3e-8);
    EXPECT_LT(norm(horizon * Vec3{1, 0, 0} - cross(west, zenith)), 1e-14);
}
INSTANTIATE_TEST_SUITE_P(Sites, EarthSite,
                         testing::Values(std::pair(0.3, 0.9), std::pair(-2.1, -0.6),
                                         std::pair(4.5, 0.01), std::pair(3.0, -1.5),
                                         std::pair(2.0, kHalfPi)));

TEST(HorizonMatrix, NeedsARecord) {
    double m[9] = {7};
    EXPECT_FALSE(CSWSolSys().GetMtrxTopo(nullptr, m));
    EXPECT_EQ(m[0], 7);
}

TEST(Ecliptic, AgreesWithSphericalTrigonometry) {
    const auto model = support::built_in_model();
    model->UpdateSys(2459123, 0.777);
    const double eps = EclipseAngle(2459123, 0.777);
    for (double ra = 0.1; ra < kTwoPi; ra += 0.5)
        for (double dec = -1.3; dec < 1.5; dec += 0.4) {
            const double sin_lat =
                std::sin(dec) * std::cos(eps) - std::cos(dec) * std::sin(eps) * std::sin(ra);
            double lon = 0, lat = 0;
            model->FromRAToEclAng(false, &ra, &dec, &lon, &lat);
            EXPECT_NEAR(std::sin(lat), sin_lat, 1e-13);
            EXPECT_NEAR(std::cos(lon) * std::cos(lat), std::cos(ra) * std::cos(dec), 1e-13);
        }
}

TEST(ConversionsOfDate, DifferFromJ2000ByThePrecessionSince) {
    const auto model = support::built_in_model();
    model->UpdateSys(2451545 + 36525, 0.0);
    // The vernal equinox of J2000 a century on: m = 4612.4 arcsec, n = 2004.3 arcsec a century,
    // and up to 20 arcsec of nutation.
    const double zero = 0;
    double lon = 0, lat = 0, ra = 0, dec = 0;
    model->FromRAToEclAng(true, &zero, &zero, &lon, &lat);
    model->FromEclAngToRA(false, &lon, &lat, &ra, &dec);
    EXPECT_NEAR(ra, 4612.4 * solsys::kArcsec, 25 * solsys::kArcsec);
    EXPECT_NEAR(dec, 2004.3 * solsys::kArcsec, 25 * solsys::kArcsec);
}

}  // namespace
