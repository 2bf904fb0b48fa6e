#include "events/visibility/track.h"

#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "core/instant.h"
#include "solsys/earth_orientation.h"
#include "solsys/time_scales.h"

namespace solsys::visibility {
namespace {

constexpr double kLargestDay = 2147483000.0;  // a day number is 32 bits wide

Instant split(double jd) {
    const int day = static_cast<int>(jd);
    return {day, jd - day};
}

}  // namespace

Horizontal at_hour_angle(double hour_angle, double dec, double lat) {
    const double north =
        std::sin(dec) * std::cos(lat) - std::cos(dec) * std::sin(lat) * std::cos(hour_angle);
    const double west = std::cos(dec) * std::sin(hour_angle);
    const double up =
        std::sin(dec) * std::sin(lat) + std::cos(dec) * std::cos(lat) * std::cos(hour_angle);
    const double azimuth = std::atan2(-west, north);
    return {azimuth < 0 ? azimuth + kTwoPi : azimuth, std::atan2(up, std::hypot(north, west))};
}

double wrapped(double x) {
    const double r = std::remainder(x, kTwoPi);
    return r <= -kPi ? r + kTwoPi : r;
}

bool usable(double jd) { return std::fabs(jd) < kLargestDay; }

double ut_from_et(double jd_et) {
    const Instant t = split(jd_et);
    return jd_et - ET_UT::Get(t.day, t.fraction) / kSecondsPerDay;
}

double et_from_ut(double jd_ut) {
    const Instant t = split(jd_ut);
    return jd_ut + ET_UT::Get(t.day, t.fraction) / kSecondsPerDay;
}

Track::Track(CSWSolSys& model, const SSO_ID& id)
    : model_(&model),
      id_(id),
      radius_km_(std::max(0.0, model.GetRadiEq(id))),
      longitude_(model.GetObserver().location[1]),
      latitude_(model.GetObserver().location[2]) {}

bool Track::at(double jd_et) {
    if (!usable(jd_et)) return false;
    const Instant t = split(jd_et);
    model_->UpdateSys(t.day, t.fraction);
    jd_ = jd_et;
    if (!model_->GetRADecVis(id_, place_, light_time_)) {
        light_time_ = 0;
        return false;
    }
    light_time_ = place_[0] * kLightDayPerAu;
    return std::isfinite(place_[1]) && std::isfinite(place_[2]);
}

double Track::sidereal_time() const {
    const Instant t = split(jd_);
    return SiderialTime(true, t.day, t.fraction) + longitude_;
}

Horizontal Track::horizontal() const {
    Horizontal h;
    model_->FromRAToAzm(false, &place_[1], &place_[2], &h.azimuth, &h.altitude);
    return h;
}

double Track::semidiameter() const {
    return radius_km_ > 0 ? std::atan(radius_km_ / (place_[0] * kAuKm)) : 0.0;
}

}  // namespace solsys::visibility
