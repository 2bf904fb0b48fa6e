// Kepler's equation by bisection in extended precision: shares no code and no idea with the
// solvers it checks.
#pragma once

#include <cmath>

namespace solsys {

template <class Function>
long double bisect(Function rising, long double low, long double high) {
    for (int k = 0; k < 120; ++k) {
        const long double middle = (low + high) / 2;
        (rising(middle) < 0 ? low : high) = middle;
    }
    return (low + high) / 2;
}

inline long double exact_eccentric_anomaly(long double e, long double M) {
    return bisect([&](long double E) { return E - e * std::sin(E) - M; }, M - e, M + e);
}

inline long double exact_hyperbolic_anomaly(long double e, long double M) {
    // sinh H > H (1 + H^2 / 6) bounds the root.
    const long double most = std::cbrt(6 * std::fabs(M) / e) + std::fabs(M) / (e - 1);
    const long double bound = std::fmin(most, std::asinh((std::fabs(M) + 800) / e));
    return bisect([&](long double H) { return e * std::sinh(H) - H - M; }, -bound, bound);
}

inline long double exact_barker_root(long double W) {
    const long double bound = std::fabs(W) + 1;
    return bisect([&](long double s) { return s + s * s * s / 3 - W; }, -bound, bound);
}

// Position and velocity along P and Q, in extended precision.
struct ExactPlane {
    long double X, Y;
};

// An orbit as its record gives it; q is the semi-major axis of an ellipse. |e - 1| below 1e-6
// is a parabola.
struct ExactOrbit {
    long double q, e, n, M0;

    [[nodiscard]] bool parabola() const { return std::fabs(e - 1) < 1.00000001e-6L; }

    [[nodiscard]] ExactPlane position(long double since_epoch) const {
        const long double M = M0 + n * since_epoch;
        if (parabola()) {
            const long double s = exact_barker_root(M);
            return {q * (1 - s * s), 2 * q * s};
        }
        if (e > 1) {
            const long double H = exact_hyperbolic_anomaly(e, M);
            const long double a = q / (e - 1);
            return {a * (e - std::cosh(H)), a * std::sqrt(e * e - 1) * std::sinh(H)};
        }
        const long double E = exact_eccentric_anomaly(e, M);
        return {q * (std::cos(E) - e), q * std::sqrt(1 - e * e) * std::sin(E)};
    }

    // Central differences of fourth order: 1e-13 of the velocity for periods over 100 days.
    [[nodiscard]] ExactPlane velocity(long double since_epoch) const {
        constexpr long double h = 0.01L;
        const auto at = [&](int steps) { return position(since_epoch + steps * h); };
        const ExactPlane a = at(-2), b = at(-1), c = at(1), d = at(2);
        return {(a.X - 8 * b.X + 8 * c.X - d.X) / (12 * h),
                (a.Y - 8 * b.Y + 8 * c.Y - d.Y) / (12 * h)};
    }
};

}  // namespace solsys
