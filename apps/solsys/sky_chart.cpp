#include "apps/solsys/sky_chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "apps/solsys/bodies.h"
#include "apps/solsys/place.h"
#include "apps/solsys/star_list.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr double kWidth = 1000;
constexpr double kHeight = 1080;
constexpr Point kZenith{kWidth / 2, 570};
constexpr double kRadius = 430;

constexpr const char* kPage = "#0a0d18";
constexpr const char* kInk = "#e8ecf4";
constexpr const char* kFaint = "#8b97ae";

// Stereographic: circles stay circles, and shapes near the horizon keep their proportions.
Point on_page(Horizontal h) {
    const double r = kRadius * std::tan((90 - h.altitude_deg) / 2 / kDegrees);
    const double azimuth = h.azimuth_deg / kDegrees;
    return {kZenith.x - r * std::sin(azimuth), kZenith.y - r * std::cos(azimuth)};
}

struct Colour {
    double r, g, b;
};
std::string hex(Colour c) {
    return fmt::format("#{:02x}{:02x}{:02x}", static_cast<int>(c.r), static_cast<int>(c.g),
                       static_cast<int>(c.b));
}

// The sky's colour at the zenith and at the horizon, and the faintest star seen, by the Sun's
// altitude; between the rows linearly.
struct Twilight {
    double sun_altitude_deg;
    Colour zenith, horizon;
    double limit;
};
constexpr Twilight kTwilights[] = {{-18, {9, 13, 32}, {20, 27, 56}, 5.0},
                                   {-12, {14, 22, 54}, {42, 52, 96}, 4.3},
                                   {-6, {28, 46, 96}, {120, 108, 130}, 2.2},
                                   {-0.8, {60, 102, 170}, {226, 168, 128}, -1.0},
                                   {8, {84, 146, 214}, {186, 220, 242}, -3.0}};

Colour mix(Colour a, Colour b, double w) {
    return {a.r + w * (b.r - a.r), a.g + w * (b.g - a.g), a.b + w * (b.b - a.b)};
}

Twilight twilight_at(double sun_altitude_deg) {
    const Twilight* const end = std::end(kTwilights);
    const Twilight* upper = std::find_if(kTwilights, end, [&](const Twilight& row) {
        return row.sun_altitude_deg > sun_altitude_deg;
    });
    if (upper == kTwilights) return kTwilights[0];
    if (upper == end) return *std::prev(end);
    const Twilight& lower = *std::prev(upper);
    const double w = (sun_altitude_deg - lower.sun_altitude_deg) /
                     (upper->sun_altitude_deg - lower.sun_altitude_deg);
    return {sun_altitude_deg, mix(lower.zenith, upper->zenith, w),
            mix(lower.horizon, upper->horizon, w),
            lower.limit + w * (upper->limit - lower.limit)};
}

// What the eye makes of a spectral class, whitened as the eye whitens faint light.
const char* star_colour(const char* spectral_type) {
    switch (spectral_type[0]) {
        case 'O':
        case 'B':
            return "#bccdff";
        case 'A':
            return "#dde6ff";
        case 'F':
            return "#f7f5ff";
        case 'G':
            return "#fff2d8";
        case 'K':
            return "#ffdcae";
        case 'M':
            return "#ffc08c";
        default:
            return "#ffffff";
    }
}

double star_radius(double magnitude) { return 3.0 * std::pow(10.0, -0.13 * magnitude); }

// Places for names beside their dots: the first of a few sides that is free, or none.
class NameTags {
  public:
    // A dot that names must not cover.
    void keep_clear(Point at, double radius) {
        taken_.push_back({at.x - radius, at.y - radius, at.x + radius, at.y + radius});
    }

