// The Moon's way through the Earth's shadow.
#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "draw/eclipse_curves.h"
#include "draw/eclipse_pictures.h"
#include "draw/palette.h"
#include "draw/svg.h"

namespace solsys::draw {
namespace {

constexpr double kShadowWidth = 1000, kShadowHeight = 860;
constexpr double kShadowLeft = 24, kShadowTop = 96, kShadowRight = 976,
                 kShadowBottom = 780;  // of the shadow
constexpr double kLabel = 44;          // over or under a disk

class ShadowPicture {
  public:
    ShadowPicture(sky::Model& model, const sky::Eclipse& eclipse, const sky::Zone& zone,
                  bool light)
        : model_(model),
          eclipse_(eclipse),
          zone_(zone),
          theme_(theme(light)),
          svg_(kShadowWidth, kShadowHeight, theme_.page, title_of(eclipse),
               title_of(eclipse) + ": the Moon's way through the shadow") {}

    std::string draw() {
        heading();
        const auto greatest = sky::moon_in_shadow(model_, eclipse_, eclipse_.greatest);
        if (greatest) {
            find_moments();
            fit(greatest->penumbra);
            shadow(*greatest);
            way();
            for (const Moment& moment : moments_) disk(moment.moon);
            // After the disks: none covers another one's words.
            for (std::size_t i = 0; i < moments_.size(); ++i) name(moments_[i], i % 2 == 0);
        }
        footer();
        return svg_.str();
    }

  private:
    struct Moment {
        std::string name;
        sky::Instant t;
        sky::MoonInShadow moon;
    };

    void heading() {
        svg_.text({24, 48}, title_of(eclipse_), {.size = 28, .fill = theme_.ink, .bold = true});
        svg_.text({24, 74}, "The Moon in the Earth's shadow, times: " + zone_.name(),
                  {.size = 14, .fill = theme_.faint});
    }

    void find_moments() {
        static constexpr const char* kNames[] = {"P1", "P2", "P3", "P4",
                                                 "U1", "U2", "U3", "U4"};
        const auto add = [&](const char* called, const sky::Instant& t) {
            if (const auto moon = sky::moon_in_shadow(model_, eclipse_, t))
                moments_.push_back({called, t, *moon});
        };
        add("greatest", eclipse_.greatest);
        for (int i : {ECLIPSE_P1, ECLIPSE_P4, ECLIPSE_U1, ECLIPSE_U2, ECLIPSE_U3, ECLIPSE_U4})
            if (eclipse_.contacts[i]) add(kNames[i], *eclipse_.contacts[i]);
        std::sort(moments_.begin(), moments_.end(),
                  [](const Moment& a, const Moment& b) { return a.t < b.t; });
    }

    // The penumbra and all the disks with their words on the page, as large as they can be.
    void fit(double penumbra) {
        double east = penumbra, west = -penumbra, north = penumbra, south = -penumbra;
        for (const Moment& moment : moments_) {
            const sky::MoonInShadow& m = moment.moon;
            east = std::max(east, m.east + m.moon), west = std::min(west, m.east - m.moon);
            north = std::max(north, m.north + m.moon);
            south = std::min(south, m.north - m.moon);
        }
        scale_ = std::min((kShadowRight - kShadowLeft) / (east - west),
                          (kShadowBottom - kShadowTop - 2 * kLabel) / (north - south));
        centre_ = {(kShadowLeft + kShadowRight) / 2 + scale_ * (east + west) / 2,
                   (kShadowTop + kShadowBottom) / 2 + scale_ * (north + south) / 2};
    }

    [[nodiscard]] Point at(const sky::MoonInShadow& m) const {
        return {centre_.x - scale_ * m.east, centre_.y - scale_ * m.north};
    }

