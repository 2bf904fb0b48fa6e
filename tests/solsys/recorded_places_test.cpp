// Apparent places of bodies and stars against recorded chains of another library with the same
// models (tools/reference/apparent_places.py, star_places.py).
#include <gtest/gtest.h>

#include <cmath>

#include "core/angles.h"
#include "core/constants.h"
#include "solsys/star_place.h"
#include "tests/support/csv.h"
#include "tests/support/sky_models.h"

namespace solsys {
namespace {

using test::read_csv;
using test::vector_of;

// Both chains start from the same polynomials at the same light times, so that what is left are
// the library's sines taken from cosines: for the precession angles of a few years they hold
// 1e-12 rad.
TEST(ApparentPlace, AgreesWithTheRecordedChain) {
    const auto model = test::make_model(test::Source::kDe405);
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/apparent_places.csv")) {
        const int body = std::stoi(row[0]);
        const OBSERVER from =
            row[3] == "1" ? test::site(std::stod(row[5]), std::stod(row[6]), std::stod(row[4]))
                          : test::centre_of(3);
        model->SetObserver(&from);
        model->UpdateSys(std::stoi(row[1]), std::stod(row[2]));
        double place[3] = {};
        ASSERT_TRUE(model->GetRADecVis({body == 301 ? SSO_MOON : SSO_PLNT, body}, place, 0.0));
        EXPECT_LT(separation(direction(place[1], place[2]), vector_of(row, 7)), 1e-11)
            << body << " " << row[1];
        EXPECT_NEAR(place[0] / std::stod(row[10]), 1, 2e-13) << body << " " << row[1];
    }
}

TEST(StarPlace, AgreesWithTheRecordedChain) {
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/star_places.csv")) {
        const auto value = [&](std::size_t i) { return std::stod(row[i]); };
        StarObject star;
        star.ra = value(0), star.dec = value(1);
        star.pm_ra = static_cast<float>(value(2)), star.pm_dec = static_cast<float>(value(3));
        star.parallax = static_cast<float>(value(4));
        star.radial_velocity = static_cast<float>(value(5));
        const double years = value(6);
        const State from = test::state_of(row, 7);
        const Vec3 beta = kLightDayPerAu * from.v;
        const StarPlace place =
            star_place(star, years, {from.r, beta, std::sqrt(1 - dot(beta, beta))});
        // The same models; the Sun's radius constant differs by 6e-5 of at most 2e-6 rad a
        // degree from it, the velocity unit by 2e-5 of a second-order effect.
        EXPECT_LT(separation(place.vector, vector_of(row, 13)), 1e-9) << row[0];
        EXPECT_NEAR(norm(place.vector) / place.distance, 1, 1e-14);

        double observer[6], out[3], light_years = 0;
        store(from, observer);
        CalcProperMotionD(years, observer, out, star.ra, star.dec, star.pm_ra, star.pm_dec,
                          star.parallax, star.radial_velocity, light_years);
        EXPECT_LT(separation(load(out), vector_of(row, 16)), 5e-12) << row[0];
        EXPECT_NEAR(norm(load(out)), 1, 1e-14);
        EXPECT_NEAR(light_years * 206264.8062471 * 0.3066 /
                        star_place(star, years, {from.r, {0, 0, 0}, 1}).distance,
                    1, 1e-13);
    }
}

TEST(StarPlace, UnknownValuesAreLeftOut) {
    StarObject star;
    star.ra = 1.0, star.dec = 0.5;
    const StarPlace still = star_place(star, 500, {{0, 0, 0}, {0, 0, 0}, 1});
    EXPECT_EQ(still.distance, -1.0);
    // At the Sun's centre nothing is bent; the sine follows from the cosine.
    EXPECT_NEAR(norm(still.vector - direction(1.0, 0.5)), 0, 1e-15);

    star.pm_dec = 1e-5F;
    const StarPlace moved = star_place(star, 10, {{0, 0, 0}, {0, 0, 0}, 1});
    EXPECT_NEAR(std::asin(moved.vector.z), 0.5 + std::atan(1e-4), 1e-10);
}

// A packed record holds the difference from its zone's base vector; the class says how much.
class PackedStar : public testing::TestWithParam<int> {};

TEST_P(PackedStar, GivesWhatItsClassHolds) {
    const int precision = GetParam();
    const Tycho2SphRecord record{{}, {1200, -32768, 32767}, {-700, 4000, 32767}, 7000};
    const State from{{0.6, -0.7, -0.3}, {0.013, 0.009, 0.004}};
    for (double ra = 0; ra < 6; ra += 0.5) {
        const Vec3 towards = direction(ra, 0.4 * ra - 1.2);
        const double years = 10 * ra - 30, parallax = 0.7 * kArcsec;
        double observer[6], base[3], out[3], distance = 0;
        store(from, observer);
        store(towards - (precision == 7 ? 1 / 32767.0 : 1e-5) * Vec3{1200, -32768, 32767},
              base);
        CalcProperMotion(years, observer, out, base, &record,
                         static_cast<unsigned char>(precision), distance);

        Vec3 p = towards;
        if (precision < 4) p += std::ldexp(years, -29) * Vec3{-700, 4000, 32767};
        if (precision < 2) p -= parallax * from.r;
        EXPECT_NEAR(precision < 2 ? distance * parallax / norm(p) : -distance, 1, 1e-9);
        // Relativistic aberration: the part along the velocity is shifted, the rest shrinks.
        const Vec3 beta = 0.0057755 * from.v, n = unit(p);
        const double lorentz = std::sqrt(1 - dot(beta, beta)), along = dot(n, beta);
        const Vec3 seen = lorentz * n + (1 + along / (1 + lorentz)) * beta;
        // A direction that is not of unit length gets 1e-4 of what it lacks.
        EXPECT_NEAR(separation(load(out), seen), 0, 1e-12 + 1.1e-4 * std::fabs(norm(p) - 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, PackedStar, testing::Range(0, 8));

TEST(CalcProperMotion, SmallParallaxesCountAsNone) {
    double observer[6] = {1, 0, 0, 0, 0.017, 0}, base[3] = {0, 0, 1}, out[3], distance = 0;
    Tycho2SphRecord record{};
    for (const int parallax : {0, -5000, 2062, 2063}) {  // 2062 is just below 1e-6 rad
        record.parallax = static_cast<std::int16_t>(parallax);
        CalcProperMotion(10, observer, out, base, &record, 0, distance);
        EXPECT_EQ(distance == -1.0, parallax < 2063) << parallax;
    }
    EXPECT_NEAR(distance * 2063 * 4.848136811095e-10, 1, 1e-9);
}

}  // namespace
}  // namespace solsys
