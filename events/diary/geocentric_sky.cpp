#include "events/diary/geocentric_sky.h"

#include <cmath>
#include <limits>

#include "core/constants.h"
#include "events/search/span.h"
#include "frames/iau2006_precession.h"
#include "frames/nutation.h"
#include "solsys/star_place.h"

namespace solsys::diary {

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr State kNoState{{kNone, kNone, kNone}, {kNone, kNone, kNone}};
// A light time this far from the one assumed [day] is followed along a straight line to 1e-12
// au by any planet.
constexpr double kStraight = 5e-5;
constexpr int kMostPasses = 10;

bool is_body(std::int32_t type) {
    switch (type) {
        case SSO_STAR:
        case SSO_USTR:
        case SSO_UDSO:
        case SSO_CLST:
        case SSO_NEBU:
        case SSO_GALA:
        case SSO_DSNV:
            return false;
        default:
            return true;
    }
}

}  // namespace

void GeocentricSky::at(double jd_tt) {
    at_in_same_frames(jd_tt);
    const Instant t = search::split(jd_tt);
    const NutationAngles nutation = nutation_iau1980_by_recurrence(t);
    const FukushimaWilliams precession = fukushima_williams(t);
    equator_ = equator_from_gcrs(precession, nutation.d_psi, nutation.d_epsilon);
    ecliptic_ = rotate_x(precession.epsilon + nutation.d_epsilon) * equator_;
    equation_of_equinoxes_ = nutation.d_psi * std::cos(precession.epsilon + nutation.d_epsilon);
}

void GeocentricSky::at_in_same_frames(double jd_tt) {
    jd_ = jd_tt;
    const Instant t = search::split(jd_tt);
    model_.SetTime(t.day, t.fraction, false);
    earth_ = heliocentric(kEarth);
    beta_ = kLightDayPerAu * earth_.v;
    reciprocal_lorentz_ = std::sqrt(1 - dot(beta_, beta_));
}

State GeocentricSky::heliocentric(const SSO_ID& id) {
    double s[6];
    return model_.GetHelVec2K(id, 1, s) ? load_state(s) : kNoState;
}

State GeocentricSky::retarded(const SSO_ID& id, double light_time) {
    const Instant t = search::split(jd_);
    model_.SetTime(t.day, t.fraction - light_time, false);
    const State body = heliocentric(id);
    model_.SetTime(t.day, t.fraction, false);
    return body;
}

double& GeocentricSky::light_time(const SSO_ID& id) {
    for (LightTime& known : light_times_)
        if (known.number == id.number && known.type == id.type) return known.days;
    light_times_.push_back(
        {id.type, id.number, kLightDayPerAu * norm(heliocentric(id).r - earth_.r)});
    return light_times_.back().days;
}

Apparent GeocentricSky::sun() const {
    const double distance = norm(earth_.r);
    return {aberrated((-1.0 / distance) * earth_.r, beta_, reciprocal_lorentz_),
            distance,
            -earth_.r,
            {}};
}

// The light time of the last instant, corrected along the body's velocity: the distance changes
// by -(u v) per day of further light time.
Apparent GeocentricSky::apparent(const Target& target) {
    if (target.star != nullptr || !is_body(target.id.type)) {
        const StarObject* star =
            target.star != nullptr ? target.star : model_.GetStar(target.id);
        if (star == nullptr) return {{kNone, kNone, kNone}, kNone, {}, {}};
        const double years = days_since_j2000(search::split(jd_)) / kDaysPerJulianYear;
        const StarPlace place =
            star_place(*star, years, {earth_.r, beta_, reciprocal_lorentz_});
        return {unit(place.vector), place.distance, {}, {}};
    }
    if (target.id == kSun) return sun();
    double& tau = light_time(target.id);
    Vec3 path{};
    Vec3 velocity{};
    for (int pass = 0; pass < kMostPasses; ++pass) {
        const State body = retarded(target.id, tau);
        path = body.r - earth_.r;
        velocity = body.v;
        const double distance = norm(path);
        const double late = (kLightDayPerAu * distance - tau) /
                            (1 + kLightDayPerAu * dot(path, body.v) / distance);
        path -= late * body.v;
        tau += late;
        if (!(std::fabs(late) > kStraight)) break;
    }
    const double distance = norm(path);
    if (!std::isfinite(distance)) tau = 0;
    return {aberrated((1.0 / distance) * path, beta_, reciprocal_lorentz_), distance, path,
            velocity};
}

Apparent GeocentricSky::seen_from(const Apparent& body, Vec3 offset) const {
    if (dot(body.path, body.path) == 0) return body;  // a star: parallax is nothing to it
    const Vec3 path = body.path - offset;
    const double distance = norm(path);
    return {aberrated((1.0 / distance) * path, beta_, reciprocal_lorentz_), distance, path,
            body.velocity};
}

}  // namespace solsys::diary
