// The nodes of Gauss-Radau quadrature on [0, 1] with eight points, the first at 0, and what
// follows from them, computed while compiling.
// Everhart 1985, in Dynamics of Comets, ed. Carusi & Valsecchi, 185.
#pragma once

#include <array>
#include <cstddef>

namespace solsys::radau {

constexpr int kTerms = 7;  // nodes after the first, powers of the step kept after the force

namespace detail {

struct ValueAndSlope {
    long double value, slope;
};

// Legendre's polynomial P_degree and its derivative.
constexpr ValueAndSlope legendre(int degree, long double x) {
    long double p0 = 1, p1 = x, d0 = 0, d1 = 1;
    for (int n = 1; n < degree; ++n) {  // p1 is P_n
        const long double p2 = ((2 * n + 1) * x * p1 - n * p0) / (n + 1);
        const long double d2 = d0 + (2 * n + 1) * p1;
        p0 = p1, p1 = p2, d0 = d1, d1 = d2;
    }
    return {p1, d1};
}

// P_7 + P_8, whose roots are -1 and the free nodes on [-1, 1].
constexpr ValueAndSlope radau_polynomial(long double x) {
    const ValueAndSlope a = legendre(kTerms, x), b = legendre(kTerms + 1, x);
    return {a.value + b.value, a.slope + b.slope};
}

// The root between low and high, where the polynomial has opposite signs: bisection brings
// Newton's method near enough.
constexpr long double root_between(long double low, long double high) {
    const bool rising = radau_polynomial(high).value > 0;
    for (int i = 0; i < 20; ++i) {
        const long double middle = (low + high) / 2;
        (radau_polynomial(middle).value > 0) == rising ? high = middle : low = middle;
    }
    long double x = (low + high) / 2;
    for (int i = 0; i < 4; ++i) {
        const ValueAndSlope p = radau_polynomial(x);
        x -= p.value / p.slope;
    }
    return x;
}

constexpr std::array<long double, kTerms + 1> find_nodes() {
    std::array<long double, kTerms + 1> nodes{};  // the first is 0
    constexpr int kScan = 400;
    int found = 1;
    for (int i = 1; i < kScan; ++i) {  // not from -1, which is a root
        const long double low = -1 + 2.0L * i / kScan, high = -1 + 2.0L * (i + 1) / kScan;
        if ((radau_polynomial(low).value > 0) != (radau_polynomial(high).value > 0))
            nodes[static_cast<std::size_t>(found++)] = (1 + root_between(low, high)) / 2;
    }
    return nodes;
}

constexpr std::array<long double, kTerms + 1> kExactNodes = find_nodes();

// The weights of the quadrature on [0, 1] at these nodes, exact up to degree 14.
constexpr std::array<long double, kTerms + 1> exact_weights() {
    constexpr int n = kTerms + 1;
    std::array<long double, n> weights{1.0L / (n * n)};
    for (std::size_t j = 1; j < n; ++j) {
        const long double x = 2 * kExactNodes[j] - 1, p = legendre(kTerms, x).value;
        weights[j] = (1 - x) / (2 * n * n * p * p);
    }
    return weights;
}

}  // namespace detail

template <class Value>
using Square = std::array<std::array<Value, kTerms>, kTerms>;

// A number to more digits than a double has.
struct Split {
    double high, low;
};
constexpr Split split(long double x) {
    const auto high = static_cast<double>(x);
    return {high, static_cast<double>(x - high)};
}

// In the fraction s of a step a force is
//     f(s) = f_0 + b_1 s + b_2 s^2 + ... + b_7 s^7                      (powers)
//          = f_0 + g_1 s + g_2 s (s - h_1) + ... + g_7 s (s - h_1) ... (s - h_6)   (Newton)
// with h_j the nodes. Rows and columns count from 0 for b_1, g_1. The nodes are rounded once;
// all else belongs to the rounded ones, or energy would drift by the difference.
struct Constants {
    std::array<double, kTerms + 1> node{};  // h_0 = 0, h_1 ... h_7
    Square<double> per_gap{};               // [j][k], k <= j: 1 / (h_{j+1} - h_k)
    Square<double> power{};                 // [j][k], k <= j: of s^(k+1) in Newton's term j+1
    Square<double> newton{};                // [k][j], j <= k: of Newton's term j+1 in s^(k+1)
    // Integrals of 1, s, ... s^7 from 0 to node j, once and twice.
    std::array<std::array<double, kTerms + 1>, kTerms + 1> once{}, twice{};
    // The integrals of f from 0 to 1, once and twice: weights of its values at the nodes.
    std::array<Split, kTerms + 1> sum_once{}, sum_twice{};
};

constexpr void make_changes_of_basis(Constants& out) {
    const auto& h = out.node;
    Square<long double> power{}, newton{};
    power[0][0] = newton[0][0] = 1;
    for (std::size_t j = 1; j < kTerms; ++j) {
        for (std::size_t k = 0; k <= j; ++k) {
            const long double before_p = k > 0 ? power[j - 1][k - 1] : 0;
            const long double before_n = k > 0 ? newton[j - 1][k - 1] : 0;
            power[j][k] = before_p - h[j] * power[j - 1][k];
            newton[j][k] = before_n + h[k + 1] * newton[j - 1][k];
        }
    }
    for (std::size_t j = 0; j < kTerms; ++j) {
        for (std::size_t k = 0; k <= j; ++k) {
            out.per_gap[j][k] = static_cast<double>(1.0L / (1.0L * h[j + 1] - h[k]));
            out.power[j][k] = static_cast<double>(power[j][k]);
            out.newton[j][k] = static_cast<double>(newton[j][k]);
        }
    }
}

constexpr void make_integrals(Constants& out) {
    for (std::size_t j = 1; j <= kTerms; ++j) {
        const long double s = out.node[j];
        long double power_of_s = s;
        for (std::size_t k = 0; k <= kTerms; ++k, power_of_s *= s) {
            out.once[j][k] = static_cast<double>(power_of_s / (k + 1));
            out.twice[j][k] = static_cast<double>(power_of_s * s / ((k + 1) * (k + 2)));
        }
    }
}

// The integral of Lagrange's polynomial of each rounded node, by the quadrature of the exact
// ones.
constexpr void make_weights(Constants& out) {
    const auto& exact = detail::kExactNodes;
    const auto weights = detail::exact_weights();
    for (std::size_t j = 0; j <= kTerms; ++j) {
        long double once = 0, twice = 0;
        for (std::size_t i = 0; i <= kTerms; ++i) {
            long double lagrange = 1;
            for (std::size_t m = 0; m <= kTerms; ++m)
                if (m != j)
                    lagrange *= (exact[i] - out.node[m]) / (1.0L * out.node[j] - out.node[m]);
            once += weights[i] * lagrange;
            twice += weights[i] * (1 - exact[i]) * lagrange;
        }
        out.sum_once[j] = split(once);
        out.sum_twice[j] = split(twice);
    }
}

constexpr Constants make_constants() {
    Constants out;
    for (std::size_t j = 0; j <= kTerms; ++j)
        out.node[j] = static_cast<double>(detail::kExactNodes[j]);
    make_changes_of_basis(out);
    make_integrals(out);
    make_weights(out);
    return out;
}

constexpr Constants kConstants = make_constants();
static_assert(kConstants.node[1] > 0 && kConstants.node[kTerms] < 1, "seven nodes in (0, 1)");

}  // namespace solsys::radau
