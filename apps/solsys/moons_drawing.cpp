#include "apps/solsys/moons_drawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "apps/solsys/bodies.h"

namespace app {
namespace {

constexpr const char* kNight = "#0d1321";
constexpr const char* kInk = "#e8ecf4";
constexpr const char* kFaint = "#5d6b85";
// One colour a satellite, told apart also by those who see few colours.
constexpr const char* kColours[] = {"#f2c14e", "#4fb3d9", "#ef8354", "#9bc53d",
                                    "#d783ff", "#f4f1de", "#81b29a", "#e07a9b"};

const char* colour(std::size_t index) { return kColours[index % std::size(kColours)]; }

// What a planet's disk looks like.
const char* disk_colour(int planet) {
    switch (planet) {
        case 3:
            return "#6b93d6";
        case 4:
            return "#c1633b";
        case 5:
            return "#d8b48a";
        case 6:
            return "#e3cf9a";
        case 7:
            return "#9fd8dc";
        case 8:
            return "#5b7be0";
        default:
            return "#c9bfae";
    }
}

std::string text_style(double size, const char* fill, const char* anchor = "start",
                       const char* extra = "") {
    return fmt::format(R"(font-size="{}" fill="{}" text-anchor="{}" {})", size, fill, anchor,
                       extra);
}

double widest(const std::vector<SatelliteView>& moons) {
    double radii = 1.5;
    for (const SatelliteView& moon : moons) radii = std::max(radii, moon.separation_radii);
    return radii;
}

// A round length for a scale bar, near the one wanted.
double round_length(double wanted) {
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double step : {5.0, 2.0})
        if (wanted >= step * power) return step * power;
    return power;
}

// Saturn's rings in equatorial radii: inner edge of C to outer edge of A, by brightness.
struct Ring {
    double inner, outer;
    const char* fill;
};
constexpr Ring kRings[] = {
    {1.239, 1.526, "#7d7462"}, {1.526, 1.950, "#d9c8a0"}, {2.027, 2.269, "#b8a986"}};

// The half of the rings that lies nearer to the observer than the planet, or the other one.
void draw_rings(Svg& svg, const PlanetView& planet, Point centre, double radius, bool near) {
    const double squeeze = std::sin(planet.pole_tilt_deg / 57.29577951308232);
    // With the north pole turned towards the observer the near half is the southern one, which
    // is down on the page before the turn.
    const bool lower = near == (squeeze > 0);
    for (const Ring& ring : kRings) {
        const auto arc = [&](double r, bool forth) {
            return fmt::format("A {0:.2f} {1:.2f} 0 0 {2} {3:.2f} 0", r * radius,
                               std::fabs(squeeze) * r * radius, forth == lower ? 0 : 1,
                               forth ? r * radius : -r * radius);
        };
        svg.raw(fmt::format(
            R"~(<path transform="translate({:.2f} {:.2f}) rotate({:.2f})" fill="{}" )~"
            R"~(stroke="{}" stroke-width="0.5" d="M {:.2f} 0 {} L {:.2f} 0 {} Z"/>)~",
            centre.x, centre.y, -planet.pole_angle_deg, ring.fill, ring.fill,
            -ring.outer * radius, arc(ring.outer, true), ring.inner * radius,
            arc(ring.inner, false)));
    }
}

// Lays labels out without overlap: pushes each down past those already placed near it.
class Labels {
  public:
    Point place(Point wanted, double width) {
        for (bool moved = true; moved;) {
            moved = false;
            for (const auto& [at, other_width] : placed_) {
                if (std::fabs(at.y - wanted.y) < 15 &&
                    std::fabs(at.x - wanted.x) < (width + other_width) / 2) {
                    wanted.y = at.y + 15.5;
                    moved = true;
                }
            }
        }
        placed_.emplace_back(wanted, width);
        return wanted;
    }

  private:
    std::vector<std::pair<Point, double>> placed_;
};

}  // namespace

