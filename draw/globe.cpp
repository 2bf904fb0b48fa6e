#include "draw/globe.h"

#include <algorithm>
#include <cmath>

namespace solsys::draw {
namespace {

constexpr double kDegree = 0.017453292519943295;

struct Row {
    int ring;
    double lon, lat;
};
constexpr Row kRows[] = {
#include "land_outlines.inc"
};

// Longitudes that go on across the date line instead of jumping.
std::vector<LonLat> unwound(const std::vector<LonLat>& line) {
    std::vector<LonLat> out = line;
    for (std::size_t i = 1; i < out.size(); ++i)
        out[i].lon = out[i - 1].lon + std::remainder(line[i].lon - line[i - 1].lon, 360.0);
    return out;
}

// The part of a ring on one side of a meridian (Sutherland & Hodgman 1974).
std::vector<LonLat> clipped(const std::vector<LonLat>& ring, double lon, bool keep_east) {
    std::vector<LonLat> out;
    const auto inside = [&](LonLat p) { return keep_east ? p.lon >= lon : p.lon <= lon; };
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const LonLat a = ring[i], b = ring[(i + 1) % ring.size()];
        if (inside(a)) out.push_back(a);
        if (inside(a) != inside(b)) {
            const double part = (lon - a.lon) / (b.lon - a.lon);
            out.push_back({lon, a.lat + part * (b.lat - a.lat)});
        }
    }
    return out;
}

double area(const std::vector<LonLat>& ring) {
    double sum = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const LonLat a = ring[i], b = ring[(i + 1) % ring.size()];
        sum += a.lon * b.lat - b.lon * a.lat;
    }
    return sum / 2;
}

// A ring round a pole, opened where it crosses the date line nearest to the pole and led along
// the date line to the pole and back.
std::vector<LonLat> opened_at_pole(const std::vector<LonLat>& ring) {
    double sum = 0;
    for (const LonLat& p : ring) sum += p.lat;
    const double pole = sum > 0 ? 90 : -90;
    std::size_t at = 0;
    LonLat crossing{180, -pole};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const LonLat a = ring[i], b = ring[(i + 1) % ring.size()];
        if (std::fabs(b.lon - a.lon) <= 180) continue;
        const double edge = a.lon > 0 ? 180 : -180;
        const double part = (edge - a.lon) / std::remainder(b.lon - a.lon, 360.0);
        const double lat = a.lat + part * (b.lat - a.lat);
        if (std::fabs(lat - pole) < std::fabs(crossing.lat - pole)) {
            crossing = {-edge, lat};
            at = i + 1;
        }
    }
    std::vector<LonLat> line{crossing};
    for (std::size_t i = 0; i < ring.size(); ++i) line.push_back(ring[(at + i) % ring.size()]);
    line.push_back({-crossing.lon, crossing.lat});
    line = unwound(line);
    line.push_back({line.back().lon, pole});
    line.push_back({line.front().lon, pole});
    return line;
}

std::string path_data(const std::vector<Point>& points, bool close) {
    std::string data;
    for (std::size_t i = 0; i < points.size(); ++i) {
        data += i == 0 ? "M" : "L";
        data += number(points[i].x) + "," + number(points[i].y);
    }
    return data + (close ? "Z" : "");
}

constexpr const char* kEvenOdd = "<path fill-rule=\"evenodd\" fill=\"";

}  // namespace

const std::vector<std::vector<LonLat>>& land_outlines() {
    static const std::vector<std::vector<LonLat>> rings = [] {
        std::vector<std::vector<LonLat>> out;
        int last = -1;
        for (const Row& row : kRows) {
            if (row.ring != last) out.emplace_back();
            last = row.ring;
            out.back().push_back({row.lon, row.lat});
        }
        return out;
    }();
    return rings;
}

Globe::Globe(Point centre, double radius, LonLat above)
    : centre_(centre),
      radius_(radius),
      lon_(above.lon),
      sin_lat_(std::sin(above.lat * kDegree)),
      cos_lat_(std::cos(above.lat * kDegree)) {}

Point Globe::clamped(LonLat p, bool& visible) const {
    const double l = (p.lon - lon_) * kDegree, s = std::sin(p.lat * kDegree),
                 c = std::cos(p.lat * kDegree);
    double east = c * std::sin(l);
    double north = cos_lat_ * s - sin_lat_ * c * std::cos(l);
    visible = sin_lat_ * s + cos_lat_ * c * std::cos(l) >= 0;
    if (!visible) {
        const double off = std::max(std::hypot(east, north), 1e-9);
        east /= off, north /= off;
    }
    return {centre_.x + radius_ * east, centre_.y - radius_ * north};
}

std::optional<Point> Globe::at(LonLat p) const {
    bool visible = false;
    const Point point = clamped(p, visible);
    if (!visible) return std::nullopt;
    return point;
}

