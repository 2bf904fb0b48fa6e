// The satellites' waves along the planet's equator.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "draw/moons_picture.h"
#include "draw/palette.h"

namespace solsys::draw {
namespace {

constexpr double kWavesWidth = 820;
constexpr double kTop = 96;
constexpr double kWavesLeft = 90;
constexpr double kRight = 30;

class Waves {
  public:
    Waves(const std::vector<Configuration>& instants, const sky::Zone& zone, const Theme& theme,
          const std::string& title)
        : instants_(instants),
          zone_(zone),
          theme_(theme),
          days_(std::max(sky::days_between(start(), end()), 1e-3)),
          day_height_(std::clamp(1000 / days_, 8.0, 90.0)),
          legend_rows_(count_legend_rows()),
          svg_(kWavesWidth, kTop + days_ * day_height_ + 50 + 24 * legend_rows_, theme.page,
               title,
               "Where the satellites stand east and west of the planet, time running down") {
        double radii = 1.5;
        for (const Configuration& instant : instants)
            for (const sky::SatelliteView& moon : instant.moons)
                radii = std::max(radii, std::fabs(moon.x_radii));
        scale_ = (kWavesWidth - kWavesLeft - kRight) / 2 / (radii * 1.04);
    }

    Svg draw(const std::string& title) {
        svg_.text({30, 42}, title, {.size = 21, .fill = theme_.ink, .bold = true});
        svg_.text({30, 66}, "East to the left; to scale along the planet's equator",
                  {.size = 13, .fill = theme_.faint});
        days();
        const sky::Body& planet = instants_.front().planet.planet;
        svg_.rectangle({x_of(1), kTop}, 2 * scale_, days_ * day_height_,
                       Style::filled(body_colour(planet.id, theme_), 0.5));
        for (std::size_t m = 0; m < instants_.front().moons.size(); ++m) wave(m);
        legend();
        return std::move(svg_);
    }

  private:
    [[nodiscard]] const sky::Instant& start() const { return instants_.front().at; }
    [[nodiscard]] const sky::Instant& end() const { return instants_.back().at; }
    [[nodiscard]] double y_of(const sky::Instant& t) const {
        return kTop + sky::days_between(start(), t) * day_height_;
    }
    // With the pole up, east is to the left.
    [[nodiscard]] double x_of(double x_radii) const {
        return (kWavesWidth + kWavesLeft - kRight) / 2 - x_radii * scale_;
    }

    // A line a civil day, dated as often as there is room.
    void days() {
        const int every = static_cast<int>(std::ceil(18 / day_height_));
        int number = sky::julian_day_number(zone_.date(start()));
        for (int count = 0;; ++count) {
            const sky::CivilDate date = sky::date_of_julian_day(++number);
            const sky::Instant midnight = zone_.day(date).from;
            if (midnight > end()) return;
            const double y = y_of(midnight);
            svg_.line({kWavesLeft - 8, y}, {kWavesWidth - kRight, y},
                      Style::line(theme_.faint, 0.5, 0.6));
            if (count % every == 0)
                svg_.text({kWavesLeft - 14, y + 4}, sky::to_string(date).substr(5),
                          {.size = 12, .fill = theme_.faint, .anchor = Anchor::kEnd});
        }
    }

    // Hidden stretches are dashed: a run of one kind is one line, sharing its end points.
    void wave(std::size_t m) {
        std::vector<Point> run;
        bool hidden = false;
        const auto flush = [&] {
            if (run.size() < 2) return;
            Style style = Style::line(series_colour(m, theme_), 1.8, hidden ? 0.7 : 1,
                                      hidden ? "2 3" : "");
            if (!hidden) style.cap = "round";
            svg_.polyline(run, style);
        };
        for (const Configuration& instant : instants_) {
            const sky::SatelliteView& moon = instant.moons[m];
            const bool now_hidden = moon.behind_disk || moon.in_shadow;
            if (now_hidden != hidden && !run.empty()) {
                flush();
                run = {run.back()};
            }
            hidden = now_hidden;
            run.push_back({x_of(moon.x_radii), y_of(instant.at)});
        }
        flush();
    }

    [[nodiscard]] double entry_width(std::size_t m) const {
        return 34 + text_width(instants_.front().moons[m].moon.name, 14);
    }
    [[nodiscard]] int count_legend_rows() const {
        double x = kWavesLeft;
        int rows = 1;
        for (std::size_t m = 0; m < instants_.front().moons.size(); ++m) {
            if (x + entry_width(m) > kWavesWidth - kRight) x = kWavesLeft, ++rows;
            x += entry_width(m);
        }
        // A last row of its own for what the dashes mean.
        return rows + 1;
    }
    void legend() {
        double x = kWavesLeft;
        double y = kTop + days_ * day_height_ + 34;
        for (std::size_t m = 0; m < instants_.front().moons.size(); ++m) {
            if (x + entry_width(m) > kWavesWidth - kRight) x = kWavesLeft, y += 24;
            svg_.circle({x, y}, 5, Style::filled(series_colour(m, theme_)));
            svg_.text({x + 10, y + 5}, instants_.front().moons[m].moon.name,
                      {.size = 14, .fill = theme_.ink});
            x += entry_width(m);
        }
        svg_.text({kWavesLeft - 5, y + 29}, "dashed: behind the planet or in its shadow",
                  {.size = 13, .fill = theme_.faint});
    }

    const std::vector<Configuration>& instants_;
    const sky::Zone& zone_;
    const Theme& theme_;
    double days_, day_height_;
    int legend_rows_;
    double scale_ = 1;
    Svg svg_;
};

}  // namespace

Svg draw_waves(const std::vector<Configuration>& instants, const sky::Zone& zone,
               const std::string& title, bool light) {
    return Waves(instants, zone, theme(light), title).draw(title);
}

}  // namespace solsys::draw
