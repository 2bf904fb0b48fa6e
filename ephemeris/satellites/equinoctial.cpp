#include "ephemeris/satellites/equinoctial.h"

#include "ephemeris/satellites/turns.h"

namespace solsys::satellites {
namespace {

// Sine and cosine of the eccentric longitude F, F - k sin F + h cos F = l, by Newton's method.
// It needs two passes at small eccentricities and five at 0.75.
bool solve_kepler(double l, double k, double h, SinCos& f) {
    constexpr int kMaxPasses = 50;
    const SinCos start = sin_cos(l);
    double longitude = l + k * start.sin - h * start.cos;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        f = sin_cos(longitude);
        const double step =
            (l - longitude + k * f.sin - h * f.cos) / (1 - k * f.cos - h * f.sin);
        longitude += step;
        if (std::fabs(step) < 1e-8) {
            // A last step this small is taken in the sine and cosine themselves.
            const double cosine = 1 - 0.5 * step * step;
            f = {f.sin * cosine + f.cos * step, f.cos * cosine - f.sin * step};
            return true;
        }
    }
    return false;
}

}  // namespace

int state_of(const EquinoctialElements& elements, State& state) {
    const auto [a, n, l, k, h, q, p] = elements;
    const double e2 = k * k + h * h;
    const double s2 = q * q + p * p;
    if (!(e2 < 1) || !(s2 <= 1) || !(a > 0) || !std::isfinite(a * n * l)) return kInvalid;

    SinCos f;
    if (!solve_kepler(l - kTwoPi * std::floor(l / kTwoPi), k, h, f)) return kNoConvergence;

    // In the plane of the orbit, x towards the origin of longitudes.
    const double phi = std::sqrt(1 - e2);
    const double psi = 1 / (1 + phi);
    const double d = h * f.cos - k * f.sin;
    const double u = k * f.cos + h * f.sin;
    const double x = a * (f.cos - k - psi * h * d);
    const double y = a * (f.sin - h + psi * k * d);
    const double g = a * n / (1 - u);
    const double vx = g * (-f.sin + psi * h * u);
    const double vy = g * (f.cos - psi * k * u);

    // Out of the plane.
    const double w = 2 * std::sqrt(1 - s2);
    const Vec3 x_axis{1 - 2 * p * p, 2 * p * q, -w * p};
    const Vec3 y_axis{2 * p * q, 1 - 2 * q * q, w * q};
    state = {x * x_axis + y * y_axis, vx * x_axis + vy * y_axis};
    return kOk;
}

}  // namespace solsys::satellites
