// The two instants, before and after greatest eclipse, at which a distance is passed.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "events/eclipses/quartic.h"

namespace solsys::eclipses {

constexpr double kNever = std::numeric_limits<double>::quiet_NaN();

// The root of f nearest to a first guess [hours] by the secant method; NaN without convergence.
template <class Function>
double root_near(Function&& f, double h, double tolerance) {
    double previous = h + 1e-3;
    double f_previous = f(previous);
    for (int i = 0; i < 40; ++i) {
        const double value = f(h);
        if (std::fabs(value) < tolerance) return h;
        const double slope = (value - f_previous) / (h - previous);
        if (!(std::fabs(slope) > 0)) return kNever;
        previous = h;
        f_previous = value;
        h += std::clamp(-value / slope, -0.5, 0.5);
        if (!(std::fabs(h) < 2 * kHalfSpan)) return kNever;
    }
    return kNever;
}

struct Pair {
    double first = kNever, last = kNever;
};

// Roots of f on either side of `middle`, where it must be negative: first guesses `half` away.
template <class Function>
Pair roots_around(Function&& f, double middle, double half, double tolerance) {
    if (!(f(middle) < 0)) return {};
    const Pair p{root_near(f, middle - half, tolerance),
                 root_near(f, middle + half, tolerance)};
    return p.first < p.last ? p : Pair{};
}

}  // namespace solsys::eclipses
