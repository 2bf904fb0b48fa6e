// The year at a place as one picture: a row for each night, from noon to noon, the date running
// down; the sky's darkness in blues, the Moon's light in ivory.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "apps/solsys/place.h"
#include "apps/solsys/rise_set.h"
#include "apps/solsys/svg.h"

namespace app {
namespace {

constexpr double kLeft = 92, kTop = 112, kHour = 34, kRow = 2, kRight = 92, kBottom = 96;
constexpr double kWidth = 24 * kHour;
constexpr int kSamples = 144;  // of the Sun's altitude, noon to noon

constexpr const char* kInk = "#dfe6f3";
constexpr const char* kFaint = "#8d9bb8";
constexpr const char* kPage = "#0c1222";
constexpr const char* kDay = "#f3d9a4";
constexpr const char* kMoonlight = "#ffe9b5";

struct Band {
    double altitude_deg;  // the Sun's centre is below
    const char* colour;
    const char* name;
};
constexpr Band kBands[] = {{-0.8333, "#c98f72", "civil twilight"},
                           {-6, "#6b5a83", "nautical twilight"},
                           {-12, "#2f3a6b", "astronomical twilight"},
                           {-18, "#111a3c", "night"}};

constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

struct Stretch {
    double from, to;  // hours from local noon
};

// One night: from noon of a date to the next noon by the zone's clock.
struct Night {
    Utc noon;        // the instant
    Utc local_noon;  // the reading
    double days;     // its length
    [[nodiscard]] double hour_of(const Zone& zone, Utc t) const {
        return 24 * days_from(local_noon, to_local(zone, t));
    }
};

Utc jan_first_noon(int year) { return parse_time(fmt::format("{:04}-01-01T12:00", year)); }

std::vector<Night> nights_of(const Zone& zone, int year) {
    std::vector<Night> nights;
    const std::string wanted = fmt::format("{:04}", year);
    for (Utc local = jan_first_noon(year); date_of(local).starts_with(wanted);
         local = plus_days(local, 1)) {
        const Utc noon = from_local(zone, local);
        const Utc next = from_local(zone, plus_days(local, 1));
        nights.push_back({noon, local, days_from(noon, next)});
    }
    return nights;
}

// The Sun's altitudes through a night, evenly spaced in time.
using Altitudes = std::array<double, kSamples + 1>;
Altitudes sun_altitudes(CSWSolSys& model, const Night& night) {
    Altitudes altitudes{};
    for (int i = 0; i <= kSamples; ++i) {
        move_to(model, tt_from_utc(plus_days(night.noon, night.days * i / kSamples)));
        const Place sun = apparent_place(model, SSO_ID(SSO_PLNT, 10));
        altitudes[static_cast<std::size_t>(i)] = horizontal_of(model, sun).altitude_deg;
    }
    return altitudes;
}

// Where the Sun is below an altitude, as fractions of the night.
std::vector<Stretch> below(const Altitudes& altitudes, double limit) {
    std::vector<Stretch> found;
    for (std::size_t i = 0; i < kSamples; ++i) {
        const double a = altitudes[i] - limit, b = altitudes[i + 1] - limit;
        if (a >= 0 && b >= 0) continue;
        const double start = static_cast<double>(i), crossing = a == b ? 0 : a / (a - b);
        const double from = (start + (a >= 0 ? crossing : 0)) / kSamples;
        const double to = (start + (b >= 0 ? crossing : 1)) / kSamples;
        if (!found.empty() && found.back().to >= from - 1e-9) {
            found.back().to = to;
        } else {
            found.push_back({from, to});
        }
    }
    return found;
}

class Chart {
  public:
    Chart(CSWSolSys& model, const Site& site, const Zone& zone, int year)
        : model_(model),
          site_(site),
          zone_(zone),
          year_(year),
          nights_(nights_of(zone, year)),
          height_(kRow * static_cast<double>(nights_.size())),
          svg_(kLeft + kWidth + kRight, kTop + height_ + kBottom, kPage) {}

    void draw() {
        sky();
        grid();
        phases();
        legend();
    }
    void save(const std::string& path) const { svg_.save(path); }

