// What the layers of the sky's picture share: the projection, the light, the colours.
#pragma once

#include "draw/label_layout.h"
#include "draw/palette.h"
#include "draw/sky_picture.h"

namespace solsys::draw {

struct SkyCanvas {
    static constexpr double kWidth = 1000;
    static constexpr double kHeight = 1110;
    static constexpr Point kCentre{kWidth / 2, 580};
    static constexpr double kRadius = 440;

    SkyCanvas(const sky::SkyChart& chart, const SkyPicture& picture);

    // Zenithal equidistant, east to the left.
    static Point project(const sky::Horizontal& at);

    // Ink for what is drawn into the sky.
    [[nodiscard]] const char* ink() const {
        return !theme.dark ? theme.ink : daylight ? "#0b2545" : "#c9d3ea";
    }
    [[nodiscard]] std::string halo() const { return daylight ? std::string() : halo_; }

    const sky::SkyChart& chart;
    const Theme& theme;
    Light light;
    double limit;   // faintest star shown
    bool daylight;  // a bright background under the dark theme
    Svg svg;
    LabelLayout labels;

  private:
    std::string halo_;
};

// Background to foreground: each adds its part of the picture.
void add_dome(SkyCanvas& canvas);
void add_milky_way(SkyCanvas& canvas);
void add_grid(SkyCanvas& canvas);
void add_figures(SkyCanvas& canvas);
void add_ecliptic(SkyCanvas& canvas);
void add_objects(SkyCanvas& canvas);
void add_stars(SkyCanvas& canvas);
void add_bodies(SkyCanvas& canvas);
void add_tracks(SkyCanvas& canvas, const SkyPicture& picture);
void add_body_names(SkyCanvas& canvas);
void add_star_names(SkyCanvas& canvas);
void add_object_names(SkyCanvas& canvas);
void add_ecliptic_name(SkyCanvas& canvas);
void add_constellation_names(SkyCanvas& canvas);
void add_rim(SkyCanvas& canvas);
void add_legend(SkyCanvas& canvas, const SkyPicture& picture);

double body_radius(const sky::ChartBody& body);
// Whether the eye would miss a planet in this light.
bool too_faint(const SkyCanvas& canvas, const sky::ChartBody& body);

}  // namespace solsys::draw
