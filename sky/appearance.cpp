#include "solsys/sky/appearance.h"

#include <cmath>
#include <iterator>

#include "core/linalg.h"
#include "sky/shown_magnitude.h"
#include "sky/units.h"
#include "solsys/magnitudes.h"

namespace solsys::sky {
namespace {

struct ConstellationName {
    int index;
    const char* name;
    const char* abbreviation;
};
constexpr ConstellationName kConstellations[] = {
#include "constellation_names.inc"
};

// Saturn with its rings at their true tilt, which the classic law takes from positions along
// the axes of the planet's equator.
bool saturn_magnitude(CSWSolSys& model, float* magnitude) {
    const SSO_ID saturn(SSO_PLNT, 6);
    int day = 0;
    double fraction = 0;
    model.GetTime(&day, &fraction);
    double to_equator[9];
    double back[9];
    double observer[6];
    double position[3];
    if (!model.GetMtrxEq2K_PlEq(saturn, day, fraction, to_equator, back) ||
        !model.GetHelVec2K(saturn, 0, position))
        return false;
    model.GetObserverVec2K(observer);
    const Mat3 turn = load_matrix(to_equator);
    store(turn * load(observer), observer);
    store(turn * load(position), position);
    return StarMagPlanet(observer, 6, position, magnitude) == 0;
}

// Phase, elongation and apparent size of what the Sun lights.
void add_phase(CSWSolSys& model, const SSO_ID& id, double distance_au, Appearance& looks) {
    double phase = 0;
    double elongation = 0;
    double illuminated = 0;
    double limb = 0;
    if (model.PhaseElongation(id, &phase, &illuminated, &elongation, &limb, nullptr)) {
        looks.phase_angle_deg = phase * kDegrees;
        looks.illuminated_fraction = illuminated;
        looks.elongation_deg = elongation * kDegrees;
        looks.bright_limb_deg = limb * kDegrees;
    }
    // Of comets the library has a nominal nucleus only, which is not what is seen.
    const double radius_au = id.type == SSO_COMT ? 0 : model.GetRadiEq(id) / kAuKm;
    if (radius_au > 0 && radius_au < distance_au)
        looks.angular_diameter_arcsec = 2 * std::asin(radius_au / distance_au) * kArcseconds;
}

}  // namespace

std::optional<double> magnitude_of(Model& model, const Body& body) {
    if (const auto* star = std::get_if<StarObject>(&body.record))
        return shown_magnitude(star->magnitude);
    CSWSolSys& classic = model.classic();
    float magnitude = 0;
    const bool saturn =
        body.id == SSO_ID(SSO_PLNT, 6) && classic.GetReduction() == REDUCTION_CLASSIC;
    const bool known = saturn ? saturn_magnitude(classic, &magnitude)
                              : classic.GetMagnitude(body.id, &magnitude);
    return known ? shown_magnitude(magnitude) : std::nullopt;
}

Appearance appearance_of(Model& model, const Body& body, const Place& apparent) {
    Appearance looks;
    if (apparent.distance_au == 0) return looks;  // the observer is at its centre
    looks.constellation =
        constellation_at(model, apparent.ra_deg, apparent.dec_deg).abbreviation;
    if (const auto* star = std::get_if<StarObject>(&body.record)) {
        looks.magnitude = shown_magnitude(star->magnitude);
        const Result<bool> known = model.add(body);
        double elongation = 0;
        if (known && model.classic().PhaseElongation(body.id, nullptr, nullptr, &elongation,
                                                     nullptr, nullptr))
            looks.elongation_deg = elongation * kDegrees;
        return looks;
    }
    looks.magnitude = magnitude_of(model, body);
    add_phase(model.classic(), body.id, apparent.distance_au, looks);
    return looks;
}

Constellation constellation_number(int index) {
    if (index < 0 || index >= static_cast<int>(std::size(kConstellations))) return {};
    const ConstellationName& found = kConstellations[index];
    return {found.index, found.name, found.abbreviation};
}

Constellation constellation_at(const Model& model, double ra_deg, double dec_deg) {
    return constellation_number(static_cast<unsigned char>(
        model.classic().RADecInConstell(ra_deg / kDegrees, dec_deg / kDegrees)));
}

Constellation constellation_called(std::string_view abbreviation) {
    for (const ConstellationName& known : kConstellations)
        if (known.abbreviation == abbreviation)
            return {known.index, known.name, known.abbreviation};
    return {};
}

}  // namespace solsys::sky
