#include "sky/chart_tables.h"

#include <charconv>
#include <map>

#include "sky/stars.h"
#include "sky/text.h"

namespace solsys::sky {
namespace {

// con,polyline,order,hip
constexpr std::string_view kLines =
#include "constellation_lines_text.inc"
    ;
// hip,hd,name,bayer,flamsteed,con,ra_deg,dec_deg,...
constexpr std::string_view kLineStars =
#include "extra_line_stars_text.inc"
    ;
// level,polygon,ring,ra_deg,dec_deg,outline
constexpr std::string_view kMilkyWay =
#include "milky_way_text.inc"
    ;
// hip,b_v,temperature_k,ref
constexpr std::string_view kColours =
#include "star_colors_text.inc"
    ;

std::map<int, Direction> read_line_stars() {
    std::map<int, Direction> stars;
    for (const StarRow& row : bright_stars()) stars[row.hip] = {row.ra_deg, row.dec_deg};
    std::string_view rows = kLineStars;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const int hip = static_cast<int>(number_in(take_field(line, ',')));
        for (int skipped = 0; skipped < 5; ++skipped) take_field(line, ',');
        const double ra_deg = number_in(take_field(line, ','));
        stars[hip] = {ra_deg, number_in(take_field(line, ','))};
    }
    return stars;
}

std::vector<FigureLine> read_figures() {
    const std::map<int, Direction> stars = read_line_stars();
    std::vector<FigureLine> figures;
    std::string_view last_polyline;
    std::string_view rows = kLines;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const std::string_view constellation = take_field(line, ',');
        const std::string_view polyline = take_field(line, ',');
        take_field(line, ',');
        const auto star = stars.find(static_cast<int>(number_in(line)));
        if (star == stars.end()) continue;
        if (figures.empty() || figures.back().constellation != constellation ||
            polyline != last_polyline)
            figures.push_back({constellation, {}});
        last_polyline = polyline;
        figures.back().stars.push_back(star->second);
    }
    return figures;
}

std::vector<MilkyWayRing> read_milky_way() {
    std::vector<MilkyWayRing> rings;
    std::string_view last_ring;
    std::string_view last_polygon;
    std::string_view rows = kMilkyWay;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const int level = static_cast<int>(number_in(take_field(line, ',')));
        const std::string_view polygon = take_field(line, ',');
        const std::string_view ring = take_field(line, ',');
        if (rings.empty() || rings.back().level != level || ring != last_ring ||
            polygon != last_polygon)
            rings.push_back({level, {}});
        last_ring = ring, last_polygon = polygon;
        const double ra_deg = number_in(take_field(line, ','));
        rings.back().vertices.push_back({ra_deg, number_in(take_field(line, ','))});
    }
    return rings;
}

std::map<int, double> read_colours() {
    std::map<int, double> colours;
    std::string_view rows = kColours;
    while (!rows.empty()) {
        std::string_view line = take_field(rows, '\n');
        const int hip = static_cast<int>(number_in(take_field(line, ',')));
        const std::string_view b_v = take_field(line, ',');
        if (!b_v.empty()) colours[hip] = number_in(b_v);
    }
    return colours;
}

}  // namespace

const std::vector<FigureLine>& figure_lines() {
    static const std::vector<FigureLine> figures = read_figures();
    return figures;
}

const std::vector<MilkyWayRing>& milky_way_rings() {
    static const std::vector<MilkyWayRing> rings = read_milky_way();
    return rings;
}

std::optional<double> colour_index(int hip) {
    static const std::map<int, double> colours = read_colours();
    const auto found = colours.find(hip);
    return found == colours.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace solsys::sky
