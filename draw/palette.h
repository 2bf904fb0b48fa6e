// The one palette of all pictures, for the screen (dark) and for paper (light).
#pragma once

#include <optional>
#include <string>

#include "solsys/sso_id.h"

namespace solsys::draw {

struct Colour {
    double r, g, b;  // 0 to 255

    [[nodiscard]] std::string hex() const;  // "#rrggbb"
};
// The colour a part of the way from one to another.
Colour mixed(const Colour& a, const Colour& b, double part);

struct Theme {
    bool dark = true;
    const char* page;    // background
    const char* panel;   // of what is drawn into: slightly off the page
    const char* ink;     // headings and words that matter
    const char* faint;   // notes, ticks, grids
    const char* accent;  // the ecliptic, the Sun's way
    const char* figure;  // constellation lines and names
    const char* object;  // deep-sky objects
    const char* land;    // of maps
    const char* water;
};
const Theme& dark_theme();
const Theme& light_theme();
inline const Theme& theme(bool light) { return light ? light_theme() : dark_theme(); }

// One colour for each of several curves or bodies, told apart also by those who see few
// colours; goes round after eight.
const char* series_colour(std::size_t index, const Theme& theme);

// How the sky looks, and the faintest star seen in it, by the altitude of the Sun.
struct Light {
    double sun_altitude;
    Colour zenith, horizon;
    double limit;
};
Light light_at(double sun_altitude_deg);
// "day", "civil twilight" ...
const char* name_of_light(double sun_altitude_deg);
// Bands of the year's picture and of timelines: day, civil, nautical, astronomical twilight,
// night.
const char* twilight_colour(int band);

// By the colour index B-V; white where it is not known.
std::string star_colour(std::optional<double> b_v, const Theme& theme);
// Radius on the page by magnitude.
double star_radius(double magnitude);
// Of a planet's disk, of the Sun and of the Moon.
const char* body_colour(const SSO_ID& id, const Theme& theme);

}  // namespace solsys::draw
