#include "draw/year_picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "draw/palette.h"

namespace solsys::draw {
namespace {

constexpr double kYearLeft = 92, kYearTop = 112, kHour = 34, kRow = 2, kYearRight = 92,
                 kYearBottom = 96;
constexpr double kYearWidth = 24 * kHour;
constexpr int kShades = 20;  // of moonlight
constexpr const char* kMoonlight = "#ffe9b5";

// The Sun's centre is below the altitude [deg].
struct Band {
    double altitude_deg;
    const char* name;
};
constexpr Band kBands[] = {{-0.8333, "civil twilight"},
                           {-6, "nautical twilight"},
                           {-12, "astronomical twilight"},
                           {-18, "night"}};
constexpr double kMoonLevel = -0.5667;  // rising of a centre, near enough for a picture

constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// A stretch of a night, as parts of it.
struct Stretch {
    double from, to;
};

// Where samples lie below a level (above it for `above`), linear between them.
std::vector<Stretch> where(const std::vector<double>& samples, double level, bool above) {
    std::vector<Stretch> found;
    const auto steps = static_cast<double>(samples.size() - 1);
    for (std::size_t i = 0; i + 1 < samples.size(); ++i) {
        double a = samples[i] - level;
        double b = samples[i + 1] - level;
        if (above) a = -a, b = -b;
        if (a >= 0 && b >= 0) continue;
        const double crossing = a == b ? 0 : a / (a - b);
        const double at = static_cast<double>(i);
        const double from = (at + (a >= 0 ? crossing : 0)) / steps;
        const double to = (at + (b >= 0 ? crossing : 1)) / steps;
        if (!found.empty() && found.back().to >= from - 1e-9) {
            found.back().to = to;
        } else {
            found.push_back({from, to});
        }
    }
    return found;
}

class YearChart {
  public:
    YearChart(const sky::NightsOfYear& year, const sky::Site& site, const sky::Zone& zone,
              const Theme& theme)
        : year_(year),
          site_(site),
          zone_(zone),
          theme_(theme),
          height_(kRow * static_cast<double>(year.nights.size())),
          svg_(kYearLeft + kYearWidth + kYearRight, kYearTop + height_ + kYearBottom,
               theme.page, fmt::format("{}: the nights of {}", site.name, year.year),
               "A row for each night from noon to noon: day, twilight, darkness and Moon") {}

    Svg draw() {
        svg_.rectangle({kYearLeft, kYearTop}, kYearWidth, height_,
                       Style::filled(twilight_colour(0)));
        darkness();
        moonlight();
        hours();
        months();
        phases();
        legend();
        return std::move(svg_);
    }

  private:
    [[nodiscard]] static double row_y(std::size_t row) {
        return kYearTop + kRow * static_cast<double>(row);
    }
    // Hours of the clock since noon: a night of a change of the clocks has 23 or 25.
    [[nodiscard]] std::string row_box(std::size_t row, Stretch part) const {
        const sky::Night& night = year_.nights[row];
        const double shift = (24 - night.hours);
        const auto hour_of = [&](double fraction) {
            const double hours = fraction * night.hours;
            // Clocks change in the small hours, some 14 hours after noon.
            return std::clamp(hours > 14 ? hours + shift : hours, 0.0, 24.0);
        };
        const double from = hour_of(part.from);
        const double to = hour_of(part.to);
        if (to <= from) return {};
        return fmt::format("M{:.1f} {}h{:.1f}v{}h{:.1f}z", kYearLeft + kHour * from, row_y(row),
                           kHour * (to - from), kRow, -kHour * (to - from));
    }

    void darkness() {
        for (std::size_t band = 0; band < std::size(kBands); ++band) {
            std::string data;
            for (std::size_t row = 0; row < year_.nights.size(); ++row)
                for (const Stretch& s :
                     where(year_.nights[row].sun, kBands[band].altitude_deg, false))
                    data += row_box(row, s);
            crisp(data, Style::filled(twilight_colour(static_cast<int>(band) + 1)));
        }
    }

    // The Moon's light where the Sun is down, by how much of the Moon is lit.
    void moonlight() {
        std::array<std::string, kShades + 1> shades;
        for (std::size_t row = 0; row < year_.nights.size(); ++row) {
            const sky::Night& night = year_.nights[row];
            const auto dark = where(night.sun, kBands[0].altitude_deg, false);
            std::string& shade =
                shades[static_cast<std::size_t>(std::lround(night.moon_illuminated * kShades))];
            for (const Stretch& up : where(night.moon, kMoonLevel, true))
                for (const Stretch& s : dark)
                    shade += row_box(row, {std::max(up.from, s.from), std::min(up.to, s.to)});
        }
        for (std::size_t i = 1; i < shades.size(); ++i) {
            const double part = static_cast<double>(i) / kShades;
            crisp(shades[i], Style::filled(kMoonlight, 0.05 + 0.4 * part * part));
        }
    }

