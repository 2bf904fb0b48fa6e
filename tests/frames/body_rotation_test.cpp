#include "frames/body_rotation.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <set>

#include "core/constants.h"
#include "frames/rotation_registry.h"
#include "solsys/earth_orientation.h"

namespace solsys {
namespace {

double largest_difference(const Mat3& a, const Mat3& b) {
    double x[9], y[9], worst = 0;
    store(a, x), store(b, y);
    for (int i = 0; i < 9; ++i) worst = std::max(worst, std::fabs(x[i] - y[i]));
    return worst;
}

double determinant(const Mat3& m) { return dot(m.r0, cross(m.r1, m.r2)); }

// Three turns of the frame: prime meridian back to the node, equator down to the J2000 equator,
// node back to the equinox. Shares nothing with the closed form but the definition of the
// angles.
Mat3 by_three_rotations(double pole_ra, double pole_dec, double w) {
    return rotate_z(-(pole_ra + kHalfPi)) * rotate_x(-(kHalfPi - pole_dec)) * rotate_z(-w);
}

TEST(BodyMatrix, IsThePublishedChainOfRotations) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> turn(-10.0, 10.0), dec(-kHalfPi, kHalfPi);
    for (int i = 0; i < 10000; ++i) {
        const double a = turn(random), d = dec(random), w = turn(random);
        const Mat3 expected = by_three_rotations(a, d, w);
        // Entries below 1 from two products each: a few units of the last place (2.2e-16), and
        // the angle plus a right angle is rounded to 1e-15 at 10 rad.
        EXPECT_LT(largest_difference(body_matrix_from_pole(a, d, w), expected), 3e-15);
        EXPECT_LT(largest_difference(body_matrix_from_angles(kHalfPi - a, d, w), expected),
                  3e-15);
    }
}

TEST(BodyMatrix, EncodedAnglesGiveTheSameMatrix) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> turn(-7.0, 7.0), dec(-1.5, 1.5);
    for (int i = 0; i < 10000; ++i) {
        const double alpha = turn(random), d = dec(random), w = turn(random);
        const Mat3 m = body_matrix_from_encoded(EncodeRightAscension(alpha), std::sin(d), w);
        // A leg of the unit triangle comes from the other, rounded to 4.4e-16 by the offset of
        // 2; near the axes that is worth sqrt(2 * 4.4e-16) = 3e-8.
        EXPECT_LT(largest_difference(m, body_matrix_from_angles(alpha, d, w)), 6e-8);
    }
}

TEST(EncodedRightAscension, CarriesCosineAndSignOfTheSine) {
    struct Case {
        double e, cosine, sine;
    };
    for (const Case& c : {Case{2.0, 0, 1}, Case{-2.0, 0, -1}, Case{3.0, 1, 0}, Case{1.0, -1, 0},
                          Case{2.6, 0.6, 0.8}, Case{-1.4, 0.6, -0.8}}) {
        double cosine = 9, sine = 9;
        DecodeRightAscension(c.e, &cosine, &sine);
        EXPECT_NEAR(cosine, c.cosine, 4e-16) << c.e;
        EXPECT_NEAR(sine, c.sine, 4e-16) << c.e;
    }
    // Rounded beyond the unit circle, as single precision may do.
    double cosine = 0, sine = 0;
    DecodeRightAscension(3.0000002, &cosine, &sine);
    EXPECT_EQ(cosine, 1.0);
    EXPECT_EQ(sine, 0.0);
}

TEST(EncodeBodyRotation, KeepsThePoleToSinglePrecision) {
    for (double ra = 0.05; ra < kTwoPi; ra += 0.1) {
        const double dec = 1.5 * std::sin(3 * ra);
        const auto p = EncodeBodyRotation(ra, dec, 1.0, 6.0);
        const Mat3 m = body_matrix_from_encoded(p.e, p.sin_dec, p.w0);
        const Vec3 pole{std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra),
                        std::sin(dec)};
        const Vec3 encoded{m.r0.z, m.r1.z, m.r2.z};
        // e is rounded to 1.2e-7, which at 0.05 rad from where the cosine is flat is
        // 1.2e-7 / sin 0.05 = 2.4e-6; the declination, at 1.5 rad, loses as much.
        EXPECT_LT(norm(encoded - pole), 4e-6) << ra;
    }
}

