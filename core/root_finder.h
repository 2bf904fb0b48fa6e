// Root of a function of one variable by Brent's method.
#pragma once

#include <cmath>
#include <limits>
#include <utility>

namespace solsys {

namespace detail {

// The step p/q from b to the root of the curve through the points (a, fa), (b, fb), (c, fc):
// x as a quadratic in f, or the secant where a and c are one; p is not below zero. xm is half
// the way from b to c.
struct Quotient {
    double p, q;
};
inline Quotient interpolated_step(double a, double b, double c, double fa, double fb, double fc,
                                  double xm) {
    const double s = fb / fa;
    double p = 2 * xm * s;
    double q = 1 - s;
    if (a != c) {
        const double ratio_a = fa / fc;
        const double ratio_b = fb / fc;
        p = s * (2 * xm * ratio_a * (ratio_a - ratio_b) - (b - a) * (ratio_b - 1));
        q = (ratio_a - 1) * (ratio_b - 1) * (s - 1);
    }
    return p > 0 ? Quotient{p, -q} : Quotient{-p, q};
}

}  // namespace detail

// Root of f in [a, b], where it has opposite signs (not tested), to `tol`. Converges for every
// function by bisection at worst, one that gives NaN included; end points that are not finite
// give NaN.
//
// Source: Brent 1973, Algorithms for Minimization without Derivatives, in the form of Forsythe,
// Malcolm & Moler 1977.
template <class Function>
double zeroin(double a, double b, Function&& f, double tol) {
    if (!std::isfinite(a) || !std::isfinite(b)) return std::numeric_limits<double>::quiet_NaN();
    if (!(tol > 0)) tol = 0;
    constexpr double epsilon = std::numeric_limits<double>::epsilon() / 2;  // 1 + it > 1 fails

    double fa = f(a);
    double fb = f(b);
    double c = a;
    double fc = fa;
    double d = b - a;
    double e = d;
    for (;;) {
        if (std::fabs(fc) < std::fabs(fb)) {  // b is to be the best estimate
            a = std::exchange(b, c), c = a;
            fa = std::exchange(fb, fc), fc = fa;
        }
        const double tol1 = 2 * epsilon * std::fabs(b) + 0.5 * tol;
        const double xm = 0.5 * (c - b);
        // Written so that an interval too wide for its difference to be finite ends it too.
        if (!(std::fabs(xm) > tol1) || fb == 0) return b;

        bool bisect = true;
        if (std::fabs(e) >= tol1 && std::fabs(fa) > std::fabs(fb)) {
            const auto [p, q] = detail::interpolated_step(a, b, c, fa, fb, fc, xm);
            if (2 * p < 3 * xm * q - std::fabs(tol1 * q) && p < std::fabs(0.5 * e * q)) {
                e = std::exchange(d, p / q);
                bisect = false;
            }
        }
        if (bisect) d = e = xm;

        a = b;
        fa = fb;
        b += std::fabs(d) > tol1 ? d : (xm >= 0 ? tol1 : -tol1);
        fb = f(b);
        if (fb * (fc / std::fabs(fc)) > 0) {
            c = a, fc = fa;
            d = e = b - a;
        }
    }
}

}  // namespace solsys