Svg draw_configuration(const Configuration& configuration, const std::string& title) {
    constexpr double width = 1000;
    constexpr double height = 520;
    constexpr Point centre{width / 2, height / 2 + 20};
    const PlanetView& planet = configuration.planet;

    double east = planet.radius_arcsec * 1.5;
    double north = planet.radius_arcsec * 1.5;
    for (const SatelliteView& moon : configuration.moons) {
        east = std::max(east, std::fabs(moon.east_arcsec));
        north = std::max(north, std::fabs(moon.north_arcsec));
    }
    const double scale = std::min((width / 2 - 70) / east, (height / 2 - 120) / north);
    const auto on_page = [&](double east_arcsec, double north_arcsec) {
        return Point{centre.x - east_arcsec * scale, centre.y - north_arcsec * scale};
    };

    Svg svg(width, height, kNight);
    svg.text({30, 40}, title, text_style(22, kInk));
    svg.text({30, 64}, "North up, east to the left", text_style(13, kFaint));

    // The equator's direction, faintly.
    const double turn = planet.pole_angle_deg / 57.29577951308232;
    const double reach = std::hypot(east, north);
    svg.line(on_page(reach * std::cos(turn), -reach * std::sin(turn)),
             on_page(-reach * std::cos(turn), reach * std::sin(turn)),
             fmt::format(R"(stroke="{}" stroke-width="0.7" stroke-dasharray="2 6")", kFaint));

    const auto dot = [&](const SatelliteView& moon, std::size_t index) {
        const Point at = on_page(moon.east_arcsec, moon.north_arcsec);
        const bool hidden = moon.behind_disk || moon.in_shadow;
        svg.circle(
            at, 4,
            hidden ? fmt::format(R"(fill="none" stroke="{}" stroke-width="1.4")", colour(index))
                   : fmt::format(R"(fill="{}")", colour(index)));
    };
    for (std::size_t i = 0; i < configuration.moons.size(); ++i)
        if (!configuration.moons[i].in_front) dot(configuration.moons[i], i);
    const double radius = planet.radius_arcsec * scale;
    const bool ringed = planet.id.number == 6;
    if (ringed) draw_rings(svg, planet, centre, radius, false);
    // A rotation from north through east is anticlockwise on this page.
    svg.ellipse(centre, radius, radius * planet.polar_ratio, -planet.pole_angle_deg,
                fmt::format(R"(fill="{}")", disk_colour(planet.id.number)));
    if (ringed) draw_rings(svg, planet, centre, radius, true);
    for (std::size_t i = 0; i < configuration.moons.size(); ++i)
        if (configuration.moons[i].in_front) dot(configuration.moons[i], i);

    Labels labels;
    for (std::size_t i = 0; i < configuration.moons.size(); ++i) {
        const SatelliteView& moon = configuration.moons[i];
        const std::string name = name_of(moon.id);
        const Point dot_at = on_page(moon.east_arcsec, moon.north_arcsec);
        const bool over = std::hypot(dot_at.x - centre.x, dot_at.y - centre.y) < radius + 12;
        const Point at = labels.place({dot_at.x, over ? centre.y + radius + 22 : dot_at.y + 20},
                                      7.0 * static_cast<double>(name.size()) + 8);
        svg.text(at, name, text_style(13, colour(i), "middle"));
    }

    const double bar = round_length(150 / scale);
    svg.line({30, height - 30}, {30 + bar * scale, height - 30},
             fmt::format(R"(stroke="{}" stroke-width="2")", kInk));
    svg.text({30, height - 38}, fmt::format("{:g}\"", bar), text_style(13, kInk));
    svg.text({width - 30, height - 30},
             "Open circles: hidden behind the planet or in its shadow",
             text_style(13, kFaint, "end"));
    return svg;
}

Svg draw_waves(const std::vector<Configuration>& instants, const Zone& zone,
               const std::string& title) {
    constexpr double width = 820;
    constexpr double top = 90;
    constexpr double margin = 90;
    const Utc start = instants.front().utc;
    const double days = std::max(days_from(start, instants.back().utc), 1e-3);
    const double day_height = std::clamp(1000 / days, 12.0, 90.0);
    const double height = top + days * day_height + 70;

    double radii = 1.5;
    for (const Configuration& instant : instants)
        radii = std::max(radii, widest(instant.moons));
    const double centre = (width + margin - 30) / 2;
    const double scale = (centre - margin) / (radii * 1.04);
    const auto y_of = [&](Utc utc) { return top + days_from(start, utc) * day_height; };
    // Along the equator; with the pole up, east is to the left.
    const auto x_of = [&](double x_radii) { return centre - x_radii * scale; };

    Svg svg(width, height, kNight);
    svg.text({30, 40}, title, text_style(22, kInk));
    svg.text({30, 62}, "East to the left; to scale along the planet's equator",
             text_style(13, kFaint));

    // A line a civil day, dated as often as there is room.
    const int every = static_cast<int>(std::ceil(18 / day_height));
    int count = 0;
    for (Utc day = plus_days(zone.midnight(start), 1.0);
         days_from(day, instants.back().utc) >= 0;
         day = plus_days(zone.midnight(plus_days(day, 0.5)), 1.0), ++count) {
        // A day of summer time's change is not 24 hours long: midnight again.
        const Utc midnight = zone.midnight(plus_days(day, 0.2));
        const double y = y_of(midnight);
        svg.line({margin - 8, y}, {width - 30, y},
                 fmt::format(R"(stroke="{}" stroke-width="0.4")", kFaint));
        if (count % every == 0)
            svg.text({margin - 14, y + 4},
                     zone.date_time(plus_days(midnight, 0.01)).substr(5, 5),
                     text_style(12, kFaint, "end"));
    }

    svg.rectangle({x_of(1), top}, 2 * scale, days * day_height,
                  fmt::format(R"(fill="{}" fill-opacity="0.55")",
                              disk_colour(instants.front().planet.id.number)));

    const std::size_t moons = instants.front().moons.size();
    for (std::size_t m = 0; m < moons; ++m) {
        // Hidden stretches are dashed: a run of one kind is one line, sharing its end points.
        std::vector<Point> run;
        bool hidden = false;
        const auto flush = [&] {
            if (run.size() > 1)
                svg.polyline(run, fmt::format(R"(fill="none" stroke="{}" stroke-width="1.8" )"
                                              R"(stroke-linejoin="round"{})",
                                              colour(m),
                                              hidden ? R"( stroke-dasharray="2 3" )"
                                                       R"(stroke-opacity="0.7")"
                                                     : ""));
        };
        for (const Configuration& instant : instants) {
            const SatelliteView& moon = instant.moons[m];
            const Point at{x_of(moon.x_radii), y_of(instant.utc)};
            const bool now_hidden = moon.behind_disk || moon.in_shadow;
            if (now_hidden != hidden && !run.empty()) {
                flush();
                run = {run.back()};
            }
            hidden = now_hidden;
            run.push_back(at);
        }
        flush();
    }
    double legend = margin;
    for (std::size_t m = 0; m < moons; ++m) {
        const std::string name = name_of(instants.front().moons[m].id);
        svg.circle({legend, height - 30}, 5, fmt::format(R"(fill="{}")", colour(m)));
        svg.text({legend + 10, height - 25}, name, text_style(14, kInk));
        legend += 36 + 8.2 * static_cast<double>(name.size());
    }
    svg.text({width - 30, height - 25}, "dashed: hidden", text_style(13, kFaint, "end"));
    return svg;
}

}  // namespace app
