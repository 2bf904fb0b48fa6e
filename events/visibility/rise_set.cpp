// SearchRiseSet: the days of an object between its lower culminations, with the Sun's and the
// Moon's events of the same interval.
#include <cmath>
#include <optional>

#include "core/constants.h"
#include "events/visibility/hour_angle.h"
#include "events/visibility/state.h"

using solsys::kPi;
using solsys::kTwoPi;
using solsys::visibility::et_from_ut;
using solsys::visibility::kStandardRefraction;
using solsys::visibility::kTwilight;
using solsys::visibility::Track;
using solsys::visibility::usable;
using solsys::visibility::ut_from_et;

namespace {

constexpr double kTwoMinutes = 0.001388888888888889;  // day
constexpr double kNotReached = -1.0;
constexpr double kNeverUp = -2.0;

struct Culmination {
    double time = 0;
    double altitude = 0;
};

// What the search asks of its CSWVisibility again and again, by values.
class Questions {
  public:
    explicit Questions(CSWVisibility& visibility) : visibility_(visibility) {}

    // The culmination nearest to where [from, to] makes it look; the caller judges whether it
    // lies inside.
    std::optional<Culmination> culmination(SSO_ID id, double from, double to,
                                           double hour_angle) const {
        Culmination c;
        if (!visibility_.GetCulmination(&id, from, to, &c.time, &c.altitude, hour_angle) &&
            c.time == 0)
            return std::nullopt;
        return c;
    }
    std::optional<Culmination> lower_before(const SSO_ID& id, double transit) const {
        return culmination(id, transit - 1, transit, -kPi);
    }
    std::optional<Culmination> lower_after(const SSO_ID& id, double transit) const {
        return culmination(id, transit, transit + 1, kPi);
    }
    // 0 when the iteration from `seed` does not arrive.
    double near(SSO_ID id, double level, double seed, int sign) const {
        double time = 0, azimuth = 0;
        const auto s = static_cast<short>(sign);
        return visibility_.GetEventsTimeForElevation(&id, level, seed, time, azimuth, s) ? time
                                                                                         : 0.0;
    }
    double between(SSO_ID id, double from, double to, int sign, double& azimuth) const {
        double time = 0;
        const auto s = static_cast<short>(sign);
        return visibility_.GetEventsTimeForElevation(&id, kStandardRefraction, from, to, time,
                                                     azimuth, s)
                   ? time
                   : 0.0;
    }

  private:
    CSWVisibility& visibility_;
};

void to_ut(double& time) {
    if (time > 0) time = ut_from_et(time);
}

bool within(double t, double from, double to) { return from <= t && t <= to; }

// The Sun's passages of the horizon and of the twilight level on one side of its transit.
void sun_side(const Questions& ask, const SSO_ID& sun, const Culmination& top,
              const Culmination& low, int sign, double& horizon, double& twilight) {
    horizon = twilight = kNotReached;
    if (low.altitude > kStandardRefraction || top.altitude < kStandardRefraction) return;
    const auto seed = [&](double level) {
        const bool top_nearer =
            std::fabs(top.altitude - level) < std::fabs(low.altitude - level);
        return top_nearer ? top.time : low.time;
    };
    horizon = ask.near(sun, kStandardRefraction, seed(kStandardRefraction), sign);
    if (low.altitude <= kTwilight && top.altitude >= kTwilight)
        twilight = ask.near(sun, kTwilight, horizon > 0 ? horizon : seed(kTwilight), sign);
}

void sun_events(const Questions& ask, double from, double to, RISESETVIS& out) {
    const SSO_ID sun(SSO_PLNT, 10);
    out.dawn = out.dusk = out.sunrise = out.sunset = 0;
    const auto top = ask.culmination(sun, from, to, 0);
    if (!top || !within(top->time, from, to)) return;
    if (top->altitude < kTwilight) {
        out.dawn = out.dusk = out.sunrise = out.sunset = kNotReached;
        return;
    }
    if (const auto low = ask.lower_before(sun, top->time))
        sun_side(ask, sun, *top, *low, 1, out.sunrise, out.dawn);
    if (const auto low = ask.lower_after(sun, top->time))
        sun_side(ask, sun, *top, *low, -1, out.sunset, out.dusk);
    for (double* t : {&out.dawn, &out.dusk, &out.sunrise, &out.sunset}) to_ut(*t);
}

// The first moonrise and the first moonset of the interval. Of the transits from a day before
// it to a day after it, each brings the Moon up before and down after, or does not.
void moon_events(const Questions& ask, double from, double to, RISESETVIS& out) {
    constexpr double month = 32;  // day: within one the Moon crosses wherever it ever does
    const SSO_ID moon(SSO_MOON, 301);
    out.moonrise = out.moonset = kNotReached;
    const double last = std::fmin(to, from + month) + 1;
    double start = from - 1;
    while (start <= last && (out.moonrise <= 0 || out.moonset <= 0)) {
        auto top = ask.culmination(moon, start, start + 1, 0);
        if (top && top->time < start) top = ask.culmination(moon, start, start + 1, kTwoPi);
        if (!top) return;
        start = std::fmax(top->time, start) + 0.5;
        if (top->altitude < kStandardRefraction) continue;
        const auto cross = [&](const std::optional<Culmination>& low, int sign, double& slot) {
            if (slot > 0 || !low || low->altitude > kStandardRefraction) return;
            double azimuth = 0;
            const double t = sign > 0 ? ask.between(moon, low->time, top->time, sign, azimuth)
                                      : ask.between(moon, top->time, low->time, sign, azimuth);
            if (t > 0) slot = within(t, from, to) ? t : 0.0;
        };
        cross(ask.lower_before(moon, top->time), 1, out.moonrise);
        cross(ask.lower_after(moon, top->time), -1, out.moonset);
    }
    to_ut(out.moonrise);
    to_ut(out.moonset);
}

}  // namespace

