// SearchRiseSet: the days of an object between its lower culminations, with the Sun's and the
// Moon's events of the same interval.
#include <cmath>
#include <new>
#include <optional>

#include "core/answer_or.h"
#include "core/constants.h"
#include "events/search/span.h"
#include "events/visibility/day_step.h"
#include "events/visibility/state.h"

using solsys::kPi;
using solsys::kTwoPi;
using solsys::search::tt_from_ut;
using solsys::search::ut_from_tt;
using solsys::visibility::kStandardRefraction;
using solsys::visibility::kTwilight;

namespace {

constexpr double kTwoMinutes = 0.001388888888888889;  // day
constexpr double kNotReached = -1.0;
constexpr double kNeverUp = -2.0;

struct Culmination {
    double time = 0;
    double altitude = 0;
};

// JD TT.
struct Interval {
    double from = 0;
    double to = 0;
    [[nodiscard]] bool has(double t) const { return from <= t && t <= to; }
};

// What CSWVisibility finds, as values.
class Finder {
  public:
    explicit Finder(CSWVisibility& visibility) : visibility_(visibility) {}

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
    double crossing_near(SSO_ID id, double level, double seed, int sign) const {
        double time = 0, azimuth = 0;
        const auto s = static_cast<short>(sign);
        return visibility_.GetEventsTimeForElevation(&id, level, seed, time, azimuth, s) ? time
                                                                                         : 0.0;
    }
    double crossing(SSO_ID id, double from, double to, int sign, double& azimuth) const {
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
    if (time > 0) time = ut_from_tt(time);
}

// The Sun's passages of the horizon and of the twilight level on one side of its transit.
void sun_side(const Finder& find, const SSO_ID& sun, const Culmination& top,
              const Culmination& low, int sign, double& horizon, double& twilight) {
    horizon = twilight = kNotReached;
    if (low.altitude > kStandardRefraction || top.altitude < kStandardRefraction) return;
    const auto seed = [&](double level) {
        const bool top_nearer =
            std::fabs(top.altitude - level) < std::fabs(low.altitude - level);
        return top_nearer ? top.time : low.time;
    };
    horizon = find.crossing_near(sun, kStandardRefraction, seed(kStandardRefraction), sign);
    if (low.altitude <= kTwilight && top.altitude >= kTwilight)
        twilight =
            find.crossing_near(sun, kTwilight, horizon > 0 ? horizon : seed(kTwilight), sign);
}

void sun_events(const Finder& find, const Interval& in, RISESETVIS& out) {
    const SSO_ID sun(SSO_PLNT, 10);
    out.dawn = out.dusk = out.sunrise = out.sunset = 0;
    const auto top = find.culmination(sun, in.from, in.to, 0);
    if (!top || !in.has(top->time)) return;
    if (top->altitude < kTwilight) {
        out.dawn = out.dusk = out.sunrise = out.sunset = kNotReached;
        return;
    }
    if (const auto low = find.lower_before(sun, top->time))
        sun_side(find, sun, *top, *low, 1, out.sunrise, out.dawn);
    if (const auto low = find.lower_after(sun, top->time))
        sun_side(find, sun, *top, *low, -1, out.sunset, out.dusk);
    for (double* t : {&out.dawn, &out.dusk, &out.sunrise, &out.sunset}) to_ut(*t);
}

// The first moonrise and the first moonset of the interval. Of the transits from a day before
// it to a day after it, each brings the Moon up before and down after, or does not.
void moon_events(const Finder& find, const Interval& in, RISESETVIS& out) {
    constexpr double month = 32;  // day: within one the Moon crosses wherever it ever does
    const SSO_ID moon(SSO_MOON, 301);
    out.moonrise = out.moonset = kNotReached;
    const double last = std::fmin(in.to, in.from + month) + 1;
    double start = in.from - 1;
    while (start <= last && (out.moonrise <= 0 || out.moonset <= 0)) {
        auto top = find.culmination(moon, start, start + 1, 0);
        if (top && top->time < start) top = find.culmination(moon, start, start + 1, kTwoPi);
        if (!top) return;
        start = std::fmax(top->time, start) + 0.5;
        if (top->altitude < kStandardRefraction) continue;
        const auto cross = [&](const std::optional<Culmination>& low, int sign, double& slot) {
            if (slot > 0 || !low || low->altitude > kStandardRefraction) return;
            double azimuth = 0;
            const double t = sign > 0
                                 ? find.crossing(moon, low->time, top->time, sign, azimuth)
                                 : find.crossing(moon, top->time, low->time, sign, azimuth);
            if (t > 0) slot = in.has(t) ? t : 0.0;
        };
        cross(find.lower_before(moon, top->time), 1, out.moonrise);
        cross(find.lower_after(moon, top->time), -1, out.moonset);
    }
    to_ut(out.moonrise);
    to_ut(out.moonset);
}

// A record of the places at both ends of the interval.
RISESETDAY places_at_ends(CSWSolSys& model, const SSO_ID& id, const Interval& in) {
    solsys::search::SkyAt sky(model);
    RISESETDAY ends;
    if (const auto place = sky.apparent(id, in.from)) {
        const auto h = sky.horizontal(*place);
        ends.start_azimuth = h.azimuth, ends.start_altitude = h.altitude;
    }
    if (const auto place = sky.apparent(id, in.to)) {
        const auto h = sky.horizontal(*place);
        ends.end_azimuth = h.azimuth, ends.end_altitude = h.altitude;
    }
    return ends;
}

// One day between the lower culminations around a transit, at which the model stands.
RISESETDAY day_of(CSWSolSys& model, const Finder& find, const SSO_ID& id,
                  const RISESETDAY& ends, const Culmination& before, const Culmination& top,
                  const Culmination& after) {
    RISESETDAY day;
    if (top.altitude < kStandardRefraction) {
        day.transit = kNeverUp;
        return day;
    }
    day = ends;
    day.transit = ut_from_tt(top.time);
    day.transit_altitude = top.altitude;
    model.PhaseElongation(id, &day.phase_angle, &day.illuminated, &day.elongation,
                          &day.bright_limb, &day.age);
    if (before.altitude <= kStandardRefraction)
        day.rise = find.crossing(id, before.time, top.time, 1, day.rise_azimuth);
    if (after.altitude <= kStandardRefraction)
        day.set = find.crossing(id, top.time, after.time, -1, day.set_azimuth);
    to_ut(day.rise);
    to_ut(day.set);
    return day;
}

// All days from the one of a transit on, while transits fall into the interval. Answers the end
// of the last one, or `next` when there is none.
double append_days(CSWSolSys& model, const Finder& find, const SSO_ID& id, const Interval& in,
                   const RISESETDAY& ends, const Culmination& first, double next,
                   std::vector<RISESETDAY>& days) {
    const bool spacecraft = id.type == SSO_FSCO || id.type == SSO_USCO;
    auto before = find.lower_before(id, first.time);
    auto after = find.lower_after(id, first.time);
    while (before && after) {
        auto top = find.culmination(id, before->time, after->time, 0);
        if (!top) break;
        days.push_back(day_of(model, find, id, ends, *before, *top, *after));
        next = after->time;
        if (next > in.to) break;

        const double from = next + kTwoMinutes;
        top = find.culmination(id, from, from + 1, 0);
        if (!top || !in.has(top->time) || top->time <= next) break;
        before = spacecraft ? find.lower_before(id, top->time) : after;
        after = find.lower_after(id, top->time);
        // Bound to move on: a day ends after it began.
        if (after && after->time <= next) break;
    }
    return next;
}

}  // namespace

bool CSWVisibility::SearchRiseSet(RISESETVIS* request) {
    using solsys::search::is_instant;
    State& s = *state_;
    if (request == nullptr || !s.model || !is_instant(request->from) ||
        !is_instant(request->to))
        return false;
    if (request->days == nullptr) request->days = new (std::nothrow) std::vector<RISESETDAY>;
    if (request->days == nullptr) return false;
    request->day = static_cast<std::int32_t>(request->from);
    request->fraction = request->from - request->day;
    const Interval in{tt_from_ut(request->from), tt_from_ut(request->to)};

    // Goes on where the last call stopped, unless the host has moved on beyond it.
    if (s.first_rise_set || s.next_rise_set + 1 < in.from) s.next_rise_set = in.from;
    s.first_rise_set = false;
    const double from = s.next_rise_set;

    s.place_observer();
    const Finder find(*this);
    sun_events(find, in, *request);
    moon_events(find, in, *request);
    RISESETDAY ends = places_at_ends(*s.model, s.id, in);

    auto top = find.culmination(s.id, from, from + 1, 0);
    if (top && top->time < from) top = find.culmination(s.id, from, from + 1, kTwoPi);
    const bool any = top && in.has(top->time);
    if (!any && s.id == SSO_ID(SSO_MOON, 301)) {
        ends.rise = std::fmax(0.0, request->moonrise);
        ends.set = std::fmax(0.0, request->moonset);
    }
    const std::size_t before = request->days->size();
    const bool whole = solsys::answer_or(false, [&] {
        if (any) {
            s.next_rise_set =
                append_days(*s.model, find, s.id, in, ends, *top, from, *request->days);
        } else {
            request->days->push_back(ends);
        }
        return true;
    });
    if (!whole) request->days->resize(before);
    return whole;
}

void CSWVisibility::FreeRiseSetVector(RISESETVIS* request) {
    if (request == nullptr) return;
    delete request->days;
    request->days = nullptr;
}
