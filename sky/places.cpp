#include "solsys/sky/places.h"

#include <cmath>
#include <limits>

#include "sky/place_of.h"
#include "sky/units.h"
#include "solsys/toolkit.h"

namespace solsys::sky {
namespace {

constexpr double kJ2000 = 2451545;
constexpr double kDaysPerYear = 365.25;

// Stars too far away for their parallax to be known have no distance.
Place star_place(const StarObject& star, const double direction[3]) {
    double spherical[3] = {0, 0, 0};
    psf1(direction, 1.0, spherical);
    const bool known = star.parallax > 0 && star.parallax < STAR_UNKNOWN;
    return place_of(
        known ? 1.0 / double{star.parallax} : std::numeric_limits<double>::quiet_NaN(),
        spherical[1], spherical[2]);
}

Place astrometric_star(const StarObject& star, const double observer[6], double years) {
    // Proper motion and parallax; an observer at rest sees no aberration.
    const double at_rest[6] = {observer[0], observer[1], observer[2], 0, 0, 0};
    double direction[3] = {0, 0, 0};
    double light_years = 0;
    CalcProperMotionD(years, at_rest, direction, star.ra, star.dec, double{star.pm_ra},
                      double{star.pm_dec}, double{star.parallax}, double{star.radial_velocity},
                      light_years);
    return star_place(star, direction);
}

std::optional<Place> astrometric_body(CSWSolSys& model, const SSO_ID& id) {
    double vector[4] = {0, 0, 0, 0};
    double spherical[3] = {0, 0, 0};
    if (!model.GetAstrometricVec2K(id, vector, 0.0)) return std::nullopt;
    psf1(vector, vector[3], spherical);
    return place_of(spherical[0], spherical[1], spherical[2]);
}

}  // namespace

std::optional<Place> apparent_place(Model& model, const Body& body) {
    CSWSolSys& classic = model.classic();
    if (const auto* star = std::get_if<StarObject>(&body.record)) {
        double direction[3] = {0, 0, 0};
        if (!classic.GetRADecVisStar(star, nullptr, direction, true)) return std::nullopt;
        return star_place(*star, direction);
    }
    if (!model.add(body)) return std::nullopt;
    double spherical[3] = {0, 0, 0};
    if (!classic.GetRADecVis(body.id, spherical, 0.0)) return std::nullopt;
    return place_of(spherical[0], spherical[1], spherical[2]);
}

std::optional<Place> astrometric_place(Model& model, const Body& body) {
    double observer[6] = {};
    model.classic().GetObserverVec2K(observer);
    if (const auto* star = std::get_if<StarObject>(&body.record))
        return astrometric_star(*star, observer,
                                (model.instant().jd_tt() - kJ2000) / kDaysPerYear);
    if (!model.add(body)) return std::nullopt;
    return astrometric_body(model.classic(), body.id);
}

std::optional<std::array<double, 6>> heliocentric_state(Model& model, const Body& body) {
    std::array<double, 6> state{};
    if (body.is_star() || !model.add(body)) return std::nullopt;
    if (!model.classic().GetHelVec2K(body.id, 1, state.data())) return std::nullopt;
    return state;
}

Horizontal horizontal_of(const Model& model, const Place& apparent) {
    const double ra = apparent.ra_deg / kDegrees;
    const double dec = apparent.dec_deg / kDegrees;
    double azimuth = 0;
    double altitude = 0;
    model.classic().FromRAToAzm(false, &ra, &dec, &azimuth, &altitude);
    return {azimuth * kDegrees, altitude * kDegrees};
}

LonLat ecliptic_of(const Model& model, const Place& apparent) {
    const double ra = apparent.ra_deg / kDegrees;
    const double dec = apparent.dec_deg / kDegrees;
    double lon = 0;
    double lat = 0;
    model.classic().FromRAToEclAng(false, &ra, &dec, &lon, &lat);
    return {lon * kDegrees, lat * kDegrees};
}

LonLat galactic_of(const Model& model, const Place& apparent) {
    const double ra = apparent.ra_deg / kDegrees;
    const double dec = apparent.dec_deg / kDegrees;
    double lon = 0;
    double lat = 0;
    model.classic().FromRAToGalAng(false, &ra, &dec, &lon, &lat);
    return {lon * kDegrees, lat * kDegrees};
}

Place of_date(const Model& model, const Place& j2000) {
    const double direction[3] = {1, j2000.ra_deg / kDegrees, j2000.dec_deg / kDegrees};
    double vector[3];
    double turned[3];
    double spherical[3];
    sfp(direction, vector);
    MV3prod(model.classic().GetMtrxEq2K_EqCur(), vector, turned);
    psf1(turned, 1.0, spherical);
    return {spherical[1] * kDegrees, spherical[2] * kDegrees, j2000.distance_au,
            j2000.light_time_days};
}

}  // namespace solsys::sky
