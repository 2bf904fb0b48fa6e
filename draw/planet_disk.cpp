#include "draw/planet_disk.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace solsys::draw {
namespace {

// Saturn's rings in equatorial radii: inner edge of C to outer edge of A, by brightness.
struct Ring {
    double inner, outer;
    const char* fill;
};
constexpr Ring kRings[] = {
    {1.239, 1.526, "#7d7462"}, {1.526, 1.950, "#d9c8a0"}, {2.027, 2.269, "#b8a986"}};

// The page turned so that the planet's north pole points up: a rotation from north through east
// is anticlockwise on it.
std::string frame(const sky::PlanetView& planet, Point centre) {
    return fmt::format("translate({} {}) rotate({})", number(centre.x), number(centre.y),
                       number(-planet.pole_angle_deg));
}

}  // namespace

Point on_page(const sky::PlanetView& planet, const DiskOnPage& disk, double x_radii,
              double y_radii) {
    const double turn = planet.pole_angle_deg / kDegrees;
    const double east = x_radii * std::cos(turn) + y_radii * std::sin(turn);
    const double north = -x_radii * std::sin(turn) + y_radii * std::cos(turn);
    return {disk.centre.x - east * disk.radius, disk.centre.y - north * disk.radius};
}

void draw_disk(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk,
               const Theme& theme) {
    const double polar = disk.radius * planet.polar_ratio;
    Style lit = Style::filled(body_colour(planet.planet.id, theme));
    if (!theme.dark) lit = lit.outlined(theme.faint, 0.6);
    svg.ellipse(disk.centre, disk.radius, polar, -planet.pole_angle_deg, lit);
    if (planet.illuminated > 0.998) return;
    // The dark side: the half away from the bright limb, less or more by the terminator.
    const double r = (disk.radius + polar) / 2;
    const double terminator = std::fabs(1 - 2 * planet.illuminated) * r;
    const std::string data = fmt::format(
        "M{0:.2f} 0A{1:.2f} {1:.2f} 0 0 0 {1:.2f} 0A{1:.2f} {2:.2f} 0 0 {3} {0:.2f} 0Z", -r, r,
        terminator, planet.illuminated > 0.5 ? 1 : 0);
    svg.path(data, Style::filled(theme.dark ? "#05070d" : "#6d6a63", 0.82),
             fmt::format("translate({} {}) rotate({})", number(disk.centre.x),
                         number(disk.centre.y), number(-planet.bright_limb_deg)));
}

void draw_rings(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk, bool near) {
    const double squeeze = std::sin(planet.pole_tilt_deg / kDegrees);
    // With the north pole towards the observer the near half is the southern one, which is
    // down on the page before the turn.
    const bool lower = near == (squeeze > 0);
    for (const Ring& ring : kRings) {
        const auto arc = [&](double r, bool forth) {
            return fmt::format("A{0:.2f} {1:.2f} 0 0 {2} {3:.2f} 0", r * disk.radius,
                               std::fabs(squeeze) * r * disk.radius, forth == lower ? 0 : 1,
                               forth ? r * disk.radius : -r * disk.radius);
        };
        svg.path(fmt::format("M{:.2f} 0{}L{:.2f} 0{}Z", -ring.outer * disk.radius,
                             arc(ring.outer, true), ring.inner * disk.radius,
                             arc(ring.inner, false)),
                 Style::filled(ring.fill).outlined(ring.fill, 0.5), frame(planet, disk.centre));
    }
}

void draw_shadow(Svg& svg, const sky::PlanetView& planet, const DiskOnPage& disk,
                 const sky::SatelliteView& moon) {
    const Point at = on_page(planet, disk, moon.shadow_x_radii, moon.shadow_y_radii);
    svg.circle(at, std::max(2.2, moon.radius_radii * disk.radius),
               Style::filled("#150d08", 0.92));
}

}  // namespace solsys::draw
