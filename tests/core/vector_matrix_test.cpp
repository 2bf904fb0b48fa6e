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
using Values = std::vector<double>;

Values random_values(int n) {
    static std::mt19937_64 engine{20260101};
    Values v(static_cast<std::size_t>(n));
    for (double& x : v) x = std::uniform_real_distribution<double>{-1, 1}(engine);
    return v;
}

// Summed in extended precision.
double exact_dot(const double* a, const double* b, int n) {
    long double sum = 0;
    for (int i = 0; i < n; ++i) sum += static_cast<long double>(a[i]) * b[i];
    return static_cast<double>(sum);
}

// Both sides of the lengths that have code of their own.
TEST(Vectors, ProductsAndNormsAreThoseOfExtendedPrecision) {
    for (int trial = 0; trial < 800; ++trial) {
        const auto n = static_cast<short>(1 + trial % 11);
        const auto a = random_values(n), b = random_values(n);
        // n products below 1, each rounded, and as many sums.
        EXPECT_NEAR(SVprod(a.data(), b.data(), n), exact_dot(a.data(), b.data(), n),
                    1.2e-16 * n * 2);
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

TEST(Vectors, WithoutDirectionTheZAxisIsGiven) {
    const double v[6] = {0, 9e-14, 0, 0, 0, 0};
    double out[6] = {7, 7, 7, 7, 7, 7}, modulus = -1, zero[3] = {0, 0, 0};
    Vnorm(v, out, 6, &modulus);
    EXPECT_DOUBLE_EQ(modulus, 9e-14);
    EXPECT_EQ(Values(out, out + 6), (Values{0, 0, 1, 7, 7, 7}));
    Vnorm2(zero);
    EXPECT_FALSE(std::isfinite(zero[0]));
}

TEST(Vectors, MayBeWrittenOver) {
    double a[3] = {1, 2, 3};
    const double b[3] = {-4, 5, 0.5};
    Vprod(a, b, a);
    EXPECT_EQ(Values(a, a + 3), (Values{-14, -12.5, 13}));
    Vadd(a, b, a);
    EXPECT_EQ(Vmmad(a, 2, b, -1, a), a);
    EXPECT_EQ(Values(a, a + 3), (Values{-32, -20, 26.5}));
}

TEST(Matrices, ProductAndTransposeAgreeWithTheDefinition) {
    // The first three have routines of their own.
    const short shapes[][3] = {{1, 3, 3}, {3, 3, 1}, {3, 3, 3}, {3, 1, 3},
                               {2, 5, 4}, {6, 6, 6}, {1, 7, 1}};
    for (const auto& [n, m, p] : shapes) {
        const auto a = random_values(n * m), b = random_values(m * p);
        Values product(static_cast<std::size_t>(n * p));
        Values columns(b.size());  // rows of these are the columns of b
        Mprod(a.data(), b.data(), product.data(), n, m, p);
        Mtrans(b.data(), columns.data(), m, p);
        for (int i = 0; i < n; ++i) {
            for (int k = 0; k < p; ++k) {
                EXPECT_EQ(columns[k * m + 1 % m], b[(1 % m) * p + k]);
                EXPECT_NEAR(product[i * p + k], exact_dot(&a[i * m], &columns[k * m], m),
                            1.2e-16 * m * 2);
            }
        }
    }
}

TEST(Matrices, RotateAsRodriguesSaysAndBack) {
    for (int trial = 0; trial < 100; ++trial) {
        auto axis = random_values(3);
        const auto v = random_values(3);
        Vnorm2(axis.data());
        const double angle = 4 * v[0], c = std::cos(angle), s = std::sin(angle);
        double m[9], across[3], turned[3], twice[6], inverse[9];
        M3rot(axis.data(), c, s, m);

        // v turns about the axis by the angle, counter-clockwise.
        Vprod(axis.data(), v.data(), across);
        const double along = SVprod(axis.data(), v.data(), 3) * (1 - c);
        MV3prod(m, v.data(), turned);
        const double two[6] = {9, 9, 9, v[0], v[1], v[2]};
        MVarrProd(m, two, twice, 3, 3, 2);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(turned[i], v[i] * c + across[i] * s + axis[i] * along, 1e-15);
            EXPECT_NEAR(twice[3 + i], turned[i], 3e-16);
        }
        V3Mprod(turned, m, turned);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(turned[i], v[i], 2e-15);
        Mtrans(m, inverse, 3, 3);
        M3prod(m, inverse, m);
        for (int i = 0; i < 9; ++i) EXPECT_NEAR(m[i], i % 4 == 0 ? 1 : 0, 2e-15);
    }
}

TEST(VectorsAngle, HasTheSenseOfTheNormal) {
    const double oblique = std::acos(26 / std::sqrt(26.0 * 27));
    const struct {
        double a[3], b[3], plain, oriented;
    } cases[] = {{{1, 2, 3}, {2, 4, 6}, 0, 0},
                 {{1, 2, 3}, {-1, -2, -3}, kPi, kPi},
                 {{0, 0, 0}, {1, 0, 0}, 0, 0},
                 {{1, 0, 0}, {0, 0, 0}, 0, 0},
                 // within 1e-12 of parallel: the sense is not looked at
                 {{1, 0, 0}, {1, -1e-7, 0}, 0, 0},
                 // x-y plane: sense by z
                 {{2, 0, 0}, {0, 3, 0}, kPi / 2, kPi / 2},
                 {{2, 0, 0}, {0, -3, 0}, kPi / 2, 3 * kPi / 2},
                 {{1, 0, 5}, {1, -1, 5}, oblique, 2 * kPi - oblique},
                 // y-z plane: sense by x
                 {{0, 1, 0}, {0, 0, 1}, kPi / 2, kPi / 2},
                 {{0, 1, 0}, {0, 0, -1}, kPi / 2, 3 * kPi / 2},
                 // x-z plane: sense by minus y
                 {{1, 0, 0}, {0, 0, 1}, kPi / 2, kPi / 2},
                 {{1, 0, 0}, {0, 0, -1}, kPi / 2, 3 * kPi / 2}};
    for (const auto& c : cases) {
        EXPECT_NEAR(VectorsAngle(0, c.a, c.b), c.plain, 1e-15) << &c - cases;
        EXPECT_NEAR(VectorsAngle(1, c.a, c.b), c.oriented, 2e-15) << &c - cases;
    }
}

}  // namespace
