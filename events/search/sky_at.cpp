#include "events/search/sky_at.h"

#include <cmath>
#include <limits>

#include "core/constants.h"
#include "events/search/span.h"
#include "solsys/earth_orientation.h"

namespace solsys::search {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

}  // namespace

double& SkyAt::light_time(const SSO_ID& id) {
    for (LightTime& known : light_times_)
        if (known.number == id.number && known.type == id.type) return known.days;
    light_times_.push_back({id.type, id.number, 0});
    return light_times_.back().days;
}

bool SkyAt::at(double jd_tt) {
    if (!is_instant(jd_tt)) return false;
    const Instant t = split(jd_tt);
    model_.UpdateSys(t.day, t.fraction);
    jd_ = jd_tt;
    return true;
}

std::optional<Place> SkyAt::apparent(const SSO_ID& id) {
    double& tau = light_time(id);
    double place[3];
    if (!model_.GetRADecVis(id, place, tau)) {
        tau = 0;
        return std::nullopt;
    }
    tau = place[0] * kLightDayPerAu;
    if (!std::isfinite(place[1]) || !std::isfinite(place[2])) return std::nullopt;
    return Place{place[0], place[1], place[2]};
}

std::optional<SkyAt::Direction> SkyAt::direction(const SSO_ID& id) {
    double& tau = light_time(id);
    double u[4];
    if (!model_.GetSSOVisVec2K(id, u, tau)) {
        tau = 0;
        return std::nullopt;
    }
    tau = u[3] * kLightDayPerAu;
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

double SkyAt::sine_of_altitude(const SSO_ID& id) {
    const auto place = apparent(id);
    if (!place) return kNone;
    double v[3] = {std::cos(place->dec) * std::cos(place->ra),
                   std::cos(place->dec) * std::sin(place->ra), std::sin(place->dec)};
    model_.VecFromRAToAzm(v, v);
    return v[2] / norm(load(v));
}

double SkyAt::sidereal_time() const {
    const Instant t = split(jd_);
    return SiderialTime(true, t.day, t.fraction) + model_.GetObserver().location[1];
}

double semidiameter(double radius_km, double distance_au) {
    return radius_km > 0 ? std::atan(radius_km / (distance_au * kAuKm)) : 0.0;
}

}  // namespace solsys::search