std::vector<std::vector<LonLat>> cut_at_date_line(const std::vector<LonLat>& line) {
    std::vector<std::vector<LonLat>> parts(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const LonLat p = line[i];
        if (i > 0 && std::fabs(p.lon - line[i - 1].lon) > 180) {
            const LonLat a = line[i - 1];
            const double edge = a.lon > 0 ? 180 : -180;
            const double step = std::remainder(p.lon - a.lon, 360.0);
            const double part = step != 0 ? (edge - a.lon) / step : 0;
            const double lat = a.lat + part * (p.lat - a.lat);
            parts.back().push_back({edge, lat});
            parts.emplace_back();
            parts.back().push_back({-edge, lat});
        }
        parts.back().push_back(p);
    }
    std::erase_if(parts, [](const auto& part) { return part.size() < 2; });
    return parts;
}

std::vector<std::vector<LonLat>> cut_ring(const std::vector<LonLat>& ring) {
    std::vector<LonLat> line = unwound(ring);
    const double turn_back = std::remainder(ring.front().lon - ring.back().lon, 360.0);
    if (std::fabs(line.back().lon + turn_back - line.front().lon) > 180)
        line = opened_at_pole(ring);
    const auto [west, east] = std::minmax_element(
        line.begin(), line.end(), [](LonLat a, LonLat b) { return a.lon < b.lon; });
    const int first = static_cast<int>(std::floor((west->lon + 180) / 360));
    const int last = static_cast<int>(std::floor((east->lon + 180) / 360));
    std::vector<std::vector<LonLat>> out;
    for (int turn = first; turn <= last; ++turn) {
        auto part = clipped(clipped(line, 360.0 * turn - 180, true), 360.0 * turn + 180, false);
        for (LonLat& p : part) p.lon = std::clamp(p.lon - 360.0 * turn, -180.0, 180.0);
        if (part.size() < 3 || std::fabs(area(part)) < 1e-9) continue;
        if (area(part) < 0) std::reverse(part.begin(), part.end());
        part.push_back(part.front());
        out.push_back(std::move(part));
    }
    return out;
}

std::vector<Point> PlaneMap::along(const std::vector<LonLat>& line) const {
    std::vector<Point> points;
    points.reserve(line.size());
    for (const LonLat& p : line) points.push_back(at(p));
    return points;
}

void draw_land(Svg& svg, const PlaneMap& map, const std::string& land,
               const std::string& grid) {
    std::string data;
    for (const auto& ring : land_outlines()) data += path_data(map.along(ring), true);
    svg.raw(kEvenOdd + land + "\" d=\"" + data + "\"/>\n");
    for (int lon = -150; lon <= 150; lon += 30)
        svg.line(map.at({double(lon), 90}), map.at({double(lon), -90}),
                 Style::line(grid, 0.6, 0.7));
    for (int lat = -60; lat <= 60; lat += 30)
        svg.line(map.at({-180, double(lat)}), map.at({180, double(lat)}),
                 Style::line(grid, lat == 0 ? 1.0 : 0.6, 0.7));
}

void draw_land(Svg& svg, const Globe& globe, const std::string& land, const std::string& grid) {
    std::string data;
    for (const auto& ring : land_outlines()) {
        std::vector<Point> points;
        bool any = false;
        for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
            const LonLat a = ring[i], b = ring[i + 1];
            const int steps =
                1 + static_cast<int>(
                        std::max(std::fabs(b.lon - a.lon), std::fabs(b.lat - a.lat)) / 3);
            for (int k = 0; k < steps; ++k) {
                const double part = static_cast<double>(k) / steps;
                bool visible = false;
                points.push_back(globe.clamped(
                    {a.lon + part * (b.lon - a.lon), a.lat + part * (b.lat - a.lat)}, visible));
                any = any || visible;
            }
        }
        if (any) data += path_data(points, true);
    }
    svg.raw(kEvenOdd + land + "\" d=\"" + data + "\"/>\n");
    const auto curve = [&](auto&& at) {
        std::vector<Point> points;
        for (int i = 0; i <= 120; ++i) {
            if (const auto p = globe.at(at(i / 120.0))) {
                points.push_back(*p);
            } else if (points.size() > 1) {
                svg.polyline(points, Style::line(grid, 0.6, 0.7));
                points.clear();
            }
        }
        if (points.size() > 1) svg.polyline(points, Style::line(grid, 0.6, 0.7));
    };
    for (int lon = -180; lon < 180; lon += 30)
        curve([&](double t) { return LonLat{double(lon), -90 + 180 * t}; });
    for (int lat = -60; lat <= 60; lat += 30)
        curve([&](double t) { return LonLat{-180 + 360 * t, double(lat)}; });
}

}  // namespace solsys::draw
