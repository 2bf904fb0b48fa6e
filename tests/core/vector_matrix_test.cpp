// Vectors and matrices against sums in extended precision, and against the geometry they stand
// for.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "solsys/toolkit.h"

namespace {

constexpr double kPi = 3.14159265358979323846;

class Random {
  public:
    double operator()() { return uniform_(engine_); }
    std::vector<double> vector(std::size_t n) {
        std::vector<double> v(n);
        std::generate(v.begin(), v.end(), [this] { return (*this)(); });
        return v;
    }

  private:
    std::mt19937_64 engine_{20260101};
    std::uniform_real_distribution<double> uniform_{-1, 1};
};

// Summed in extended precision.
double exact_dot(const double* a, const double* b, int n) {
    long double sum = 0;
    for (int i = 0; i < n; ++i) sum += static_cast<long double>(a[i]) * b[i];
    return static_cast<double>(sum);
}

class VectorLength : public testing::TestWithParam<short> {};

TEST_P(VectorLength, ProductsAndNormsAreThoseOfExtendedPrecision) {
    const short n = GetParam();
    Random random;
    for (int trial = 0; trial < 200; ++trial) {
        const auto a = random.vector(static_cast<std::size_t>(n));
        const auto b = random.vector(static_cast<std::size_t>(n));
        // n products below 1, each rounded, and as many sums.
        const double tolerance = 1.2e-16 * n * 2;
        EXPECT_NEAR(SVprod(a.data(), b.data(), n), exact_dot(a.data(), b.data(), n), tolerance);
        const double norm = std::sqrt(exact_dot(a.data(), a.data(), n));
        EXPECT_NEAR(Vmod(a.data(), n), norm, 4e-16 * norm);

        auto direction = a;
        direction.resize(std::max<std::size_t>(direction.size(), 3));
        double modulus = 0;
        Vnorm(direction.data(), direction.data(), n, &modulus);
        EXPECT_NEAR(modulus, norm, 4e-16 * norm);
        for (int i = 0; i < n; ++i) EXPECT_NEAR(direction[i] * norm, a[i], 4e-16);
    }
}

INSTANTIATE_TEST_SUITE_P(BothSidesOfFour, VectorLength,
                         testing::Values(1, 2, 3, 4, 5, 6, 8, 11));

TEST(Vnorm, GivesTheZAxisForAVectorWithoutDirection) {
    const double v[6] = {0, 9e-14, 0, 0, 0, 0};
    double out[6] = {7, 7, 7, 7, 7, 7};
    double modulus = -1;
    Vnorm(v, out, 6, &modulus);
    EXPECT_DOUBLE_EQ(modulus, 9e-14);
    EXPECT_EQ(std::vector<double>(out, out + 6), (std::vector<double>{0, 0, 1, 7, 7, 7}));

    double zero[3] = {0, 0, 0};
    Vnorm2(zero);
    EXPECT_FALSE(std::isfinite(zero[0]));
}

TEST(VectorOperations, MayWriteOverTheirInputs) {
    double a[3] = {1, 2, 3};
    const double b[3] = {-4, 5, 0.5};
    Vprod(a, b, a);
    EXPECT_EQ(std::vector<double>(a, a + 3), (std::vector<double>{-14, -12.5, 13}));
    Vadd(a, b, a);
    EXPECT_EQ(std::vector<double>(a, a + 3), (std::vector<double>{-18, -7.5, 13.5}));
    EXPECT_EQ(Vmmad(a, 2, b, -1, a), a);
    EXPECT_EQ(std::vector<double>(a, a + 3), (std::vector<double>{-32, -20, 26.5}));
    Vnorm2(a);
    EXPECT_NEAR(Vmod(a, 3), 1, 3e-16);
}

struct Shape {
    short n, m, p;
};
class MatrixShape : public testing::TestWithParam<Shape> {};

TEST_P(MatrixShape, ProductAndTransposeAgreeWithTheDefinition) {
    const auto [n, m, p] = GetParam();
    Random random;
    const auto a = random.vector(static_cast<std::size_t>(n * m));
    const auto b = random.vector(static_cast<std::size_t>(m * p));
    std::vector<double> product(static_cast<std::size_t>(n * p));
    Mprod(a.data(), b.data(), product.data(), n, m, p);
    std::vector<double> columns(b.size());  // rows of these are the columns of b
    Mtrans(b.data(), columns.data(), m, p);
    for (int i = 0; i < n; ++i) {
        for (int k = 0; k < p; ++k) {
            EXPECT_EQ(columns[k * m + 1 % m], b[(1 % m) * p + k]);
            EXPECT_NEAR(product[i * p + k], exact_dot(&a[i * m], &columns[k * m], m),
                        1.2e-16 * m * 2);
        }
    }
}

// The first three have routines of their own.
INSTANTIATE_TEST_SUITE_P(Shapes, MatrixShape,
                         testing::Values(Shape{1, 3, 3}, Shape{3, 3, 1}, Shape{3, 3, 3},
                                         Shape{3, 1, 3}, Shape{2, 5, 4}, Shape{6, 6, 6},
                                         Shape{1, 7, 1}));

TEST(MatrixProducts, TransposedApplicationUndoesARotationInPlace) {
    Random random;
    for (int trial = 0; trial < 100; ++trial) {
        double axis[3] = {random(), random(), random()};
        Vnorm2(axis);
        const double angle = 4 * random();
        double m[9];
        M3rot(axis, std::cos(angle), std::sin(angle), m);

        // Rodrigues: v turns about the axis by the angle, counter-clockwise.
        const double v[3] = {random(), random(), random()};
        double across[3];
        Vprod(axis, v, across);
        const double along = SVprod(axis, v, 3) * (1 - std::cos(angle));
        double turned[3];
        MV3prod(m, v, turned);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(turned[i],
                        v[i] * std::cos(angle) + across[i] * std::sin(angle) + axis[i] * along,
                        1e-15);

        V3Mprod(turned, m, turned);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(turned[i], v[i], 2e-15);

        double inverse[9];
        Mtrans(m, inverse, 3, 3);
        M3prod(m, inverse, m);
        for (int i = 0; i < 9; ++i) EXPECT_NEAR(m[i], i % 4 == 0 ? 1 : 0, 2e-15);
    }
}

TEST(MatrixProducts, ManyVectorsAtOnceAreEachTransformed) {
    Random random;
    const auto m = random.vector(9);
    const auto vectors = random.vector(15);
    std::vector<double> together(15);
    MVarrProd(m.data(), vectors.data(), together.data(), 3, 3, 5);
    for (int k = 0; k < 5; ++k) {
        double alone[3];
        MV3prod(m.data(), &vectors[3 * k], alone);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(together[3 * k + i], alone[i], 3e-16);
    }
}

struct AngleCase {
    std::array<double, 3> a, b;
    double plain, oriented;
};
class AngleBetween : public testing::TestWithParam<AngleCase> {};

TEST_P(AngleBetween, HasTheSenseOfTheNormal) {
    const auto& c = GetParam();
    EXPECT_NEAR(VectorsAngle(0, c.a.data(), c.b.data()), c.plain, 1e-15);
    EXPECT_NEAR(VectorsAngle(1, c.a.data(), c.b.data()), c.oriented, 2e-15);
}

INSTANTIATE_TEST_SUITE_P(
    Directions, AngleBetween,
    testing::Values(AngleCase{{1, 2, 3}, {2, 4, 6}, 0, 0},
                    AngleCase{{1, 2, 3}, {-1, -2, -3}, kPi, kPi},
                    AngleCase{{0, 0, 0}, {1, 0, 0}, 0, 0},
                    AngleCase{{1, 0, 0}, {0, 0, 0}, 0, 0},
                    // within 1e-12 of parallel: the sense is not looked at
                    AngleCase{{1, 0, 0}, {1, -1e-7, 0}, 0, 0},
                    // x-y plane: sense by z
                    AngleCase{{2, 0, 0}, {0, 3, 0}, kPi / 2, kPi / 2},
                    AngleCase{{2, 0, 0}, {0, -3, 0}, kPi / 2, 3 * kPi / 2},
                    AngleCase{{1, 0, 5},
                              {1, -1, 5},
                              std::acos(26 / std::sqrt(26.0 * 27)),
                              2 * kPi - std::acos(26 / std::sqrt(26.0 * 27))},
                    // y-z plane: sense by x
                    AngleCase{{0, 1, 0}, {0, 0, 1}, kPi / 2, kPi / 2},
                    AngleCase{{0, 1, 0}, {0, 0, -1}, kPi / 2, 3 * kPi / 2},
                    // x-z plane: sense by minus y
                    AngleCase{{1, 0, 0}, {0, 0, 1}, kPi / 2, kPi / 2},
                    AngleCase{{1, 0, 0}, {0, 0, -1}, kPi / 2, 3 * kPi / 2}));

}  // namespace
