// The configuration of a planet's satellites at one instant.
#include "draw/moons_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "draw/label_layout.h"
#include "draw/planet_disk.h"

namespace solsys::draw {
namespace {

constexpr double kMoonsWidth = 1000;
constexpr double kHeight = 560;
constexpr double kTiny = 8;     // a disk smaller than this wants an inset [px]
constexpr double kSmall = 90;   // so does one with something going on before it
constexpr double kInset = 230;  // its side

// A round length for a scale bar, near the one wanted.
double round_length(double wanted) {
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double step : {5.0, 2.0})
        if (wanted >= step * power) return step * power;
    return power;
}

bool hidden(const sky::SatelliteView& moon) { return moon.behind_disk || moon.in_shadow; }

class Picture {
  public:
    Picture(const Configuration& configuration, const Theme& theme, const std::string& title)
        : configuration_(configuration),
          theme_(theme),
          svg_(kMoonsWidth, kHeight, theme.page, title,
               "The planet's disk and its satellites to scale, north up, east to the left"),
          labels_({0, 0}, {kMoonsWidth, kHeight}) {}

    Svg draw(const std::string& title) {
        fit();
        svg_.text({30, 42}, title, {.size = 21, .fill = theme_.ink, .bold = true});
        svg_.text({30, 66}, "North up, east to the left", {.size = 13, .fill = theme_.faint});
        labels_.occupy({150, 40}, 60);
        equator();
        scene(disk_, svg_);
        const auto& moons = configuration_.moons;
        const bool phenomena = std::any_of(
            moons.begin(), moons.end(),
            [](const sky::SatelliteView& moon) { return moon.on_disk || moon.shadow_on_disk; });
        if (disk_.radius < (phenomena ? kSmall : kTiny)) inset(phenomena);
        names();
        footer();
        return std::move(svg_);
    }

  private:
    [[nodiscard]] const sky::PlanetView& planet() const { return configuration_.planet; }

    // A scale that takes all satellites in, the planet in the middle.
    void fit() {
        double east = planet().radius_arcsec * 2.4;
        double north = planet().radius_arcsec * 1.5;
        for (const sky::SatelliteView& moon : configuration_.moons) {
            east = std::max(east, std::fabs(moon.east_arcsec));
            north = std::max(north, std::fabs(moon.north_arcsec));
        }
        scale_ = std::min((kMoonsWidth / 2 - 70) / east, (kHeight / 2 - 110) / north);
        disk_ = {{kMoonsWidth / 2, kHeight / 2 + 14}, planet().radius_arcsec * scale_};
    }

    [[nodiscard]] Point of_moon(const sky::SatelliteView& moon, const DiskOnPage& disk) const {
        return on_page(planet(), disk, moon.x_radii, moon.y_radii);
    }

    void equator() {
        const double reach = std::hypot(kMoonsWidth, kHeight) / 2 / disk_.radius;
        Style style = Style::line(theme_.faint, 0.7, 0.8, "2 6");
        const Point a = on_page(planet(), disk_, reach, 0);
        const Point b = on_page(planet(), disk_, -reach, 0);
        // Below the heading.
        const auto cut = [](Point p, Point towards) {
            const double top = 84;
            const double part = p.y < top ? (top - p.y) / (towards.y - p.y) : 0;
            return Point{p.x + part * (towards.x - p.x), p.y + part * (towards.y - p.y)};
        };
        svg_.line(cut(a, b), cut(b, a), style);
    }

    void dot(Svg& svg, const DiskOnPage& disk, std::size_t i) const {
        const sky::SatelliteView& moon = configuration_.moons[i];
        const char* const colour = series_colour(i, theme_);
        const double radius = std::max(3.6, moon.radius_radii * disk.radius);
        Style style = hidden(moon) ? Style::line(colour, 1.4) : Style::filled(colour);
        if (moon.on_disk) style = style.outlined(theme_.page, 1);
        svg.circle(of_moon(moon, disk), radius, style);
    }

    // Far satellites, the planet with its rings and shadows, near satellites and what is
    // hidden.
    void scene(const DiskOnPage& disk, Svg& svg) const {
        const auto& moons = configuration_.moons;
        for (std::size_t i = 0; i < moons.size(); ++i)
            if (!moons[i].in_front && !hidden(moons[i])) dot(svg, disk, i);
        const bool ringed = planet().planet.id.number == 6;
        if (ringed) draw_rings(svg, planet(), disk, false);
        draw_disk(svg, planet(), disk, theme_);
        if (ringed) draw_rings(svg, planet(), disk, true);
        for (const sky::SatelliteView& moon : moons)
            if (moon.shadow_on_disk) draw_shadow(svg, planet(), disk, moon);
        for (std::size_t i = 0; i < moons.size(); ++i)
            if (moons[i].in_front || hidden(moons[i])) dot(svg, disk, i);
    }

