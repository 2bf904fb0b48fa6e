// The Earth on paper: land outlines, the plane map and the globe seen from afar.
#pragma once

#include <optional>
#include <vector>

#include "draw/svg.h"

namespace solsys::draw {

struct LonLat {
    double lon, lat;  // degrees
};

// Closed rings, to be filled together by the even-odd rule.
const std::vector<std::vector<LonLat>>& land_outlines();

// Longitude and latitude as equal lengths: a world of width `width` about the meridian of 0.
class PlaneMap {
  public:
    PlaneMap(Point corner, double width) : corner_(corner), scale_(width / 360) {}

    [[nodiscard]] Point at(LonLat p) const {
        return {corner_.x + (p.lon + 180) * scale_, corner_.y + (90 - p.lat) * scale_};
    }
    // A line or a ring, point by point.
    [[nodiscard]] std::vector<Point> along(const std::vector<LonLat>& line) const;
    [[nodiscard]] Point corner() const { return corner_; }
    [[nodiscard]] double width() const { return 360 * scale_; }
    [[nodiscard]] double height() const { return 180 * scale_; }

  private:
    Point corner_;
    double scale_;
};

// The globe from infinitely far above a point.
class Globe {
  public:
    Globe(Point centre, double radius, LonLat above);

    // Where a point is seen; nothing on the far side.
    [[nodiscard]] std::optional<Point> at(LonLat p) const;
    // The same, points of the far side moved to the limb.
    [[nodiscard]] Point clamped(LonLat p, bool& visible) const;
    [[nodiscard]] Point centre() const { return centre_; }
    [[nodiscard]] double radius() const { return radius_; }

  private:
    Point centre_;
    double radius_, lon_, sin_lat_, cos_lat_;
};

// A line on the map, cut where it crosses the date line; degrees in (-180, 180].
std::vector<std::vector<LonLat>> cut_at_date_line(const std::vector<LonLat>& line);
// A ring as rings that do not cross the date line, one that goes round a pole included;
// counter-clockwise, the first point repeated at the end.
std::vector<std::vector<LonLat>> cut_ring(const std::vector<LonLat>& ring);

// Land and graticule onto either.
void draw_land(Svg& svg, const PlaneMap& map, const std::string& land, const std::string& grid);
void draw_land(Svg& svg, const Globe& globe, const std::string& land, const std::string& grid);

}  // namespace solsys::draw
