#include "solsys/sky/chart.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "sky/chart_tables.h"
#include "sky/stars.h"
#include "sky/units.h"
#include "solsys/toolkit.h"

namespace solsys::sky {
namespace {

constexpr double kBesideDegrees = 0.05;

// Where a catalogued direction stands over the horizon: precession and nutation alone, which is
// all that a picture shows.
Horizontal over_horizon(const Model& model, double ra_deg, double dec_deg) {
    return horizontal_of(model, of_date(model, {ra_deg, dec_deg, 0, 0}));
}

std::vector<ChartStar> stars_up(Model& model) {
    std::vector<ChartStar> stars;
    for (const StarRow& row : bright_stars()) {
        const StarObject star = star_object(row);
        const Body body(SSO_ID(SSO_STAR, row.hip), "", star);
        const auto place = apparent_place(model, body);
        if (!place) continue;
        const Horizontal at = horizontal_of(model, *place);
        if (at.altitude_deg > 0)
            stars.push_back({at, row.magnitude, colour_index(row.hip),
                             std::string(proper_name(row)), row.constellation});
    }
    std::sort(stars.begin(), stars.end(),
              [](const ChartStar& a, const ChartStar& b) { return a.magnitude < b.magnitude; });
    return stars;
}

std::optional<ChartBody> body_at(Model& model, const Body& body) {
    const auto place = apparent_place(model, body);
    if (!place) return std::nullopt;
    const Appearance looks = appearance_of(model, body, *place);
    ChartBody seen{body,
                   horizontal_of(model, *place),
                   *place,
                   looks.magnitude.value_or(99),
                   looks.illuminated_fraction.value_or(1),
                   looks.angular_diameter_arcsec.value_or(0),
                   {}};
    const double limb = looks.bright_limb_deg.value_or(0) / kDegrees;
    const double cos_dec = std::max(0.01, std::cos(place->dec_deg / kDegrees));
    seen.towards_sun =
        horizontal_of(model, {place->ra_deg + kBesideDegrees * std::sin(limb) / cos_dec,
                              place->dec_deg + kBesideDegrees * std::cos(limb), 0, 0});
    return seen;
}

char kind_of(std::string_view type) {
    if (type == "G") return 'G';
    if (type == "GC") return 'B';
    if (type == "PN") return 'P';
    if (type == "OC" || type == "CN" || type == "AST" || type == "DS" || type == "SC")
        return 'O';
    return 'N';
}

std::vector<ChartObject> objects_up(const Model& model) {
    std::vector<ChartObject> objects;
    for (const DeepSkyRow& row : deep_sky_objects()) {
        const Horizontal at = over_horizon(model, row.ra_deg, row.dec_deg);
        if (at.altitude_deg > 0)
            objects.push_back({std::string(row.id),
                               std::string(row.name.substr(0, row.name.find(';'))),
                               kind_of(row.type), row.magnitude, row.major_arcmin, at});
    }
    std::sort(objects.begin(), objects.end(), [](const ChartObject& a, const ChartObject& b) {
        return a.magnitude < b.magnitude;
    });
    return objects;
}

std::vector<ChartLine> figures(const Model& model) {
    std::vector<ChartLine> lines;
    for (const FigureLine& figure : figure_lines()) {
        ChartLine line{std::string(figure.constellation), {}};
        for (const Direction& star : figure.stars)
            line.points.push_back(over_horizon(model, star.ra_deg, star.dec_deg));
        const bool up = std::any_of(line.points.begin(), line.points.end(),
                                    [](const Horizontal& at) { return at.altitude_deg > 0; });
        if (up) lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<MilkyWayLevel> milky_way(const Model& model) {
    std::vector<MilkyWayLevel> levels;
    for (const MilkyWayRing& ring : milky_way_rings()) {
        std::vector<Horizontal> points;
        bool up = false;
        for (const Direction& vertex : ring.vertices) {
            points.push_back(over_horizon(model, vertex.ra_deg, vertex.dec_deg));
            up = up || points.back().altitude_deg > -5;
        }
        if (levels.empty() || levels.back().level != ring.level)
            levels.push_back({ring.level, {}});
        if (up) levels.back().rings.push_back(std::move(points));
    }
    return levels;
}

std::vector<Horizontal> ecliptic(const Model& model) {
    std::vector<Horizontal> line;
    for (int degree = 0; degree <= 360; ++degree) {
        const double lon = degree / kDegrees;
        const double lat = 0;
        double ra = 0;
        double dec = 0;
        model.classic().FromEclAngToRA(false, &lon, &lat, &ra, &dec);
        line.push_back(horizontal_of(model, {ra * kDegrees, dec * kDegrees, 0, 0}));
    }
    return line;
}

}  // namespace

SkyChart sky_chart(Model& model) {
    SkyChart chart;
    chart.stars = stars_up(model);
    const Result<std::vector<Body>> bodies = find_bodies("all");
    for (const Body& body : *bodies) {
        if (body.id == SSO_ID(SSO_PLNT, 9)) continue;
        if (auto seen = body_at(model, body)) chart.bodies.push_back(*seen);
    }
    for (const ChartBody& body : chart.bodies) {
        if (body.body.id == sun().id) chart.sun_altitude_deg = body.at.altitude_deg;
        if (body.body.id == moon().id) chart.moon_illuminated = body.illuminated;
    }
    chart.objects = objects_up(model);
    chart.figures = figures(model);
    chart.milky_way = milky_way(model);
    chart.ecliptic = ecliptic(model);
    return chart;
}

}  // namespace solsys::sky
