#include "draw/eclipse_pictures.h"

#include <fmt/format.h>

#include <algorithm>
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

// The Sun's disk with the Moon before it, in a frame of its own.
void draw_disk(Svg& svg, Point at, double radius, const sky::EclipsedSun& sun, bool corona) {
    const Point moon{at.x - radius * sun.east, at.y - radius * sun.north};
    if (corona) svg.circle(at, radius * 1.75, Style::filled("url(#corona)").clipped("panel"));
    svg.circle(at, radius, Style::filled("url(#photosphere)"));
    svg.circle_within(moon, radius * sun.moon, at, radius * (corona ? 1.8 : 1.01),
                      Style::filled("#0a0c12"));
    if (!corona)
        svg.circle(moon, radius * sun.moon,
                   Style::line("#8b97a8", 0.6, 0.5, "2 4").clipped("panel"));
}

struct NamedMoment {
    std::string name;
    sky::EclipseMoment moment;
};

std::vector<NamedMoment> moments_of(const sky::LocalEclipse& local) {
    std::vector<NamedMoment> out;
    const auto add = [&](const char* name, const std::optional<sky::EclipseMoment>& m) {
        if (m) out.push_back({name, *m});
    };
    add("first contact", local.first);
    add("second contact", local.second);
    add("maximum", local.maximum);
    add("third contact", local.third);
    add("fourth contact", local.fourth);
    return out;
}

// What the Sun's disks are filled with, and the panel that the Moon's are cut to.
void define_fills(Svg& svg, double width) {
    svg.raw(
        "<radialGradient id=\"photosphere\"><stop offset=\"0\" stop-color=\"#fff7d6\"/>"
        "<stop offset=\"0.8\" stop-color=\"#ffd866\"/><stop offset=\"1\" "
        "stop-color=\"#f2a93b\"/></radialGradient>\n"
        "<radialGradient id=\"corona\"><stop offset=\"0.55\" stop-color=\"#ffffff\"/>"
        "<stop offset=\"0.7\" stop-color=\"#dfe8ff\" stop-opacity=\"0.6\"/>"
        "<stop offset=\"1\" stop-color=\"#9fb4e8\" stop-opacity=\"0\"/></radialGradient>\n");
    svg.raw(
        fmt::format("<clipPath id=\"panel\"><rect x=\"16\" y=\"92\" width=\"{}\" "
                    "height=\"190\"/></clipPath>\n",
                    number(width - 32)));
}

void write_moment(Svg& svg, double x, const NamedMoment& named, const sky::Zone& zone,
                  const Theme& theme) {
    const sky::EclipseMoment& m = named.moment;
    svg.text({x, 308}, named.name, words(14, theme.ink, Anchor::kMiddle, true));
    svg.text({x, 328}, clock(m.at, zone), words(14, theme.ink, Anchor::kMiddle));
    svg.text({x, 348},
             m.altitude_deg < -0.83 ? std::string("below the horizon")
                                    : fmt::format("altitude {:.0f}\u00b0, azimuth {:.0f}\u00b0",
                                                  m.altitude_deg, m.azimuth_deg),
             words(12, theme.faint, Anchor::kMiddle));
}

}  // namespace

std::string eclipsed_sun_svg(sky::Model& model, const sky::Eclipse& eclipse,
                             const sky::LocalEclipse& local, const sky::Site& site,
                             const sky::Zone& zone, bool light) {
    const Theme& theme = draw::theme(light);
    const std::string title = title_of(eclipse);
    constexpr double kRadius = 62, kStep = 190;
    const std::vector<NamedMoment> moments = moments_of(local);
    const double row = kStep * static_cast<double>(moments.size());
    const double width = std::max(760.0, row + 50);
    Svg svg(width, 420, theme.page, title, title + " as seen from " + site.name);
    define_fills(svg, width);
    svg.text({24, 46}, title, words(26, theme.ink, Anchor::kStart, true));
    svg.text({24, 72}, fmt::format("as seen from {}, times: {}", site.name, zone.name()),
             words(14, theme.faint));
    svg.rectangle({16, 92}, width - 32, 190, Style::filled("#101a2e"), 8);
    for (std::size_t i = 0; i < moments.size(); ++i) {
        const Point at{(width - row) / 2 + kStep / 2 + kStep * static_cast<double>(i), 187};
        if (const auto sun = sky::eclipsed_sun(model, site, moments[i].moment.at)) {
            const bool whole = local.type == "total" && moments[i].name == "maximum";
            draw_disk(svg, at, kRadius, *sun, whole);
        }
        write_moment(svg, at.x, moments[i], zone, theme);
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
