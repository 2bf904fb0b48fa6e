#include "ephemeris/two_body/kepler_equation.h"

#include <cmath>

#include "core/constants.h"
#include "core/fast_trig.h"

namespace solsys {
namespace {

constexpr double kTolerance = 1e-10;      // rad, of a step
constexpr double kApsisTolerance = 1e-9;  // rad, of a mean anomaly
constexpr int kSteffensenPasses = 1000;
constexpr int kNewtonPasses = 30;

}  // namespace

double reduced_mean_anomaly(double M) {
    if (std::fabs(M) > kTwoPi) M = std::fmod(M, kTwoPi);
    return M < 0 ? M + kTwoPi : M;
}

Apsis apsis_of(double M) {
    if (std::fabs(M) <= kApsisTolerance || std::fabs(M - kTwoPi) <= kApsisTolerance)
        return {true, 0.0};
    if (std::fabs(M - kPi) <= kApsisTolerance) return {true, kPi};
    return {false, 0.0};
}

Anomaly ellipse_by_steffensen(double e, double M) {
    const double sin_M = std::sin(M);
    double E = M + 0.85 * e * static_cast<double>((sin_M > 0) - (sin_M < 0));
    for (int pass = 0; pass <= kSteffensenPasses; ++pass) {
        const double E1 = M + e * std::sin(E);
        const double E2 = M + e * std::sin(E1);
        const double d = E2 - 2 * E1 + E;
        if (d == 0) return {E, true};
        // Near the perihelion of a long ellipse d is (1 - e cos E)^2 times the error: small
        // long before the error is, so the step has a say in whether a small d is the end.
        const double step = (E1 - E) * (E1 - E) / d;
        if (std::fabs(d) < kTolerance && std::fabs(step) < kTolerance) return {E, true};
        E -= step;
        if (std::fabs(step) < kTolerance) return {E, true};
    }
    return {E, false};
}

Anomaly ellipse_by_newton(double e, double M, double start) {
    double E = start;
    for (int pass = 0; pass < kNewtonPasses; ++pass) {
        const auto [s, c] = fast_sincos(E);
        const double step = (e * s + M - E) / (1 - e * c);
        E += step;
        if (std::fabs(step) <= kTolerance) return {E, true};
    }
    return {E, false};
}

double hyperbola_start(double e, double M) {
    return M >= 0 ? std::log(2 * M / e + 1.8) : -std::log(1.8 - 2 * M / e);
}

Anomaly hyperbola_by_newton(double e, double M, double start, Stop stop) {
    double H = start;
    for (int pass = 0; pass < kNewtonPasses; ++pass) {
        const double step = (M + H - e * std::sinh(H)) / (e * std::cosh(H) - 1);
        H += step;
        const double scale = stop == Stop::relative ? 1 + std::fabs(H + M) : 1.0;
        if (std::fabs(step) <= kTolerance * scale) return {H, true};
    }
    return {H, false};
}

Anomaly barker_by_newton(double W) {
    double s = std::fabs(W) <= 3.6 ? W : std::cbrt(3 * W);
    for (int pass = 0; pass < kNewtonPasses; ++pass) {
        const double step = (s * s * s / 3 + s - W) / (s * s + 1);
        s -= step;
        if (std::fabs(step) <= kTolerance) return {s, true};
    }
    return {s, false};
}

BarkerRoot barker_root(double W) {
    // The root is odd in W: taking |W| keeps the cube root's argument free of cancellation.
    const double a = 1.5 * std::fabs(W);
    const double root = std::sqrt(a * a + 1);
    const double y = std::cbrt(a + root);
    const double slope = 1.5 * (y / (3 * root)) * (1 + 1 / (y * y));
    return {std::copysign(y - 1 / y, W), slope};
}

}  // namespace solsys
