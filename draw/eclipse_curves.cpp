#include "draw/eclipse_curves.h"

#include <fmt/format.h>

#include <cmath>

#include "solsys/sky/site.h"

namespace solsys::draw {

std::vector<LonLat> line_of(const sky::MapCurve& curve) {
    std::vector<LonLat> line;
    line.reserve(curve.points.size());
    for (const sky::GroundPoint& p : curve.points)
        line.push_back({p.longitude_deg, p.latitude_deg});
    return line;
}

std::vector<LonLat> umbral_band(const sky::EclipseMap& map) {
    std::vector<const sky::MapCurve*> limits;
    for (const sky::MapCurve& curve : map.curves)
        if (curve.kind == sky::MapCurveKind::kUmbralLimit) limits.push_back(&curve);
    if (limits.size() != 2 || !map.eclipse.central) return {};
    std::vector<LonLat> ring = line_of(*limits[0]);
    const std::vector<LonLat> other = line_of(*limits[1]);
    ring.insert(ring.end(), other.rbegin(), other.rend());
    return ring;
}

std::string date_text(const sky::Instant& t) {
    static constexpr const char* kMonths[] = {"January",   "February", "March",    "April",
                                              "May",       "June",     "July",     "August",
                                              "September", "October",  "November", "December"};
    const std::string iso = t.iso(0);  // the year may have a sign and more digits
    const std::size_t t_at = iso.find('T');
    const std::string date = iso.substr(0, t_at);
    const int month = std::stoi(date.substr(date.size() - 5, 2));
    const int day = std::stoi(date.substr(date.size() - 2));
    return fmt::format("{} {} {}", std::stoi(date.substr(0, date.size() - 6)),
                       kMonths[month - 1], day);
}

std::string title_of(const sky::Eclipse& eclipse) {
    std::string type = eclipse.type;
    type[0] = static_cast<char>(type[0] - 'a' + 'A');
    return fmt::format("{} {} eclipse of {}", type, to_string(eclipse.kind),
                       date_text(eclipse.greatest));
}

std::string duration_text(double seconds) {
    const int whole = static_cast<int>(std::lround(seconds));
    return whole < 60 ? fmt::format("{} s", whole)
                      : fmt::format("{} min {:02} s", whole / 60, whole % 60);
}

std::string place_text(const sky::GroundPoint& place) {
    return sky::coordinate_text(place.latitude_deg, false) + ", " +
           sky::coordinate_text(place.longitude_deg, true);
}

}  // namespace solsys::draw
