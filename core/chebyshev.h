// Sums of Chebyshev polynomials of the first kind.
#pragma once

#include <cstddef>
#include <span>

namespace solsys {

// A sum and its derivative by x.
template <class Value>
struct ChebyshevSum {
    Value value{}, rate{};
};

// c[0] + c[1] T_1(x) + ..., numbers or vectors, and with kWithRate its derivative by x (zero
// without); at least one coefficient. The value is the same bits with and without.
//
// Source: Clenshaw 1955, Math. Tables Aids Comput. 9, 118; differentiated.
template <bool kWithRate, class Value>
ChebyshevSum<Value> chebyshev_sum(std::span<const Value> c, double x) {
    ChebyshevSum<Value> b1, b2;  // of index k + 1 and k + 2
    for (std::size_t k = c.size(); k-- > 1;) {
        ChebyshevSum<Value> b;
        b.value = c[k] + 2 * x * b1.value - b2.value;
        if constexpr (kWithRate) b.rate = 2 * b1.value + 2 * x * b1.rate - b2.rate;
        b2 = b1;
        b1 = b;
    }
    ChebyshevSum<Value> sum;
    sum.value = c[0] + x * b1.value - b2.value;
    if constexpr (kWithRate) sum.rate = b1.value + x * b1.rate - b2.rate;
    return sum;
}

}  // namespace solsys
