#include "solsys/catalogue.h"

#include <array>
#include <cstddef>

#include "frames/rotation_elements.h"
#include "solsys/catalogue_table.h"
#include "solsys/sso_id.h"

namespace solsys {
namespace {

// A line of data/catalogue/bodies.csv. The flattening follows from the polar radius where there
// is one.
struct BodyLine {
    int number;
    double radius_km, orbital_period, rotation_period, polar_radius_km, flattening, gm;
    const char* source;
};
constexpr BodyLine kBodyLines[] = {
#include "bodies.inc"
};
static_assert(std::size(kBodyLines) == kBodyCount);

struct Family {
    int first, last;  // body numbers without a gap
    MagnitudeFn magnitude;
    RotationElementsFn rotation;
};
// In the order of the walk: the Sun comes first, between Pluto and Ceres by number.
constexpr Family kFamilies[] = {
    {10, 10, StarMagPlanet, sun_rotation},
    {1, 1, StarMagPlanet, mercury_rotation},
    {2, 2, StarMagPlanet, venus_rotation},
    {3, 3, StarMagPlanet, earth_rotation},
    {4, 4, StarMagPlanet, mars_rotation},
    {5, 5, StarMagPlanet, jupiter_rotation},
    {6, 6, StarMagPlanet, saturn_rotation},
    {7, 7, StarMagPlanet, uranus_rotation},
    {8, 8, StarMagPlanet, neptune_rotation},
    {9, 9, StarMagPlanet, pluto_rotation},
    {11, 11, StarMagPlanet, ceres_rotation},
    {12, 14, StarMagPlanet, no_rotation},
    {301, 301, StarMagPlanet, moon_rotation},
    {401, 402, StarMagMarsSat, martian_rotation},
    {501, 580, StarMagJupSat, jovian_rotation},
    {601, 683, StarMagSaturnSat, saturnian_rotation},
    {701, 727, StarMagUranSat, uranian_rotation},
    {801, 814, StarMagNepSat, neptunian_rotation},
    {901, 905, StarMagPlutoSat, plutonian_rotation},
    {1201, 1201, StarMagErisSat, no_rotation},
    {1401, 1402, StarMagHaumeaSat, no_rotation},
};

constexpr auto kBodyRows = [] {
    std::array<BodyRow, kBodyCount> rows{};
    std::size_t i = 0;
    for (const Family& family : kFamilies) {
        for (int number = family.first; number <= family.last; ++number, ++i) {
            const BodyLine& line = kBodyLines[i];
            const bool is_moon = number > 100;
            rows[i] = {number,
                       is_moon ? SSO_MOON : SSO_PLNT,
                       is_moon ? number / 100 : kFirstBody,
                       line.radius_km,
                       line.orbital_period,
                       line.rotation_period,
                       line.polar_radius_km > 0 ? 1.0 - line.polar_radius_km / line.radius_km
                                                : line.flattening,
                       line.gm,
                       family.magnitude,
                       family.rotation};
        }
    }
    return rows;
}();

// Every line stands where the families put its number.
static_assert([] {
    for (std::size_t i = 0; i < kBodyRows.size(); ++i) {
        if (kBodyRows[i].number != kBodyLines[i].number) return false;
    }
    return true;
}());

// Index of each number into kBodyRows, 255 where there is none.
constexpr std::uint8_t kNoRow = 255;
static_assert(kBodyCount <= kNoRow);
constexpr auto kIndex = [] {
    std::array<std::uint8_t, kBodyRows.back().number + 1> index{};
    index.fill(kNoRow);
    for (std::size_t i = 0; i < kBodyRows.size(); ++i) {
        index[static_cast<std::size_t>(kBodyRows[i].number)] = static_cast<std::uint8_t>(i);
    }
    return index;
}();

}  // namespace

const BodyRow* catalogue_row(int number) {
    if (number < 0 || number >= static_cast<int>(kIndex.size())) return nullptr;
    const std::uint8_t i = kIndex[static_cast<std::size_t>(number)];
    return i == kNoRow ? nullptr : &kBodyRows[i];
}

int next_catalogue_number(int number) {
    const BodyRow* row = catalogue_row(number);
    if (!row) return 0;
    return row == &kBodyRows.back() ? -1 : row[1].number;
}

}  // namespace solsys

int GetBodyCatalogueEntry(int number, std::int32_t* type, std::int32_t* parent_type,
                          std::int32_t* parent_number, double* radius_km,
                          double* orbital_period, double* rotation_period, double* flattening,
                          double* gm, double* reserved, MagnitudeFn* magnitude,
                          RotationElementsFn* rotation) {
    const solsys::BodyRow* row = solsys::catalogue_row(number);
    if (!row) return 0;

    const auto give = [](auto* out, auto value) {
        if (out) *out = value;
    };
    give(type, row->type);
    give(parent_type, SSO_PLNT);
    give(parent_number, row->parent_number);
    give(radius_km, row->radius_km);
    give(orbital_period, row->orbital_period);
    give(rotation_period, row->rotation_period);
    give(flattening, row->flattening);
    give(gm, row->gm);
    give(reserved, 0.0);
    give(magnitude, row->magnitude);
    give(rotation, row->rotation);
    return solsys::next_catalogue_number(number);
}
