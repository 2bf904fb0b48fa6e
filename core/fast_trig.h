// Sine and cosine by reduction to an eighth of a turn and fixed polynomials: no table, no
// library call, made for arguments of moderate size.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/constants.h"
#include "core/sin_cos.h"

namespace solsys {

// Beyond this the one-step reduction has nothing left to give, and the octant would not fit.
constexpr double kFastTrigLimit = 1e9;

namespace detail {

constexpr double kFourOverPi = 1.2732395447351628;
constexpr double kQuarterPi = 0.7853981633974483;

// Taylor polynomials for |r| <= pi/4, z = r^2.
constexpr double cos_polynomial(double z) {
    return 1 + z * (-0.5 + z * (0.041666666666666664 +
                                z * (-0.001388888888888889 +
                                     z * (2.48015873015873e-5 +
                                          z * (-2.755731922398589e-7 +
                                               z * (2.08767569878681e-9 +
                                                    z * (-1.1470745597729725e-11 +
                                                         z * 4.779477332387385e-14)))))));
}
constexpr double sin_polynomial(double r, double z) {
    return r * (1 + z * (-0.16666666666666666 +
                         z * (0.008333333333333333 +
                              z * (-0.0001984126984126984 +
                                   z * (2.7557319223985893e-6 +
                                        z * (-2.505210838544172e-8 +
                                             z * (1.6059043836821613e-10 -
                                                  z * 7.647163731819816e-13)))))));
}

// Distance of |x| from the nearest multiple of a quarter turn, by the octant.
constexpr double octant_rest(double a, std::uint32_t octant) {
    return octant & 1U ? (octant + 1U) * kQuarterPi - a : a - octant * kQuarterPi;
}

}  // namespace detail

// The other leg of a right triangle with hypotenuse 1. A leg that rounding made longer than 1
// gives 0; what is not a number stays that.
inline double unit_leg(double leg) {
    const double square = 1 - leg * leg;
    return square < 0 ? 0 : std::sqrt(square);
}

inline double fm_sin(double x) {
    const double a = std::fabs(x);
    if (!(a < kFastTrigLimit)) return std::sin(x);
    const auto q = static_cast<std::uint32_t>(a * detail::kFourOverPi);
    const double r = detail::octant_rest(a, q);
    const double value =
        (q + 1U) & 2U ? detail::cos_polynomial(r * r) : detail::sin_polynomial(r, r * r);
    return (x < 0) != ((q & 4U) != 0) ? -value : value;
}

inline double fm_cos(double x) {
    const double a = std::fabs(x);
    if (!(a < kFastTrigLimit)) return std::cos(x);
    const auto q = static_cast<std::uint32_t>(a * detail::kFourOverPi);
    const double r = detail::octant_rest(a, q);
    const double value =
        (q + 1U) & 2U ? detail::sin_polynomial(r, r * r) : detail::cos_polynomial(r * r);
    const std::uint32_t octant = q & 7U;
    return octant >= 2U && octant <= 5U ? -value : value;
}

// Sine of x from its cosine, with the sign of the quadrant. Near the x axis it has half the
// digits of the cosine; 1 - c^2 is kept from falling below 0.
inline double sin_from_cos(double x, double c) {
    const double a = std::fabs(x);
    if (!(a < kFastTrigLimit)) return std::sin(x);
    const double s = unit_leg(c);
    const auto quadrant = static_cast<std::uint32_t>(a * (2 / kPi));
    return ((quadrant & 2U) == 0) == (x >= 0) ? s : -s;
}

// Cosine of x from its sine, likewise.
inline double cos_from_sin(double x, double s) {
    const double a = std::fabs(x);
    if (!(a < kFastTrigLimit)) return std::cos(x);
    const double c = unit_leg(s);
    const auto quadrant = static_cast<std::uint32_t>(a * (2 / kPi));
    return (quadrant + 1U) & 2U ? -c : c;
}

// Cosine by polynomial, sine from it: what the frame code uses. Near the x axis the sine is
// good to 1e-8.
inline SinCos fast_sincos(double x) {
    const double c = fm_cos(x);
    return {sin_from_cos(x, c), c};
}

// Sine by polynomial, cosine from it; near the y axis the cosine is good to 1e-8.
inline SinCos fast_sincos_by_sine(double x) {
    const double s = fm_sin(x);
    return {s, cos_from_sin(x, s)};
}

}  // namespace solsys
