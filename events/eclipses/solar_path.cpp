#include "events/eclipses/solar_path.h"

#include <cmath>

#include "core/angles.h"
#include "events/eclipses/luminaries.h"
#include "solsys/time_scales.h"

namespace solsys::eclipses {
namespace {

bool lay_through(CSWSolSys& model, SolarPath& path) {
    std::array<double, 5> x, y, sin_d, cos_d, mu, l1, l2;
    for (int i = 0; i < 5; ++i) {
        Luminaries sky{};
        if (!luminaries_at(model, later(path.t0, kHalfSpan * kNodes[i]), sky)) return false;
        const Axis axis = shadow_axis(sky.moon, sky.sun, path.radii);
        x[i] = axis.x, y[i] = axis.y;
        sin_d[i] = axis.sin_d, cos_d[i] = axis.cos_d;
        l1[i] = axis.l1, l2[i] = axis.l2;
        const double hour_angle = sky.greenwich - axis.right_ascension;
        mu[i] = i == 0 ? wrap_half_turn(hour_angle)
                       : mu[i - 1] + wrap_half_turn(hour_angle - mu[i - 1]);
        if (i == 2) path.tan_f1 = axis.tan_f1, path.tan_f2 = axis.tan_f2;
    }
    path.x = Quartic(x), path.y = Quartic(y);
    path.sin_d = Quartic(sin_d), path.cos_d = Quartic(cos_d), path.mu = Quartic(mu);
    path.l1 = Quartic(l1), path.l2 = Quartic(l2);
    path.greatest = least_distance(path.x, path.y);
    return true;
}

}  // namespace

double least_distance(const Quartic& x, const Quartic& y) {
    double h = 0;
    for (int i = 0; i < 20; ++i) {
        const double dx = x.rate(h), dy = y.rate(h);
        const double slope = x.at(h) * dx + y.at(h) * dy;
        const double curvature =
            dx * dx + dy * dy + x.at(h) * x.second(h) + y.at(h) * y.second(h);
        const double step = -slope / curvature;
        if (!(std::fabs(step) < 100)) return h;
        h += step;
        if (std::fabs(step) < 1e-10) break;
    }
    return h;
}

ShadowElements SolarPath::at(double h) const {
    ShadowElements e{};
    e.x = x.at(h), e.y = y.at(h), e.dx = x.rate(h), e.dy = y.rate(h);
    e.sin_d = sin_d.at(h), e.cos_d = cos_d.at(h);
    e.dd = sin_d.rate(h) / e.cos_d;
    e.mu = mu.at(h), e.dmu = mu.rate(h);
    e.l1 = l1.at(h), e.l2 = l2.at(h), e.dl1 = l1.rate(h), e.dl2 = l2.rate(h);
    e.tan_f1 = tan_f1, e.tan_f2 = tan_f2;
    e.earth = flattened(e.sin_d, e.cos_d, radii.flattening);
    return e;
}

std::optional<SolarPath> solar_path(CSWSolSys& model, Instant syzygy, const Radii& radii) {
    SolarPath path;
    path.radii = radii;
    const auto lay = [&model](SolarPath& p) { return lay_through(model, p); };
    if (!centre_on_greatest(path, syzygy, lay)) return std::nullopt;
    return path;
}

}  // namespace solsys::eclipses
