// Extrema of the altitude, and the rising and setting about a culmination.
#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "events/visibility/altitude_rate.h"
#include "events/visibility/state.h"

using solsys::visibility::AltitudeSine;
using solsys::visibility::usable;

namespace {

constexpr double kSecond = 1.1574074074074073e-5;      // day
constexpr double kHalfSecond = 5.787037037037037e-06;  // day
constexpr double kUserOrbit = 0.028935185185185185;    // day: 2500 s
constexpr int kMostSteps = 1000000;
constexpr int kMostExtrema = 100000;

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

// A step that misses no extremum [day]: half of the time after which the object stands over
// the same place of the observer's body again, as short as that can be.
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

Extremum next_extremum(CSWSolSys& model, AltitudeSine& altitude, const SSO_ID& id, double from,
                       double span) {
    if (!usable(from) || !usable(from + span)) return {};
    double rate = altitude.rate(from);
    if (rate == 0) {
        const int kind = altitude.rate(from + kHalfSecond) > 0 ? -1 : 1;
        return {kind, from, altitude.sine(from)};
    }
    const double step = std::copysign(extremum_step(model, id), span);
    const double end = from + span;
    double t = from;
    for (int i = 0; i < kMostSteps && t != end; ++i) {
        const double next = step > 0 ? std::min(t + step, end) : std::max(t + step, end);
        const double next_rate = altitude.rate(next);
        if (std::isnan(next_rate) || std::isnan(rate)) return {};
        const int kind = rate * step > 0 ? 1 : -1;  // as it is met going forward in time
        if (next_rate == 0) return {kind, next, altitude.sine(next)};
        if (rate * next_rate < 0) {
            double a = t, b = next;
            while (std::fabs(b - a) > kSecond) {
                const double middle = a + (b - a) / 2;
                (altitude.rate(middle) * rate > 0 ? a : b) = middle;
            }
            const double found = a + (b - a) / 2;
            return {kind, found, altitude.sine(found)};
        }
        t = next;
        rate = next_rate;
    }
    return {};
}

// The first extremum of a kind on the wanted side of a level.
Extremum next_beyond(CSWSolSys& model, AltitudeSine& altitude, const SSO_ID& id, double from,
                     double span, int kind, double level) {
    const double end = from + span;
    for (int i = 0; i < kMostExtrema; ++i) {
        const Extremum e = next_extremum(model, altitude, id, from, end - from);
        if (e.kind == 0 || (e.kind == kind && (e.sine - level) * kind > 0)) return e;
        from = e.time + std::copysign(kSecond, span);
        if ((end - from) * span <= 0) return {};
    }
    return {};
}

double crossing(AltitudeSine& altitude, double below, double above, double level) {
    while (std::fabs(above - below) > kSecond) {
        const double middle = below + (above - below) / 2;
        (altitude.sine(middle) < level ? below : above) = middle;
    }
    return below + (above - below) / 2;
}

}  // namespace

int CSWVisibility::FindObjSinAltMinMax(SSO_ID* id, double from, double span, double* time,
                                       double* value) {
    if (id == nullptr || !state_->model) return 0;
    CSWSolSys& model = *state_->model;
    AltitudeSine altitude(model, *id);
    const Extremum e = next_extremum(model, altitude, *id, from, span);
    if (e.kind == 0) return 0;
    *time = e.time;
    *value = e.sine;
    return e.kind;
}

bool CSWVisibility::FindNearestRiseSetTimes(SSO_ID* id, double time, double span,
                                            double elevation, double* times, double* azimuths) {
    if (id == nullptr || !state_->model || !usable(time) || !(span > 0) ||
        !usable(time + span) || !usable(time - span) || !std::isfinite(elevation))
        return false;
    CSWSolSys& model = *state_->model;
    AltitudeSine altitude(model, *id);
    const double level = std::sin(elevation);

    // The culmination: the one before, when the object is up and past it; else the next. The
    // sine is compared with the angle itself.
    Extremum last{-1, time, 0};
    if (!(altitude.sine(time) < elevation)) {
        last = next_extremum(model, altitude, *id, time, -span);
        if (last.kind == 0) return false;
    }
    Extremum top = last;
    if (!(last.kind > 0 && last.sine > level)) {
        const double from = last.time + kSecond;
        top = next_beyond(model, altitude, *id, from, time + span - from, 1, level);
        if (top.kind == 0) return false;
    }
    const Extremum before = next_beyond(model, altitude, *id, top.time - kSecond,
                                        -(top.time - kSecond - (time - span)), -1, level);
    if (before.kind == 0) return false;
    const Extremum after =
        next_beyond(model, altitude, *id, top.time + kSecond, span, -1, level);
    if (after.kind == 0) return false;

    times[0] = crossing(altitude, before.time, top.time, level);
    times[1] = top.time;
    times[2] = crossing(altitude, after.time, top.time, level);
    if (azimuths != nullptr) {
        const auto or_full_turn = [](double a) { return std::isnan(a) ? solsys::kTwoPi : a; };
        azimuths[0] = or_full_turn(altitude.azimuth(times[0]));
        azimuths[1] = std::asin(std::clamp(top.sine, -1.0, 1.0));
        azimuths[2] = or_full_turn(altitude.azimuth(times[2]));
    }
    return true;
}
