#include "events/visibility/altitude_rate.h"

#include <cmath>
#include <limits>

#include "core/constants.h"
#include "core/linalg.h"
#include "events/visibility/track.h"

namespace solsys::visibility {
namespace {

constexpr double kHalfSecond = 5.787037037037037e-06;  // day
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

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

}  // namespace

// A host's spacecraft from a site on the Earth, without the detour over the Sun: in au the
// Sun's distance would cost it the digits of its own.
bool AltitudeSine::nearby(double jd_et, double out[3]) {
    const OBSERVER& site = model_.GetObserver();
    const SSO_ID earth(SSO_PLNT, 3);
    const int day = static_cast<int>(jd_et);
    model_.SetTime(day, jd_et - day, true);
    double centred[3];
    double matrix[9];
    if (!model_.GetVecCentre2K(id_, 0, centred) || !model_.GetMtrxPl_Eq(earth, matrix, true))
        return false;
    double flattening = 0;
    const double radius_au = model_.GetRadiEq(earth, &flattening) * kAuPerKm;
    const Vec3 of_date = load_matrix(model_.GetMtrxEq2K_EqCur()) * load(centred);
    const Vec3 body_fixed = transpose_times(load_matrix(matrix), of_date);
    const Vec3 seen = body_fixed - on_ellipsoid(radius_au, flattening, site.location);
    store(transpose_times(load_matrix(model_.GetMtrxTopoCur()), seen), out);
    return true;
}

bool AltitudeSine::horizontal(double jd_et, double out[3]) {
    ++evaluations_;
    if (!usable(jd_et)) return false;
    const OBSERVER& site = model_.GetObserver();
    if (id_.type == SSO_USCO && site.kind == LOCATION_SURFACE && site.body_type == SSO_PLNT &&
        site.body_number == 3)
        return nearby(jd_et, out);

    const int day = static_cast<int>(jd_et);
    model_.UpdateSys(day, jd_et - day);
    double place[3];
    if (!model_.GetRADecVis(id_, place, 0.0)) return false;
    const Vec3 direction{std::cos(place[2]) * std::cos(place[1]),
                         std::cos(place[2]) * std::sin(place[1]), std::sin(place[2])};
    store(direction, out);
    model_.VecFromRAToAzm(out, out);
    return true;
}

double AltitudeSine::sine(double jd_et) {
    double v[3];
    if (!horizontal(jd_et, v)) return kNone;
    return v[2] / norm(load(v));
}

double AltitudeSine::rate(double jd_et) {
    double before[3];
    double after[3];
    if (!horizontal(jd_et, before) || !horizontal(jd_et + kHalfSecond, after)) return kNone;
    return (unit(load(after)).z - unit(load(before)).z) / kHalfSecond;
}

double AltitudeSine::azimuth(double jd_et) {
    double v[3];
    if (!horizontal(jd_et, v)) return kNone;
    double west = std::atan2(v[1], v[0]);
    if (west < 0) west += kTwoPi;
    return west > 0 ? kTwoPi - west : 0.0;
}

}  // namespace solsys::visibility
