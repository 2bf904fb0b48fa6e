// The visible hemisphere over a site: zenith in the middle, horizon around, east to the left.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "draw/svg.h"
#include "solsys/sky/chart.h"

namespace solsys::draw {

// The way of a satellite.
struct SkyTrack {
    struct Point {
        sky::Horizontal at;
        bool lit = true;
        std::string label;  // beside a mark; empty: no mark
    };
    std::vector<Point> points;
};

struct SkyPicture {
    std::string title, subtitle;
    bool light = false;           // on white, for paper
    std::optional<double> limit;  // faintest star; empty: by the light of the sky
    std::vector<SkyTrack> tracks;
};

Svg draw_sky(const sky::SkyChart& chart, const SkyPicture& picture);

}  // namespace solsys::draw
