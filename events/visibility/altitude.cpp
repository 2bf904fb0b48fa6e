#include "events/visibility/altitude.h"

#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "events/search/span.h"

namespace solsys::visibility {
namespace {

// A place on a reference ellipsoid, body-fixed [au].
Vec3 on_ellipsoid(double radius_au, double flattening, const double location[3]) {
    const double sin_lat = std::sin(location[2]);
    const double cos_lat = std::cos(location[2]);
    const double e2 = (2 - flattening) * flattening;
    const double n = radius_au / std::sqrt(1 - e2 * sin_lat * sin_lat);
    const double rho = (n + location[0]) * cos_lat;
    return {rho * std::cos(location[1]), rho * std::sin(location[1]),
            ((1 - e2) * n + location[0]) * sin_lat};
}

bool is_on_the_earth(const OBSERVER& o) {
    return o.kind == LOCATION_SURFACE && o.body_type == SSO_PLNT && o.body_number == 3;
}

// A host's spacecraft from a site on the Earth, without the detour over the Sun: in au the
// Sun's distance would cost it the digits of its own.
std::optional<Vec3> nearby(CSWSolSys& model, const SSO_ID& id, double jd_tt) {
    const SSO_ID earth(SSO_PLNT, 3);
    const Instant t = search::split(jd_tt);
    model.SetTime(t.day, t.fraction, true);
    double centred[3];
    double matrix[9];
    if (!model.GetVecCentre2K(id, 0, centred) || !model.GetMtrxPl_Eq(earth, matrix, true))
        return std::nullopt;
    double flattening = 0;
    const double radius_au = model.GetRadiEq(earth, &flattening) * kAuPerKm;
    const Vec3 of_date = load_matrix(model.GetMtrxEq2K_EqCur()) * load(centred);
    const Vec3 body_fixed = transpose_times(load_matrix(matrix), of_date);
    const Vec3 seen =
        body_fixed - on_ellipsoid(radius_au, flattening, model.GetObserver().location);
    return unit(transpose_times(load_matrix(model.GetMtrxTopoCur()), seen));
}

// North, west, zenith.
std::optional<Vec3> from_horizon(search::SkyAt& sky, const SSO_ID& id, double jd_tt) {
    if (!search::is_instant(jd_tt)) return std::nullopt;
    if (id.type == SSO_USCO && is_on_the_earth(sky.model().GetObserver()))
        return nearby(sky.model(), id, jd_tt);
    return sky.at(jd_tt) ? sky.from_horizon(id) : std::nullopt;
}

}  // namespace

double sine_of_altitude(search::SkyAt& sky, const SSO_ID& id, double jd_tt) {
    const auto v = from_horizon(sky, id, jd_tt);
    return v ? v->z : search::kNone;
}

double altitude_rate(search::SkyAt& sky, const SSO_ID& id, double jd_tt) {
    const auto before = from_horizon(sky, id, jd_tt);
    const auto after = from_horizon(sky, id, jd_tt + kHalfSecond);
    return before && after ? (after->z - before->z) / kHalfSecond : search::kNone;
}

double azimuth(search::SkyAt& sky, const SSO_ID& id, double jd_tt) {
    const auto v = from_horizon(sky, id, jd_tt);
    if (!v) return search::kNone;
    double west = std::atan2(v->y, v->x);
    if (west < 0) west += kTwoPi;
    return west > 0 ? kTwoPi - west : 0.0;
}

}  // namespace solsys::visibility
