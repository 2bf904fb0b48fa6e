#include "frames/body_rotation.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "core/constants.h"
#include "frames/rotation_registry.h"
#include "solsys/earth_orientation.h"
#include "tests/support/geometry.h"

namespace solsys {
namespace {

using test::distance;

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
        EXPECT_LT(distance(body_matrix_from_pole(a, d, w), expected), 3e-15);
        EXPECT_LT(distance(body_matrix_from_angles(kHalfPi - a, d, w), expected), 3e-15);
        // A leg of the unit triangle comes from the other, rounded to 4.4e-16 by the offset of
        // 2; near the axes that is worth sqrt(2 * 4.4e-16) = 3e-8 in an entry.
        const Mat3 m =
            body_matrix_from_encoded(EncodeRightAscension(kHalfPi - a), std::sin(d), w);
        EXPECT_LT(distance(m, expected), 6e-8);
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
        const Mat3 m = transpose(body_matrix_from_encoded(p.e, p.sin_dec, p.w0));
        // e is rounded to 1.2e-7, which at 0.05 rad from where the cosine is flat is
        // 1.2e-7 / sin 0.05 = 2.4e-6; the declination, at 1.5 rad, loses as much.
        EXPECT_LT(norm(m.r2 - test::direction(ra, dec)), 4e-6) << ra;
    }
}

class RotationTable : public testing::Test {
  protected:
    static Mat3 matrix(double d, int row, const Mat3& m = kIdentity) {
        return matrix({kJ2000Day + static_cast<int>(d), d - static_cast<int>(d)}, row, m);
    }
    static Mat3 matrix(Instant t, int row, const Mat3& m = kIdentity) {
        double equator[9], transposed[9], out[9];
        store(m, equator);
        PlanetographicalMatrix(t.day, t.fraction, static_cast<short>(row), equator, transposed,
                               out);
        EXPECT_EQ(distance(load_matrix(transposed), transpose(load_matrix(out))), 0.0);
        return load_matrix(out);
    }
};

TEST_F(RotationTable, EveryRowIsARotationAppliedBeforeTheMatrixGiven) {
    const Mat3 m = rotate_x(0.3) * rotate_z(1.1);
    for (int row = -1; row <= 48; ++row) {
        if (row == 3) continue;  // the Earth has sidereal time, whatever the matrix
        const Mat3 plain = matrix(1234.75, row);
        EXPECT_LT(distance(matrix(1234.75, row, m), m * plain), 1e-15) << row;
        for (const int day : {-2147483647 - 1, -1, 2147483647}) {
            const Mat3 far = matrix({day, 0.5}, row);
            EXPECT_LT(distance(far * transpose(far), kIdentity), 3e-15) << day << ' ' << row;
            EXPECT_NEAR(dot(far.r0, cross(far.r1, far.r2)), 1.0, 1e-15) << day << ' ' << row;
        }
    }
    const double theta = SiderialTime(true, kJ2000Day + 100, 0.25);
    EXPECT_LT(distance(matrix(100.25, 3, rotate_x(0.7)), rotate_z(-theta)), 1e-15);
    for (const int row : {0, -7, 47, 14, 28})  // without elements, or none
        EXPECT_EQ(distance(matrix(500.0, row), body_matrix_from_pole(0, 0, 0)), 0.0) << row;
}

// A day of each body by hand: the matrix of the next day against the pole and the published
// daily turn. Finds a row with the wrong rate or a turn about another axis.
TEST_F(RotationTable, TurnsAboutThePoleByThePublishedRate) {
    for (const auto& [row, degrees_per_day] : {std::pair{1, 6.1385025},
                                               {2, -1.4813688},
                                               {4, 350.891983},
                                               {5, 870.536},
                                               {6, 810.7939024},
                                               {7, -501.1600928},
                                               {8, 536.3128492},
                                               {9, -56.3623195},
                                               {12, 1128.844585},
                                               {15, 101.3747235},
                                               {18, 722.631456},
                                               {27, 22.5769768},
                                               {45, -61.2572637},
                                               {46, -56.3623195}}) {
        const Mat3 turn = transpose(matrix(40.0, row)) * matrix(40.5, row);
        EXPECT_LT(distance(turn, rotate_z(-kDegree * degrees_per_day / 2)), 1e-9) << row;
    }
}

TEST_F(RotationTable, EveryRowBelongsToOneBody) {
    std::set<int> rows;
    for (int body = -5; body <= 1500; ++body) {
        const int row = PlanetographicalIndex(body);
        if (row == 0) continue;
        EXPECT_TRUE(rows.insert(row).second) << body;
    }
    EXPECT_EQ(rows.size(), 46u);
    EXPECT_TRUE(*rows.begin() == 1 && *rows.rbegin() == 46);
    // Where the two countings differ.
    for (const auto& [body, row] :
         {std::pair{10, 11}, {301, 10}, {11, 0}, {501, 14}, {801, 45}, {901, 46}})
        EXPECT_EQ(PlanetographicalIndex(body), row);
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
    for (const ObjectKey& neighbour : {ObjectKey{77, 2}, ObjectKey{77, 4}, ObjectKey{76, 3}})
        EXPECT_EQ(rotation_registry::get(neighbour), nullptr);
    EXPECT_EQ(rotation_registry::get(-1), nullptr);
    EXPECT_EQ(rotation_registry::get(before + 1001), nullptr);
}

}  // namespace
}  // namespace solsys
