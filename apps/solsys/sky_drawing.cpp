#include "apps/solsys/sky_drawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include "apps/solsys/constellations.h"
#include "apps/solsys/label_layout.h"
#include "apps/solsys/sky_palette.h"

namespace app {
namespace {

constexpr double kWidth = 1000;
constexpr double kHeight = 1100;
constexpr Point kCentre{kWidth / 2, 572};
constexpr double kRadius = 432;
constexpr double kMoonRadius = 15;
constexpr double kSunRadius = 13;
constexpr const char* kPage = "#0a0e18";
constexpr const char* kInk = "#e8ecf4";
constexpr const char* kFaint = "#7d8aa5";
constexpr const char* kEcliptic = "#d9b45b";

Point project(const Horizontal& at) {
    const double r = kRadius * (90 - at.altitude_deg) / 90;
    const double azimuth = at.azimuth_deg / kDegrees;
    return {kCentre.x - r * std::sin(azimuth), kCentre.y - r * std::cos(azimuth)};
}

double body_radius(const SkyBody& body) {
    if (body.id.type == SSO_MOON) return kMoonRadius;
    if (body.id.number == 10) return kSunRadius;
    return std::clamp(star_radius(body.magnitude), 2.6, 7.5);
}

// Widths of a common sans-serif face, on the safe side.
double text_width(const std::string& text, double size, double spacing = 0) {
    double width = 0;
    for (const char c : text) {
        if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) continue;
        const bool narrow = std::string_view("iljtfrI' .").find(c) != std::string_view::npos;
        const bool wide = (c >= 'A' && c <= 'Z') || c == 'm' || c == 'w';
        width += size * (narrow ? 0.36 : wide ? 0.74 : 0.58) + spacing;
    }
    return width;
}

class Chart {
  public:
    Chart(const SkyView& view, const std::string& title, const std::string& subtitle)
        : view_(view),
          light_(light_at(view.sun_altitude_deg)),
          svg_(kWidth, kHeight, kPage),
          labels_(kCentre, kRadius - 4) {
        heading(title, subtitle);
        sky();
        grid();
        ecliptic();
        stars();
        keep_clear();
        bodies();
        star_names();
        ecliptic_name();
        constellations();
        rim();
        legend();
    }
    Svg take() { return std::move(svg_); }

  private:
    [[nodiscard]] bool bright_sky() const { return light_.limit < 0; }
    // Ink for what is drawn into the sky.
    [[nodiscard]] const char* sky_ink() const { return bright_sky() ? "#ffffff" : "#c9d3ea"; }

    void label(Point middle, const std::string& words, double size, const std::string& fill,
               const std::string& more = "") {
        svg_.text({middle.x, middle.y + size * 0.35}, words,
                  fmt::format(R"(font-size="{}" fill="{}" text-anchor="middle" {})", size, fill,
                              more));
    }

    void heading(const std::string& title, const std::string& subtitle) {
        svg_.text({36, 52}, title, fmt::format(R"(font-size="26" fill="{}")", kInk));
        svg_.text({36, 80}, subtitle, fmt::format(R"(font-size="16" fill="{}")", kFaint));
    }

