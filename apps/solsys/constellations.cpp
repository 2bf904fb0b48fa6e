#include "apps/solsys/constellations.h"

#include <iterator>

#include "apps/solsys/place.h"

namespace app {
namespace {

constexpr Constellation kConstellations[] = {
#include "constellation_names.inc"
};
constexpr Constellation kNone{};

}  // namespace

const Constellation& constellation_at(const CSWSolSys& model, double ra_deg, double dec_deg) {
    const auto index = static_cast<unsigned char>(
        model.RADecInConstell(ra_deg / kDegrees, dec_deg / kDegrees));
    return index < std::size(kConstellations) ? kConstellations[index] : kNone;
}

const char* constellation_name(std::string_view abbreviation) {
    for (const Constellation& constellation : kConstellations)
        if (constellation.abbreviation == abbreviation) return constellation.name;
    return "";
}

}  // namespace app
