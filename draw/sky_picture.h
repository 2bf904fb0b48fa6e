// The visible hemisphere over a site: zenith in the middle, horizon around, east to the left.
#pragma once

#include <optional>
#include <string>

#include "draw/svg.h"
#include "solsys/sky/chart.h"

namespace solsys::draw {

struct SkyPicture {
    std::string title, subtitle;
    bool light = false;           // on white, for paper
    std::optional<double> limit;  // faintest star; empty: by the light of the sky
};

Svg draw_sky(const sky::SkyChart& chart, const SkyPicture& picture);

}  // namespace solsys::draw