  private:
    [[nodiscard]] double row_y(std::size_t row) const {
        return kTop + kRow * static_cast<double>(row);
    }
    [[nodiscard]] static std::string row_box(double y, Stretch hours) {
        const double from = std::clamp(hours.from, 0.0, 24.0);
        const double to = std::clamp(hours.to, 0.0, 24.0);
        if (to <= from) return {};
        return fmt::format("M{:.2f} {}h{:.2f}v{}h{:.2f}z", kLeft + kHour * from, y,
                           kHour * (to - from), kRow, -kHour * (to - from));
    }

    void sky() {
        svg_.rectangle({kLeft, kTop}, kWidth, height_, fmt::format(R"(fill="{}")", kDay));
        CSWVisibility visibility(&model_);
        const Span year{nights_.front().noon,
                        plus_days(nights_.back().noon, nights_.back().days)};
        const auto moon_up = up_times(visibility, SSO_ID(SSO_MOON, 301), site_, year);
        std::vector<double> lit(nights_.size());
        for (std::size_t row = 0; row < nights_.size(); ++row)
            lit[row] = moon_phase(model_, plus_days(nights_[row].noon, 0.5)).illuminated;
        place_observer(model_, site_);

        std::array<std::string, std::size(kBands)> bands;
        constexpr std::size_t shades = 20;
        std::array<std::string, shades + 1> moonlight;
        std::size_t first_up = 0;
        for (std::size_t row = 0; row < nights_.size(); ++row) {
            const Night& night = nights_[row];
            const Altitudes altitudes = sun_altitudes(model_, night);
            const auto hours = [&](double fraction) {
                return night.hour_of(zone_, plus_days(night.noon, fraction * night.days));
            };
            for (std::size_t band = 0; band < std::size(kBands); ++band) {
                for (const Stretch& s : below(altitudes, kBands[band].altitude_deg))
                    bands[band] += row_box(row_y(row), {hours(s.from), hours(s.to)});
            }
            // Moonlight where the Sun is down.
            const auto shade = static_cast<std::size_t>(std::lround(lit[row] * shades));
            while (first_up < moon_up.size() && days_from(moon_up[first_up].to, night.noon) > 0)
                ++first_up;
            for (std::size_t i = first_up; i < moon_up.size(); ++i) {
                const double from = days_from(night.noon, moon_up[i].from) / night.days;
                const double to = days_from(night.noon, moon_up[i].to) / night.days;
                if (from > 1) break;
                for (const Stretch& s : below(altitudes, kBands[0].altitude_deg)) {
                    const double a = std::max(from, s.from), b = std::min(to, s.to);
                    if (a < b) moonlight[shade] += row_box(row_y(row), {hours(a), hours(b)});
                }
            }
        }
        for (std::size_t band = 0; band < std::size(kBands); ++band)
            svg_.raw(fmt::format(R"(<path shape-rendering="crispEdges" fill="{}" d="{}"/>)",
                                 kBands[band].colour, bands[band]));
        for (std::size_t shade = 1; shade <= shades; ++shade) {
            if (moonlight[shade].empty()) continue;
            const double part = static_cast<double>(shade) / shades;
            svg_.raw(fmt::format(
                R"(<path shape-rendering="crispEdges" fill="{}" fill-opacity="{:.3f}" d="{}"/>)",
                kMoonlight, 0.05 + 0.4 * part * part, moonlight[shade]));
        }
    }

