#include "events/eclipses/local_solar.h"

#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "core/root_finder.h"

namespace solsys::eclipses {
namespace {

constexpr double kLocalReach = 3.6;  // hours from greatest eclipse: beyond all contacts
constexpr double kScanStep = 0.2;    // hours
constexpr double kLocalSolarTolerance = 1e-7;  // hours: 0.4 ms

// Where f, negative at `from`, becomes positive in steps of `step`; NaN if it does not.
template <class Function>
double leaves(Function&& f, double from, double step, double limit) {
    double a = from;
    for (int i = 0; i < 400; ++i) {
        const double b = a + step;
        if (f(b) >= 0) return zeroin(a, b, f, kLocalSolarTolerance);
        if (std::fabs(b - limit) < std::fabs(step) || std::fabs(b) > 2 * kLocalReach)
            return kNever;
        a = b;
    }
    return kNever;
}

// Least distance of the axis from the site: the best of a scan, then Newton's method on
// u u' + v v' = 0.
double least_distance(const SolarPath& path, const Site& site) {
    double best = path.greatest;
    double least = 1e9;
    for (double h = path.greatest - kLocalReach; h <= path.greatest + kLocalReach;
         h += kScanStep) {
        const Disks d = disks(site, path.at(h));
        if (d.m < least) least = d.m, best = h;
    }
    for (int i = 0; i < 20; ++i) {
        const Disks d = disks(site, path.at(best));
        const double step = -(d.u * d.du + d.v * d.dv) / (d.du * d.du + d.dv * d.dv);
        best += std::clamp(step, -kScanStep, kScanStep);
        if (std::fabs(step) < kLocalSolarTolerance) break;
    }
    return best;
}

// Sunrise and sunset between two instants, and the time nearest to the maximum with the Sun up.
void cut_by_horizon(const SolarPath& path, const Site& site, LocalSolar& local) {
    const double level = std::sin(kSunriseAltitude);
    const auto up = [&](double h) { return stand(site, path.at(h)).sin_altitude - level; };
    constexpr int kSteps = 24;
    const double first = local.outer.first;
    const double step = (local.outer.last - first) / kSteps;
    const auto consider = [&](double h) {
        if (std::isnan(local.best) ||
            std::fabs(h - local.maximum) < std::fabs(local.best - local.maximum))
            local.best = h;
    };
    if (up(local.maximum) >= 0) consider(local.maximum);
    double a = up(first);
    if (a >= 0) consider(first);
    for (int i = 1; i <= kSteps; ++i) {
        const double h = first + i * step;
        const double b = up(h);
        if ((a < 0) != (b < 0)) {
            const double crossing = zeroin(h - step, h, up, kLocalSolarTolerance);
            (b > 0 ? local.sunrise : local.sunset) = crossing;
            consider(crossing);
        }
        if (b >= 0) consider(h);
        a = b;
    }
    local.visible = !std::isnan(local.best);
}

}  // namespace

Disks disks(const Site& site, const ShadowElements& e) {
    const Standpoint p = stand(site, e);
    Disks d{};
    d.u = e.x - p.xi, d.v = e.y - p.eta;
    d.du = e.dx - p.dxi, d.dv = e.dy - p.deta;
    d.m = std::hypot(d.u, d.v);
    d.l1 = e.l1 - p.zeta * e.tan_f1;
    d.l2 = e.l2 - p.zeta * e.tan_f2;
    d.sin_altitude = p.sin_altitude;
    return d;
}

double Disks::magnitude() const {
    return m <= std::fabs(l2) ? (l1 - l2) / (l1 + l2) : (l1 - m) / (l1 + l2);
}

double Disks::obscuration() const {
    const double sun = (l1 + l2) / 2, moon = (l1 - l2) / 2;  // radii in one scale
    if (m >= l1) return 0;
    if (m <= std::fabs(l2)) return l2 < 0 ? 1 : moon * moon / (sun * sun);
    // Two circular segments, by their half angles.
    const double at_sun =
        std::acos(std::clamp((sun * sun + m * m - moon * moon) / (2 * sun * m), -1.0, 1.0));
    const double at_moon =
        std::acos(std::clamp((moon * moon + m * m - sun * sun) / (2 * moon * m), -1.0, 1.0));
    const double ratio = moon / sun;
    return (at_sun - std::sin(at_sun) * std::cos(at_sun) +
            ratio * ratio * (at_moon - std::sin(at_moon) * std::cos(at_moon))) /
           kPi;
}

double Disks::position_angle(bool inner) const {
    const double side = inner && l2 < 0 ? -1 : 1;
    return wrap_turn(std::atan2(side * u, side * v));
}

LocalSolar local_solar(const SolarPath& path, const Site& site) {
    LocalSolar local;
    local.maximum = least_distance(path, site);
    const auto outside = [&](double h) {
        const Disks d = disks(site, path.at(h));
        return d.m - d.l1;
    };
    if (!(outside(local.maximum) < 0)) return local;
    const double limit = kLocalReach + 1;
    local.outer = {leaves(outside, local.maximum, -kScanStep, -limit),
                   leaves(outside, local.maximum, kScanStep, limit)};
    if (std::isnan(local.outer.first) || std::isnan(local.outer.last)) return local;
    local.touched = true;

    const auto not_central = [&](double h) {
        const Disks d = disks(site, path.at(h));
        return d.m - std::fabs(d.l2);
    };
    if (not_central(local.maximum) < 0) {
        constexpr double kShort = 0.02;
        local.inner = {leaves(not_central, local.maximum, -kShort, -limit),
                       leaves(not_central, local.maximum, kShort, limit)};
    }
    cut_by_horizon(path, site, local);
    return local;
}

double azimuth(const Site& site, const ShadowElements& e) {
    const double h = e.mu + site.longitude;
    return wrap_turn(std::atan2(
        -e.cos_d * std::sin(h),
        std::cos(site.latitude) * e.sin_d - std::sin(site.latitude) * e.cos_d * std::cos(h)));
}

}  // namespace solsys::eclipses
