#include "apps/solsys/appearance.h"

#include <fmt/format.h>

#include <cmath>

#include "apps/solsys/constellations.h"

namespace app {
namespace {

constexpr double kAuKm = 149597870.7;
constexpr double kArcsecPerDegree = 3600;
constexpr double kFaintest = 60;  // what is fainter is one of the marks for "not known"

// Saturn with its rings at their true tilt, which the law takes from positions along the axes
// of the planet's equator.
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
    const auto turned = [&](const double* in, double* out) {
        for (int i = 0; i < 3; ++i)
            out[i] = to_equator[3 * i] * in[0] + to_equator[3 * i + 1] * in[1] +
                     to_equator[3 * i + 2] * in[2];
    };
    double observer_turned[3];
    double position_turned[3];
    turned(observer, observer_turned);
    turned(position, position_turned);
    return StarMagPlanet(observer_turned, 6, position_turned, magnitude) == 0;
}

double magnitude_of(CSWSolSys& model, const SSO_ID& id) {
    float magnitude = 0;
    const bool known = id == SSO_ID(SSO_PLNT, 6) ? saturn_magnitude(model, &magnitude)
                                                 : model.GetMagnitude(id, &magnitude);
    if (!known || !(magnitude < kFaintest)) return Appearance::kNone;
    // To the digits that single precision holds.
    return std::round(double{magnitude} * 1e4) / 1e4;
}

std::string shown_elongation(double degrees) {
    if (degrees == 0) return "";
    return fmt::format("{:.1f} {}", std::fabs(degrees), degrees < 0 ? 'W' : 'E');
}

}  // namespace

Appearance appearance_of(CSWSolSys& model, const SSO_ID& id, const Place& apparent) {
    Appearance looks;
    if (apparent.distance_au == 0) return looks;  // the observer is at its centre
    looks.magnitude = magnitude_of(model, id);
    looks.constellation =
        constellation_at(model, apparent.ra_deg, apparent.dec_deg).abbreviation;
    double phase = 0;
    double elongation = 0;
    double illuminated = 0;
    if (model.PhaseElongation(id, &phase, &illuminated, &elongation, nullptr, nullptr)) {
        looks.phase_angle_deg = phase * kDegrees;
        looks.illuminated_fraction = illuminated;
        looks.elongation_deg = elongation * kDegrees;
    }
    // Of comets the library has a nominal nucleus only, which is not what is seen.
    const double radius_au = id.type == SSO_COMT ? 0 : model.GetRadiEq(id) / kAuKm;
    if (radius_au > 0 && radius_au < apparent.distance_au)
        looks.angular_diameter_arcsec =
            2 * std::asin(radius_au / apparent.distance_au) * kDegrees * kArcsecPerDegree;
    return looks;
}

void add_appearance_columns(std::vector<Column>& columns, bool in_table) {
    const auto title = [in_table](const char* text) { return in_table ? text : ""; };
    columns.push_back({"magnitude", title("Mag"), fixed(1)});
    columns.push_back({"phase_angle_deg", "", nullptr});
    columns.push_back({"illuminated_fraction", title("Lit"), fixed(2)});
    columns.push_back({"elongation_deg", title("Elong"), shown_elongation});
    columns.push_back({"angular_diameter_arcsec", "", nullptr});
    columns.push_back({"constellation", title("Con"), nullptr});
}

void add_appearance_cells(std::vector<Cell>& row, const Appearance& looks) {
    for (const double value :
         {looks.magnitude, looks.phase_angle_deg, looks.illuminated_fraction,
          looks.elongation_deg, looks.angular_diameter_arcsec})
        row.emplace_back(value);
    row.push_back(looks.constellation.empty() ? Cell() : Cell(looks.constellation));
}

}  // namespace app