class RotationTable : public testing::Test {
  protected:
    static Mat3 matrix(double d, int row, const Mat3& m = kIdentity) {
        double equator[9], transposed[9], out[9];
        store(m, equator);
        PlanetographicalMatrix(kJ2000Day + static_cast<int>(d), d - static_cast<int>(d),
                               static_cast<short>(row), equator, transposed, out);
        EXPECT_EQ(largest_difference(load_matrix(transposed), transpose(load_matrix(out))),
                  0.0);
        return load_matrix(out);
    }
};

TEST_F(RotationTable, EveryRowIsARotationAppliedBeforeTheMatrixGiven) {
    const Mat3 m = rotate_x(0.3) * rotate_z(1.1);
    for (int row = -1; row <= 48; ++row) {
        const Mat3 plain = matrix(1234.75, row);
        EXPECT_LT(largest_difference(plain * transpose(plain), kIdentity), 1e-15) << row;
        EXPECT_NEAR(determinant(plain), 1.0, 1e-15) << row;
        if (row != 3) {
            EXPECT_LT(largest_difference(matrix(1234.75, row, m), m * plain), 1e-15) << row;
        }
    }
}

TEST_F(RotationTable, EarthTurnsBySiderealTimeWhateverTheMatrix) {
    const double theta = SiderialTime(true, kJ2000Day + 100, 0.25);
    const Mat3 earth = matrix(100.25, 3, rotate_x(0.7));
    EXPECT_NEAR(earth.r0.x, std::cos(theta), 1e-15);
    EXPECT_NEAR(earth.r1.x, std::sin(theta), 1e-15);
    EXPECT_EQ(earth.r2.z, 1.0);
    EXPECT_EQ(earth.r2.x, 0.0);
}

TEST_F(RotationTable, RowsWithoutElementsAndOutsideHaveZeroAngles) {
    const Mat3 zero = body_matrix_from_pole(0, 0, 0);
    for (const int row : {0, -7, 47, 14, 28}) {
        EXPECT_EQ(largest_difference(matrix(500.0, row), zero), 0.0) << row;
    }
}

// A day of each body by hand: the matrix of the next day against the pole and the published
// daily turn. Finds a row with the wrong rate or a turn about another axis.
TEST_F(RotationTable, TurnsAboutThePoleByThePublishedRate) {
    struct Case {
        int row;
        double degrees_per_day;
    };
    for (const Case& c : {Case{1, 6.1385025}, Case{2, -1.4813688}, Case{4, 350.891983},
                          Case{5, 870.536}, Case{6, 810.7939024}, Case{7, -501.1600928},
                          Case{8, 536.3128492}, Case{9, -56.3623195}, Case{12, 1128.844585},
                          Case{15, 101.3747235}, Case{18, 722.631456}, Case{27, 22.5769768},
                          Case{45, -61.2572637}, Case{46, -56.3623195}}) {
        const Mat3 turn = transpose(matrix(40.0, c.row)) * matrix(40.5, c.row);
        const double expected = kDegree * std::fmod(c.degrees_per_day / 2, 360.0);
        EXPECT_NEAR(turn.r0.x, std::cos(expected), 1e-9) << c.row;
        EXPECT_NEAR(turn.r1.x, std::sin(expected), 1e-9) << c.row;
        EXPECT_NEAR(turn.r2.z, 1.0, 1e-12) << c.row;
    }
}

