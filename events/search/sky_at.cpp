#include "events/search/sky_at.h"

#include <cmath>
#include <limits>

#include "core/angles.h"
#include "events/search/span.h"
#include "solsys/earth_orientation.h"
#include "solsys/model.h"

namespace solsys::search {
namespace {

// The model answers for an asteroid or a comet that it does not know with the Sun's place.
bool is_known(CSWSolSys& model, const SSO_ID& id) {
    double state[3];
    switch (id.type) {
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
            return model.GetVecCentre2K(id, 0, state);
        default:
            return true;
    }
}

// Light times below this are no guess [day]: the model takes one that is within 2e-6 day, and
// on the Moon, which goes with the Earth, that much is up to 2.7 arcsec. A planet's 0.02.
constexpr double kNoGuess = 1e-4;

// An observer whose place is known when that of the body is.
bool stands_on_body(const OBSERVER& observer) {
    return observer.kind == LOCATION_BODY || observer.kind == LOCATION_BODY_FIXED ||
           observer.kind == LOCATION_SURFACE;
}

double carried(double distance_au) {
    const double days = distance_au * kLightDayPerAu;
    return days > kNoGuess ? days : 0.0;
}

}  // namespace

double& SkyAt::light_time(const SSO_ID& id) {
    for (LightTime& known : light_times_)
        if (known.number == id.number && known.type == id.type) return known.days;
    // Beyond the room the oldest guess goes.
    LightTime& oldest = light_times_[next_++ % light_times_.size()];
    oldest = {id.type, id.number, 0};
    return oldest.days;
}

bool SkyAt::at(double jd_tt) { return is_instant(jd_tt) && at(split(jd_tt)); }

bool SkyAt::at(Instant tt) {
    if (!is_instant(tt.jd())) return false;
    model_.UpdateSys(tt.day, tt.fraction);
    now_ = tt;
    const OBSERVER& observer = model_.GetObserver();
    if (stands_on_body(observer)) return model_.Inside().current.observer.place.known;
    double state[3];
    return model_.GetHelVec2K(SSO_ID(observer.body_type, observer.body_number), 0, state);
}

std::optional<Place> SkyAt::apparent(const SSO_ID& id) {
    double& tau = light_time(id);
    double place[3];
    if (!is_known(model_, id) || !model_.GetRADecVis(id, place, tau)) {
        tau = 0;
        return std::nullopt;
    }
    tau = carried(place[0]);
    if (!std::isfinite(place[1]) || !std::isfinite(place[2])) return std::nullopt;
    return Place{place[0], place[1], place[2]};
}

std::optional<SkyAt::Direction> SkyAt::direction(const SSO_ID& id) {
    if (const StarObject* star = model_.GetStar(id)) {
        double place[3];
        double vector[3];
        model_.GetRADecVisStar(star, place, vector, false);
        return Direction{unit(load(vector)), place[0]};
    }
    double& tau = light_time(id);
    double u[4];
    if (!is_known(model_, id) || !model_.GetSSOVisVec2K(id, u, tau)) {
        tau = 0;
        return std::nullopt;
    }
    tau = carried(u[3]);
    return Direction{load(u), u[3]};
}

Horizontal SkyAt::horizontal(const Place& place) const {
    Horizontal h;
    model_.FromRAToAzm(false, &place.ra, &place.dec, &h.azimuth, &h.altitude);
    return h;
}

std::optional<Horizontal> SkyAt::horizontal(const SSO_ID& id) {
    const auto place = apparent(id);
    if (!place) return std::nullopt;
    return horizontal(*place);
}

std::optional<Vec3> SkyAt::from_horizon(const SSO_ID& id) {
    const auto place = apparent(id);
    if (!place) return std::nullopt;
    double v[3];
    store(solsys::direction(place->ra, place->dec), v);
    model_.VecFromRAToAzm(v, v);
    return unit(load(v));
}

double SkyAt::sine_of_altitude(const SSO_ID& id) {
    const auto v = from_horizon(id);
    return v ? v->z : kNone;
}

// The frames that follow from the observer hold it, where the observer is of the Earth.
double SkyAt::apparent_sidereal_time() const {
    if (model_.GetReduction() == REDUCTION_MODERN) return model_.GetSiderealTime(true);
    const ObserverState& observer = model_.Inside().current.observer;
    if (!observer.on_earth()) return SiderialTime(true, now_.day, now_.fraction);
    const Mat3& turned_back = observer.frames.cur_from_body;
    return std::atan2(turned_back.r1.x, turned_back.r0.x);
}

double SkyAt::sidereal_time() const {
    return apparent_sidereal_time() + model_.GetObserver().location[1];
}

double semidiameter(double radius_km, double distance_au) {
    return radius_km > 0 ? std::atan(radius_km / (distance_au * kAuKm)) : 0.0;
}

}  // namespace solsys::search
