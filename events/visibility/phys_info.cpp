// Brief physical data of planets and moons.
#include <cmath>

#include "core/constants.h"
#include "events/visibility/state.h"
#include "solsys/kepler.h"

namespace {

constexpr double kAuPerDayInKmPerS = solsys::kAuKm / solsys::kSecondsPerDay;

// Osculating semi-major axis [au]; negative when there is no ellipse.
double semi_major_axis(double mu, const double state[6]) {
    Elements orbit{};
    if (!(mu > 0)) return -1;
    VectorToElements(mu, state, state + 3, &orbit);
    return orbit.e < 1 ? orbit.q : -1;
}

double axis_about_sun(CSWSolSys& model, int planet) {
    double state[6];
    if (!model.GetHelVec2K(SSO_ID(SSO_PLNT, planet), 1, state)) return -1;
    return semi_major_axis(model.GetGravity(SSO_ID(SSO_PLNT, 10)), state);
}

}  // namespace

bool CSWVisibility::GetPhysInfo(SSO_ID id, PHYSINFO* info) {
    if (info == nullptr) return false;
    *info = PHYSINFO{};
    if (!state_->model || (id.type != SSO_PLNT && id.type != SSO_MOON)) return false;
    CSWSolSys& model = *state_->model;
    if (!model.CheckSSO(&id)) return false;

    const double gm = model.GetGravity(id);
    const double radius_au = model.GetRadiEq(id) / solsys::kAuKm;
    if (gm > 0 && radius_au > 0)
        info->escape_velocity = std::sqrt(2 * gm / radius_au) * kAuPerDayInKmPerS;
    if (gm > 0) info->mass = gm / solsys::kSunGmOfMasses * solsys::kSunMassOfMasses;

    if (id.type == SSO_PLNT) {
        if (gm > 0) info->mass_ratio = model.GetGravity(SSO_ID(SSO_PLNT, 10)) / gm;
        if (id.number < 3) {
            const double planet = axis_about_sun(model, id.number);
            const double earth = axis_about_sun(model, 3);
            if (planet > 0 && earth > planet) info->max_elongation = std::asin(planet / earth);
        }
        return true;
    }
    if (id.number == 301) {
        info->mass_ratio = 1.0;
        return true;
    }
    if (gm > 0) info->mass_ratio = gm / model.GetGravity(SSO_ID(SSO_MOON, 301));
    const int primary = id.number / 100 == 0 ? 10 : id.number / 100;
    double state[6];
    if (model.GetVecCentre2K(id, 1, state)) {
        const double axis = semi_major_axis(model.GetParentGravity(id), state);
        const double planet = axis_about_sun(model, primary);
        const double earth = axis_about_sun(model, 3);
        if (axis > 0 && planet > 0 && earth > 0 && planet != earth)
            info->max_elongation = std::atan(axis / std::fabs(planet - earth));
    }
    return true;
}