    // Writes a name beside a dot if there is room; `must`: writes it all the same.
    void write(Svg& svg, Point dot, double radius, const std::string& name, double size,
               const char* fill, bool must) {
        const double width = 0.6 * size * static_cast<double>(name.size());
        const double gap = radius + 5;
        const std::array<Point, 4> corners{{{dot.x + gap, dot.y - size / 2},
                                            {dot.x - gap - width, dot.y - size / 2},
                                            {dot.x - width / 2, dot.y + gap},
                                            {dot.x - width / 2, dot.y - gap - size}}};
        const auto free = std::find_if(corners.begin(), corners.end(), [&](Point corner) {
            return fits({corner.x, corner.y, corner.x + width, corner.y + size});
        });
        if (free == corners.end() && !must) return;
        const Point corner = free == corners.end() ? corners[0] : *free;
        taken_.push_back({corner.x, corner.y, corner.x + width, corner.y + size});
        svg.text({corner.x, corner.y + 0.82 * size}, name,
                 fmt::format(R"(font-size="{}" fill="{}")", size, fill));
    }

  private:
    struct Box {
        double left, top, right, bottom;
    };

    [[nodiscard]] bool fits(const Box& box) const {
        for (const Point corner : {Point{box.left, box.top}, Point{box.right, box.top},
                                   Point{box.left, box.bottom}, Point{box.right, box.bottom}})
            if (std::hypot(corner.x - kZenith.x, corner.y - kZenith.y) > kRadius - 4)
                return false;
        return std::none_of(taken_.begin(), taken_.end(), [&](const Box& other) {
            return box.left < other.right && other.left < box.right && box.top < other.bottom &&
                   other.top < box.bottom;
        });
    }

    std::vector<Box> taken_;
};

