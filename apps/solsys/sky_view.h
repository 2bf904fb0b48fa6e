// What stands above a site's horizon at the model's instant.
#pragma once

#include <string>
#include <vector>

#include "apps/solsys/place.h"

namespace app {

struct SkyStar {
    Horizontal at;
    double magnitude = 0;
    char spectral_class = ' ';  // O B A F G K M
    std::string name;           // proper name, or empty
    const char* constellation = "";
};

struct SkyBody {
    SSO_ID id;
    std::string name;
    Horizontal at;
    double magnitude = 0;
    double illuminated = 1;
    Horizontal towards_sun;  // a little beside the body, on the side of its bright limb
};

struct SkyView {
    std::vector<SkyStar> stars;        // brightest first
    std::vector<SkyBody> bodies;       // Sun, Moon and planets
    std::vector<Horizontal> ecliptic;  // a whole turn, a degree apart
    double sun_altitude_deg = 0;
    double moon_illuminated = 0;
};

SkyView view_sky(CSWSolSys& model);

}  // namespace app
