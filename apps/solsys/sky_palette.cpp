#include "apps/solsys/sky_palette.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace app {
namespace {

constexpr Light kLights[] = {
    {-18, {8, 13, 30}, {20, 29, 54}, 5.0},      {-12, {14, 24, 52}, {38, 50, 88}, 4.2},
    {-6, {28, 48, 90}, {98, 98, 130}, 1.5},     {-1, {50, 84, 138}, {196, 158, 140}, -1.5},
    {5, {50, 108, 172}, {178, 202, 222}, -3.5}, {15, {46, 112, 184}, {158, 200, 234}, -3.9},
};

}  // namespace

std::string Colour::hex() const {
    return fmt::format("#{:02x}{:02x}{:02x}", std::lround(r), std::lround(g), std::lround(b));
}

Colour mixed(const Colour& a, const Colour& b, double part) {
    return {a.r + (b.r - a.r) * part, a.g + (b.g - a.g) * part, a.b + (b.b - a.b) * part};
}

Light light_at(double sun_altitude) {
    const Light* above =
        std::find_if(std::begin(kLights), std::end(kLights),
                     [&](const Light& l) { return l.sun_altitude > sun_altitude; });
    if (above == std::begin(kLights)) return kLights[0];
    if (above == std::end(kLights)) return *(std::end(kLights) - 1);
    const Light& below = *(above - 1);
    const double part =
        (sun_altitude - below.sun_altitude) / (above->sun_altitude - below.sun_altitude);
    return {sun_altitude, mixed(below.zenith, above->zenith, part),
            mixed(below.horizon, above->horizon, part),
            below.limit + (above->limit - below.limit) * part};
}

const char* name_of_light(double sun_altitude) {
    if (sun_altitude > -0.83) return "day";
    if (sun_altitude > -6) return "civil twilight";
    if (sun_altitude > -12) return "nautical twilight";
    if (sun_altitude > -18) return "astronomical twilight";
    return "night";
}

const char* star_colour(char spectral_class) {
    switch (spectral_class) {
        case 'O':
        case 'W':
            return "#a9c3ff";
        case 'B':
            return "#bdd1ff";
        case 'A':
            return "#dfe8ff";
        case 'F':
            return "#fbf8f2";
        case 'G':
            return "#fff1d6";
        case 'K':
            return "#ffd9a6";
        case 'M':
        case 'C':
        case 'S':
            return "#ffb98a";
        default:
            return "#f2f4fa";
    }
}

double star_radius(double magnitude) { return 0.8 * std::pow(10, 0.118 * (5 - magnitude)); }

const char* body_colour(const SSO_ID& id) {
    if (id.type == SSO_MOON) return "#f4efe0";
    switch (id.number) {
        case 1:
            return "#cfc4b4";
        case 2:
            return "#fff4cf";
        case 4:
            return "#ff9166";
        case 5:
            return "#f2cf9e";
        case 6:
            return "#f0dc98";
        case 7:
            return "#a8e6e6";
        case 8:
            return "#90aefc";
        default:
            return "#ffdf6b";
    }
}

}  // namespace app