TEST_F(RotationTable, AnswersAnyDay) {
    const double m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    double transposed[9], out[9];
    for (const int day : {-2147483647 - 1, -1, 2147483647}) {
        for (short row = 0; row <= 46; ++row) {
            if (row == 3) continue;  // sidereal time has its own limits
            PlanetographicalMatrix(day, 0.5, row, m, transposed, out);
            EXPECT_NEAR(determinant(load_matrix(out)), 1.0, 1e-14) << day << ' ' << row;
        }
    }
}

TEST_F(RotationTable, SecularTermsCountTenThousandYears) {
    // The pole of Mars moves by 0.108 deg in right ascension and 0.061 deg in declination in
    // one unit of time, here 3652500 days, and the Sun's meridian by 14.1844 deg.
    const auto pole = [](const Mat3& m) { return Vec3{m.r0.z, m.r1.z, m.r2.z}; };
    const Vec3 then = pole(matrix(3652500.0, 4));
    EXPECT_NEAR(std::asin(then.z) / kDegree, 52.886 - 0.061, 1e-9);
    EXPECT_NEAR(std::atan2(then.y, then.x) / kDegree, 317.681 - 0.108 - 360.0, 1e-9);

    const Mat3 sun = transpose(matrix(0.0, 11)) * matrix(3652500.0, 11);
    EXPECT_NEAR(std::atan2(sun.r1.x, sun.r0.x) / kDegree, 14.1844, 1e-9);
}

TEST_F(RotationTable, EveryRowBelongsToOneBody) {
    std::set<int> rows;
    for (int body = -5; body <= 1500; ++body) {
        const int row = PlanetographicalIndex(body);
        if (row == 0) continue;
        EXPECT_TRUE(rows.insert(row).second) << body;
    }
    EXPECT_EQ(rows.size(), 46u);
    EXPECT_EQ(*rows.begin(), 1);
    EXPECT_EQ(*rows.rbegin(), 46);
    // Where the two countings differ.
    EXPECT_EQ(PlanetographicalIndex(10), 11);
    EXPECT_EQ(PlanetographicalIndex(301), 10);
    EXPECT_EQ(PlanetographicalIndex(11), 0);
    EXPECT_EQ(PlanetographicalIndex(501), 14);
    EXPECT_EQ(PlanetographicalIndex(801), 45);
    EXPECT_EQ(PlanetographicalIndex(901), 46);
}

TEST(RotationRegistry, KeepsTheFirstEntryOfAKeyAndItsPlace) {
    // One registry serves the whole process, so count from what is there.
    const int before = rotation_registry::count();
    const ObjectKey key{77, 3};
    EXPECT_EQ(rotation_registry::get(key), nullptr);
    rotation_registry::add(key, {1, 2, 3, 4});
    const BodyRotationParams* first = rotation_registry::get(key);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(rotation_registry::get(before), first);

    rotation_registry::add(key, {9, 9, 9, 9});
    EXPECT_EQ(rotation_registry::count(), before + 1);
    for (int i = 0; i < 1000; ++i) rotation_registry::add({78, i}, {float(i), 0, 0, 0});

    EXPECT_EQ(rotation_registry::get(key), first);
    EXPECT_EQ(first->rate, 4.0F);
    EXPECT_EQ(rotation_registry::count(), before + 1001);
    EXPECT_EQ(rotation_registry::get(ObjectKey{78, 500})->e, 500.0F);
    EXPECT_EQ(rotation_registry::get(before + 501)->e, 500.0F);

    // Neighbours of a key that is there, and indices beyond the ends.
    EXPECT_EQ(rotation_registry::get(ObjectKey{77, 2}), nullptr);
    EXPECT_EQ(rotation_registry::get(ObjectKey{77, 4}), nullptr);
    EXPECT_EQ(rotation_registry::get(ObjectKey{76, 3}), nullptr);
    EXPECT_EQ(rotation_registry::get(-1), nullptr);
    EXPECT_EQ(rotation_registry::get(before + 1001), nullptr);
}

}  // namespace
}  // namespace solsys
