#include "solsys/sky/risings.h"

#include <cmath>

#include "events/search/span.h"
#include "events/visibility/crossings.h"
#include "sky/units.h"
#include "solsys/sky/places.h"

namespace solsys::sky {
namespace {

constexpr double kTwilights[] = {-6, -12, -18};
constexpr double kTurnsPerDay = 1.00273790935;  // of the Earth against the stars
constexpr double kTransitToleranceDays = 0.02 / 86400;

// Whether the body is up at an instant: by the last passage before it, else by the start.
class UpState {
  public:
    explicit UpState(const AltitudeEvents& found) : found_(found) {
        if (!found.above_at_start.empty() && found.above_at_start[0])
            up_ = *found.above_at_start[0] ? kUp : kDown;
    }
    // Instants have to grow from call to call.
    enum Side { kUnknown, kUp, kDown };
    Side at(const Instant& t) {
        for (; next_ < found_.events.size() && found_.events[next_].at <= t; ++next_)
            if (found_.events[next_].level == 0)
                up_ = found_.events[next_].rising ? kUp : kDown;
        return up_;
    }

  private:
    const AltitudeEvents& found_;
    std::size_t next_ = 0;
    Side up_ = kUnknown;
};

// Hour angle in turns, (-1/2, 1/2], and the altitude; empty where the body cannot be computed.
struct Meridian {
    double turns = 0;
    double altitude_deg = 0;
};
std::optional<Meridian> meridian_at(Model& model, const Body& body, const Instant& t) {
    if (!model.move_to(t)) return std::nullopt;
    const auto place = apparent_place(model, body);
    if (!place) return std::nullopt;
    const Horizontal over = horizontal_of(model, *place);
    // From azimuth and altitude: west of the meridian positive.
    const double azimuth = over.azimuth_deg / kDegrees;
    const double altitude = over.altitude_deg / kDegrees;
    const double latitude = model.site()->latitude_deg / kDegrees;
    const double west = -std::sin(azimuth) * std::cos(altitude);
    const double up = std::sin(altitude) * std::cos(latitude) -
                      std::cos(altitude) * std::cos(azimuth) * std::sin(latitude);
    return Meridian{std::atan2(west, up) * kDegrees / 360, over.altitude_deg};
}

// From a guess: the hour angle grows by a turn in a day, less what the body itself moves.
std::optional<Transit> transit_near(Model& model, const Body& body, Instant t) {
    double rate = kTurnsPerDay;
    std::optional<Meridian> seen = meridian_at(model, body, t);
    for (int pass = 0; seen && pass < 8; ++pass) {
        const double step = -seen->turns / rate;
        const Instant next = t.plus_days(step);
        if (std::fabs(step) < kTransitToleranceDays) return Transit{next, seen->altitude_deg};
        const std::optional<Meridian> there = meridian_at(model, body, next);
        if (!there) return std::nullopt;
        // The rate as it was over the step, unless that was too short to tell.
        if (std::fabs(step) > 1e-3)
            rate += std::remainder(there->turns - seen->turns - rate * step, 1.0) / step;
        t = next;
        seen = there;
    }
    return std::nullopt;
}

void take_event(const AltitudeEvent& event, RiseSetDay& day) {
    if (event.level == 0) {
        (event.rising ? day.rises : day.sets).push_back({event.at, event.azimuth_deg});
        return;
    }
    const auto twilight = static_cast<std::size_t>(event.level - 1);
    if (event.rising && !day.dawn[twilight]) day.dawn[twilight] = event.at;
    if (!event.rising) day.dusk[twilight] = event.at;
}

}  // namespace

Level horizon_level(const Body& body, const Site& site) {
    const bool limb = body.id == sun().id || body.id == moon().id;
    return {-34.0 / 60 - site.dip_deg(), limb};
}

AltitudeEvents altitude_events(Model& model, const Body& body, const Span& span,
                               const std::vector<Level>& levels) {
    AltitudeEvents result;
    if (!model.site() || !model.add(body) || !model.move_to(span.from)) return result;
    std::vector<visibility::Level> inner;
    for (const Level& level : levels)
        inner.push_back({level.altitude_deg / kDegrees, level.upper_limb});
    const double start = span.from.jd_tt();
    const visibility::Passings found = visibility::level_passings(
        model.classic(), body.id, inner, {start, span.to.jd_tt(), start}, {});
    for (const visibility::Passing& passing : found.list)
        result.events.push_back({Instant::from_tt(passing.time), passing.level,
                                 passing.sense > 0, passing.azimuth * kDegrees});
    for (const std::int8_t side : found.at_start)
        result.above_at_start.push_back(side == 0 ? std::nullopt : std::optional(side > 0));
    return result;
}

std::vector<Transit> transits(Model& model, const Body& body, const Span& span) {
    std::vector<Transit> found;
    if (!model.site()) return found;
    const auto first = meridian_at(model, body, span.from);
    if (!first) return found;
    double day = 1;  // from transit to transit
    Instant guess = span.from.plus_days(first->turns > 0 ? 1 - first->turns : -first->turns);
    while (guess <= span.to.plus_days(0.1)) {
        const auto transit = transit_near(model, body, guess);
        if (!transit) return found;
        const bool again = !found.empty() && days_between(found.back().at, transit->at) < 0.5;
        if (!found.empty() && !again) day = days_between(found.back().at, transit->at);
        if (span.holds(transit->at) && !again) found.push_back(*transit);
        guess = transit->at.plus_days(day);
    }
    return found;
}

const char* to_string(DayState state) {
    switch (state) {
        case DayState::kUpAllDay:
            return "up all day";
        case DayState::kDownAllDay:
            return "down all day";
        default:
            return "";
    }
}

std::vector<RiseSetDay> rise_set_days(Model& model, const Body& body, const Zone& zone,
                                      const CivilDate& first, const CivilDate& last) {
    std::vector<RiseSetDay> days;
    if (!model.site()) return days;
    const int end = julian_day_number(last);
    const Span whole{zone.day(first).from, zone.day(last).to};
    std::vector<Level> levels{horizon_level(body, *model.site())};
    if (body.id == sun().id)
        for (const double altitude : kTwilights) levels.push_back({altitude, false});
    const AltitudeEvents found = altitude_events(model, body, whole, levels);
    const std::vector<Transit> culminations = transits(model, body, whole);

    UpState up(found);
    auto event = found.events.begin();
    auto transit = culminations.begin();
    for (int number = julian_day_number(first); number <= end; ++number) {
        RiseSetDay day;
        day.date = date_of_julian_day(number);
        const Instant next = zone.day(day.date).to;
        const UpState::Side at_start = up.at(zone.day(day.date).from);
        for (; event != found.events.end() && event->at < next; ++event)
            take_event(*event, day);
        for (; transit != culminations.end() && transit->at < next; ++transit)
            day.transits.push_back(*transit);
        const bool still = day.rises.empty() && day.sets.empty();
        if (still && at_start == UpState::kUp) day.state = DayState::kUpAllDay;
        if (still && at_start == UpState::kDown) day.state = DayState::kDownAllDay;
        days.push_back(std::move(day));
    }
    return days;
}

}  // namespace solsys::sky
