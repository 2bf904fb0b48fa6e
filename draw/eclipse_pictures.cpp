#include "draw/eclipse_pictures.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "draw/eclipse_curves.h"
#include "draw/palette.h"
#include "draw/svg.h"

namespace solsys::draw {
namespace {

// "17:45:57" by the clock of a zone.
std::string clock(const sky::Instant& t, const sky::Zone& zone) {
    const std::string text = zone.seconds(t);
    return text.substr(text.rfind(' ') + 1);
}

TextStyle words(double size, const std::string& fill, Anchor anchor = Anchor::kStart,
                bool bold = false) {
    TextStyle style;
    style.size = size;
    style.fill = fill;
    style.anchor = anchor;
    style.bold = bold;
    return style;
}

void compass(Svg& svg, Point at, const std::string& colour) {
    svg.line({at.x, at.y + 22}, {at.x, at.y - 22}, Style::line(colour, 1));
    svg.line({at.x - 22, at.y}, {at.x + 22, at.y}, Style::line(colour, 1));
    svg.text({at.x, at.y - 28}, "N", words(13, colour, Anchor::kMiddle));
    svg.text({at.x - 34, at.y + 4}, "E", words(13, colour, Anchor::kMiddle));
}

// How red and dark the Moon is: 0 outside the umbra, 1 deep in it.
double depth_in_umbra(const sky::MoonInShadow& m) {
    const double off = std::hypot(m.east, m.north);
    return std::clamp((m.umbra + m.moon - off) / (2 * m.moon), 0.0, 1.0);
}

constexpr Colour kFullMoon{238, 232, 214}, kRedMoon{158, 62, 34};

// The Sun's disk with the Moon before it, in a frame of its own.
void draw_disk(Svg& svg, Point at, double radius, const sky::EclipsedSun& sun, int id,
               bool corona) {
    const Point moon{at.x - radius * sun.east, at.y - radius * sun.north};
    if (corona)
        svg.circle(at, radius * 1.75, [] {
            Style style;
            style.fill = "url(#corona)";
            return style;
        }());
    svg.circle(at, radius, [] {
        Style style;
        style.fill = "url(#photosphere)";
        return style;
    }());
    svg.raw(
        fmt::format("<clipPath id=\"d{}\"><circle cx=\"{}\" cy=\"{}\" r=\"{}\"/></clipPath>\n",
                    id, number(at.x), number(at.y), number(radius * (corona ? 1.8 : 1.01))));
    svg.circle(moon, radius * sun.moon,
               Style::filled("#0a0c12").clipped(fmt::format("d{}", id)));
    if (!corona)
        svg.circle(moon, radius * sun.moon,
                   Style::line("#8b97a8", 0.6, 0.5, "2 4").clipped("panel"));
}

}  // namespace

std::string moon_in_shadow_svg(sky::Model& model, const sky::Eclipse& eclipse,
                               const sky::Zone& zone, bool light) {
    const Theme& theme = draw::theme(light);
    const std::string title = title_of(eclipse);
    constexpr double kWidth = 1000, kHeight = 860;
    constexpr Point kCentre{500, 470};
    constexpr double kScale = 255;  // pixels per degree
    Svg svg(kWidth, kHeight, theme.page, title, title + ": the Moon's way through the shadow");
    svg.text({24, 48}, title, words(28, theme.ink, Anchor::kStart, true));
    svg.text({24, 74}, "The Moon in the Earth's shadow, times: " + zone.name(),
             words(14, theme.faint));

    const auto middle = sky::moon_in_shadow(model, eclipse, eclipse.greatest);
    if (!middle) return svg.str();
    const auto at = [&](const sky::MoonInShadow& m) {
        return Point{kCentre.x - kScale * m.east, kCentre.y - kScale * m.north};
    };
    svg.circle(kCentre, kScale * middle->penumbra,
               Style::filled(light ? "#8d8f96" : "#3a3f4c", 0.55).outlined(theme.faint, 0.8));
    svg.circle(kCentre, kScale * middle->umbra,
               Style::filled(light ? "#4a3230" : "#1a0e10", 0.9).outlined("#a5422c", 1));
    // On the side that the Moon does not come to.
    const double side = at(*middle).y > kCentre.y ? -1 : 1;
    const auto named = [&](double radius, const char* name, const std::string& colour) {
        svg.text({kCentre.x, kCentre.y + side * (kScale * radius - 14) + 4}, name,
                 words(13, colour, Anchor::kMiddle));
    };
    named(middle->umbra, "umbra", "#d58a70");
    named(middle->penumbra, "penumbra", light ? "#26282e" : "#b9c0cc");

    static constexpr const char* kNames[] = {"P1", "P2", "P3", "P4", "U1", "U2", "U3", "U4"};
    struct Moment {
        std::string name;
        sky::Instant t;
    };
    std::vector<Moment> moments{{"greatest", eclipse.greatest}};
    for (int i : {ECLIPSE_P1, ECLIPSE_P4, ECLIPSE_U1, ECLIPSE_U2, ECLIPSE_U3, ECLIPSE_U4})
        if (eclipse.contacts[i]) moments.push_back({kNames[i], *eclipse.contacts[i]});
    std::sort(moments.begin(), moments.end(),
              [](const Moment& a, const Moment& b) { return a.t < b.t; });

    std::vector<Point> way;
    const sky::Instant first = moments.front().t.plus_days(-0.03);
    const double length = sky::days_between(first, moments.back().t.plus_days(0.03));
    for (int i = 0; i <= 40; ++i)
        if (const auto m =
                sky::moon_in_shadow(model, eclipse, first.plus_days(length * i / 40)))
            way.push_back(at(*m));
    svg.polyline(way, Style::line(theme.accent, 1.2, 0.8, "6 4"));
    // The disks first: none covers another one's words.
    std::vector<Point> places;
    std::vector<double> radii;
    for (const Moment& moment : moments) {
        const auto m = sky::moon_in_shadow(model, eclipse, moment.t);
        places.push_back(m ? at(*m) : kCentre);
        radii.push_back(m ? kScale * m->moon : 0);
        if (m)
            svg.circle(places.back(), radii.back(),
                       Style::filled(mixed(kFullMoon, kRedMoon, depth_in_umbra(*m)).hex(), 0.82)
                           .outlined(light ? "#5a4a30" : "#fff3d6", 0.7));
    }
    for (std::size_t i = 0; i < moments.size(); ++i) {
        const bool above = i % 2 == 0;
        const double y = places[i].y + (above ? -radii[i] - 26 : radii[i] + 18);
        TextStyle name = words(13, theme.ink, Anchor::kMiddle, true);
        TextStyle time = words(12.5, theme.ink, Anchor::kMiddle);
        name.halo = time.halo = theme.page;
        svg.text({places[i].x, y}, moments[i].name, name);
        svg.text({places[i].x, y + 16}, clock(moments[i].t, zone), time);
    }
    compass(svg, {940, 780}, theme.faint);
    svg.line({24, 800}, {24 + kScale / 2, 800}, Style::line(theme.ink, 2));
    svg.text({24, 822}, "30 arcminutes", words(13, theme.faint));
    svg.text({220, 804},
             fmt::format("magnitude {:.4f} \u00b7 gamma {:+.4f} \u00b7 Saros {}",
                         eclipse.magnitude, eclipse.gamma, eclipse.saros),
             words(14, theme.ink));
    return svg.str();
}

std::string eclipsed_sun_svg(sky::Model& model, const sky::Eclipse& eclipse,
                             const sky::LocalEclipse& local, const sky::Site& site,
                             const sky::Zone& zone, bool light) {
    const Theme& theme = draw::theme(light);
    const std::string title = title_of(eclipse);
    constexpr double kRadius = 62, kStep = 190;
    struct Moment {
        std::string name;
        const sky::EclipseMoment* moment;
    };
    std::vector<Moment> moments;
    const auto add = [&](const char* name, const std::optional<sky::EclipseMoment>& m) {
        if (m) moments.push_back({name, &*m});
    };
    add("first contact", local.first);
    add("second contact", local.second);
    add("maximum", local.maximum);
    add("third contact", local.third);
    add("fourth contact", local.fourth);
    const double width = std::max(760.0, kStep * static_cast<double>(moments.size()) + 50);
    Svg svg(width, 420, theme.page, title, title + " as seen from " + site.name);
    svg.raw(
        "<radialGradient id=\"photosphere\"><stop offset=\"0\" stop-color=\"#fff7d6\"/>"
        "<stop offset=\"0.8\" stop-color=\"#ffd866\"/><stop offset=\"1\" "
        "stop-color=\"#f2a93b\"/></radialGradient>\n"
        "<radialGradient id=\"corona\"><stop offset=\"0.55\" stop-color=\"#ffffff\"/>"
        "<stop offset=\"0.7\" stop-color=\"#dfe8ff\" stop-opacity=\"0.6\"/>"
        "<stop offset=\"1\" stop-color=\"#9fb4e8\" stop-opacity=\"0\"/></radialGradient>\n");
    svg.text({24, 46}, title, words(26, theme.ink, Anchor::kStart, true));
    svg.text({24, 72}, fmt::format("as seen from {}, times: {}", site.name, zone.name()),
             words(14, theme.faint));
    svg.rectangle({16, 92}, width - 32, 190, Style::filled("#101a2e"), 8);
    svg.raw(
        fmt::format("<clipPath id=\"panel\"><rect x=\"16\" y=\"92\" width=\"{}\" "
                    "height=\"190\"/></clipPath>\n",
                    number(width - 32)));
    const double left = (width - kStep * static_cast<double>(moments.size())) / 2 + kStep / 2;
    for (std::size_t i = 0; i < moments.size(); ++i) {
        const Point at{left + kStep * static_cast<double>(i), 187};
        const sky::EclipseMoment& m = *moments[i].moment;
        if (const auto sun = sky::eclipsed_sun(model, site, m.at)) {
            const bool whole = local.type == "total" && moments[i].name == "maximum";
            draw_disk(svg, at, kRadius, *sun, static_cast<int>(i), whole);
        }
        svg.text({at.x, 308}, moments[i].name, words(14, theme.ink, Anchor::kMiddle, true));
        svg.text({at.x, 328}, clock(m.at, zone), words(14, theme.ink, Anchor::kMiddle));
        svg.text({at.x, 348},
                 m.altitude_deg < -0.83
                     ? std::string("below the horizon")
                     : fmt::format("altitude {:.0f}\u00b0, azimuth {:.0f}\u00b0",
                                   m.altitude_deg, m.azimuth_deg),
                 words(12, theme.faint, Anchor::kMiddle));
    }
    std::string sum = fmt::format("magnitude {:.3f}, {:.1f} % of the disk covered",
                                  local.magnitude, 100 * local.obscuration);
    if (local.second && local.third)
        sum += ", " + local.type + " for " +
               duration_text(86400 * sky::days_between(local.second->at, local.third->at));
    svg.text({24, 392}, sum, words(15, theme.ink));
    svg.text({width - 24, 392}, "north up, east left", words(13, theme.faint, Anchor::kEnd));
    return svg.str();
}

}  // namespace solsys::draw
