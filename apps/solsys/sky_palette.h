// Colours and sizes of the sky's picture.
#pragma once

#include <string>

#include "solsys/sso_id.h"

namespace app {

struct Colour {
    double r, g, b;  // 0 to 255

    [[nodiscard]] std::string hex() const;  // "#rrggbb"
};

// The colour a part of the way from one to another.
Colour mixed(const Colour& a, const Colour& b, double part);

// How the sky looks, and the faintest star seen in it, by the altitude of the Sun.
struct Light {
    double sun_altitude;
    Colour zenith, horizon;
    double limit;
};
Light light_at(double sun_altitude_deg);
// "day", "civil twilight" ...
const char* name_of_light(double sun_altitude_deg);

// By the letter of the spectral class.
const char* star_colour(char spectral_class);
// Radius on the page by magnitude.
double star_radius(double magnitude);
const char* body_colour(const SSO_ID& id);

}  // namespace app
