#include "solsys/sky/rise_set_days.h"

#include "sky/passings.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr std::size_t kTwilightCount = 3;

// Walks through the passings of the horizon and tells on which side the body is.
class Side {
  public:
    explicit Side(const visibility::Passings& found)
        : next_(found.list.begin()), end_(found.list.end()), up_(found.at_start.front()) {}

    // Takes the passings before a time into a day.
    void fill(RiseSetDay& day, double until) {
        for (; next_ != end_ && next_->time < until; ++next_) take(*next_, day);
    }
    [[nodiscard]] int up() const { return up_; }  // 1 up, -1 down, 0 not known

  private:
    void take(const visibility::Passing& passing, RiseSetDay& day) {
        const Instant at = Instant::from_tt(passing.time);
        const bool rising = passing.sense > 0;
        if (passing.level == 0) {
            (rising ? day.rises : day.sets).push_back({at, passing.azimuth * kDegrees});
            up_ = passing.sense;
            return;
        }
        const auto twilight = static_cast<std::size_t>(passing.level - 1);
        if (rising && !day.dawn[twilight]) day.dawn[twilight] = at;
        if (!rising) day.dusk[twilight] = at;
    }

    std::vector<visibility::Passing>::const_iterator next_, end_;
    int up_;
};

}  // namespace

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

std::vector<RiseSetDay> rise_set_days(Model& model, const Site& site, const Body& body,
                                      const Zone& zone, const CivilDate& first,
                                      const CivilDate& last) {
    return rise_set_days(model, site, body, zone, first, last, horizon_of(site, body));
}

std::vector<RiseSetDay> rise_set_days(Model& model, const Site& site, const Body& body,
                                      const Zone& zone, const CivilDate& first,
                                      const CivilDate& last, const Altitude& horizon) {
    std::vector<RiseSetDay> days;
    const int end = julian_day_number(last);
    const Span whole{zone.day(first).from, zone.day(last).to};
    if (!(whole.days() > 0)) return days;
    const Altitude levels[] = {horizon, kCivilTwilight, kNauticalTwilight,
                               kAstronomicalTwilight};
    const std::size_t count = body.id == sun().id ? 1 + kTwilightCount : 1;
    const auto found = passings(model, site, body, {levels, count}, whole);
    if (found.at_start.empty()) return days;
    const std::vector<Culmination> transits = culminations(model, site, body, whole);

    Side side(found);
    auto transit = transits.begin();
    for (int number = julian_day_number(first); number <= end; ++number) {
        RiseSetDay day;
        day.date = date_of_julian_day(number);
        const double next = zone.day(day.date).to.jd_tt();
        const int at_start = side.up();
        side.fill(day, next);
        for (; transit != transits.end() && transit->jd_tt < next; ++transit)
            day.transits.push_back({Instant::from_tt(transit->jd_tt), transit->altitude_deg});
        if (day.rises.empty() && day.sets.empty() && at_start != 0)
            day.state = at_start > 0 ? DayState::kUpAllDay : DayState::kDownAllDay;
        days.push_back(std::move(day));
    }
    return days;
}

}  // namespace solsys::sky