void draw_ground(Svg& svg, const Twilight& twilight) {
    svg.raw(fmt::format(
        R"~(<defs><radialGradient id="sky"><stop offset="0" stop-color="{0}"/>)~"
        R"~(<stop offset="0.6" stop-color="{1}"/><stop offset="1" stop-color="{2}"/>)~"
        R"~(</radialGradient><clipPath id="dome"><circle cx="{3}" cy="{4}" r="{5}"/>)~"
        R"~(</clipPath></defs>)~",
        hex(twilight.zenith), hex(mix(twilight.zenith, twilight.horizon, 0.3)),
        hex(twilight.horizon), kZenith.x, kZenith.y, kRadius));
    svg.circle(kZenith, kRadius, R"~(fill="url(#sky)")~");
    const char* const thin = R"(fill="none" stroke="#ffffff" stroke-opacity="0.13")";
    for (const double altitude : {30.0, 60.0}) {
        const Point top = on_page({0, altitude});
        svg.circle(kZenith, kZenith.y - top.y, thin);
        svg.text({top.x + 4, top.y - 4}, fmt::format("{:.0f}\u00b0", altitude),
                 R"(font-size="11" fill="#ffffff" fill-opacity="0.45")");
    }
    for (int azimuth = 0; azimuth < 360; azimuth += 45)
        svg.line(on_page({1.0 * azimuth, 88}), on_page({1.0 * azimuth, 0}), thin);
}

void draw_compass(Svg& svg) {
    svg.circle(kZenith, kRadius,
               fmt::format(R"(fill="none" stroke="{}" stroke-width="2")", kFaint));
    for (int azimuth = 0; azimuth < 360; azimuth += 10) {
        const double a = azimuth / kDegrees;
        const double length = azimuth % 30 == 0 ? 9 : 5;
        svg.line({kZenith.x - kRadius * std::sin(a), kZenith.y - kRadius * std::cos(a)},
                 {kZenith.x - (kRadius + length) * std::sin(a),
                  kZenith.y - (kRadius + length) * std::cos(a)},
                 fmt::format(R"(stroke="{}")", kFaint));
    }
    static const char* const points[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    for (int i = 0; i < 8; ++i) {
        const double a = 45.0 * i / kDegrees;
        const bool main = i % 2 == 0;
        svg.text(
            {kZenith.x - (kRadius + 27) * std::sin(a),
             kZenith.y - (kRadius + 27) * std::cos(a) + 6},
            points[i],
            fmt::format(R"(font-size="{}" font-weight="{}" fill="{}" text-anchor="middle")",
                        main ? 20 : 14, main ? "bold" : "normal", main ? kInk : kFaint));
    }
}

Horizontal horizontal(const CSWSolSys& model, double ra, double dec) {
    double azimuth = 0;
    double altitude = 0;
    model.FromRAToAzm(false, &ra, &dec, &azimuth, &altitude);
    return {azimuth * kDegrees, altitude * kDegrees};
}

void draw_ecliptic(Svg& svg, const CSWSolSys& model) {
    std::vector<Point> path;
    const auto flush = [&] {
        if (path.size() > 1)
            svg.polyline(path, R"~(fill="none" stroke="#e8c96a" stroke-opacity="0.4" )~"
                               R"~(stroke-dasharray="1 6" stroke-linecap="round" )~"
                               R"~(stroke-width="1.6" clip-path="url(#dome)")~");
        path.clear();
    };
    for (int degree = 0; degree <= 360; degree += 2) {
        const double longitude = degree / kDegrees;
        const double latitude = 0;
        double ra = 0;
        double dec = 0;
        model.FromEclAngToRA(false, &longitude, &latitude, &ra, &dec);
        const Horizontal h = horizontal(model, ra, dec);
        if (h.altitude_deg > -3) {
            path.push_back(on_page(h));
        } else {
            flush();
        }
    }
    flush();
}

// Direction on the page in which a great circle leaves a point of the sky for another one.
Point direction_towards(Horizontal from, Horizontal to) {
    const double altitude = from.altitude_deg / kDegrees;
    const double target = to.altitude_deg / kDegrees;
    const double turn = (to.azimuth_deg - from.azimuth_deg) / kDegrees;
    const double up = std::cos(altitude) * std::sin(target) -
                      std::sin(altitude) * std::cos(target) * std::cos(turn);
    const double along = std::cos(target) * std::sin(turn);  // of growing azimuth
    const double azimuth = from.azimuth_deg / kDegrees;
    const double x = up * std::sin(azimuth) - along * std::cos(azimuth);
    const double y = up * std::cos(azimuth) + along * std::sin(azimuth);
    const double length = std::hypot(x, y);
    return length > 0 ? Point{x / length, y / length} : Point{1, 0};
}

// The Moon with its lit part towards the Sun; `lit` is the illuminated fraction.
void draw_moon(Svg& svg, Point at, double radius, double lit, Point sunward) {
    svg.circle(at, radius, R"(fill="#39405a" stroke="#cfd6e6" stroke-width="0.6")");
    svg.raw(fmt::format(
        R"~(<path transform="translate({:.2f} {:.2f}) rotate({:.2f})" fill="#fdf6de" )~"
        R"~(d="M 0 {:.2f} A {:.2f} {:.2f} 0 0 1 0 {:.2f} A {:.2f} {:.2f} 0 0 {} 0 {:.2f} Z"/>)~",
        at.x, at.y, std::atan2(sunward.y, sunward.x) * kDegrees, -radius, radius, radius,
        radius, std::fabs(2 * lit - 1) * radius, radius, lit > 0.5 ? 1 : 0, -radius));
}

struct Wanderer {
    SSO_ID id;
    const char* colour;
};
constexpr int kMoonNumber = 301;
const Wanderer kPlanets[] = {{{SSO_PLNT, 1}, "#d9cfc0"}, {{SSO_PLNT, 2}, "#fffbe8"},
                             {{SSO_PLNT, 4}, "#ff9a6b"}, {{SSO_PLNT, 5}, "#ffe3b8"},
                             {{SSO_PLNT, 6}, "#f3dc9f"}, {{SSO_PLNT, 7}, "#a8e3e6"},
                             {{SSO_PLNT, 8}, "#8fb0ff"}};

void draw_stars(Svg& svg, CSWSolSys& model, const Twilight& twilight, NameTags& tags) {
    struct Seen {
        const StarRow* row;
        Point at;
    };
    std::vector<Seen> seen;
    for (const StarRow& row : bright_stars()) {
        if (row.magnitude > twilight.limit) continue;
        const StarObject star = star_object(row);
        double place[3] = {0, 0, 0};
        double vector[3] = {0, 0, 0};
        model.GetRADecVisStar(&star, place, vector, true);
        const Horizontal h = horizontal(model, place[1], place[2]);
        if (h.altitude_deg > 0) seen.push_back({&row, on_page(h)});
    }
    for (const Seen& star : seen) {
        svg.circle(star.at, star_radius(star.row->magnitude),
                   fmt::format(R"(fill="{}")", star_colour(star.row->spectral_type)));
        if (star.row->magnitude < 3) tags.keep_clear(star.at, 2.5);
    }
    // Names from the brightest down, as far as there is room.
    std::sort(seen.begin(), seen.end(),
              [](const Seen& a, const Seen& b) { return a.row->magnitude < b.row->magnitude; });
    for (const Seen& star : seen) {
        if (star.row->magnitude > 1.9) break;
        tags.write(svg, star.at, star_radius(star.row->magnitude), star_name(*star.row), 11,
                   "#b9c4dc", false);
    }
}

}  // namespace

Svg draw_sky(CSWSolSys& model, const std::string& place, const std::string& when) {
    const SSO_ID sun_id(SSO_PLNT, 10);
    const SSO_ID moon_id(SSO_MOON, kMoonNumber);
    const Horizontal sun = horizontal_of(model, apparent_place(model, sun_id));
    const Horizontal moon = horizontal_of(model, apparent_place(model, moon_id));
    const Twilight twilight = twilight_at(sun.altitude_deg);

    Svg svg(kWidth, kHeight, kPage);
    svg.text({kWidth / 2, 46}, place,
             fmt::format(R"(font-size="26" fill="{}" text-anchor="middle")", kInk));
    svg.text({kWidth / 2, 74}, when,
             fmt::format(R"(font-size="15" fill="{}" text-anchor="middle")", kFaint));
    draw_ground(svg, twilight);
    draw_ecliptic(svg, model);

    // Names of the bodies take precedence over those of the stars, dots over all names.
    struct Dot {
        SSO_ID id;
        Point at;
        double radius;
        const char* colour;
    };
    std::vector<Dot> dots;
    if (sun.altitude_deg > 0) dots.push_back({sun_id, on_page(sun), 15, "#fff3b0"});
    if (moon.altitude_deg > 0) dots.push_back({moon_id, on_page(moon), 14, "#fdf6de"});
    for (const Wanderer& planet : kPlanets) {
        const Horizontal h = horizontal_of(model, apparent_place(model, planet.id));
        float magnitude = 0;
        model.GetMagnitude(planet.id, &magnitude);
        // Uranus and Neptune are marked in a dark sky although the eye hardly reaches them.
        const bool shown = magnitude < twilight.limit || twilight.limit > 4.5;
        if (h.altitude_deg > 0 && shown)
            dots.push_back(
                {planet.id, on_page(h), std::max(2.6, star_radius(magnitude)), planet.colour});
    }
    NameTags tags;
    for (const Dot& dot : dots) tags.keep_clear(dot.at, dot.radius + 1);
    for (const Dot& dot : dots)
        tags.write(svg, dot.at, dot.radius, name_of(dot.id), 14,
                   sun.altitude_deg > -4 ? "#15223a" : "#ffe9a8", true);
    draw_stars(svg, model, twilight, tags);
    for (const Dot& dot : dots) {
        if (dot.id == moon_id) {
            double lit = 0;
            model.PhaseElongation(moon_id, nullptr, &lit, nullptr, nullptr, nullptr);
            draw_moon(svg, dot.at, dot.radius, lit, direction_towards(moon, sun));
        } else {
            svg.circle(
                dot.at, dot.radius,
                fmt::format(R"(fill="{}" stroke="#000000" stroke-opacity="0.35")", dot.colour));
        }
    }
    draw_compass(svg);
    svg.text({kWidth / 2, kHeight - 18},
             "Zenith in the middle, east to the left; dotted: the ecliptic",
             fmt::format(R"(font-size="13" fill="{}" text-anchor="middle")", kFaint));
    return svg;
}

}  // namespace app
