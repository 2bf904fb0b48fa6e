#include "solsys/sky/satellites.h"

#include <algorithm>
#include <cmath>

#include "core/answer_or.h"
#include "sky/units.h"
#include "solsys/toolkit.h"

namespace solsys::sky {
namespace {

double length(const double v[3]) { return Vmod(v, 3); }

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

// Where the two stood when the light left, about the planet's centre, its ellipsoid stretched
// to a sphere of its equatorial radius [au].
struct Illumination {
    double from_sun[3];  // of the planet
    double moon[3];      // of the satellite, from the planet
    double earth[3];     // towards the observer
    double pole[3] = {0, 0, 0};
    double flattening = 0;
    double radius = 0;
};

std::optional<Illumination> illumination_of(CSWSolSys& model, const PlanetView& planet,
                                            const SSO_ID& moon) {
    int day = 0;
    double fraction = 0;
    model.GetTime(&day, &fraction);
    double observer[6];
    model.GetObserverVec2K(observer);
    model.SetTime(day, fraction - planet.distance_au * kLightDaysPerAu, false);
    Illumination seen{};
    double axes[3] = {0, 0, 0};
    const bool has_pole = model.GetPolarAxes(planet.planet.id, axes);
    const bool known = model.GetHelVec2K(planet.planet.id, 0, seen.from_sun) &&
                       model.GetVecCentre2K(moon, 0, seen.moon);
    model.SetTime(day, fraction, false);
    if (!known) return std::nullopt;
    Vmmad(observer, 1, seen.from_sun, -1, seen.earth);

    seen.radius = model.GetRadiEq(planet.planet.id, &seen.flattening) / kAuKm;
    if (has_pole) {
        const double direction[3] = {1, axes[0], axes[1]};
        sfp(direction, seen.pole);
        for (double* const v : {seen.moon, seen.from_sun, seen.earth})
            stretch(seen.pole, seen.flattening, v);
    }
    return seen;
}

// Where the line from the Sun through the satellite meets the planet first; false: it misses.
bool shadow_point(const Illumination& seen, double point[3]) {
    double sun_to_moon[3];
    Vadd(seen.from_sun, seen.moon, sun_to_moon);
    double sunward[3];
    double distance = 0;
    Vnorm(sun_to_moon, sunward, 3, &distance);
    const AlongAxis ray = along(sunward, seen.moon);
    if (!(ray.off < seen.radius) || ray.beyond > 0) return false;
    const double reach = -ray.beyond - std::sqrt(seen.radius * seen.radius - ray.off * ray.off);
    Vmmad(seen.moon, 1, sunward, reach, point);
    return true;
}

// A vector on the tangent plane turned so that the planet's north pole points up.
struct Turned {
    double x, y;
};
Turned turned(double east, double north, double pole_angle_deg) {
    const double turn = pole_angle_deg / kDegrees;
    return {east * std::cos(turn) - north * std::sin(turn),
            east * std::sin(turn) + north * std::cos(turn)};
}

void add_shadows(CSWSolSys& model, const PlanetView& planet, const SkyAxes& sky,
                 const Illumination& seen, SatelliteView& view) {
    double distance = 0;
    double axis[3];
    Vnorm(seen.from_sun, axis, 3, &distance);
    const AlongAxis shadow = along(axis, seen.moon);
    const double sun = kSunRadiusKm / kAuKm;
    const double umbra = seen.radius - shadow.beyond * (sun - seen.radius) / distance;
    const double penumbra = seen.radius + shadow.beyond * (sun + seen.radius) / distance;
    view.in_shadow = shadow.beyond > 0 && shadow.off < umbra;
    view.in_penumbra = shadow.beyond > 0 && !view.in_shadow && shadow.off < penumbra;
    double point[3];
    if (!shadow_point(seen, point)) return;
    view.shadow_on_disk = SVprod(point, seen.earth, 3) > 0;
    // Back to the ellipsoid, and onto the sky.
    const double along_pole = SVprod(point, seen.pole, 3);
    double on_planet[3];
    double of_date[3];
    Vmmad(point, 1, seen.pole, -along_pole * seen.flattening, on_planet);
    MV3prod(model.GetMtrxEq2K_EqCur(), on_planet, of_date);
    const Turned at =
        turned(SVprod(of_date, sky.east, 3) / seen.radius,
               SVprod(of_date, sky.north, 3) / seen.radius, planet.pole_angle_deg);
    view.shadow_x_radii = at.x;
    view.shadow_y_radii = at.y;
}

// How many satellites a small telescope, or the planet's fame, brings to mind.
std::size_t well_known(int planet) {
    switch (planet) {
        case 5:
            return 4;
        case 6:
            return 8;
        case 8:
            return 1;
        default:
            return 5;
    }
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

std::optional<PlanetView> view_planet(Model& model, const Body& planet) {
    CSWSolSys& classic = model.classic();
    double place[3] = {0, 0, 0};
    if (!classic.GetRADecVis(planet.id, place, 0.0) || !(place[0] > 0)) return std::nullopt;
    double flattening = 0;
    const double radius_km = classic.GetRadiEq(planet.id, &flattening);

    PlanetView view;
    view.planet = planet;
    view.distance_au = place[0];
    view.radius_arcsec = std::asin(radius_km / (place[0] * kAuKm)) * kArcseconds;
    double pole[3];
    if (pole_of(classic, planet.id, pole)) {
        const SkyAxes sky = axes_at(place[1], place[2]);
        view.pole_angle_deg =
            std::atan2(SVprod(pole, sky.east, 3), SVprod(pole, sky.north, 3)) * kDegrees;
        const double tilt = SVprod(pole, sky.away, 3);  // sine of the pole's inclination
        const double b = 1 - flattening;
        view.pole_tilt_deg = -std::asin(std::clamp(tilt, -1.0, 1.0)) * kDegrees;
        view.polar_ratio = std::sqrt(tilt * tilt + b * b * (1 - tilt * tilt));
    }
    double limb = 0;
    if (classic.PhaseElongation(planet.id, nullptr, &view.illuminated, nullptr, &limb, nullptr))
        view.bright_limb_deg = limb * kDegrees;
    return view;
}

std::optional<SatelliteView> view_satellite(Model& model, const PlanetView& planet,
                                            const Body& moon) {
    CSWSolSys& classic = model.classic();
    // Apparent directions of both; their difference is what the eye sees.
    double planet_place[3] = {0, 0, 0};
    double moon_place[3] = {0, 0, 0};
    if (!classic.GetRADecVis(planet.planet.id, planet_place, 0.0) ||
        !classic.GetRADecVis(moon.id, moon_place, 0.0))
        return std::nullopt;
    const SkyAxes sky = axes_at(planet_place[1], planet_place[2]);
    const SkyAxes seen = axes_at(moon_place[1], moon_place[2]);
    const double depth = SVprod(seen.away, sky.away, 3);

    SatelliteView view;
    view.moon = moon;
    view.distance_au = moon_place[0];
    view.east_arcsec = SVprod(seen.away, sky.east, 3) / depth * kArcseconds;
    view.north_arcsec = SVprod(seen.away, sky.north, 3) / depth * kArcseconds;
    const Turned at = turned(view.east_arcsec, view.north_arcsec, planet.pole_angle_deg);
    view.x_radii = at.x / planet.radius_arcsec;
    view.y_radii = at.y / planet.radius_arcsec;
    view.separation_radii = std::hypot(view.x_radii, view.y_radii);
    view.in_front = moon_place[0] < planet_place[0];
    const bool over_disk = std::hypot(view.x_radii, view.y_radii / planet.polar_ratio) < 1;
    view.on_disk = over_disk && view.in_front;
    view.behind_disk = over_disk && !view.in_front;
    view.radius_radii =
        std::max(0.0, classic.GetRadiEq(moon.id)) / classic.GetRadiEq(planet.planet.id);

    const auto lit = illumination_of(classic, planet, moon.id);
    if (!lit) return std::nullopt;
    add_shadows(classic, planet, sky, *lit, view);
    return view;
}

std::vector<Body> moons_of(Model& model, const Body& planet, bool all) {
    const MemoryWatch memory;
    std::vector<SSO_ID> ids;
    model.classic().GetMoonsListFor(planet.id, &ids);
    memory.check();
    if (!all) ids.resize(std::min(ids.size(), well_known(planet.id.number)));
    std::vector<Body> moons;
    moons.reserve(ids.size());
    for (const SSO_ID& id : ids) moons.emplace_back(id);
    return moons;
}

}  // namespace solsys::sky
