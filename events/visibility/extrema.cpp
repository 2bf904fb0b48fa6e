// Extrema of the altitude, and the rising and setting about a culmination.
#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "events/search/scan.h"
#include "events/visibility/altitude.h"
#include "events/visibility/state.h"

using solsys::search::is_instant;
using solsys::search::kSecond;
using solsys::search::SkyAt;
using solsys::visibility::altitude_rate;
using solsys::visibility::sine_of_altitude;

namespace {

constexpr double kUserOrbit = 0.028935185185185185;  // day: 2500 s
constexpr int kMostExtremumSteps = 1000000;
// Of one kind: about 40 years of days.
constexpr int kMostExtrema = 30000;

// The time in which a host's spacecraft would go round at the speed of its pericentre.
double user_object_period(CSWSolSys& model, const SSO_ID& id) {
    double state[6];
    const double mu = model.GetGravity(model.GetCentralBodyID(id));
    if (!(mu > 0) || !model.GetVecCentre2K(id, 1, state)) return kUserOrbit;
    Elements orbit{};
    VectorToElements(mu, state, state + 3, &orbit);
    const double period =
        std::sqrt((1 - orbit.e) / (1 + orbit.e)) * (1 - orbit.e) * solsys::kTwoPi / orbit.n;
    return std::isfinite(period) && period > 0 ? period : kUserOrbit;
}

// The step between looks at the rate [day]: half of the time after which the object stands over
// the same place of the observer's body again, as short as that can be. Two extrema within a
// step, as there are within a few degrees of a pole, are passed over together.
double extremum_step(CSWSolSys& model, const SSO_ID& id) {
    const double period =
        id.type == SSO_USCO ? user_object_period(model, id) : model.GetOrbitalPeriod(id);
    const OBSERVER& observer = model.GetObserver();
    double rotation =
        std::fabs(model.GetPeriodRotation(SSO_ID(observer.body_type, observer.body_number)));
    if (!(rotation > 0) || !std::isfinite(rotation)) rotation = 1;
    const double step =
        period >= 0 ? rotation / 2 * period / (period + rotation) : rotation / 2;
    return step >= kSecond ? step : rotation / 2;
}

struct Extremum {
    int kind = 0;  // 1 maximum, -1 minimum, 0 none
    double time = 0;
    double sine = 0;
};

// The altitude of an object of the search.
struct Altitude {
    SkyAt sky;
    SSO_ID id;
    double step;
    Altitude(CSWSolSys& model, const SSO_ID& object)
        : sky(model), id(object), step(extremum_step(model, object)) {}
    double rate(double t) { return altitude_rate(sky, id, t); }
    double sine(double t) { return sine_of_altitude(sky, id, t); }
};

Extremum next_extremum(Altitude& altitude, double from, double span) {
    if (!is_instant(from) || !is_instant(from + span)) return {};
    double rate = altitude.rate(from);
    if (rate == 0) {
        const int kind = altitude.rate(from + solsys::visibility::kHalfSecond) > 0 ? -1 : 1;
        return {kind, from, altitude.sine(from)};
    }
    const auto rate_at = [&](double t) { return altitude.rate(t); };
    const double step = std::copysign(altitude.step, span);
    const double end = from + span;
    double t = from;
    for (int i = 0; i < kMostExtremumSteps && t != end; ++i) {
        const double next = step > 0 ? std::min(t + step, end) : std::max(t + step, end);
        const double next_rate = altitude.rate(next);
        if (std::isnan(next_rate) || std::isnan(rate)) return {};
        const int kind = rate * step > 0 ? 1 : -1;  // as it is met going forward in time
        if (next_rate == 0) return {kind, next, altitude.sine(next)};
        if (rate * next_rate < 0) {
            const double found =
                solsys::search::bisection(rate_at, {{t, rate}, {next, next_rate}}, -1, kSecond)
                    .t;
            return {kind, found, altitude.sine(found)};
        }
        t = next;
        rate = next_rate;
    }
    return {};
}

// The first extremum of a kind on the wanted side of a level.
Extremum next_beyond(Altitude& altitude, double from, double span, int kind, double level) {
    const double end = from + span;
    for (int i = 0; i < kMostExtrema; ++i) {
        const Extremum e = next_extremum(altitude, from, end - from);
        if (e.kind == 0 || (e.kind == kind && (e.sine - level) * kind > 0)) return e;
        from = e.time + std::copysign(kSecond, span);
        if ((end - from) * span <= 0) return {};
    }
    return {};
}

// The culmination above the level: the one before, when the object is up and past it; else the
// next. The sine is compared with the angle itself.
Extremum culmination_near(Altitude& altitude, double time, double span, double elevation) {
    const double level = std::sin(elevation);
    Extremum last{-1, time, 0};
    if (!(altitude.sine(time) < elevation)) {
        last = next_extremum(altitude, time, -span);
        if (last.kind == 0 || (last.kind > 0 && last.sine > level)) return last;
    }
    const double from = last.time + kSecond;
    return next_beyond(altitude, from, time + span - from, 1, level);
}

double crossing(Altitude& altitude, double below, double above, double level) {
    const auto height = [&](double t) { return altitude.sine(t) - level; };
    return solsys::search::bisection(height, {{below, -1}, {above, 1}}, -1, kSecond).t;
}

}  // namespace

int CSWVisibility::FindObjSinAltMinMax(SSO_ID* id, double from, double span, double* time,
                                       double* value) {
    if (id == nullptr || time == nullptr || value == nullptr || !state_->model) return 0;
    Altitude altitude(*state_->model, *id);
    const Extremum e = next_extremum(altitude, from, span);
    if (e.kind == 0) return 0;
    *time = e.time;
    *value = e.sine;
    return e.kind;
}

bool CSWVisibility::FindNearestRiseSetTimes(SSO_ID* id, double time, double span,
                                            double elevation, double* times, double* azimuths) {
    if (id == nullptr || times == nullptr || !state_->model || !is_instant(time) ||
        !(span > 0) || !is_instant(time + span) || !is_instant(time - span) ||
        !std::isfinite(elevation))
        return false;
    Altitude altitude(*state_->model, *id);
    const double level = std::sin(elevation);
    const Extremum top = culmination_near(altitude, time, span, elevation);
    if (top.kind == 0) return false;
    const Extremum before = next_beyond(altitude, top.time - kSecond,
                                        -(top.time - kSecond - (time - span)), -1, level);
    if (before.kind == 0) return false;
    const Extremum after = next_beyond(altitude, top.time + kSecond, span, -1, level);
    if (after.kind == 0) return false;

    times[0] = crossing(altitude, before.time, top.time, level);
    times[1] = top.time;
    times[2] = crossing(altitude, after.time, top.time, level);
    if (azimuths != nullptr) {
        const auto azimuth_at = [&](double t) {
            const double a = solsys::visibility::azimuth(altitude.sky, *id, t);
            return std::isnan(a) ? solsys::kTwoPi : a;
        };
        azimuths[0] = azimuth_at(times[0]);
        azimuths[1] = std::asin(std::clamp(top.sine, -1.0, 1.0));
        azimuths[2] = azimuth_at(times[2]);
    }
    return true;
}