bool CSWVisibility::SearchRiseSet(RISESETVIS* request) {
    State& s = *state_;
    if (request == nullptr || !s.model || !usable(request->from) || !usable(request->to))
        return false;
    if (request->days == nullptr) request->days = new std::vector<RISESETDAY>;
    request->day = static_cast<std::int32_t>(request->from);
    request->fraction = request->from - request->day;
    const double from = et_from_ut(request->from);
    const double to = et_from_ut(request->to);

    // Goes on where the last call stopped, unless the host has moved on beyond it.
    if (s.first_rise_set || s.next_rise_set + 1 < from) s.next_rise_set = from;
    s.first_rise_set = false;
    const double search_from = s.next_rise_set;
    const double search_to = search_from + 1;

    s.place_observer();
    const Questions ask(*this);
    sun_events(ask, from, to, *request);
    moon_events(ask, from, to, *request);

    Track track(*s.model, s.id);
    RISESETDAY ends;
    if (track.at(from)) {
        const auto h = track.horizontal();
        ends.start_azimuth = h.azimuth, ends.start_altitude = h.altitude;
    }
    if (track.at(to)) {
        const auto h = track.horizontal();
        ends.end_azimuth = h.azimuth, ends.end_altitude = h.altitude;
    }

    auto top = ask.culmination(s.id, search_from, search_to, 0);
    if (top && top->time < search_from)
        top = ask.culmination(s.id, search_from, search_to, kTwoPi);
    if (!top || !within(top->time, from, to)) {
        if (s.id == SSO_ID(SSO_MOON, 301)) {
            ends.rise = std::fmax(0.0, request->moonrise);
            ends.set = std::fmax(0.0, request->moonset);
        }
        request->days->push_back(ends);
        return true;
    }

    const bool spacecraft = s.id.type == SSO_FSCO || s.id.type == SSO_USCO;
    auto before = ask.lower_before(s.id, top->time);
    auto after = ask.lower_after(s.id, top->time);
    while (before && after) {
        RISESETDAY day;
        top = ask.culmination(s.id, before->time, after->time, 0);
        if (!top) break;
        if (top->altitude < kStandardRefraction) {
            day.transit = kNeverUp;
        } else {
            day = ends;
            day.transit = ut_from_et(top->time);
            day.transit_altitude = top->altitude;
            s.model->PhaseElongation(s.id, &day.phase_angle, &day.illuminated, &day.elongation,
                                     &day.bright_limb, &day.age);
            if (before->altitude <= kStandardRefraction)
                day.rise = ask.between(s.id, before->time, top->time, 1, day.rise_azimuth);
            if (after->altitude <= kStandardRefraction)
                day.set = ask.between(s.id, top->time, after->time, -1, day.set_azimuth);
            to_ut(day.rise);
            to_ut(day.set);
        }
        request->days->push_back(day);

        s.next_rise_set = after->time;
        if (after->time > to) break;
        const double next = after->time + kTwoMinutes;
        top = ask.culmination(s.id, next, next + 1, 0);
        if (!top || !within(top->time, from, to) || top->time <= after->time) break;
        before = after;
        if (spacecraft) before = ask.lower_before(s.id, top->time);
        after = ask.lower_after(s.id, top->time);
        // Bound to move on: a day ends after it began.
        if (after && after->time <= s.next_rise_set) break;
    }
    return true;
}

void CSWVisibility::FreeRiseSetVector(RISESETVIS* request) {
    if (request == nullptr) return;
    delete request->days;
    request->days = nullptr;
}