    void grid() {
        for (int hour = 0; hour <= 24; ++hour) {
            const double x = kLeft + kHour * hour;
            const bool midnight = hour == 12;
            svg_.line({x, kTop}, {x, kTop + height_},
                      fmt::format(R"(stroke="#ffffff" stroke-opacity="{}" stroke-width="{}")",
                                  midnight ? 0.55 : 0.13, midnight ? 1.1 : 0.7));
            if (hour % 2 != 0) continue;
            const std::string label = fmt::format("{:02}", (hour + 12) % 24);
            const std::string style = fmt::format(
                R"(fill="{}" font-size="13" text-anchor="middle" font-family="sans-serif")",
                midnight ? kInk : kFaint);
            svg_.text({x, kTop - 10}, label, style);
            svg_.text({x, kTop + height_ + 20}, label, style);
        }
        std::size_t month_start = 0;
        for (std::size_t row = 0; row <= nights_.size(); ++row) {
            const bool end = row == nights_.size();
            const std::string date = end ? "" : date_of(nights_[row].local_noon);
            if (!end && !date.ends_with("-01")) continue;
            const double y = row_y(row);
            svg_.line({kLeft, y}, {kLeft + kWidth, y},
                      R"(stroke="#ffffff" stroke-opacity="0.22" stroke-width="0.8")");
            if (row > 0) {
                const double middle = (row_y(month_start) + y) / 2 + 5;
                const int month =
                    std::stoi(date_of(nights_[month_start].local_noon).substr(5, 2));
                svg_.text({kLeft - 34, middle}, kMonths[month - 1],
                          fmt::format(R"(fill="{}" font-size="15" text-anchor="end" )"
                                      R"(font-family="sans-serif")",
                                      kInk));
            }
            month_start = row;
        }
    }

    // The principal phases beside their nights: full discs, halves, rings.
    void phases() {
        const double x = kLeft - 18, other_x = kLeft + kWidth + 18, r = 5.5;
        for (std::size_t row = 0; row < nights_.size(); ++row) {
            const Night& night = nights_[row];
            const auto phase =
                principal_phase(model_, night.noon, plus_days(night.noon, night.days));
            if (!phase) continue;
            const double y = row_y(row) + kRow / 2;
            for (const double at : {x, other_x}) {
                svg_.circle({at, y}, r,
                            fmt::format(R"(fill="{}" stroke="{}" stroke-width="1")",
                                        *phase == 2 ? kMoonlight : kPage, kFaint));
                if (*phase % 2 == 0) continue;
                // North up for a northern observer: the waxing half is lit on the right.
                const bool right = (*phase == 1) == (site_.latitude_deg >= 0);
                svg_.raw(fmt::format(R"(<path fill="{}" d="M{} {}a{} {} 0 0 {} 0 {}z"/>)",
                                     kMoonlight, at, y - r, r, r, right ? 1 : 0, 2 * r));
            }
            svg_.text(
                {other_x + 12, y + 4}, date_of(night.local_noon).substr(8),
                fmt::format(R"(fill="{}" font-size="11" font-family="sans-serif")", kFaint));
        }
    }

    void legend() {
        const std::string font = R"(font-family="sans-serif")";
        svg_.text({kLeft, 44}, fmt::format("{} — {}", site_.name, year_),
                  fmt::format(R"(fill="{}" font-size="26" font-weight="600" {})", kInk, font));
        svg_.text({kLeft, 68},
                  fmt::format("Night, twilight and Moon from noon to noon.  {:.2f}° {}, "
                              "{:.2f}° {}.  Clock: {}",
                              std::fabs(site_.latitude_deg), site_.latitude_deg < 0 ? "S" : "N",
                              std::fabs(site_.longitude_deg),
                              site_.longitude_deg < 0 ? "W" : "E", zone_.name()),
                  fmt::format(R"(fill="{}" font-size="14" {})", kFaint, font));
        const double y = kTop + height_ + 52;
        double x = kLeft;
        const auto entry = [&](const char* colour, const char* name, double opacity) {
            svg_.rectangle({x, y}, 22, 14,
                           fmt::format(R"(fill="{}" rx="2")", kBands[3].colour));
            svg_.rectangle(
                {x, y}, 22, 14,
                fmt::format(
                    R"(fill="{}" fill-opacity="{}" stroke="{}" stroke-width="0.6" rx="2")",
                    colour, opacity, kFaint));
            svg_.text({x + 29, y + 12}, name,
                      fmt::format(R"(fill="{}" font-size="13" {})", kFaint, font));
            x += 52 + 7.1 * static_cast<double>(std::string(name).size());
        };
        entry(kDay, "day", 1);
        for (const Band& band : kBands) entry(band.colour, band.name, 1);
        entry(kMoonlight, "Moon up, by its phase", 0.4);
    }

    CSWSolSys& model_;
    const Site& site_;
    const Zone& zone_;
    int year_;
    std::vector<Night> nights_;
    double height_;
    Svg svg_;
};

}  // namespace

void draw_year(CSWSolSys& model, const Site& site, const Zone& zone, int year,
               const std::string& path) {
    Chart chart(model, site, zone, year);
    chart.draw();
    chart.save(path);
}

}  // namespace app
