#include "events/eclipses/lunar_path.h"

#include <cmath>

#include "core/angles.h"
#include "events/eclipses/centring.h"
#include "events/eclipses/luminaries.h"
#include "events/eclipses/solar_path.h"
#include "solsys/eclipses.h"
#include "solsys/time_scales.h"

namespace solsys::eclipses {
namespace {

// Radius of the Earth at latitude 45 degrees over that of the equator, and the enlargements by
// its atmosphere: Chauvenet 1891; Danjon 1951 (1.01 = 1 + 1/85 - 1/594).
constexpr double kMeanEarth = 0.998340;
constexpr double kFiftieth = 1.02;
constexpr double kDanjon = 1.01;
// Rule of the mean-lunation series [Earth radii].
constexpr double kSeriesUmbra = 0.7404;
constexpr double kSeriesPenumbra = 1.2847;

constexpr double kLunarContactTolerance = 1e-11;  // rad: 4 microseconds

bool lay_through(CSWSolSys& model, LunarPath& path) {
    std::array<double, 5> x, y, z, sun, hour_angle, dec;
    for (int i = 0; i < 5; ++i) {
        Luminaries sky{};
        if (!luminaries_at(model, later(path.t0, kHalfSpan * kNodes[i]), sky)) return false;
        const Vec3 m = moon_in_shadow(sky.moon, sky.sun, path.radii.earth);
        x[i] = m.x, y[i] = m.y, z[i] = m.z;
        sun[i] = norm(sky.sun) * kAuKm / path.radii.earth;
        dec[i] = sky.moon.z / norm(sky.moon);
        const double hour = sky.greenwich - std::atan2(sky.moon.y, sky.moon.x);
        hour_angle[i] = i == 0 ? wrap_half_turn(hour)
                               : hour_angle[i - 1] + wrap_half_turn(hour - hour_angle[i - 1]);
    }
    path.x = Quartic(x), path.y = Quartic(y), path.z = Quartic(z);
    path.sun_distance = Quartic(sun);
    path.hour_angle = Quartic(hour_angle), path.dec = Quartic(dec);
    path.greatest = least_distance(path.x, path.y);
    return true;
}

// When the separation is that of the radii: about, by the chord through a circle.
template <class Radius>
Pair contact_pair(const LunarPath& path, Radius&& radius) {
    const double g = path.greatest;
    const LunarPath::Disks disks = path.at(g);
    const double reach = radius(disks);
    const double chord =
        std::sqrt(std::max(reach * reach - disks.separation * disks.separation, 1e-12));
    const double speed = std::hypot(path.x.rate(g), path.y.rate(g)) *
                         (path.rule == ShadowRule::kSeries ? 1 : 1 / path.z.at(g));
    const auto f = [&](double h) {
        const LunarPath::Disks at = path.at(h);
        return at.separation - radius(at);
    };
    return roots_around(f, g, chord / speed, kLunarContactTolerance);
}

}  // namespace

LunarPath::Disks LunarPath::at(double h) const {
    const double mx = x.at(h), my = y.at(h), mz = z.at(h);
    const double off = std::hypot(mx, my);
    if (rule == ShadowRule::kSeries) {
        return {off, radii.moon_penumbra / radii.earth, kSeriesUmbra - u, kSeriesPenumbra + u};
    }
    const double parallax = std::asin(1 / std::hypot(off, mz));
    const double moon = std::asin(radii.moon_penumbra / radii.earth / std::hypot(off, mz));
    const double sun_parallax = std::asin(1 / sun_distance.at(h));
    const double sun = std::asin(radii.sun / radii.earth / sun_distance.at(h));
    const double separation = std::atan2(off, mz);
    if (rule == ShadowRule::kDanjon) {
        const double middle = kDanjon * parallax + sun_parallax;
        return {separation, moon, middle - sun, middle + sun};
    }
    const double middle = kMeanEarth * parallax + sun_parallax;
    return {separation, moon, kFiftieth * (middle - sun), kFiftieth * (middle + sun)};
}

std::optional<LunarPath> lunar_path(CSWSolSys& model, Instant syzygy, const Radii& radii,
                                    ShadowRule rule, double u) {
    LunarPath path;
    path.radii = radii;
    path.rule = rule;
    path.u = u;
    const auto lay = [&model](LunarPath& p) { return lay_through(model, p); };
    if (!centre_on_greatest(path, syzygy, lay)) return std::nullopt;
    return path;
}

LunarContacts lunar_contacts(const LunarPath& path) {
    using LunarDisks = LunarPath::Disks;
    return {contact_pair(path, [](const LunarDisks& d) { return d.penumbra + d.moon; }),
            contact_pair(path, [](const LunarDisks& d) { return d.penumbra - d.moon; }),
            contact_pair(path, [](const LunarDisks& d) { return d.umbra + d.moon; }),
            contact_pair(path, [](const LunarDisks& d) { return d.umbra - d.moon; })};
}

LunarCircumstances lunar_circumstances(const LunarPath& path) {
    LunarCircumstances c;
    const double g = path.greatest;
    const LunarPath::Disks d = path.at(g);
    const double x = path.x.at(g), y = path.y.at(g), z = path.z.at(g);
    c.gamma = std::copysign(std::hypot(x, y), y);
    c.penumbral_magnitude = (d.penumbra + d.moon - d.separation) / (2 * d.moon);
    c.umbral_magnitude = (d.umbra + d.moon - d.separation) / (2 * d.moon);
    c.exists = c.penumbral_magnitude > 0;
    c.type = c.umbral_magnitude >= 1  ? ECLIPSE_TOTAL
             : c.umbral_magnitude > 0 ? ECLIPSE_PARTIAL
                                      : ECLIPSE_PENUMBRAL;
    const double scale =
        path.rule == ShadowRule::kSeries ? 1 : std::sqrt(x * x + y * y + z * z);
    c.umbra = scale * d.umbra;
    c.penumbra = scale * d.penumbra;
    return c;
}

}  // namespace solsys::eclipses
