// Apparent places of stars against ERFA: space motion, parallax, deflection, aberration.
#include "solsys/star_place.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "core/constants.h"
#include "tests/support/geometry.h"

namespace solsys {
namespace {

using test::angle_between;
using test::direction;

constexpr double kKmPerSecond = 86400 / kAuKm;  // au/day

struct Case {
    StarObject star;
    double years;
    State observer;
};

// Stars of the naked eye's kind, seen by an observer that circles the Sun.
class Cases {
  public:
    Case next() {
        Case c;
        c.star.ra = uniform(0, kTwoPi);
        c.star.dec = std::asin(uniform(-0.98, 0.98));
        const double pm = 3 * kArcsec;  // per year
        c.star.pm_ra = static_cast<float>(uniform(-pm, pm) / std::cos(c.star.dec));
        c.star.pm_dec = static_cast<float>(uniform(-pm, pm));
        c.star.parallax = static_cast<float>(uniform(0.001, 0.7) * kArcsec);
        c.star.radial_velocity = static_cast<float>(uniform(-100, 100));
        c.years = uniform(-30, 30);
        const double angle = uniform(0, kTwoPi);
        const Mat3 tilt = rotate_x(-0.4);
        c.observer.r = tilt * Vec3{std::cos(angle), std::sin(angle), 0};
        c.observer.v =
            29.8 * kKmPerSecond * (tilt * Vec3{-std::sin(angle), std::cos(angle), 0});
        return c;
    }

