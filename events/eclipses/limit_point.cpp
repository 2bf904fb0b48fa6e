#include "events/eclipses/limit_point.h"

#include <algorithm>
#include <cmath>

#include "core/angles.h"

namespace solsys::eclipses {
namespace {

constexpr int kMaxSteps = 30;
constexpr double kLimitTolerance = 1e-10;  // rad

// The angle that the motion at the edge's point of angle q wants.
double wanted(const ShadowElements& e, const Cone& cone, Side side, double q, GroundPoint& p,
              bool& on_earth) {
    on_earth = on_edge(e, cone, q, p);
    const Motion m = motion_at(e, p);
    const double n = std::hypot(m.u, m.v);
    const double turn = std::acos(std::clamp((cone.da + cone.b * m.dzeta) / n, -1.0, 1.0));
    return std::atan2(m.u, m.v) + (side == Side::kNorth ? turn : -turn);
}

}  // namespace

Cone umbral_cone(const ShadowElements& e) { return {e.l2, e.dl2, -e.tan_f2}; }

Cone magnitude_cone(const ShadowElements& e, double magnitude) {
    return {e.l1 - magnitude * (e.l1 + e.l2), e.dl1 - magnitude * (e.dl1 + e.dl2),
            -e.tan_f1 + magnitude * (e.tan_f1 + e.tan_f2)};
}

Cone part_of_penumbra(const ShadowElements& e, double k) {
    return {k * e.l1, k * e.dl1, -k * e.tan_f1};
}

bool on_edge(const ShadowElements& e, const Cone& cone, double q, GroundPoint& p) {
    const double s = std::sin(q), c = std::cos(q);
    double zeta = 0;
    bool on_earth = false;
    for (int i = 0; i < 3; ++i) {  // the radius depends on the height by 1 in 200
        const double radius = std::fabs(cone.a + cone.b * zeta);
        p.xi = e.x - radius * s;
        p.eta = e.y - radius * c;
        p.eta1 = p.eta / e.earth.rho1;
        const double rest = 1 - p.xi * p.xi - p.eta1 * p.eta1;
        on_earth = rest >= 0;
        p.zeta1 = on_earth ? std::sqrt(rest) : 0;
        zeta = p.zeta =
            e.earth.rho2 * (p.zeta1 * e.earth.cos_d1_d2 - p.eta1 * e.earth.sin_d1_d2);
    }
    return on_earth;
}

Motion motion_at(const ShadowElements& e, const GroundPoint& p) {
    const double dxi = e.dmu * (p.zeta * e.cos_d - p.eta * e.sin_d);
    const double deta = e.dmu * p.xi * e.sin_d - e.dd * p.zeta;
    return {e.dx - dxi, e.dy - deta, -e.dmu * p.xi * e.cos_d + e.dd * p.eta};
}

bool limit_point(const ShadowElements& e, const Cone& cone_given, Side side, double& q,
                 GroundPoint& p) {
    // The radius counts as positive: for a total eclipse the umbra's is -a.
    const bool negative = cone_given.a + cone_given.b * 0.5 < 0;
    const Cone cone =
        negative ? Cone{-cone_given.a, -cone_given.da, -cone_given.b} : cone_given;
    bool on_earth = false;
    if (!std::isfinite(q))
        q = wanted(e, cone, side, side == Side::kNorth ? kPi : 0.0, p, on_earth);
    double a = q;
    double fa = wrap_half_turn(wanted(e, cone, side, a, p, on_earth) - a);
    double b = a + fa;
    for (int i = 0; i < kMaxSteps; ++i) {
        const double fb = wrap_half_turn(wanted(e, cone, side, b, p, on_earth) - b);
        if (std::fabs(fb) < kLimitTolerance) {
            q = b;
            return on_earth;
        }
        const double slope = (fb - fa) / (b - a);
        const double step = slope < -0.1 ? -fb / slope : fb;  // secant, or plain iteration
        a = b;
        fa = fb;
        b += std::clamp(step, -0.5, 0.5);
    }
    q = b;
    return false;
}

}  // namespace solsys::eclipses