    // The neighbourhood of a planet that is a dot on the page, enlarged.
    void inset(bool close) {
        const Point corner = inset_corner();
        const Point middle{corner.x + kInset / 2, corner.y + kInset / 2};
        svg_.raw(fmt::format(R"~(<clipPath id="inset"><rect x="{}" y="{}" width="{}" )~"
                             R"~(height="{}" rx="8"/></clipPath><g clip-path="url(#inset)">)~",
                             number(corner.x), number(corner.y), kInset, kInset));
        svg_.rectangle(corner, kInset, kInset, Style::filled(theme_.panel), 8);
        // The inner satellites and the rings; at least three radii around.
        const bool ringed = planet().planet.id.number == 6;
        double reach = ringed ? 2.6 : 1.5;
        const double farthest = close ? 2 : 12;
        for (const sky::SatelliteView& moon : configuration_.moons)
            if (moon.separation_radii < farthest)
                reach = std::max(reach, moon.separation_radii * 1.15);
        const DiskOnPage disk{middle, kInset / 2 / reach};
        scene(disk, svg_);
        svg_.raw("</g>");
        svg_.rectangle(corner, kInset, kInset, Style::line(theme_.faint, 1), 8);
        svg_.text({corner.x, corner.y - 8},
                  fmt::format("{:.0f} times larger", kInset / 2 / reach / disk_.radius),
                  {.size = 12, .fill = theme_.faint});
        labels_.occupy(middle, kInset / 2 + 10);
        if (close) return;
        LabelLayout labels(corner, {corner.x + kInset, corner.y + kInset});
        named_in_inset_ = moons_within(reach);
        names(named_in_inset_, disk, labels, 11);
    }

    // On the right, where fewer satellites are.
    [[nodiscard]] Point inset_corner() const {
        const auto covered = [&](Point corner) {
            return std::count_if(configuration_.moons.begin(), configuration_.moons.end(),
                                 [&](const sky::SatelliteView& moon) {
                                     const Point at = of_moon(moon, disk_);
                                     return at.x > corner.x && at.y > corner.y &&
                                            at.y < corner.y + kInset;
                                 });
        };
        const Point low{kMoonsWidth - kInset - 30, kHeight - kInset - 52}, high{low.x, 60};
        return covered(high) < covered(low) ? high : low;
    }

    [[nodiscard]] std::vector<std::size_t> moons_within(double radii) const {
        std::vector<std::size_t> within;
        for (std::size_t i = 0; i < configuration_.moons.size(); ++i)
            if (configuration_.moons[i].separation_radii < radii) within.push_back(i);
        return within;
    }

    // Of those that have none in the inset.
    void names() {
        std::vector<std::size_t> unnamed;
        for (std::size_t i = 0; i < configuration_.moons.size(); ++i)
            if (!std::count(named_in_inset_.begin(), named_in_inset_.end(), i))
                unnamed.push_back(i);
        names(unnamed, disk_, labels_, 13);
    }

    void names(const std::vector<std::size_t>& which, const DiskOnPage& disk,
               LabelLayout& labels, double size) {
        for (const sky::SatelliteView& moon : configuration_.moons) {
            labels.occupy(of_moon(moon, disk), 4);
            labels.add_rival(of_moon(moon, disk));
        }
        labels.occupy(disk.centre, disk.radius * 1.02);
        for (const std::size_t i : which) name(i, disk, labels, size);
    }

    void name(std::size_t i, const DiskOnPage& disk, LabelLayout& labels, double size) {
        const sky::SatelliteView& moon = configuration_.moons[i];
        const Point at = of_moon(moon, disk);
        const double width = text_width(moon.moon.name, size) + 4;
        const auto place = labels.beside(at, 4, width, size + 2, 240);
        if (!place) return;
        const char* const colour = series_colour(i, theme_);
        if (place->moved) {
            const double dx = place->middle.x - at.x;
            const double dy = place->middle.y - at.y;
            const double to = 1 - std::min(width / 2 / std::max(std::fabs(dx), 1e-9),
                                           (size + 2) / 2 / std::max(std::fabs(dy), 1e-9));
            const double from = 6 / std::hypot(dx, dy);
            if (to > from)
                svg_.line({at.x + dx * from, at.y + dy * from},
                          {at.x + dx * to, at.y + dy * to}, Style::line(colour, 0.8, 0.75));
        }
        svg_.text(
            {place->middle.x, place->middle.y + size * 0.35}, moon.moon.name,
            {.size = size, .fill = colour, .anchor = Anchor::kMiddle, .halo = theme_.page});
    }

    void footer() {
        const double bar = round_length(150 / scale_);
        svg_.line({30, kHeight - 30}, {30 + bar * scale_, kHeight - 30},
                  Style::line(theme_.ink, 2));
        svg_.text({30, kHeight - 38}, fmt::format("{:g}\"", bar),
                  {.size = 13, .fill = theme_.ink});
        svg_.text({kMoonsWidth - 30, kHeight - 24},
                  "Open circles: behind the planet or in its shadow; dark spots: shadows on it",
                  {.size = 13, .fill = theme_.faint, .anchor = Anchor::kEnd});
    }

    const Configuration& configuration_;
    const Theme& theme_;
    Svg svg_;
    LabelLayout labels_;
    double scale_ = 1;
    DiskOnPage disk_;
    std::vector<std::size_t> named_in_inset_;
};

}  // namespace

Svg draw_configuration(const Configuration& configuration, const std::string& title,
                       bool light) {
    return Picture(configuration, theme(light), title).draw(title);
}

}  // namespace solsys::draw