    void shadow(const sky::MoonInShadow& greatest) {
        svg_.circle(centre_, scale_ * greatest.penumbra,
                    Style::filled(theme_.dark ? "#3a3f4c" : "#8d8f96", 0.55)
                        .outlined(theme_.faint, 0.8));
        svg_.circle(
            centre_, scale_ * greatest.umbra,
            Style::filled(theme_.dark ? "#1a0e10" : "#4a3230", 0.9).outlined("#a5422c", 1));
        // On the side that the Moon does not come to.
        const double side = at(greatest).y > centre_.y ? -1 : 1;
        const auto named = [&](double radius, const char* words, const char* colour) {
            svg_.text({centre_.x, centre_.y + side * (scale_ * radius - 14) + 4}, words,
                      {.fill = colour, .anchor = Anchor::kMiddle});
        };
        named(greatest.umbra, "umbra", "#d58a70");
        named(greatest.penumbra, "penumbra", theme_.dark ? "#b9c0cc" : "#26282e");
    }

    void way() {
        std::vector<Point> points;
        const sky::Instant first = moments_.front().t.plus_days(-0.03);
        const double length = sky::days_between(first, moments_.back().t.plus_days(0.03));
        for (int i = 0; i <= 40; ++i)
            if (const auto m =
                    sky::moon_in_shadow(model_, eclipse_, first.plus_days(length * i / 40)))
                points.push_back(at(*m));
        svg_.polyline(points, Style::line(theme_.accent, 1.2, 0.8, "6 4"));
    }

    // Red as far as it is in the umbra.
    void disk(const sky::MoonInShadow& m) {
        svg_.circle(
            at(m), scale_ * m.moon,
            Style::filled("#eee8d6", 0.85).outlined(theme_.dark ? "#fff3d6" : "#5a4a30", 0.7));
        svg_.circle_within(centre_, scale_ * m.umbra, at(m), scale_ * m.moon,
                           Style::filled("#96391f", 0.9));
    }

    void name(const Moment& moment, bool above) {
        const double radius = scale_ * moment.moon.moon;
        const Point disk = at(moment.moon);
        const double y = disk.y + (above ? -radius - 26 : radius + 18);
        const std::string time = zone_.seconds(moment.t);
        TextStyle words{.fill = theme_.ink, .anchor = Anchor::kMiddle, .halo = theme_.page};
        svg_.text({disk.x, y + 16}, time.substr(time.rfind(' ') + 1), words);
        words.bold = true;
        svg_.text({disk.x, y}, moment.name, words);
    }

    void footer() {
        const Point cross{940, 806};
        svg_.line({cross.x, cross.y + 22}, {cross.x, cross.y - 22},
                  Style::line(theme_.faint, 1));
        svg_.line({cross.x - 22, cross.y}, {cross.x + 22, cross.y},
                  Style::line(theme_.faint, 1));
        svg_.text({cross.x, cross.y - 28}, "N",
                  {.fill = theme_.faint, .anchor = Anchor::kMiddle});
        svg_.text({cross.x - 34, cross.y + 4}, "E",
                  {.fill = theme_.faint, .anchor = Anchor::kMiddle});
        svg_.line({24, 816}, {24 + scale_ / 2, 816}, Style::line(theme_.ink, 2));
        svg_.text({24, 836}, "30 arcminutes", {.fill = theme_.faint});
        svg_.text({220, 836},
                  fmt::format("magnitude {:.4f} \u00b7 gamma {:+.4f} \u00b7 Saros {}",
                              eclipse_.magnitude, eclipse_.gamma, eclipse_.saros),
                  {.size = 14, .fill = theme_.ink});
    }

    sky::Model& model_;
    const sky::Eclipse& eclipse_;
    const sky::Zone& zone_;
    const Theme& theme_;
    Svg svg_;
    std::vector<Moment> moments_;
    Point centre_;
    double scale_ = 0;  // pixels per degree
};

}  // namespace

std::string moon_in_shadow_svg(sky::Model& model, const sky::Eclipse& eclipse,
                               const sky::Zone& zone, bool light) {
    return ShadowPicture(model, eclipse, zone, light).draw();
}

}  // namespace solsys::draw