  private:
    double uniform(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    std::mt19937_64 random_{4};
};

Vec3 aberrated_by_erfa(Vec3 natural, Vec3 beta) {
    constexpr double kNoPotential = 1e30;  // au: aberration alone, without the Sun's potential
    double p[3], velocity[3], seen[3];
    store(natural, p);
    store(beta, velocity);
    eraAb(p, velocity, kNoPotential, std::sqrt(1 - dot(beta, beta)), seen);
    return load(seen);
}

enum class Deflection { none, by_the_sun };

// Unit direction by ERFA, J2000 equator. The epoch's moment is the observer's: the light time
// from the Sun, which ERFA adds, is taken off.
Vec3 by_erfa(const Case& c, Deflection deflection, double light_day_per_au) {
    double position[3], p[3];
    store(c.observer.r, position);
    const double light_years = dot(direction(c.star.ra, c.star.dec), c.observer.r) *
                               kLightDayPerAu / kDaysPerJulianYear;
    eraPmpx(c.star.ra, c.star.dec, c.star.pm_ra, c.star.pm_dec, c.star.parallax / kArcsec,
            c.star.radial_velocity, c.years - light_years, position, p);
    if (deflection == Deflection::by_the_sun) {
        const double distance = norm(c.observer.r);
        double from_sun[3], bent[3];
        store((1 / distance) * c.observer.r, from_sun);
        eraLdsun(p, from_sun, distance, bent);
        std::copy(bent, bent + 3, p);
    }
    return aberrated_by_erfa(load(p), light_day_per_au * c.observer.v);
}

TEST(StarPlace, AgreesWithErfa) {
    Cases cases;
    for (int k = 0; k < 20000; ++k) {
        const Case c = cases.next();
        const Vec3 beta = kLightDayPerAu * c.observer.v;
        const StarObserver observer{c.observer.r, beta, std::sqrt(1 - dot(beta, beta))};
        const StarPlace place = star_place(c.star, c.years, observer);
        const Vec3 expected = by_erfa(c, Deflection::by_the_sun, kLightDayPerAu);
        // The same models; the Sun's radius constant differs by 6e-5 of at most 2e-6 rad a
        // degree from it, the velocity unit by 2e-5 of a second-order effect.
        ASSERT_NEAR(angle_between(place.vector, expected), 0, 1e-9) << k;
        ASSERT_NEAR(norm(place.vector) / place.distance, 1, 1e-14);
    }
}

TEST(StarPlace, VectorIsTheStarSeenFromTheObserver) {
    Cases cases;
    for (int k = 0; k < 200; ++k) {
        Case c = cases.next();
        c.star.pm_ra = c.star.pm_dec = STAR_UNKNOWN;
        const StarPlace place =
            star_place(c.star, 0, {c.observer.r, {0, 0, 0}, 1}, rotate_z(0.3));
        const Vec3 from_sun = (1.0 / c.star.parallax) * direction(c.star.ra, c.star.dec);
        // Deflection is left: 1e-8 rad across, 2e-6 within a degree of the Sun.
        const Vec3 seen = transpose_times(rotate_z(0.3), place.vector);
        EXPECT_NEAR(norm(seen - (from_sun - c.observer.r)) / place.distance, 0, 3e-6);
        EXPECT_NEAR(place.distance, norm(from_sun - c.observer.r), 1e-9 * place.distance);
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

TEST(CalcProperMotionD, AgreesWithErfa) {
    Cases cases;
    for (int k = 0; k < 20000; ++k) {
        const Case c = cases.next();
        double observer[6], out[3], light_years = 0;
        store(c.observer, observer);
        CalcProperMotionD(c.years, observer, out, c.star.ra, c.star.dec, c.star.pm_ra,
                          c.star.pm_dec, c.star.parallax, c.star.radial_velocity, light_years);
        ASSERT_NEAR(angle_between(load(out), by_erfa(c, Deflection::none, 0.0057755)), 0,
                    5e-12);
        ASSERT_NEAR(norm(load(out)), 1, 1e-14);

        const StarPlace place = star_place(c.star, c.years, {c.observer.r, {0, 0, 0}, 1});
        ASSERT_NEAR(light_years * 206264.8062471 * 0.3066 / place.distance, 1, 1e-13);
    }
}

// A packed record holds the difference from its zone's base vector.
class PackedStar : public testing::TestWithParam<int> {};

TEST_P(PackedStar, GivesWhatItsClassHolds) {
    const int precision = GetParam();
    Cases cases;
    for (int k = 0; k < 500; ++k) {
        const Case c = cases.next();
        const Tycho2SphRecord record{{}, {1200, -32768, 32767}, {-700, 4000, 32767}, 7000};
        const Vec3 towards = direction(c.star.ra, c.star.dec);
        const double unit_of_offset = precision == 7 ? 1 / 32767.0 : 1e-5;
        const Vec3 offset = unit_of_offset * Vec3{1200, -32768, 32767};
        double observer[6], base[3], out[3], distance = 0;
        store(c.observer, observer);
        store(towards - offset, base);
        CalcProperMotion(c.years, observer, out, base, &record,
                         static_cast<unsigned char>(precision), distance);

        const double parallax = 0.7 * kArcsec;
        Vec3 p = towards;
        if (precision < 4) p += std::ldexp(c.years, -29) * Vec3{-700, 4000, 32767};
        if (precision < 2) p -= parallax * c.observer.r;
        if (precision < 2)
            EXPECT_NEAR(distance * parallax / norm(p), 1, 1e-9);
        else
            EXPECT_EQ(distance, -1.0);

        const Vec3 seen = aberrated_by_erfa(unit(p), 0.0057755 * c.observer.v);
        // A direction that is not of unit length gets 1e-4 of what it lacks.
        EXPECT_NEAR(angle_between(load(out), seen), 0, 1e-12 + 1.1e-4 * std::fabs(norm(p) - 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, PackedStar, testing::Range(0, 8));

TEST(CalcProperMotion, SmallParallaxesCountAsNone) {
    double observer[6] = {1, 0, 0, 0, 0.017, 0}, base[3] = {0, 0, 1}, out[3], distance = 0;
    Tycho2SphRecord record{};
    for (const int parallax : {0, -5000, 2062}) {
        record.parallax = static_cast<std::int16_t>(parallax);  // 2062 is just below 1e-6 rad
        CalcProperMotion(10, observer, out, base, &record, 0, distance);
        EXPECT_EQ(distance, -1.0) << parallax;
    }
    record.parallax = 2063;
    CalcProperMotion(10, observer, out, base, &record, 0, distance);
    EXPECT_NEAR(distance * 2063 * 4.848136811095e-10, 1, 1e-9);
}

}  // namespace
}  // namespace solsys
