#include "apps/solsys/satellite_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "apps/solsys/bodies.h"
#include "apps/solsys/failure.h"
#include "apps/solsys/place.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr double kAuKm = 149597870.7;
constexpr double kSunRadiusKm = 696000.0;
constexpr double kArcsecPerRadian = 206264.80624709636;

double length(const double v[3]) { return Vmod(v, 3); }

[[noreturn]] void not_computable(const SSO_ID& id) {
    throw BadInput(fmt::format("{} cannot be computed at this time", name_of(id)));
}

// Unit vectors of the sky at an apparent place of date: towards the body, east and north.
struct SkyAxes {
    double away[3], east[3], north[3];
};
SkyAxes axes_at(double ra, double dec) {
    return {{std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)},
            {-std::sin(ra), std::cos(ra), 0},
            {-std::sin(dec) * std::cos(ra), -std::sin(dec) * std::sin(ra), std::cos(dec)}};
}

// North pole of a body of date; false when it has no rotation elements.
bool pole_of(CSWSolSys& model, const SSO_ID& id, double pole[3]) {
    double axes[3] = {0, 0, 0};
    if (!model.GetPolarAxes(id, axes)) return false;
    const double direction[3] = {1, axes[0], axes[1]};
    double j2000[3];
    sfp(direction, j2000);
    MV3prod(model.GetMtrxEq2K_EqCur(), j2000, pole);
    return true;
}

// Stretches a vector along the pole, so that the planet's ellipsoid becomes a sphere of its
// equatorial radius; lines stay lines.
void stretch(const double pole[3], double flattening, double v[3]) {
    const double k = SVprod(pole, v, 3) * (1 / (1 - flattening) - 1);
    for (int i = 0; i < 3; ++i) v[i] += k * pole[i];
}

// Where a point lies against the shadow or the view of a sphere at the origin: how far along
// the axis (positive beyond the sphere) and off it.
struct AlongAxis {
    double beyond, off;
};
AlongAxis along(const double axis[3], const double v[3]) {
    const double beyond = SVprod(axis, v, 3);
    double rest[3];
    Vmmad(v, 1, axis, -beyond, rest);
    return {beyond, length(rest)};
}

}  // namespace

std::string SatelliteView::phenomenon() const {
    std::string text;
    const auto add = [&text](bool holds, const char* words) {
        if (holds) text += (text.empty() ? "" : ", ") + std::string(words);
    };
    add(on_disk, "on the disk");
    add(behind_disk, "behind the disk");
    add(in_shadow, "in the shadow");
    add(in_penumbra, "in the penumbra");
    add(shadow_on_disk, "shadow on the disk");
    return text;
}

PlanetView view_planet(CSWSolSys& model, const SSO_ID& planet) {
    double place[3] = {0, 0, 0};
    if (!model.GetRADecVis(planet, place, 0.0)) not_computable(planet);
    double flattening = 0;
    const double radius_km = model.GetRadiEq(planet, &flattening);

    PlanetView view;
    view.id = planet;
    view.distance_au = place[0];
    view.radius_arcsec = std::asin(radius_km / (place[0] * kAuKm)) * kArcsecPerRadian;
    double pole[3];
    if (pole_of(model, planet, pole)) {
        const SkyAxes sky = axes_at(place[1], place[2]);
        view.pole_angle_deg =
            std::atan2(SVprod(pole, sky.east, 3), SVprod(pole, sky.north, 3)) * kDegrees;
        const double tilt = SVprod(pole, sky.away, 3);  // sine of the pole's inclination
        const double b = 1 - flattening;
        view.pole_tilt_deg = -std::asin(std::clamp(tilt, -1.0, 1.0)) * kDegrees;
        view.polar_ratio = std::sqrt(tilt * tilt + b * b * (1 - tilt * tilt));
    }
    return view;
}

SatelliteView view_satellite(CSWSolSys& model, const PlanetView& planet, const SSO_ID& moon) {
    // Apparent directions of both; their difference is what the eye sees.
    double planet_place[3] = {0, 0, 0};
    double moon_place[3] = {0, 0, 0};
    if (!model.GetRADecVis(planet.id, planet_place, 0.0)) not_computable(planet.id);
    if (!model.GetRADecVis(moon, moon_place, 0.0)) not_computable(moon);
    const SkyAxes sky = axes_at(planet_place[1], planet_place[2]);
    const SkyAxes seen = axes_at(moon_place[1], moon_place[2]);
    const double depth = SVprod(seen.away, sky.away, 3);

    SatelliteView view;
    view.id = moon;
    view.east_arcsec = SVprod(seen.away, sky.east, 3) / depth * kArcsecPerRadian;
    view.north_arcsec = SVprod(seen.away, sky.north, 3) / depth * kArcsecPerRadian;
    const double turn = planet.pole_angle_deg / kDegrees;
    view.x_radii = (view.east_arcsec * std::cos(turn) - view.north_arcsec * std::sin(turn)) /
                   planet.radius_arcsec;
    view.y_radii = (view.east_arcsec * std::sin(turn) + view.north_arcsec * std::cos(turn)) /
                   planet.radius_arcsec;
    view.separation_radii = std::hypot(view.x_radii, view.y_radii);
    view.in_front = moon_place[0] < planet_place[0];
    const bool over_disk = std::hypot(view.x_radii, view.y_radii / planet.polar_ratio) < 1;
    view.on_disk = over_disk && view.in_front;
    view.behind_disk = over_disk && !view.in_front;

    // Sun, planet and satellite as they were when the light left.
    int day = 0;
    double fraction = 0;
    model.GetTime(&day, &fraction);
    double offset[3];
    double from_sun[3];
    model.SetTime(day, fraction - planet.distance_au * kLightDaysPerAu, false);
    double axes[3] = {0, 0, 0};
    const bool has_pole = model.GetPolarAxes(planet.id, axes);
    const bool known =
        model.GetHelVec2K(planet.id, 0, from_sun) && model.GetVecCentre2K(moon, 0, offset);
    model.SetTime(day, fraction, false);
    if (!known) not_computable(moon);

    double flattening = 0;
    const double radius = model.GetRadiEq(planet.id, &flattening) / kAuKm;
    if (has_pole) {
        const double direction[3] = {1, axes[0], axes[1]};
        double pole[3];
        sfp(direction, pole);
        stretch(pole, flattening, offset);
        stretch(pole, flattening, from_sun);
    }
    double distance = 0;
    double axis[3];
    Vnorm(from_sun, axis, 3, &distance);
    const AlongAxis shadow = along(axis, offset);
    const double sun_radius = kSunRadiusKm / kAuKm;
    const double umbra = radius - shadow.beyond * (sun_radius - radius) / distance;
    const double penumbra = radius + shadow.beyond * (sun_radius + radius) / distance;
    view.in_shadow = shadow.beyond > 0 && shadow.off < umbra;
    view.in_penumbra = shadow.beyond > 0 && !view.in_shadow && shadow.off < penumbra;
    // Its shadow runs along the line from the Sun through it; the line's distance from the
    // planet's centre tells whether it falls there.
    double sunward[3];
    double sun_to_moon[3];
    Vadd(from_sun, offset, sun_to_moon);
    double moon_distance = 0;
    Vnorm(sun_to_moon, sunward, 3, &moon_distance);
    view.shadow_on_disk = shadow.beyond < 0 && along(sunward, offset).off < radius;
    return view;
}

}  // namespace app
