#include "events/eclipses/local_lunar.h"

#include <cmath>

#include "core/angles.h"
#include "core/root_finder.h"

namespace solsys::eclipses {
namespace {

constexpr double kRefraction = 34.0 / 60 * kDegree;  // at the horizon
constexpr double kLocalLunarTolerance = 1e-7;        // hours

}  // namespace

Horizontal moon_at(const LunarPath& path, const Site& site, double h) {
    const double mx = path.x.at(h), my = path.y.at(h), mz = path.z.at(h);
    const double distance = std::sqrt(mx * mx + my * my + mz * mz);  // Earth radii
    const double sin_dec = path.dec.at(h);
    const double cos_dec = std::sqrt(1 - sin_dec * sin_dec);
    const double hour_angle = path.hour_angle.at(h) + site.longitude;
    // Axes: the site's meridian, west, the pole.
    const Vec3 moon{distance * cos_dec * std::cos(hour_angle) - site.rho_cos_phi,
                    distance * cos_dec * std::sin(hour_angle),
                    distance * sin_dec - site.rho_sin_phi};
    const double sin_lat = std::sin(site.latitude), cos_lat = std::cos(site.latitude);
    const double up = moon.x * cos_lat + moon.z * sin_lat;
    const double north = moon.z * cos_lat - moon.x * sin_lat;
    const double range = norm(moon);
    return {std::asin(up / range), wrap_turn(std::atan2(-moon.y, north)),
            std::asin(path.radii.moon_penumbra / path.radii.earth / range)};
}

LocalLunar local_lunar(const LunarPath& path, const Site& site, Pair span) {
    LocalLunar local;
    if (std::isnan(span.first) || std::isnan(span.last)) return local;
    const auto up = [&](double h) {  // the upper limb above the horizon
        const Horizontal moon = moon_at(path, site, h);
        return moon.altitude + moon.semidiameter + kRefraction;
    };
    const auto consider = [&](double h) {
        if (std::isnan(local.best) ||
            std::fabs(h - path.greatest) < std::fabs(local.best - path.greatest))
            local.best = h;
    };
    if (up(path.greatest) >= 0) consider(path.greatest);
    constexpr int kSteps = 24;
    const double step = (span.last - span.first) / kSteps;
    double a = up(span.first);
    if (a >= 0) consider(span.first);
    for (int i = 1; i <= kSteps; ++i) {
        const double h = span.first + i * step;
        const double b = up(h);
        if ((a < 0) != (b < 0)) {
            const double crossing = zeroin(h - step, h, up, kLocalLunarTolerance);
            (b > 0 ? local.moonrise : local.moonset) = crossing;
            consider(crossing);
        }
        if (b >= 0) consider(h);
        a = b;
    }
    local.visible = !std::isnan(local.best);
    return local;
}

}  // namespace solsys::eclipses
