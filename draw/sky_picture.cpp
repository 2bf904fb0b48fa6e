// Names and legend of the sky's picture, and the order of its layers.
#include "draw/sky_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include "draw/sky_canvas.h"

namespace solsys::draw {
namespace {

constexpr double kFaintestName = 2.6;
constexpr double kPair = 7;  // stars nearer together than this share the brighter one's name

// A line from an object to the edge of a label that had to move.
void add_leader(SkyCanvas& canvas, Point at, double radius, Point label, double width,
                double height, const char* colour) {
    const double dx = label.x - at.x;
    const double dy = label.y - at.y;
    const double from = (radius + 1) / std::hypot(dx, dy);
    const double to = 1 - std::min(width / 2 / std::max(std::fabs(dx), 1e-9),
                                   height / 2 / std::max(std::fabs(dy), 1e-9));
    if (to > from)
        canvas.svg.line({at.x + dx * from, at.y + dy * from}, {at.x + dx * to, at.y + dy * to},
                        Style::line(colour, 0.8, 0.7));
}

// Labels keep off everything that catches the eye; of the stars only the brighter claim words.
void keep_clear(SkyCanvas& canvas) {
    for (const sky::ChartBody& body : canvas.chart.bodies)
        if (body.at.altitude_deg > 0) {
            canvas.labels.occupy(SkyCanvas::project(body.at), body_radius(body) + 1);
            canvas.labels.add_rival(SkyCanvas::project(body.at));
        }
    for (const sky::ChartStar& star : canvas.chart.stars) {
        if (star.magnitude > std::min(canvas.limit, 4.4)) break;
        canvas.labels.occupy(SkyCanvas::project(star.at), star_radius(star.magnitude));
        if (star.magnitude < 3.6) canvas.labels.add_rival(SkyCanvas::project(star.at));
    }
    for (const sky::Horizontal& at : canvas.chart.ecliptic)
        if (at.altitude_deg > 0) canvas.labels.occupy(SkyCanvas::project(at), 1);
}

std::string uppercase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    // The one letter of the Latin names that is not of ASCII.
    if (const auto at = text.find("\u00f6"); at != std::string::npos)
        text.replace(at, 2, "\u00d6");
    return text;
}

}  // namespace

void add_body_names(SkyCanvas& canvas) {
    constexpr double size = 15;
    for (const sky::ChartBody& body : canvas.chart.bodies) {
        if (!(body.at.altitude_deg > 0)) continue;
        const Point at = SkyCanvas::project(body.at);
        const double radius = body_radius(body) + (body.body.id.number == 6 ? 5 : 0);
        const double width = text_width(body.body.name, size) + 4;
        const auto place = canvas.labels.beside(at, radius, width, size + 1, 96);
        if (!place) continue;
        const char* const colour =
            canvas.daylight ? canvas.ink() : body_colour(body.body.id, canvas.theme);
        if (place->moved)
            add_leader(canvas, at, radius, place->middle, width, size + 1, colour);
        const bool faint = too_faint(canvas, body);
        canvas.svg.text({place->middle.x, place->middle.y + size * 0.35}, body.body.name,
                        {.size = size,
                         .fill = colour,
                         .anchor = Anchor::kMiddle,
                         .bold = !faint,
                         .opacity = faint ? 0.8 : 1.0,
                         .halo = canvas.halo()});
    }
}

void add_star_names(SkyCanvas& canvas) {
    constexpr double size = 12;
    std::vector<Point> named;
    for (const sky::ChartStar& star : canvas.chart.stars) {
        if (star.magnitude > std::min(canvas.limit, kFaintestName)) break;
        const Point at = SkyCanvas::project(star.at);
        const bool of_pair = std::any_of(named.begin(), named.end(), [&](Point other) {
            return std::hypot(at.x - other.x, at.y - other.y) < kPair;
        });
        if (star.name.empty() || of_pair || star.at.altitude_deg < 1) continue;
        const double radius = star_radius(star.magnitude);
        const double width = text_width(star.name, size) + 3;
        const auto place =
            canvas.labels.beside(at, radius, width, size + 1, star.magnitude < 1.6 ? 36 : 0);
        if (!place) continue;
        named.push_back(at);
        const char* const colour = canvas.theme.dark ? "#c3cde3" : canvas.theme.ink;
        if (place->moved)
            add_leader(canvas, at, radius, place->middle, width, size + 1, colour);
        canvas.svg.text(
            {place->middle.x, place->middle.y + size * 0.35}, star.name,
            {.size = size, .fill = colour, .anchor = Anchor::kMiddle, .halo = canvas.halo()});
    }
}

void add_ecliptic_name(SkyCanvas& canvas) {
    constexpr double size = 11;
    const auto& line = canvas.chart.ecliptic;
    for (const double below : {-12.0, 12.0}) {
        for (std::size_t i = 0; i + 8 < line.size(); i += 8) {
            if (line[i].altitude_deg < 15) continue;
            const Point on = SkyCanvas::project(line[i]);
            const Point next = SkyCanvas::project(line[i + 8]);
            // Over a steep stretch the line would run through the word.
            if (std::fabs(next.y - on.y) > 0.25 * std::fabs(next.x - on.x)) continue;
            const Point middle{on.x, on.y + below};
            if (!canvas.labels.at(middle, text_width("ecliptic", size) + 6, size)) continue;
            canvas.svg.text({middle.x, middle.y + size * 0.35}, "ecliptic",
                            {.size = size,
                             .fill = canvas.daylight ? "#7a5200" : canvas.theme.accent,
                             .anchor = Anchor::kMiddle,
                             .italic = true,
                             .opacity = 0.85});
            return;
        }
    }
}

