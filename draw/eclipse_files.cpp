// The map of an eclipse as GeoJSON and as KML.
#include <fmt/format.h>

#include "draw/eclipse_curves.h"
#include "draw/eclipse_map.h"
#include "draw/svg.h"

namespace solsys::draw {
namespace {

std::string position(LonLat p) { return fmt::format("[{:.5f},{:.5f}]", p.lon, p.lat); }

std::string positions(const std::vector<LonLat>& line) {
    std::string text = "[";
    for (const LonLat& p : line) text += (text.size() > 1 ? "," : "") + position(p);
    return text + "]";
}

std::string feature(const std::string& geometry, const std::string& coordinates,
                    const std::string& properties) {
    return fmt::format(
        "{{\"type\":\"Feature\",\"geometry\":{{\"type\":\"{}\",\"coordinates\":{}}},"
        "\"properties\":{{{}}}}}",
        geometry, coordinates, properties);
}

std::string curve_feature(const sky::MapCurve& curve) {
    const auto parts = cut_at_date_line(line_of(curve));
    std::string properties = fmt::format("\"kind\":\"{}\"", to_string(curve.kind));
    if (!curve.label.empty()) properties += fmt::format(",\"label\":\"{}\"", curve.label);
    if (curve.kind == sky::MapCurveKind::kMagnitude)
        properties += fmt::format(",\"magnitude\":{}", curve.value);
    properties += fmt::format(",\"from_utc\":\"{}\",\"to_utc\":\"{}\"",
                              curve.points.front().at.iso(0), curve.points.back().at.iso(0));
    if (parts.size() == 1) return feature("LineString", positions(parts.front()), properties);
    std::string all = "[";
    for (const auto& part : parts) all += (all.size() > 1 ? "," : "") + positions(part);
    return feature("MultiLineString", all + "]", properties);
}

std::string band_feature(const std::vector<LonLat>& band) {
    std::string all = "[";
    for (const auto& ring : cut_ring(band))
        all += (all.size() > 1 ? ",[" : "[") + positions(ring) + "]";
    return feature("MultiPolygon", all + "]", "\"kind\":\"path of the umbra\"");
}

std::string coordinates_kml(const std::vector<LonLat>& line) {
    std::string text = "<coordinates>";
    for (const LonLat& p : line) text += fmt::format("{:.5f},{:.5f} ", p.lon, p.lat);
    text.back() = '<';
    return text + "/coordinates>";
}

// Opacity, blue, green, red.
const char* kml_colour(sky::MapCurveKind kind) {
    switch (kind) {
        case sky::MapCurveKind::kCentralLine:
            return "ff1e26b3";
        case sky::MapCurveKind::kUmbralLimit:
            return "ff2a2ad6";
        case sky::MapCurveKind::kMagnitude:
            return "ff2a68c4";
        case sky::MapCurveKind::kRiseSet:
        case sky::MapCurveKind::kHorizonMaximum:
            return "ff4f7a3d";
        case sky::MapCurveKind::kIsochrone:
            return "ff8a8077";
        default:
            return "ff8f4d2a";
    }
}

}  // namespace

std::string eclipse_map_geojson(const sky::EclipseMap& map) {
    std::string text = "{\"type\":\"FeatureCollection\",\"features\":[\n";
    bool first = true;
    const auto add = [&](const std::string& one) {
        text += (first ? "" : ",\n") + one;
        first = false;
    };
    if (const auto band = umbral_band(map); !band.empty()) add(band_feature(band));
    for (const sky::MapCurve& curve : map.curves) add(curve_feature(curve));
    for (const sky::MapPoint& mark : map.points) {
        add(feature("Point", position({mark.point.longitude_deg, mark.point.latitude_deg}),
                    fmt::format("\"kind\":\"{}\",\"time_utc\":\"{}\"", mark.name,
                                mark.point.at.iso(0))));
    }
    return text + "\n]}\n";
}

std::string eclipse_map_kml(const sky::EclipseMap& map) {
    std::string text = fmt::format(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n<Document>\n<name>{}</name>\n",
        escaped(title_of(map.eclipse)));
    const auto placemark = [&](const std::string& name, const std::string& extra,
                               const std::string& geometry) {
        text += fmt::format("<Placemark><name>{}</name>{}{}</Placemark>\n", escaped(name),
                            extra, geometry);
    };
    if (const auto band = umbral_band(map); !band.empty()) {
        std::string polygons;
        for (const auto& ring : cut_ring(band))
            polygons += "<Polygon><outerBoundaryIs><LinearRing>" + coordinates_kml(ring) +
                        "</LinearRing></outerBoundaryIs></Polygon>";
        placemark("path of the umbra",
                  "<Style><LineStyle><width>0</width></LineStyle><PolyStyle><color>501e26b3"
                  "</color></PolyStyle></Style>",
                  "<MultiGeometry>" + polygons + "</MultiGeometry>");
    }
    for (const sky::MapCurve& curve : map.curves) {
        std::string lines;
        for (const auto& part : cut_at_date_line(line_of(curve)))
            lines += "<LineString><tessellate>1</tessellate>" + coordinates_kml(part) +
                     "</LineString>";
        const std::string name =
            std::string(to_string(curve.kind)) + (curve.label.empty() ? "" : " " + curve.label);
        placemark(name,
                  fmt::format("<Style><LineStyle><color>{}</color><width>2</width></LineStyle>"
                              "</Style>",
                              kml_colour(curve.kind)),
                  "<MultiGeometry>" + lines + "</MultiGeometry>");
    }
    for (const sky::MapPoint& mark : map.points)
        placemark(mark.name, "<TimeStamp><when>" + mark.point.at.iso(0) + "</when></TimeStamp>",
                  fmt::format("<Point><coordinates>{:.5f},{:.5f}</coordinates></Point>",
                              mark.point.longitude_deg, mark.point.latitude_deg));
    return text + "</Document>\n</kml>\n";
}

}  // namespace solsys::draw
