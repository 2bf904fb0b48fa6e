#include "draw/palette.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace solsys::draw {
namespace {

constexpr Theme kDark{true,      "#0a0e18", "#101728", "#e8ecf4", "#8592ad",
                      "#d9b45b", "#7189bd", "#6fb7a8", "#26324d", "#0f1a30"};
constexpr Theme kLight{false,     "#ffffff", "#fbfaf6", "#1d2433", "#667085",
                       "#a8741a", "#5c74b3", "#2e7d6b", "#e6e1d3", "#eef3f8"};

constexpr const char* kSeriesOnDark[] = {"#f2c14e", "#4fb3d9", "#ef8354", "#9bc53d",
                                         "#d783ff", "#f4f1de", "#81b29a", "#e07a9b"};
constexpr const char* kSeriesOnLight[] = {"#b57900", "#1a7fa8", "#c6501f", "#5d8a0a",
                                          "#8a3fc0", "#5a5444", "#2f7d5b", "#b23a68"};

constexpr Light kLights[] = {
    {-18, {8, 13, 30}, {20, 29, 54}, 5.0},      {-12, {14, 24, 52}, {38, 50, 88}, 4.2},
    {-6, {28, 48, 90}, {98, 98, 130}, 1.5},     {-1, {50, 84, 138}, {196, 158, 140}, -1.5},
    {5, {50, 108, 172}, {178, 202, 222}, -3.5}, {15, {46, 112, 184}, {158, 200, 234}, -3.9},
};

constexpr const char* kTwilight[] = {"#f3d9a4", "#c98f72", "#6b5a83", "#2f3a6b", "#111a3c"};

// Colour of a black body of the temperature that goes with B-V, as sRGB (the rows a fifth of a
// magnitude apart of data/sky/star_color_scale.csv, which names the sources).
struct Tint {
    double b_v;
    Colour colour;
};
constexpr Tint kTints[] = {
    {-0.35, {0xad, 0xc3, 0xff}}, {-0.15, {0xbe, 0xcf, 0xff}}, {0.05, {0xd1, 0xdc, 0xff}},
    {0.25, {0xe6, 0xe9, 0xff}},  {0.45, {0xfd, 0xf8, 0xff}},  {0.65, {0xff, 0xf1, 0xea}},
    {0.85, {0xff, 0xe9, 0xd5}},  {1.05, {0xff, 0xe0, 0xc1}},  {1.25, {0xff, 0xd9, 0xaf}},
    {1.45, {0xff, 0xd1, 0x9f}},  {1.65, {0xff, 0xca, 0x90}},  {1.85, {0xff, 0xc3, 0x82}},
    {2.05, {0xff, 0xbd, 0x75}},  {2.65, {0xff, 0xab, 0x53}}};

Colour tint_of(double b_v) {
    const Tint* above = std::find_if(std::begin(kTints), std::end(kTints),
                                     [&](const Tint& tint) { return tint.b_v > b_v; });
    if (above == std::begin(kTints)) return kTints[0].colour;
    if (above == std::end(kTints)) return std::prev(above)->colour;
    const Tint& below = *std::prev(above);
    return mixed(below.colour, above->colour, (b_v - below.b_v) / (above->b_v - below.b_v));
}

}  // namespace

std::string Colour::hex() const {
    const auto byte = [](double part) { return std::clamp<long>(std::lround(part), 0, 255); };
    return fmt::format("#{:02x}{:02x}{:02x}", byte(r), byte(g), byte(b));
}

Colour mixed(const Colour& a, const Colour& b, double part) {
    return {a.r + (b.r - a.r) * part, a.g + (b.g - a.g) * part, a.b + (b.b - a.b) * part};
}

const Theme& dark_theme() { return kDark; }
const Theme& light_theme() { return kLight; }

const char* series_colour(std::size_t index, const Theme& theme) {
    const std::size_t one = index % std::size(kSeriesOnDark);
    return theme.dark ? kSeriesOnDark[one] : kSeriesOnLight[one];
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

const char* twilight_colour(int band) { return kTwilight[std::clamp(band, 0, 4)]; }

std::string star_colour(std::optional<double> b_v, const Theme& theme) {
    if (!theme.dark) return theme.ink;
    if (!b_v) return "#f4f6fb";
    // True colours are pale; drawn as points they need twice their saturation to be seen.
    const Colour tint = tint_of(*b_v);
    const Colour white{255, 255, 255};
    return mixed(white, tint, 1.6).hex();
}

double star_radius(double magnitude) { return 0.8 * std::pow(10, 0.118 * (5 - magnitude)); }

const char* body_colour(const SSO_ID& id, const Theme& theme) {
    struct Row {
        int number;
        const char* on_dark;
        const char* on_light;
    };
    static constexpr Row rows[] = {{1, "#cfc4b4", "#8d7f6c"}, {2, "#fff4cf", "#c79a1e"},
                                   {3, "#6b93d6", "#3d6cb9"}, {4, "#ff9166", "#c1492c"},
                                   {5, "#f2cf9e", "#b07c3c"}, {6, "#f0dc98", "#a8892f"},
                                   {7, "#a8e6e6", "#2f9b9b"}, {8, "#90aefc", "#4766c9"},
                                   {9, "#d3a2cf", "#8d4f88"}, {10, "#ffdf6b", "#e8a800"}};
    if (id.type == SSO_MOON) return theme.dark ? "#f4efe0" : "#6f6a5c";
    for (const Row& row : rows)
        if (row.number == id.number) return theme.dark ? row.on_dark : row.on_light;
    return theme.dark ? "#c9bfae" : "#756b5b";
}

}  // namespace solsys::draw
