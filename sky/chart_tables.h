// What a map of the sky shows besides bodies and stars: figures, Milky Way, colours.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace solsys::sky {

struct Direction {
    double ra_deg = 0, dec_deg = 0;  // J2000
};

// A stretch of a constellation's figure, star by star.
struct FigureLine {
    std::string_view constellation;
    std::vector<Direction> stars;
};
const std::vector<FigureLine>& figure_lines();

// A closed outline; rings within others are holes and run the other way.
struct MilkyWayRing {
    int level = 1;
    std::vector<Direction> vertices;
};
const std::vector<MilkyWayRing>& milky_way_rings();  // by level

// B-V of a star of the list.
std::optional<double> colour_index(int hip);

}  // namespace solsys::sky
