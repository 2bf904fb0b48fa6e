#include "draw/eclipse_map.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "draw/eclipse_curves.h"
#include "draw/palette.h"
#include "draw/svg.h"

namespace solsys::draw {
namespace {

using sky::EclipseMap;
using sky::MapCurve;
using sky::MapCurveKind;

constexpr double kPageWidth = 1240, kPageHeight = 1146;
constexpr double kMargin = 20, kMapTop = 92, kMapWidth = 1200;
constexpr double kGlobeRadius = 190;
constexpr Point kGlobeCentre{250, 924};
constexpr double kTextLeft = 520, kTextTop = 760;

// Colours of one theme for what only maps of eclipses have.
struct Inks {
    std::string sea, land, grid, umbra, path, penumbra, magnitude, rise, isochrone, moon;
};
Inks inks(bool light) {
    if (light)
        return {"#dfe9f1", "#c3cbb4", "#9aa8b2", "#b3261e", "#b3261e",
                "#2a4d8f", "#c4682a", "#3d7a4f", "#77808a", "#1b2a44"};
    return {"#122033", "#34433c", "#4b5c72", "#ff6b57", "#ffd166",
            "#7fb2ff", "#f4a259", "#74d39a", "#8b97a8", "#000713"};
}

Style style_of(const MapCurve& curve, const Inks& ink) {
    switch (curve.kind) {
        case MapCurveKind::kCentralLine:
            return Style::line(ink.path, 2.2);
        case MapCurveKind::kUmbralLimit:
            return Style::line(ink.umbra, 1.1);
        case MapCurveKind::kPenumbralLimit:
            return Style::line(ink.penumbra, 2);
        case MapCurveKind::kRiseSet:
            return Style::line(ink.rise, 1.4);
        case MapCurveKind::kHorizonMaximum:
            return Style::line(ink.rise, 1.1, 1, "5 3");
        case MapCurveKind::kMagnitude:
            return Style::line(ink.magnitude, 1.2, 0.45 + 0.6 * curve.value);
        case MapCurveKind::kIsochrone:
            return Style::line(ink.isochrone, 0.9, 0.9, "2 3");
        case MapCurveKind::kMoonHorizon:
            return Style::line(ink.penumbra, 1.2);
    }
    return {};
}

// The points of a line that the globe shows, as runs.
std::vector<std::vector<Point>> seen(const Globe& globe, const std::vector<LonLat>& line) {
    std::vector<std::vector<Point>> runs(1);
    for (const LonLat& p : line) {
        if (const auto at = globe.at(p)) {
            runs.back().push_back(*at);
        } else if (!runs.back().empty()) {
            runs.emplace_back();
        }
    }
    std::erase_if(runs, [](const auto& run) { return run.size() < 2; });
    return runs;
}

void draw_curve(Svg& svg, const PlaneMap& map, const MapCurve& curve, const Style& style) {
    for (const auto& part : cut_at_date_line(line_of(curve)))
        svg.polyline(map.along(part), style);
}

// Where the Moon is down at a moment: the side of the horizon line away from its zenith.
void draw_moonless(Svg& svg, const PlaneMap& map, const MapCurve& curve, bool moon_north,
                   const std::string& colour, double opacity) {
    std::vector<LonLat> line = line_of(curve);
    std::sort(line.begin(), line.end(), [](LonLat a, LonLat b) { return a.lon < b.lon; });
    const double edge = (line.front().lat + line.back().lat) / 2;
    line.insert(line.begin(), {-180, edge});
    line.push_back({180, edge});
    const double pole = moon_north ? -90 : 90;
    std::vector<Point> points = map.along(line);
    points.push_back(map.at({180, pole}));
    points.push_back(map.at({-180, pole}));
    svg.polygon(points, Style::filled(colour, opacity));
}

void label(Svg& svg, const MapCurve& curve, std::size_t index, const PlaneMap& map,
           const std::string& colour, const std::string& halo) {
    if (curve.label.empty() || curve.points.empty()) return;
    std::size_t i = curve.points.size() / 12;
    if (curve.kind == MapCurveKind::kMagnitude) i = curve.points.size() / 2;
    // Horizons lie close together: their names take turns in three rows.
    if (curve.kind == MapCurveKind::kMoonHorizon) i += 6 * (index % 3);
    const sky::GroundPoint& p = curve.points[i];
    TextStyle style;
    style.size = 10.5;
    style.fill = colour;
    style.halo = halo;
    style.anchor = Anchor::kMiddle;
    const Point at = map.at({p.longitude_deg, p.latitude_deg});
    svg.text({std::clamp(at.x, kMargin + 16, kMargin + kMapWidth - 16),
              std::clamp(at.y + 3.5, kMapTop + 12, kMapTop + kMapWidth / 2 - 6)},
             curve.label, style);
}

std::string clock(const sky::Instant& t) {
    const std::string iso = t.iso(0);
    return iso.substr(iso.find('T') + 1, 8);
}

void draw_world(Svg& svg, const EclipseMap& map, const Inks& ink, const Theme& theme) {
    const PlaneMap plane({kMargin, kMapTop}, kMapWidth);
    svg.raw(
        fmt::format("<clipPath id=\"world\"><rect x=\"{}\" y=\"{}\" width=\"{}\" "
                    "height=\"{}\" rx=\"6\"/></clipPath>\n<g clip-path=\"url(#world)\">\n",
                    kMargin, kMapTop, plane.width(), plane.height()));
    svg.rectangle(plane.corner(), plane.width(), plane.height(), Style::filled(ink.sea));
    draw_land(svg, plane, ink.land, ink.grid);
    const bool lunar = map.eclipse.kind == sky::EclipseKind::kLunar;
    for (const MapCurve& curve : map.curves)
        if (lunar)
            draw_moonless(svg, plane, curve, map.eclipse.nearest.latitude_deg > 0, ink.moon,
                          0.2);
    for (const auto& ring : umbral_band(map).empty() ? std::vector<std::vector<LonLat>>{}
                                                     : cut_ring(umbral_band(map)))
        svg.polygon(plane.along(ring), Style::filled(ink.umbra, 0.35));
    for (const MapCurve& curve : map.curves)
        draw_curve(svg, plane, curve, style_of(curve, ink));
    for (std::size_t i = 0; i < map.curves.size(); ++i) {
        const MapCurve& curve = map.curves[i];
        const std::string colour =
            curve.kind == MapCurveKind::kMagnitude ? ink.magnitude : std::string(theme.ink);
        label(svg, curve, i, plane, colour, ink.sea);
    }
    for (const sky::MapPoint& mark : map.points) {
        const Point at = plane.at({mark.point.longitude_deg, mark.point.latitude_deg});
        const bool main = mark.name == "greatest eclipse" || lunar;
        svg.circle(
            at, main ? 5 : 3.2,
            Style::filled(main ? ink.path : std::string(theme.ink)).outlined(theme.page, 1.2));
    }
    svg.raw("</g>\n");
    svg.rectangle(plane.corner(), plane.width(), plane.height(), Style::line(theme.faint, 0.8),
                  6);
}

void draw_globe(Svg& svg, const EclipseMap& map, const Inks& ink, const Theme& theme) {
    const sky::GroundPoint& above = map.eclipse.nearest;
    const Globe globe(kGlobeCentre, kGlobeRadius, {above.longitude_deg, above.latitude_deg});
    svg.circle(kGlobeCentre, kGlobeRadius, Style::filled(ink.sea).outlined(theme.faint, 1));
    draw_land(svg, globe, ink.land, ink.grid);
    if (const auto ring = umbral_band(map); !ring.empty()) {
        for (const auto& run : seen(globe, ring))
            svg.polygon(run, Style::filled(ink.umbra, 0.35));
    }
    for (const MapCurve& curve : map.curves)
        for (const auto& run : seen(globe, line_of(curve)))
            svg.polyline(run, style_of(curve, ink));
    svg.circle(kGlobeCentre, 5, Style::filled(ink.path).outlined(theme.page, 1.2));
}

void draw_facts(Svg& svg, const sky::Eclipse& e, const Theme& theme) {
    TextStyle name, value;
    name.size = value.size = 14;
    name.fill = theme.faint;
    value.fill = theme.ink;
    double y = kTextTop;
    const auto row = [&](const std::string& what, const std::string& text) {
        svg.text({kTextLeft, y}, what, name);
        svg.text({kTextLeft + 150, y}, text, value);
        y += 23;
    };
    row("Greatest eclipse", clock(e.greatest) + " UT");
    row(e.kind == sky::EclipseKind::kSolar ? "There" : "Moon overhead", place_text(e.nearest));
    row("Magnitude", fmt::format("{:.4f}", e.magnitude));
    row("Gamma", fmt::format("{:+.4f}", e.gamma));
    row("Saros", fmt::format("{}", e.saros));
    if (e.duration_s) row("Duration there", duration_text(*e.duration_s));
    if (e.path_width_km) row("Width of the path", fmt::format("{:.0f} km", *e.path_width_km));
    static constexpr const char* kContacts[] = {"P1", "P2", "P3", "P4", "U1", "U2", "U3", "U4"};
    double column = kTextLeft;
    y += 8;
    svg.text({kTextLeft, y}, "Contacts (UT)", name);
    y += 22;
    for (int i = 0; i < 8; ++i) {
        if (!e.contacts[i]) continue;
        svg.text({column, y}, std::string(kContacts[i]) + "  " + clock(*e.contacts[i]), value);
        column += 118;
        if (column > kTextLeft + 300) column = kTextLeft, y += 21;
    }
}

// Each kind of curve once.
void draw_legend(Svg& svg, const EclipseMap& map, const Inks& ink, const Theme& theme) {
    double line = kTextTop;
    std::map<MapCurveKind, bool> done;
    TextStyle words;
    words.size = 13;
    words.fill = theme.ink;
    for (const MapCurve& curve : map.curves) {
        if (std::exchange(done[curve.kind], true)) continue;
        svg.line({kTextLeft + 440, line - 4}, {kTextLeft + 480, line - 4},
                 style_of(curve, ink));
        std::string text = to_string(curve.kind);
        if (curve.kind == MapCurveKind::kMagnitude) text = "greatest magnitude 0.2 to 0.8";
        if (curve.kind == MapCurveKind::kIsochrone) text = "greatest phase every half hour, UT";
        svg.text({kTextLeft + 490, line}, text, words);
        line += 24;
    }
    if (map.eclipse.kind == sky::EclipseKind::kLunar) {
        svg.rectangle({kTextLeft + 440, line - 14}, 40, 16, Style::filled(ink.moon, 0.5), 2);
        svg.text({kTextLeft + 490, line}, "darker: the Moon is down for longer", words);
    }
}

}  // namespace

std::string eclipse_map_svg(const EclipseMap& map, bool light) {
    const Theme& theme = draw::theme(light);
    const Inks ink = inks(light);
    const std::string title = title_of(map.eclipse);
    Svg svg(kPageWidth, kPageHeight, theme.page, title,
            title + ": where on the Earth it is seen, and when");
    TextStyle heading;
    heading.size = 30;
    heading.bold = true;
    heading.fill = theme.ink;
    svg.text({kMargin, 48}, title, heading);
    TextStyle note;
    note.size = 14;
    note.fill = theme.faint;
    svg.text({kMargin, 74},
             map.eclipse.kind == sky::EclipseKind::kSolar
                 ? "Curves at sea level, times in Universal Time"
                 : "Where the Moon is above the horizon, times in Universal Time",
             note);
    draw_world(svg, map, ink, theme);
    draw_globe(svg, map, ink, theme);
    draw_facts(svg, map.eclipse, theme);
    draw_legend(svg, map, ink, theme);
    return svg.str();
}

}  // namespace solsys::draw
