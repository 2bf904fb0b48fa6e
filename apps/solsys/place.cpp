#include "apps/solsys/place.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

#include "apps/solsys/bodies.h"
#include "apps/solsys/failure.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

[[noreturn]] void not_computable(const SSO_ID& id) {
    throw BadInput(fmt::format("{} cannot be computed at this time", name_of(id)));
}

// Stars far away for their parallax to be known have no distance.
Place place_of(const StarObject& star, const double direction[3]) {
    double spherical[3] = {0, 0, 0};
    psf1(direction, 1.0, spherical);
    const bool known = star.parallax > 0 && star.parallax < STAR_UNKNOWN;
    const double distance =
        known ? 1.0 / double{star.parallax} : std::numeric_limits<double>::quiet_NaN();
    return {spherical[1] * kDegrees, spherical[2] * kDegrees, distance,
            distance * kLightDaysPerAu};
}

Place place_of(const double spherical[3]) {
    return {spherical[1] * kDegrees, spherical[2] * kDegrees, spherical[0],
            spherical[0] * kLightDaysPerAu};
}

}  // namespace

void move_to(CSWSolSys& model, Tt tt) { model.UpdateSys(tt.day, tt.fraction); }

Place apparent_place(CSWSolSys& model, const SSO_ID& id) {
    if (const StarObject* star = model.GetStar(id)) {
        double direction[3] = {0, 0, 0};
        if (!model.GetRADecVisStar(star, nullptr, direction, true)) not_computable(id);
        return place_of(*star, direction);
    }
    double spherical[3] = {0, 0, 0};
    if (!model.GetRADecVis(id, spherical, 0.0)) not_computable(id);
    return place_of(spherical);
}

Place astrometric_place(CSWSolSys& model, const SSO_ID& id) {
    double observer[6] = {};
    model.GetObserverVec2K(observer);
    int day = 0;
    double fraction = 0;
    model.GetTime(&day, &fraction);
    if (const StarObject* star = model.GetStar(id)) {
        // Proper motion and parallax; an observer at rest sees no aberration.
        for (int i = 3; i < 6; ++i) observer[i] = 0;
        double direction[3] = {0, 0, 0};
        double light_years = 0;
        CalcProperMotionD((day - 2451545 + fraction) / 365.25, observer, direction, star->ra,
                          star->dec, double{star->pm_ra}, double{star->pm_dec},
                          double{star->parallax}, double{star->radial_velocity}, light_years);
        return place_of(*star, direction);
    }

    double light_time = 0;
    double offset[3] = {0, 0, 0};
    double distance = 0;
    for (int pass = 0; pass < 20; ++pass) {
        double body[3] = {0, 0, 0};
        model.SetTime(day, fraction - light_time, false);
        const bool known = model.GetHelVec2K(id, 0, body);
        model.SetTime(day, fraction, false);
        if (!known) not_computable(id);
        for (int i = 0; i < 3; ++i) offset[i] = body[i] - observer[i];
        distance = Vmod(offset, 3);
        const double next = distance * kLightDaysPerAu;
        const bool settled = std::fabs(next - light_time) < 1e-10;
        light_time = next;
        if (settled) break;
    }
    double spherical[3] = {0, 0, 0};
    psf1(offset, distance, spherical);
    return place_of(spherical);
}

Horizontal horizontal_of(const CSWSolSys& model, const Place& apparent) {
    const double ra = apparent.ra_deg / kDegrees;
    const double dec = apparent.dec_deg / kDegrees;
    double azimuth = 0;
    double altitude = 0;
    model.FromRAToAzm(false, &ra, &dec, &azimuth, &altitude);
    return {azimuth * kDegrees, altitude * kDegrees};
}

}  // namespace app