    void crisp(const std::string& data, const Style& style) {
        if (!data.empty())
            svg_.raw(fmt::format(R"(<path shape-rendering="crispEdges" d="{}"{}/>)", data,
                                 style.str()));
    }

    void hours() {
        for (int hour = 0; hour <= 24; ++hour) {
            const double x = kYearLeft + kHour * hour;
            const bool midnight = hour == 12;
            svg_.line({x, kYearTop}, {x, kYearTop + height_},
                      Style::line("#ffffff", midnight ? 1.1 : 0.7, midnight ? 0.55 : 0.13));
            if (hour % 2 != 0) continue;
            const TextStyle style{.size = 13,
                                  .fill = midnight ? theme_.ink : theme_.faint,
                                  .anchor = Anchor::kMiddle};
            const std::string label = fmt::format("{:02}", (hour + 12) % 24);
            svg_.text({x, kYearTop - 10}, label, style);
            svg_.text({x, kYearTop + height_ + 20}, label, style);
        }
    }

    void months() {
        for (std::size_t row = 0; row < year_.nights.size(); ++row) {
            const sky::CivilDate& date = year_.nights[row].date;
            if (date.day == 1)
                svg_.line({kYearLeft, row_y(row)}, {kYearLeft + kYearWidth, row_y(row)},
                          Style::line("#ffffff", 0.8, 0.22));
            if (date.day == 15)
                svg_.text({kYearLeft - 34, row_y(row) + 5}, kMonths[date.month - 1],
                          {.size = 15, .fill = theme_.ink, .anchor = Anchor::kEnd});
        }
    }

    // The principal phases beside their nights: full discs, halves, rings.
    void phases() {
        const double right = kYearLeft + kYearWidth + 18;
        for (const sky::PhaseEvent& event : year_.phases) {
            const sky::Instant& first = year_.nights.front().span.from;
            const auto row = static_cast<std::size_t>(sky::days_between(first, event.at));
            const double y = row_y(row) + kRow / 2;
            for (const double x : {kYearLeft - 18, right}) disc({x, y}, event.phase);
            // By the date of the zone, which after midnight is the next one.
            svg_.text({right + 12, y + 4}, fmt::format("{}", zone_.date(event.at).day),
                      {.size = 11, .fill = theme_.faint});
        }
    }

    void disc(Point at, sky::Phase phase) {
        constexpr double r = 5.5;
        const bool full = phase == sky::Phase::kFull;
        const char* const dark = theme_.dark ? theme_.page : "#4a5368";
        svg_.circle(at, r, Style::filled(full ? kMoonlight : dark).outlined(theme_.faint, 1));
        if (full || phase == sky::Phase::kNew) return;
        // North up for a northern observer: the waxing half is lit on the right.
        const bool right = (phase == sky::Phase::kFirstQuarter) == (site_.latitude_deg >= 0);
        svg_.path(fmt::format("M{0} {1}a{2} {2} 0 0 {3} 0 {4}z", number(at.x), number(at.y - r),
                              number(r), right ? 1 : 0, number(2 * r)),
                  Style::filled(kMoonlight));
    }

    void legend() {
        svg_.text({kYearLeft, 46}, fmt::format("{}: {}", site_.name, year_.year),
                  {.size = 26, .fill = theme_.ink, .bold = true});
        svg_.text(
            {kYearLeft, 72},
            fmt::format("Night, twilight and Moon from noon to noon.   {}, {}.   Clock: {}",
                        sky::coordinate_text(site_.latitude_deg, false),
                        sky::coordinate_text(site_.longitude_deg, true), zone_.name()),
            {.size = 14, .fill = theme_.faint});
        const double y = kYearTop + height_ + 52;
        double x = kYearLeft;
        const auto entry = [&](const char* colour, const char* name, double opacity) {
            svg_.rectangle({x, y}, 22, 14, Style::filled(twilight_colour(4)), 2);
            svg_.rectangle({x, y}, 22, 14,
                           Style::filled(colour, opacity).outlined(theme_.faint, 0.6), 2);
            svg_.text({x + 29, y + 12}, name, {.size = 13, .fill = theme_.faint});
            x += 48 + text_width(name, 13);
        };
        entry(twilight_colour(0), "day", 1);
        for (std::size_t band = 0; band < std::size(kBands); ++band)
            entry(twilight_colour(static_cast<int>(band) + 1), kBands[band].name, 1);
        entry(kMoonlight, "Moon up, by its phase", 0.4);
    }

    const sky::NightsOfYear& year_;
    const sky::Site& site_;
    const sky::Zone& zone_;
    const Theme& theme_;
    double height_;
    Svg svg_;
};

}  // namespace

Svg draw_year(const sky::NightsOfYear& year, const sky::Site& site, const sky::Zone& zone,
              bool light) {
    return YearChart(year, site, zone, theme(light)).draw();
}

}  // namespace solsys::draw
