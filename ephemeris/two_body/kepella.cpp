// State from elliptic elements by the fast sine: the Keplerian part of satellite theories.
#include <cmath>

#include "core/constants.h"
#include "core/fast_trig.h"
#include "core/linalg.h"
#include "ephemeris/two_body/orbit_plane.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

constexpr double kTiny = 1.7763568394002505e-15;  // 2^-49: tolerance [rad] and least a and mu
constexpr int kPasses = 1000;
constexpr int kNoConvergence = -1000;

struct Iterated {
    double E;
    int passes;  // or kNoConvergence
};

Iterated steffensen(double e, double M) {
    const double sin_M = fm_sin(M);
    double E = M + 0.85 * e * static_cast<double>((sin_M > 0) - (sin_M < 0));
    for (int pass = 1; pass <= kPasses + 1; ++pass) {
        const double E1 = M + e * fm_sin(E);
        const double E2 = M + e * fm_sin(E1);
        const double d = E2 - 2 * E1 + E;
        if (std::fabs(d) < kTiny) return {E, pass};
        const double step = (E1 - E) * (E1 - E) / d;
        E -= step;
        if (std::fabs(step) < kTiny) return {E, pass};
    }
    return {E, kNoConvergence};
}

}  // namespace
}  // namespace solsys

int KepElla(const double elements[6], double mu, double out[6]) {
    using namespace solsys;
    const double a = elements[0], e = elements[1], i = elements[2];
    const double peri = elements[4], node = elements[5];
    const bool ellipse = e >= 0 && e < 1 && mu >= kTiny && a >= kTiny && i >= 0 && i < kPi &&
                         std::isfinite(a) && std::isfinite(mu) && std::isfinite(elements[3]) &&
                         std::isfinite(peri) && std::isfinite(node);
    if (!ellipse) return -1;

    const double M = elements[3] - kTwoPi * std::trunc(elements[3] / kTwoPi);
    const auto [E, passes] = steffensen(e, M);
    if (passes == kNoConvergence) return kNoConvergence;

    const auto [sin_E, cos_E] = fast_sincos_by_sine(E);
    const double r_over_a = 1 - e * cos_E;
    const double r = a * r_over_a;
    const double cos_nu = (cos_E - e) / r_over_a;
    const double sin_nu = std::sqrt(1 - e * e) * sin_E / r_over_a;

    const auto [sin_peri, cos_peri] = fast_sincos_by_sine(peri);
    const double cos_u = cos_peri * cos_nu - sin_peri * sin_nu;
    const double sin_u = sin_peri * cos_nu + cos_peri * sin_nu;

    const auto [sin_i, cos_i] = fast_sincos_by_sine(i);
    const auto [sin_node, cos_node] = fast_sincos_by_sine(node);
    const OrbitPlane plane{cos_node, sin_node, cos_i, sin_i};
    const Vec3 radial = plane.radial(cos_u, sin_u);
    store(r * radial, out);
    store(conic_velocity(mu, a * (1 - e * e), e, cos_nu, sin_nu, radial,
                         plane.transverse(cos_u, sin_u)),
          out + 3);
    return passes;
}