    // Darker overhead than at the horizon, with the glow of a low Sun.
    void sky() {
        svg_.raw(fmt::format(
            R"(<defs><radialGradient id="sky"><stop offset="0" stop-color="{0}"/>)"
            R"(<stop offset="0.45" stop-color="{5}"/><stop offset="0.75" stop-color="{6}"/>)"
            R"(<stop offset="1" stop-color="{1}"/>)"
            R"(</radialGradient><radialGradient id="glow">)"
            R"(<stop offset="0" stop-color="#ffb870" stop-opacity="0.75"/>)"
            R"(<stop offset="0.5" stop-color="#f08a5d" stop-opacity="0.22"/>)"
            R"(<stop offset="1" stop-color="#f08a5d" stop-opacity="0"/></radialGradient>)"
            R"(<radialGradient id="sun"><stop offset="0" stop-color="#fff6d0" stop-opacity="0.95"/>)"
            R"(<stop offset="0.3" stop-color="#ffe38a" stop-opacity="0.5"/>)"
            R"(<stop offset="1" stop-color="#ffe38a" stop-opacity="0"/></radialGradient>)"
            R"(<clipPath id="dome"><circle cx="{2:.2f}" cy="{3:.2f}" r="{4:.2f}"/></clipPath>)"
            R"(</defs>)",
            light_.zenith.hex(), light_.horizon.hex(), kCentre.x, kCentre.y, kRadius,
            mixed(light_.zenith, light_.horizon, 0.1).hex(),
            mixed(light_.zenith, light_.horizon, 0.45).hex()));
        svg_.circle(kCentre, kRadius, R"~(fill="url(#sky)")~");
        const double altitude = view_.sun_altitude_deg;
        const double strength = 1 - std::fabs(altitude + 3) / 12;
        if (strength > 0) {
            Horizontal at = view_.bodies[0].at;
            at.altitude_deg = std::max(0.0, altitude);
            svg_.circle(project(at), kRadius * 0.85,
                        fmt::format(R"~(fill="url(#glow)" opacity="{:.2f}" )~"
                                    R"~(clip-path="url(#dome)")~",
                                    strength));
        }
    }

    void grid() {
        const std::string style = fmt::format(
            R"(fill="none" stroke="{}" stroke-width="0.8" stroke-opacity="0.22")", sky_ink());
        for (const int altitude : {30, 60}) {
            svg_.circle(kCentre, kRadius * (90 - altitude) / 90, style);
            const Point at = project({0, static_cast<double>(altitude)});
            const Point middle{at.x + 14, at.y - 8};
            labels_.at(middle, 26, 14);
            label(middle, fmt::format("{}\u00b0", altitude), 11, sky_ink(),
                  R"(fill-opacity="0.6")");
        }
        for (int azimuth = 0; azimuth < 360; azimuth += 45)
            svg_.line(project({static_cast<double>(azimuth), 0}),
                      project({static_cast<double>(azimuth), 88}), style);
        svg_.line({kCentre.x - 5, kCentre.y}, {kCentre.x + 5, kCentre.y}, style);
        svg_.line({kCentre.x, kCentre.y - 5}, {kCentre.x, kCentre.y + 5}, style);
    }

    void ecliptic() {
        std::vector<Point> run;
        const auto flush = [&] {
            if (run.size() > 1)
                svg_.polyline(run, fmt::format(R"(fill="none" stroke="{}" stroke-width="1.3" )"
                                               R"(stroke-opacity="0.6" stroke-dasharray="7 5")",
                                               kEcliptic));
            run.clear();
        };
        for (const Horizontal& at : view_.ecliptic) {
            if (at.altitude_deg > 0) {
                run.push_back(project(at));
            } else {
                flush();
            }
        }
        flush();
    }

    void stars() {
        for (const SkyStar& star : view_.stars) {
            if (star.magnitude > light_.limit) break;
            const Point at = project(star.at);
            const double radius = star_radius(star.magnitude);
            const char* colour = star_colour(star.spectral_class);
            if (star.magnitude < 1.2)
                svg_.circle(at, radius * 2.6,
                            fmt::format(R"(fill="{}" fill-opacity="0.13")", colour));
            // Faint stars next to the limit fade away.
            const double opacity =
                std::clamp(0.45 + 0.35 * (light_.limit - star.magnitude), 0.45, 1.0);
            svg_.circle(at, radius,
                        fmt::format(R"(fill="{}" fill-opacity="{:.2f}")", colour, opacity));
        }
    }

    // No label covers a body, a star that catches the eye, or the ecliptic.
    void keep_clear() {
        for (const SkyBody& body : view_.bodies)
            if (body.at.altitude_deg > 0)
                labels_.occupy(project(body.at), body_radius(body) + 1);
        keep_clear_of_stars(-9, 4.4);
        for (const Horizontal& at : view_.ecliptic)
            if (at.altitude_deg > 0) labels_.occupy(project(at), 1);
    }

    void keep_clear_of_stars(double brightest, double faintest) {
        for (const SkyStar& star : view_.stars)
            if (star.magnitude > brightest &&
                star.magnitude <= std::min(light_.limit, faintest))
                labels_.occupy(project(star.at), star_radius(star.magnitude));
    }

    void bodies() {
        // Sun and Moon, drawn larger than they are, lie below the planets.
        for (const SkyBody& body : view_.bodies) {
            if (!(body.at.altitude_deg > 0)) continue;
            const Point at = project(body.at);
            if (body.id.type == SSO_MOON) {
                moon(body, at);
            } else if (body.id.number == 10) {
                svg_.circle(at, kSunRadius * 4, R"~(fill="url(#sun)" clip-path="url(#dome)")~");
                svg_.circle(at, kSunRadius, R"(fill="#fff3b8")");
            } else {
                planet(body, at);
            }
        }
        for (const SkyBody& body : view_.bodies)
            if (body.at.altitude_deg > 0) name_body(body);
    }

    void planet(const SkyBody& body, Point at) {
        const char* colour = body_colour(body.id);
        const double radius = body_radius(body);
        if (too_faint(body)) {
            svg_.circle(at, radius,
                        fmt::format(R"(fill="none" stroke="{}" stroke-width="1.2")", colour));
            return;
        }
        svg_.circle(
            at, radius * 2.2,
            fmt::format(R"~(fill="{}" fill-opacity="0.16" clip-path="url(#dome)")~", colour));
        svg_.circle(at, radius, fmt::format(R"(fill="{}")", colour));
        if (body.id.number == 6)
            svg_.ellipse(at, radius * 2.1, radius * 0.7, -18,
                         fmt::format(R"(fill="none" stroke="{}" stroke-width="1.1")", colour));
    }

    // The lit part lies on the side where the Sun is.
    void moon(const SkyBody& body, Point at) {
        const Point beside = project(body.towards_sun);
        const double turn = std::atan2(beside.y - at.y, beside.x - at.x) * kDegrees;
        const double lit = body.illuminated;
        svg_.circle(
            at, kMoonRadius,
            bright_sky() ? R"(fill="#ffffff" fill-opacity="0.10")" : R"(fill="#3a435c")");
        svg_.raw(fmt::format(
            R"~(<path class="moon" transform="translate({0:.2f} {1:.2f}) rotate({2:.2f})" )~"
            R"~(fill="{3}" d="M 0 {4:.2f} A {5:.2f} {5:.2f} 0 0 1 0 {5:.2f} )~"
            R"~(A {6:.2f} {5:.2f} 0 0 {7} 0 {4:.2f} Z"/>)~",
            at.x, at.y, turn, body_colour(body.id), -kMoonRadius, kMoonRadius,
            std::fabs(1 - 2 * lit) * kMoonRadius, lit < 0.5 ? 0 : 1));
    }

    [[nodiscard]] bool too_faint(const SkyBody& body) const {
        // The eye reaches a magnitude further than the stars of the list.
        const double reach = light_.limit + (light_.limit > 4.9 ? 1.0 : 0.0);
        return body.id.number < 10 && body.magnitude > reach;
    }

    void name_body(const SkyBody& body) {
        constexpr double size = 15;
        const Point at = project(body.at);
        const double radius = body_radius(body) + (body.id.number == 6 ? 5 : 0);
        const double width = text_width(body.name, size) + 4;
        const double height = size + 1;
        const auto place = labels_.beside(at, radius, width, height, 96);
        if (!place) return;
        if (place->moved) {
            // A name that had to move keeps a line from its body to its own edge.
            const double dx = place->middle.x - at.x;
            const double dy = place->middle.y - at.y;
            const double from = radius / std::hypot(dx, dy);
            const double to = 1 - std::min(width / 2 / std::max(std::fabs(dx), 1e-9),
                                           height / 2 / std::max(std::fabs(dy), 1e-9));
            if (to > from)
                svg_.line({at.x + dx * from, at.y + dy * from},
                          {at.x + dx * to, at.y + dy * to},
                          fmt::format(R"(stroke="{}" stroke-width="0.8" stroke-opacity="0.7")",
                                      body_colour(body.id)));
        }
        const bool sun = body.id.number == 10;
        label(place->middle, body.name, size, sun ? "#fff8dc" : body_colour(body.id),
              too_faint(body) ? R"(fill-opacity="0.75")" : R"(font-weight="600")");
    }

    void star_names() {
        constexpr double size = 12;
        for (const SkyStar& star : view_.stars) {
            if (star.magnitude > std::min(light_.limit, 2.3)) break;
            if (star.name.empty() || star.at.altitude_deg < 1) continue;
            if (const auto place = labels_.beside(project(star.at), star_radius(star.magnitude),
                                                  text_width(star.name, size) + 3, size + 1,
                                                  star.magnitude < 1.5 ? 24 : 0))
                label(place->middle, star.name, size, "#c3cde3");
        }
    }

    void ecliptic_name() {
        constexpr double size = 11;
        for (const bool above : {true, false}) {
            for (std::size_t i = 0; i + 8 < view_.ecliptic.size(); i += 8) {
                const Horizontal& at = view_.ecliptic[i];
                if (at.altitude_deg < 15) continue;
                const Point on = project(at);
                const Point middle{on.x, on.y + (above ? -12.0 : 12.0)};
                // Over a steep stretch the line would run through the word.
                const Point next = project(view_.ecliptic[i + 8]);
                if (std::fabs(next.y - on.y) > 0.25 * std::fabs(next.x - on.x)) continue;
                if (!labels_.at(middle, text_width("ecliptic", size) + 6, size)) continue;
                label(middle, "ecliptic", size, kEcliptic,
                      R"(fill-opacity="0.85" font-style="italic")");
                return;
            }
        }
    }

    // Names in the middle of the constellations' stars.
    void constellations() {
        if (light_.limit < 3.5) return;
        struct Sum {
            double x = 0, y = 0, weight = 0;
        };
        std::map<std::string, Sum> sums;
        for (const SkyStar& star : view_.stars) {
            const Point at = project(star.at);
            const double weight = 6 - star.magnitude;
            Sum& sum = sums[star.constellation];
            sum.x += weight * at.x, sum.y += weight * at.y, sum.weight += weight;
        }
        keep_clear_of_stars(4.4, 9);
        constexpr double size = 10;
        constexpr double spacing = 1.6;
        for (const auto& [abbreviation, sum] : sums) {
            if (sum.weight < 5) continue;  // hardly any of it is up
            std::string name = constellation_name(abbreviation);
            for (char& c : name)
                c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
            const Point middle{sum.x / sum.weight, sum.y / sum.weight};
            for (const auto& [dx, dy] : kShifts) {
                const Point tried{middle.x + dx, middle.y + dy};
                if (!labels_.at(tried, text_width(name, size, spacing) + 2, size)) continue;
                label(tried, name, size, "#7189bd",
                      R"(letter-spacing="1.6" fill-opacity="0.85")");
                break;
            }
        }
    }

    void rim() {
        svg_.circle(kCentre, kRadius,
                    fmt::format(R"(fill="none" stroke="{}" stroke-width="2")", kFaint));
        for (int azimuth = 0; azimuth < 360; azimuth += 5) {
            const double a = azimuth / kDegrees;
            const double length = azimuth % 45 == 0 ? 11 : azimuth % 10 == 0 ? 7 : 4;
            svg_.line({kCentre.x - kRadius * std::sin(a), kCentre.y - kRadius * std::cos(a)},
                      {kCentre.x - (kRadius + length) * std::sin(a),
                       kCentre.y - (kRadius + length) * std::cos(a)},
                      fmt::format(R"(stroke="{}" stroke-width="1")", kFaint));
        }
        static const char* const points[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
        for (int i = 0; i < 8; ++i) {
            const double a = 45 * i / kDegrees;
            const bool main = i % 2 == 0;
            label({kCentre.x - (kRadius + 28) * std::sin(a),
                   kCentre.y - (kRadius + 28) * std::cos(a)},
                  points[i], main ? 22 : 14, main ? kInk : kFaint,
                  main ? R"(font-weight="600")" : "");
        }
    }

    void legend() {
        double x = 40;
        for (int magnitude = -1; magnitude <= 4; ++magnitude, x += 34) {
            svg_.circle({x, kHeight - 52}, star_radius(magnitude), R"(fill="#dfe8ff")");
            label({x, kHeight - 30}, fmt::format("{}", magnitude), 12, kFaint);
        }
        svg_.text({x - 8, kHeight - 26}, "magnitude",
                  fmt::format(R"(font-size="12" fill="{}")", kFaint));
        const double altitude = view_.sun_altitude_deg;
        const auto note = [&](double y, const std::string& words) {
            svg_.text({kWidth - 36, y}, words,
                      fmt::format(R"(font-size="13" fill="{}" text-anchor="end")", kFaint));
        };
        note(kHeight - 48,
             fmt::format("Sun {:.0f}\u00b0 {} the horizon: {}", std::fabs(altitude),
                         altitude < 0 ? "below" : "above", name_of_light(altitude)));
        note(kHeight - 26, fmt::format("Moon {:.0f}% lit", 100 * view_.moon_illuminated));
        const bool hollow = std::any_of(
            view_.bodies.begin(), view_.bodies.end(),
            [&](const SkyBody& body) { return body.at.altitude_deg > 0 && too_faint(body); });
        svg_.text({kWidth - 36, 52}, "Zenith in the middle, east to the left",
                  fmt::format(R"(font-size="13" fill="{}" text-anchor="end")", kFaint));
        if (hollow) note(74, "Rings: too faint for the eye");
    }

    // How far a constellation's name may lie from its middle.
    static constexpr double kShifts[][2] = {
        {0, 0},    {0, 9},     {0, -9},   {14, 0},   {-14, 0},   {12, 14}, {-12, 14},
        {12, -14}, {-12, -14}, {0, 20},   {0, -20},  {28, 6},    {-28, 6}, {28, -8},
        {-28, -8}, {20, 24},   {-20, 24}, {20, -24}, {-20, -24}, {0, 32},  {0, -32}};

    const SkyView& view_;
    Light light_;
    Svg svg_;
    LabelLayout labels_;
};

}  // namespace

Svg draw_sky(const SkyView& view, const std::string& title, const std::string& subtitle) {
    return Chart(view, title, subtitle).take();
}

}  // namespace app
