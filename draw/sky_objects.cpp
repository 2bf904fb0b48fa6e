// What shines: stars, deep-sky objects, Sun, Moon and planets.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "draw/sky_canvas.h"

namespace solsys::draw {
namespace {

constexpr double kMoonRadius = 15;
constexpr double kSunRadius = 13;
constexpr double kFaintestObject = 6.6;  // worth a mark on a chart of naked-eye stars

bool is_sun(const sky::ChartBody& body) { return body.body.id == SSO_ID(SSO_PLNT, 10); }
bool is_moon(const sky::ChartBody& body) { return body.body.id.type == SSO_MOON; }

// The lit part lies on the side where the Sun is.
void add_moon(SkyCanvas& canvas, const sky::ChartBody& body, Point at) {
    const Point beside = SkyCanvas::project(body.towards_sun);
    const double turn = std::atan2(beside.y - at.y, beside.x - at.x) * kDegrees;
    const double lit = body.illuminated;
    Style dark = canvas.daylight     ? Style::filled(canvas.light.zenith.hex(), 0.75)
                 : canvas.theme.dark ? Style::filled("#3a435c")
                                     : Style::filled("#d9d6cc");
    if (!canvas.theme.dark) dark = dark.outlined("#55504a", 0.8);
    canvas.svg.circle(at, kMoonRadius, dark);
    const std::string data = fmt::format(
        "M0 {0:.2f}A{1:.2f} {1:.2f} 0 0 1 0 {1:.2f}A{2:.2f} {1:.2f} 0 0 {3} 0 {0:.2f}Z",
        -kMoonRadius, kMoonRadius, std::fabs(1 - 2 * lit) * kMoonRadius, lit < 0.5 ? 0 : 1);
    canvas.svg.path(
        data, Style::filled(canvas.theme.dark ? "#f4efe0" : "#fffdf4"),
        fmt::format("translate({} {}) rotate({})", number(at.x), number(at.y), number(turn)));
}

void add_sun(SkyCanvas& canvas, Point at) {
    canvas.svg.circle(at, kSunRadius * 4, Style::filled("url(#sun)").clipped("dome"));
    Style disk = Style::filled(canvas.theme.dark ? "#fff3b8" : "#ffd84d");
    if (!canvas.theme.dark) disk = disk.outlined("#a8741a", 0.8);
    canvas.svg.circle(at, kSunRadius, disk.clipped("dome"));
}

void add_planet(SkyCanvas& canvas, const sky::ChartBody& body, Point at) {
    const char* const colour =
        body_colour(body.body.id, canvas.daylight ? light_theme() : canvas.theme);
    const double radius = body_radius(body);
    if (too_faint(canvas, body)) {
        canvas.svg.circle(at, radius, Style::line(colour, 1.2));
        return;
    }
    canvas.svg.circle(at, radius * 2.2, Style::filled(colour, 0.16).clipped("dome"));
    canvas.svg.circle(at, radius, Style::filled(colour));
    if (body.body.id.number == 6)
        canvas.svg.ellipse(at, radius * 2.1, radius * 0.7, -18, Style::line(colour, 1.1));
}

// To scale where it is large, else a sign of a readable size.
double symbol_radius(const sky::ChartObject& object) {
    const double scale = SkyCanvas::kRadius / 90 / 60;
    return std::clamp(object.major_arcmin * scale / 2, 3.2, 14.0);
}

void add_symbol(SkyCanvas& canvas, const sky::ChartObject& object) {
    const Point at = SkyCanvas::project(object.at);
    const double r = symbol_radius(object);
    const Style line = Style::line(canvas.theme.object, 0.9, 0.9);
    switch (object.kind) {
        case 'G':
            canvas.svg.ellipse(at, r * 1.15, r * 0.6, -25, line);
            break;
        case 'B':
            canvas.svg.circle(at, r, line);
            canvas.svg.path(fmt::format("M{:.1f} {:.1f}h{:.1f}M{:.1f} {:.1f}v{:.1f}", at.x - r,
                                        at.y, 2 * r, at.x, at.y - r, 2 * r),
                            line);
            break;
        case 'O':
            canvas.svg.circle(at, r, Style::line(canvas.theme.object, 1, 0.9, "2 1.6"));
            break;
        default:
            canvas.svg.rectangle({at.x - r * 0.85, at.y - r * 0.85}, 1.7 * r, 1.7 * r, line);
    }
}

}  // namespace

double body_radius(const sky::ChartBody& body) {
    if (is_moon(body)) return kMoonRadius;
    if (is_sun(body)) return kSunRadius;
    return std::clamp(star_radius(body.magnitude), 2.6, 7.5);
}

bool too_faint(const SkyCanvas& canvas, const sky::ChartBody& body) {
    // The eye reaches a magnitude further than the stars of the list.
    const double reach = canvas.light.limit + (canvas.light.limit > 4.9 ? 1.0 : 0.0);
    return !is_sun(body) && !is_moon(body) && body.magnitude > reach;
}

std::vector<sky::ChartObject> shown_objects(const SkyCanvas& canvas) {
    std::vector<sky::ChartObject> shown;
    if (canvas.limit < 4.2) return shown;
    for (const sky::ChartObject& object : canvas.chart.objects)
        if (object.magnitude <= kFaintestObject) shown.push_back(object);
    return shown;
}

void add_objects(SkyCanvas& canvas) {
    for (const sky::ChartObject& object : shown_objects(canvas)) {
        add_symbol(canvas, object);
        canvas.labels.occupy(SkyCanvas::project(object.at),
                             std::min(symbol_radius(object), 5.0));
    }
}

void add_object_names(SkyCanvas& canvas) {
    constexpr double size = 9.5;
    const std::vector<sky::ChartObject> objects = shown_objects(canvas);
    for (const sky::ChartObject& object : objects)
        canvas.labels.add_rival(SkyCanvas::project(object.at));
    for (const sky::ChartObject& object : objects) {
        if (object.at.altitude_deg < 3) continue;
        const auto place =
            canvas.labels.beside(SkyCanvas::project(object.at), symbol_radius(object),
                                 text_width(object.id, size) + 2, size);
        if (place)
            canvas.svg.text({place->middle.x, place->middle.y + size * 0.35}, object.id,
                            {.size = size,
                             .fill = canvas.theme.object,
                             .anchor = Anchor::kMiddle,
                             .opacity = 0.9});
    }
}

void add_stars(SkyCanvas& canvas) {
    for (const sky::ChartStar& star : canvas.chart.stars) {
        if (star.magnitude > canvas.limit) break;
        const Point at = SkyCanvas::project(star.at);
        const double radius = star_radius(star.magnitude);
        const std::string colour = star_colour(star.b_v, canvas.theme);
        if (canvas.theme.dark && star.magnitude < 1.2)
            canvas.svg.circle(at, radius * 2.6, Style::filled(colour, 0.13).clipped("dome"));
        // On paper a white edge keeps close stars and lines apart.
        Style dot = Style::filled(colour);
        if (!canvas.theme.dark) dot = dot.outlined("#fcfbf7", 0.9);
        if (canvas.theme.dark)
            dot.fill_opacity =
                std::clamp(0.45 + 0.35 * (canvas.limit - star.magnitude), 0.45, 1.0);
        canvas.svg.circle(at, radius, dot);
    }
}

// The farther first, so that the Moon covers the Sun in an eclipse, and the planets stand
// before the Moon and the Sun, which are drawn larger than they are.
void add_bodies(SkyCanvas& canvas) {
    const auto up = [](const sky::ChartBody& body) { return body.at.altitude_deg > 0; };
    const auto& bodies = canvas.chart.bodies;
    for (const sky::ChartBody& body : bodies)
        if (is_sun(body) && up(body)) add_sun(canvas, SkyCanvas::project(body.at));
    for (const sky::ChartBody& body : bodies)
        if (is_moon(body) && up(body)) add_moon(canvas, body, SkyCanvas::project(body.at));
    for (const sky::ChartBody& body : bodies)
        if (!is_sun(body) && !is_moon(body) && up(body))
            add_planet(canvas, body, SkyCanvas::project(body.at));
}

}  // namespace solsys::draw
