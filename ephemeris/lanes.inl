// Numbers and vectors of eight of them under the same operations, for kernels that are compiled
// for several processors. Included once by each of a kernel's sources; includes nothing, and
// everything here stays within the source file.
#pragma once

namespace solsys {
namespace {

constexpr int kLanes = 8;

// Numbers and vectors of them with the same operations.
using Vector = double __attribute__((vector_size(8 * kLanes)));
using Mask = decltype(Vector{} < Vector{});

template <class T>
struct BitsOf {
    using Type = unsigned long long;
};
template <>
struct BitsOf<Vector> {
    using Type = unsigned long long __attribute__((vector_size(8 * kLanes)));
};
template <class T>
using Bits = typename BitsOf<T>::Type;

inline double select(bool choose, double a, double b) { return choose ? a : b; }
inline Vector select(Mask choose, Vector a, Vector b) { return choose ? a : b; }
inline bool any(bool mask) { return mask; }
inline bool any(Mask mask) {
    long long bits = 0;
    for (int i = 0; i < kLanes; ++i) bits |= mask[i];
    return bits != 0;
}
inline bool both(bool a, bool b) { return a && b; }
inline Mask both(Mask a, Mask b) { return a & b; }

inline double square_root(double x) { return __builtin_sqrt(x); }
inline Vector square_root(Vector x) {
    double lanes[kLanes];
    __builtin_memcpy(lanes, &x, sizeof x);
    for (double& lane : lanes) lane = __builtin_sqrt(lane);
    __builtin_memcpy(&x, lanes, sizeof x);
    return x;
}
inline double cube_root(double x) { return __builtin_cbrt(x); }
inline Vector cube_root(Vector x) {
    for (int i = 0; i < kLanes; ++i) x[i] = __builtin_cbrt(x[i]);
    return x;
}
inline double arctangent(double y, double x) { return __builtin_atan2(y, x); }
inline Vector arctangent(Vector y, Vector x) {
    for (int i = 0; i < kLanes; ++i) y[i] = __builtin_atan2(y[i], x[i]);
    return y;
}
template <class T>
inline T absolute(T x) {
    return __builtin_bit_cast(T, __builtin_bit_cast(Bits<T>, x) & 0x7fffffffffffffffULL);
}

constexpr double kPi = 3.14159265358979323846;
constexpr double kTurn = 6.28318530717958647692;
// Adding 1.5 * 2^52 rounds to an integer, |x| < 2^51.
constexpr double kRounder = 6755399441055744.0;
template <class T>
inline T nearest(T x) {
    return (x + kRounder) - kRounder;
}

template <class T>
struct Angle {
    T sin, cos;
};

// As solsys::sin_cos has it (core/sin_cos.h): within 2.3e-16 for |x| <= 1e6.
template <class T>
inline Angle<T> sines(T x) {
    const T shifted = x * 0.63661977236758134308 + kRounder;
    const T turns = shifted - kRounder;
    const T r = ((x - turns * 0x1.921fb544p+0) - turns * 0x1.0b4611a6p-34) -
                turns * 0x1.3198a2e037073p-69;
    const T q = r * r;
    const T q2 = q * q;
    const T s =
        ((-1.0 / 6 + q * (1.0 / 120)) + q2 * (-1.0 / 5040 + q * (1.0 / 362880))) +
        (q2 * q2) * ((-1.0 / 39916800 + q * (1.0 / 6227020800)) + q2 * (-1.0 / 1307674368000));
    const T c = ((1.0 / 24 + q * (-1.0 / 720)) + q2 * (1.0 / 40320 + q * (-1.0 / 3628800))) +
                (q2 * q2) * ((1.0 / 479001600 + q * (-1.0 / 87178291200)) +
                             q2 * (1.0 / 20922789888000));
    const auto sine = __builtin_bit_cast(Bits<T>, r + (r * q) * s);
    const auto cosine = __builtin_bit_cast(Bits<T>, (1.0 - 0.5 * q) + q2 * c);
    // Odd quadrants swap the two, and the signs go round.
    const auto quadrant = __builtin_bit_cast(Bits<T>, shifted);
    const Bits<T> swap = -(quadrant & 1ULL);
    const Bits<T> first = (sine & ~swap) | (cosine & swap);
    const Bits<T> second = (cosine & ~swap) | (sine & swap);
    return {__builtin_bit_cast(T, first ^ ((quadrant & 2ULL) << 62)),
            __builtin_bit_cast(T, second ^ (((quadrant + 1ULL) & 2ULL) << 62))};
}

}  // namespace
}  // namespace solsys