// Names in the middle of the constellations' stars that are up.
void add_constellation_names(SkyCanvas& canvas) {
    if (canvas.limit < 3.5) return;
    // How far a name may lie from the middle.
    static constexpr double kShifts[][2] = {
        {0, 0},    {0, 9},     {0, -9},   {14, 0},   {-14, 0},   {12, 14}, {-12, 14},
        {12, -14}, {-12, -14}, {0, 20},   {0, -20},  {28, 6},    {-28, 6}, {28, -8},
        {-28, -8}, {20, 24},   {-20, 24}, {20, -24}, {-20, -24}, {0, 32},  {0, -32}};
    struct Sum {
        double x = 0, y = 0, weight = 0;
    };
    std::map<std::string, Sum> sums;
    for (const sky::ChartStar& star : canvas.chart.stars) {
        const Point at = SkyCanvas::project(star.at);
        const double weight = 6 - star.magnitude;
        Sum& sum = sums[star.constellation];
        sum.x += weight * at.x, sum.y += weight * at.y, sum.weight += weight;
        if (star.magnitude > 4.4 && star.magnitude <= canvas.limit)
            canvas.labels.occupy(at, star_radius(star.magnitude));
    }
    constexpr double size = 10;
    constexpr double spacing = 1.6;
    for (const auto& [abbreviation, sum] : sums) {
        if (sum.weight < 5) continue;  // hardly any of it is up
        const std::string name = uppercase(sky::constellation_called(abbreviation).name);
        const Point middle{sum.x / sum.weight, sum.y / sum.weight};
        for (const auto& [dx, dy] : kShifts) {
            const Point tried{middle.x + dx, middle.y + dy};
            if (!canvas.labels.at(tried, text_width(name, size, spacing) + 2, size)) continue;
            canvas.svg.text({tried.x, tried.y + size * 0.35}, name,
                            {.size = size,
                             .fill = canvas.theme.figure,
                             .anchor = Anchor::kMiddle,
                             .opacity = 0.95,
                             .spacing = spacing,
                             .halo = canvas.halo()});
            break;
        }
    }
}

void add_legend(SkyCanvas& canvas, const SkyPicture& picture) {
    constexpr double bottom = SkyCanvas::kHeight;
    const Theme& theme = canvas.theme;
    canvas.svg.text({36, 50}, picture.title, {.size = 26, .fill = theme.ink, .bold = true});
    canvas.svg.text({36, 78}, picture.subtitle, {.size = 15, .fill = theme.faint});
    double x = 40;
    for (int magnitude = -1; magnitude <= 4; ++magnitude, x += 34) {
        canvas.svg.circle({x, bottom - 50}, star_radius(magnitude),
                          Style::filled(theme.dark ? "#dfe8ff" : theme.ink));
        canvas.svg.text({x, bottom - 26}, fmt::format("{}", magnitude),
                        {.size = 12, .fill = theme.faint, .anchor = Anchor::kMiddle});
    }
    canvas.svg.text({x - 8, bottom - 26}, "magnitude", {.size = 12, .fill = theme.faint});
    const auto note = [&](double y, const std::string& words) {
        canvas.svg.text({SkyCanvas::kWidth - 36, y}, words,
                        {.size = 13, .fill = theme.faint, .anchor = Anchor::kEnd});
    };
    const double altitude = canvas.chart.sun_altitude_deg;
    note(bottom - 48, fmt::format("Sun {:.0f}\u00b0 {} the horizon: {}", std::fabs(altitude),
                                  altitude < 0 ? "below" : "above", name_of_light(altitude)));
    note(bottom - 26, fmt::format("Moon {:.0f}% lit", 100 * canvas.chart.moon_illuminated));
    note(50, "Zenith in the middle, east to the left");
    const bool hollow =
        std::any_of(canvas.chart.bodies.begin(), canvas.chart.bodies.end(),
                    [&](const sky::ChartBody& body) {
                        return body.at.altitude_deg > 0 && too_faint(canvas, body);
                    });
    if (hollow) note(72, "Rings: too faint for the eye");
}

Svg draw_sky(const sky::SkyChart& chart, const SkyPicture& picture) {
    SkyCanvas canvas(chart, picture);
    add_dome(canvas);
    add_milky_way(canvas);
    add_grid(canvas);
    add_figures(canvas);
    add_ecliptic(canvas);
    add_objects(canvas);
    add_stars(canvas);
    add_bodies(canvas);
    keep_clear(canvas);
    add_tracks(canvas, picture);
    add_body_names(canvas);
    add_star_names(canvas);
    add_object_names(canvas);
    add_ecliptic_name(canvas);
    add_constellation_names(canvas);
    add_rim(canvas);
    add_legend(canvas, picture);
    return std::move(canvas.svg);
}

}  // namespace solsys::draw
