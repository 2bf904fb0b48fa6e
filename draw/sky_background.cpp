// The layers behind the stars: dome, Milky Way, grid, figures, ecliptic, rim.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "draw/sky_canvas.h"

namespace solsys::draw {
namespace {

const sky::ChartBody* sun_of(const sky::SkyChart& chart) {
    for (const sky::ChartBody& body : chart.bodies)
        if (body.body.id == SSO_ID(SSO_PLNT, 10)) return &body;
    return nullptr;
}

std::string gradients(const SkyCanvas& canvas) {
    const Light& light = canvas.light;
    const Colour paper{252, 251, 247};
    const auto tone = [&](double part) {
        if (!canvas.theme.dark) return mixed(paper, {236, 240, 246}, part).hex();
        return mixed(light.zenith, light.horizon, part).hex();
    };
    return fmt::format(
        R"(<defs><radialGradient id="sky"><stop offset="0" stop-color="{}"/>)"
        R"(<stop offset="0.45" stop-color="{}"/><stop offset="0.75" stop-color="{}"/>)"
        R"(<stop offset="1" stop-color="{}"/></radialGradient>)"
        R"(<radialGradient id="glow"><stop offset="0" stop-color="#ffb870" stop-opacity="0.75"/>)"
        R"(<stop offset="0.5" stop-color="#f08a5d" stop-opacity="0.22"/>)"
        R"(<stop offset="1" stop-color="#f08a5d" stop-opacity="0"/></radialGradient>)"
        R"(<radialGradient id="sun"><stop offset="0" stop-color="#fff6d0" stop-opacity="0.95"/>)"
        R"(<stop offset="0.3" stop-color="#ffe38a" stop-opacity="0.5"/>)"
        R"(<stop offset="1" stop-color="#ffe38a" stop-opacity="0"/></radialGradient>)"
        R"(<clipPath id="dome"><circle cx="{}" cy="{}" r="{}"/></clipPath></defs>)",
        tone(0), tone(0.1), tone(0.45), tone(1), number(SkyCanvas::kCentre.x),
        number(SkyCanvas::kCentre.y), number(SkyCanvas::kRadius));
}

void add_path(std::string& data, const std::vector<sky::Horizontal>& points, bool closed) {
    const char* command = "M";
    for (const sky::Horizontal& at : points) {
        const Point p = SkyCanvas::project(at);
        data += fmt::format("{}{:.1f} {:.1f}", command, p.x, p.y);
        command = "L";
    }
    if (closed) data += "z";
}

}  // namespace

SkyCanvas::SkyCanvas(const sky::SkyChart& sky_chart, const SkyPicture& picture)
    : chart(sky_chart),
      theme(draw::theme(picture.light)),
      light(light_at(sky_chart.sun_altitude_deg)),
      limit(picture.limit.value_or(light.limit)),
      daylight(theme.dark && light.limit < 0),
      svg(kWidth, kHeight, theme.page, "The sky over " + picture.title,
          "Stars, planets and constellations above the horizon, " + picture.subtitle +
              "; zenith in the middle, north up, east to the left"),
      labels(kCentre, kRadius - 4),
      halo_(theme.dark ? light.zenith.hex() : "#fcfbf7") {}

Point SkyCanvas::project(const sky::Horizontal& at) {
    const double r = kRadius * (90 - at.altitude_deg) / 90;
    const double azimuth = at.azimuth_deg / kDegrees;
    return {kCentre.x - r * std::sin(azimuth), kCentre.y - r * std::cos(azimuth)};
}

// Darker overhead than at the horizon, with the glow of a low Sun.
void add_dome(SkyCanvas& canvas) {
    canvas.svg.raw(gradients(canvas));
    canvas.svg.circle(SkyCanvas::kCentre, SkyCanvas::kRadius, Style::filled("url(#sky)"));
    const double altitude = canvas.chart.sun_altitude_deg;
    const double strength = 1 - std::fabs(altitude + 3) / 12;
    const sky::ChartBody* const sun = sun_of(canvas.chart);
    if (strength <= 0 || !sun || !canvas.theme.dark) return;
    sky::Horizontal at = sun->at;
    at.altitude_deg = std::max(0.0, altitude);
    canvas.svg.circle(SkyCanvas::project(at), SkyCanvas::kRadius * 0.85,
                      Style::filled("url(#glow)", strength).clipped("dome"));
}

void add_milky_way(SkyCanvas& canvas) {
    // It fades with the last faint stars.
    const double visible = std::clamp((canvas.limit - 3.5) / 1.5, 0.0, 1.0);
    if (visible <= 0) return;
    const char* const colour = canvas.theme.dark ? "#9fb4e8" : "#8fa3cf";
    for (const sky::MilkyWayLevel& level : canvas.chart.milky_way) {
        std::string data;
        for (const auto& ring : level.rings) add_path(data, ring, true);
        if (data.empty()) continue;
        Style style = Style::filled(colour, (canvas.theme.dark ? 0.10 : 0.16) * visible);
        canvas.svg.path(data, style.clipped("dome"));
    }
}

void add_grid(SkyCanvas& canvas) {
    const Style style = Style::line(canvas.ink(), 0.8, 0.2);
    for (const int altitude : {30, 60}) {
        canvas.svg.circle(SkyCanvas::kCentre, SkyCanvas::kRadius * (90 - altitude) / 90, style);
        const Point at = SkyCanvas::project({0, static_cast<double>(altitude)});
        const Point middle{at.x + 14, at.y - 8};
        canvas.labels.at(middle, 26, 14);
        canvas.svg.text(
            {middle.x, middle.y + 4}, fmt::format("{}\u00b0", altitude),
            {.size = 11, .fill = canvas.ink(), .anchor = Anchor::kMiddle, .opacity = 0.6});
    }
    for (int azimuth = 0; azimuth < 360; azimuth += 45)
        canvas.svg.line(SkyCanvas::project({static_cast<double>(azimuth), 0}),
                        SkyCanvas::project({static_cast<double>(azimuth), 88}), style);
}

void add_figures(SkyCanvas& canvas) {
    if (canvas.limit < 2.8) return;
    std::string data;
    for (const sky::ChartLine& line : canvas.chart.figures) add_path(data, line.points, false);
    Style style = Style::line(canvas.theme.figure, 1, canvas.theme.dark ? 0.55 : 0.6);
    style.cap = "round";
    canvas.svg.path(data, style.clipped("dome"));
}

void add_ecliptic(SkyCanvas& canvas) {
    std::string data;
    add_path(data, canvas.chart.ecliptic, false);
    const char* const colour = canvas.daylight ? "#7a5200" : canvas.theme.accent;
    canvas.svg.path(data, Style::line(colour, 1.3, 0.6, "7 5").clipped("dome"));
}

void add_rim(SkyCanvas& canvas) {
    constexpr Point centre = SkyCanvas::kCentre;
    constexpr double radius = SkyCanvas::kRadius;
    canvas.svg.circle(centre, radius, Style::line(canvas.theme.faint, 2));
    std::string ticks;
    for (int azimuth = 0; azimuth < 360; azimuth += 5) {
        const double a = azimuth / kDegrees;
        const double end = radius + (azimuth % 45 == 0 ? 11 : azimuth % 10 == 0 ? 7 : 4);
        ticks += fmt::format("M{:.1f} {:.1f}L{:.1f} {:.1f}", centre.x - radius * std::sin(a),
                             centre.y - radius * std::cos(a), centre.x - end * std::sin(a),
                             centre.y - end * std::cos(a));
    }
    canvas.svg.path(ticks, Style::line(canvas.theme.faint, 1));
    static const char* const points[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    for (int i = 0; i < 8; ++i) {
        const double a = 45 * i / kDegrees;
        const bool main = i % 2 == 0;
        canvas.svg.text({centre.x - (radius + 29) * std::sin(a),
                         centre.y - (radius + 29) * std::cos(a) + (main ? 8 : 5)},
                        points[i],
                        {.size = main ? 22.0 : 14.0,
                         .fill = main ? canvas.theme.ink : canvas.theme.faint,
                         .anchor = Anchor::kMiddle,
                         .bold = main});
    }
}

}  // namespace solsys::draw
