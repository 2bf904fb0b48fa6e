#include "events/eclipses/solar_circumstances.h"

#include <algorithm>
#include <cmath>

#include "events/eclipses/contact_roots.h"
#include "solsys/eclipses.h"

namespace solsys::eclipses {
namespace {

constexpr double kContactTolerance = 1e-9;  // Earth radii: 7 microseconds

// When the distance from the limb is `sign` times the radius L: first and last time.
template <class Radius>
Pair contact_pair(const SolarPath& path, double sign, Radius&& radius) {
    const ShadowElements e = path.at(path.greatest);
    const double reach = 1 + sign * radius(e);
    const double m2 = e.x * e.x + e.y * e.y;
    const double half = std::sqrt(std::max(reach * reach - m2, 1e-6)) / std::hypot(e.dx, e.dy);
    const auto f = [&](double h) {
        const ShadowElements at = path.at(h);
        return distance_from_limb(at) - sign * radius(at);
    };
    return roots_around(f, path.greatest, half, kContactTolerance);
}

double penumbra(const ShadowElements& e) { return e.l1; }
double umbra(const ShadowElements& e) { return std::fabs(e.l2); }

// L2 where the axis meets the ground.
double umbra_on_axis(const SolarPath& path, double h) {
    const ShadowElements e = path.at(h);
    AxisPoint p{};
    const double zeta = axis_point(e, p) ? p.zeta : 0;
    return e.l2 - zeta * e.tan_f2;
}

// Total, annular or both along the central line.
short type_along(const SolarPath& path, double c1, double c2) {
    constexpr int kSamples = 16;
    double at[kSamples + 1];
    int least = 0;
    for (int i = 0; i <= kSamples; ++i) {
        at[i] = umbra_on_axis(path, c1 + (c2 - c1) * i / kSamples);
        if (at[i] < at[least]) least = i;
    }
    double minimum = at[least];
    if (least > 0 && least < kSamples) {  // the parabola through three samples
        const double rise = at[least + 1] - at[least - 1];
        const double bend = at[least + 1] - 2 * at[least] + at[least - 1];
        if (bend > 0) minimum -= rise * rise / (8 * bend);
    }
    const double maximum = std::max(at[0], at[kSamples]);
    if (minimum >= 0) return ECLIPSE_ANNULAR;
    return maximum > 0 ? ECLIPSE_HYBRID : ECLIPSE_TOTAL;
}

}  // namespace

double distance_from_limb(const ShadowElements& e) {
    // The nearest point (cos q, rho sin q) of the ellipse, by Newton's method on the normal's
    // condition; the ellipse is a circle to 1 in 300.
    const double rho = e.earth.rho1;
    const double e2 = 1 - rho * rho;
    double q = std::atan2(e.y, rho * e.x);
    double s = 0, c = 0;
    for (int i = 0; i < 3; ++i) {
        s = std::sin(q), c = std::cos(q);
        const double f = e.x * s - rho * e.y * c - e2 * s * c;
        const double slope = e.x * c + rho * e.y * s - e2 * (c * c - s * s);
        if (!(std::fabs(slope) > 1e-3)) break;  // the axis through the centre
        const double step = f / slope;
        q -= step;
        if (std::fabs(step) < 1e-7) {
            s -= step * c, c += step * s;
            break;
        }
    }
    const double normal = std::hypot(rho * c, s);
    return ((e.x - c) * rho * c + (e.y - rho * s) * s) / normal;
}

bool axis_point(const ShadowElements& e, AxisPoint& out) {
    const double eta1 = e.y / e.earth.rho1;
    const double zeta1_squared = 1 - e.x * e.x - eta1 * eta1;
    if (!(zeta1_squared >= 0)) return false;
    const double zeta1 = std::sqrt(zeta1_squared);
    out = {e.x, e.y, e.earth.rho2 * (zeta1 * e.earth.cos_d1_d2 - eta1 * e.earth.sin_d1_d2)};
    return true;
}

Pair central_line(const SolarPath& path) {
    return contact_pair(path, 0, [](const ShadowElements&) { return 0.0; });
}

Pair phase_limits(const SolarPath& path, double magnitude) {
    return contact_pair(path, 1, [magnitude](const ShadowElements& e) {
        return e.l1 - magnitude * (e.l1 + e.l2);
    });
}

SolarContacts solar_contacts(const SolarPath& path) {
    return {contact_pair(path, 1, penumbra), contact_pair(path, -1, penumbra),
            contact_pair(path, 1, umbra), contact_pair(path, -1, umbra), central_line(path)};
}

SolarCircumstances solar_circumstances(const SolarPath& path) {
    SolarCircumstances s;
    s.greatest = path.at(path.greatest);
    const ShadowElements& e = s.greatest;
    s.gamma = std::copysign(std::hypot(e.x, e.y), e.y);

    AxisPoint p{};
    if (axis_point(e, p)) {
        s.exists = s.central = true;
        const double l1 = e.l1 - p.zeta * e.tan_f1;
        const double l2 = e.l2 - p.zeta * e.tan_f2;
        s.magnitude = (l1 - l2) / (l1 + l2);
        Pair line = central_line(path);
        if (std::isnan(line.first)) line = {path.greatest, path.greatest};  // a point
        s.type = type_along(path, line.first, line.last);
        return s;
    }
    const double delta = distance_from_limb(e);
    s.magnitude = (e.l1 - delta) / (e.l1 + e.l2);
    s.exists = s.magnitude > 0;
    if (delta < std::fabs(e.l2)) {
        s.type = e.l2 < 0 ? ECLIPSE_TOTAL : ECLIPSE_ANNULAR;
    } else {
        s.type = ECLIPSE_PARTIAL;
    }
    return s;
}

}  // namespace solsys::eclipses
