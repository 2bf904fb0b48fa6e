#include "solsys/sky/risings.h"

#include <algorithm>
#include <cmath>

#include "events/search/keep_model.h"
#include "events/visibility/day_step.h"
#include "sky/passings.h"
#include "sky/search_scope.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

namespace v = solsys::visibility;

search::Span span_of(const Span& span) {
    const double start = span.from.jd_tt();
    return {start, span.to.jd_tt(), start};
}

// The model at a site for a body, until the end of the scope.
class AtSite {
  public:
    AtSite(Model& model, const Site& site, const Body& body)
        : keep_(model.classic()), known_(model.add(body).has_value()) {
        const OBSERVER observer = site.observer();
        model.classic().SetObserver(&observer);
    }
    [[nodiscard]] bool known() const { return known_; }

  private:
    search::KeepModel keep_;
    bool known_;
};

// The share of the passages in a search for risings; the transits have the rest.
constexpr double kPassings = 0.7;

constexpr double kShortestDay = 0.9, kLongestDay = 1.1;  // of anything from transit to transit

// The upper transit nearest to a guess, for a body that comes to the meridian after each `day`,
// if that is known: the guess is then good to seconds, and one look at the sky enough. To 0.1
// s.
std::optional<Culmination> culmination_near(v::SkyAt& sky, const SSO_ID& id, double t,
                                            std::optional<double> day) {
    constexpr double kSecond = 1.0 / 86400;
    const double pace = day.value_or(1) / v::kSolarPerSidereal;
    for (int pass = 0; pass < 12; ++pass) {
        const auto place = sky.apparent(id, t);
        if (!place) return std::nullopt;
        const double step = pace * v::time_to_hour_angle(sky, *place, 0);
        if (std::fabs(step) < (day ? 2 : 0.5) * kSecond)
            return Culmination{t + step, sky.horizontal(*place).altitude * kDegrees};
        t += step;
    }
    return std::nullopt;
}

// What happens in the course of a visit.
struct Event {
    enum Kind { kAstronomical, kNautical, kCivil, kHorizon, kTransit };
    double jd_tt = 0;
    Kind kind = kHorizon;
    bool rising = false;
    double angle_deg = 0;  // azimuth, of a transit the altitude
};

// Takes away the transits of a body that is not above a level then.
void drop_unseen(std::vector<Event>& events, Event::Kind level, bool up_at_start) {
    bool up = up_at_start;
    std::erase_if(events, [&](const Event& e) {
        if (e.kind == level) up = e.rising;
        return e.kind == Event::kTransit && !up;
    });
}

std::optional<Instant>& slot_of(Rising& row, const Event& e) {
    switch (e.kind) {
        case Event::kAstronomical:
            return e.rising ? row.astronomical_dawn : row.astronomical_dusk;
        case Event::kNautical:
            return e.rising ? row.nautical_dawn : row.nautical_dusk;
        case Event::kCivil:
            return e.rising ? row.civil_dawn : row.civil_dusk;
        case Event::kHorizon:
            return e.rising ? row.rise : row.set;
        default:
            return row.transit;
    }
}

// Events in order become rows: what goes up after something went down, or came to the meridian,
// begins the next one, and so does a second transit.
std::vector<Rising> rows_of(const std::vector<Event>& events) {
    std::vector<Rising> rows;
    bool culminated = true;
    bool descending = true;
    for (const Event& e : events) {
        const bool transit = e.kind == Event::kTransit;
        const bool begins =
            transit ? culminated || descending : e.rising && (culminated || descending);
        if (rows.empty() || begins) {
            rows.emplace_back();
            culminated = descending = false;
        }
        Rising& row = rows.back();
        slot_of(row, e) = Instant::from_tt(e.jd_tt);
        if (transit) row.transit_altitude_deg = e.angle_deg;
        if (e.kind == Event::kHorizon)
            (e.rising ? row.rise_azimuth_deg : row.set_azimuth_deg) = e.angle_deg;
        culminated = culminated || transit;
        descending = descending || (!transit && !e.rising);
    }
    return rows;
}

}  // namespace

v::Passings passings(Model& model, const Site& site, const Body& body,
                     std::span<const Altitude> altitudes, const Span& span,
                     const search::Control& control) {
    const AtSite at_site(model, site, body);
    if (!at_site.known()) return {};
    std::vector<v::Level> levels;
    for (const Altitude& a : altitudes) levels.push_back({a.degrees / kDegrees, a.upper_limb});
    return v::level_passings(model.classic(), body.id, levels, span_of(span), control);
}

std::vector<Culmination> culminations(Model& model, const Site& site, const Body& body,
                                      const Span& span, const search::Control& control) {
    const AtSite at_site(model, site, body);
    std::vector<Culmination> found;
    if (!at_site.known()) return found;
    v::SkyAt sky(model.classic());
    search::Span within = span_of(span);
    double day = 1;  // from one to the next, and how that grows
    double growth = 0;
    std::optional<double> last;
    for (double t = within.start; t <= within.end + 0.5;) {
        within.cursor = t;
        if (!control.go_on(within)) return found;
        const auto next =
            culmination_near(sky, body.id, t, last ? std::optional(day) : std::nullopt);
        if (!next || next->jd_tt > within.end) return found;
        if (next->jd_tt >= within.start) found.push_back(*next);
        if (last) {
            const double before = day;
            day = std::clamp(next->jd_tt - *last, kShortestDay, kLongestDay);
            growth = before == 1 ? 0 : day - before;
        }
        last = next->jd_tt;
        t = *last + day + growth;
    }
    return found;
}

Altitude horizon_of(const Site& site, const Body& body) {
    return {v::horizon_altitude(0) * kDegrees - site.dip_deg(),
            v::rises_with_its_limb(body.id)};
}

std::optional<Altitude> horizon_of(const Site& site, const Body& body, const Air& air) {
    const auto altitude =
        true_altitude_of_horizon(site.above_horizon_m, {air, site.latitude_deg, site.height_m});
    if (!altitude) return std::nullopt;
    return Altitude{*altitude, v::rises_with_its_limb(body.id)};
}

std::vector<Passage> passages(Model& model, const Site& site, const Body& body,
                              std::span<const Altitude> altitudes, const Span& span) {
    return passages(model, site, body, altitudes, span, nullptr);
}

std::vector<Passage> passages(Model& model, const Site& site, const Body& body,
                              std::span<const Altitude> altitudes, const Span& span,
                              SearchControl* control) {
    const PartOfSearch whole(control);
    std::vector<Passage> out;
    for (const v::Passing& p :
         passings(model, site, body, altitudes, span, whole.control()).list)
        out.push_back({Instant::from_tt(p.time), static_cast<std::size_t>(p.level), p.sense > 0,
                       p.azimuth * kDegrees});
    return out;
}

std::vector<Span> times_above(Model& model, const Site& site, const Body& body,
                              const Altitude& altitude, const Span& span) {
    const auto found = passings(model, site, body, {&altitude, 1}, span);
    std::vector<Span> out;
    for (const v::Stretch& s : v::stretches_above(found, 0, span_of(span)))
        out.push_back({Instant::from_tt(s.from), Instant::from_tt(s.to)});
    return out;
}

Instant Rising::anchor() const {
    for (const auto& t : {transit, rise, astronomical_dawn, nautical_dawn, civil_dawn, set,
                          civil_dusk, nautical_dusk, astronomical_dusk})
        if (t) return *t;
    return {};
}

Risings risings(Model& model, const Site& site, const Body& body, const Span& span) {
    return risings(model, site, body, span, horizon_of(site, body));
}

Risings risings(Model& model, const Site& site, const Body& body, const Span& span,
                const Altitude& horizon) {
    return risings(model, site, body, span, horizon, nullptr);
}

Risings risings(Model& model, const Site& site, const Body& body, const Span& span,
                const Altitude& horizon, SearchControl* control) {
    const Altitude levels[] = {horizon, kCivilTwilight, kNauticalTwilight,
                               kAstronomicalTwilight};
    constexpr Event::Kind kinds[] = {Event::kHorizon, Event::kCivil, Event::kNautical,
                                     Event::kAstronomical};
    const std::size_t count = v::is_sun(body.id) ? 4 : 1;
    const PartOfSearch first(control, 0, kPassings), second(control, kPassings, 1);
    const auto found = passings(model, site, body, {levels, count}, span, first.control());
    Risings out;
    if (found.at_start.empty()) return out;
    out.known = found.at_start[0] != 0 || !found.list.empty();
    out.up_at_start = found.at_start[0] > 0;

    std::vector<Event> events;
    for (const v::Passing& p : found.list)
        events.push_back({p.time, kinds[p.level], p.sense > 0, p.azimuth * kDegrees});
    for (const Culmination& c : culminations(model, site, body, span, second.control()))
        events.push_back({c.jd_tt, Event::kTransit, false, c.altitude_deg});
    std::sort(events.begin(), events.end(),
              [](const Event& a, const Event& b) { return a.jd_tt < b.jd_tt; });
    // With twilights the lowest of them decides.
    drop_unseen(events, kinds[count - 1], found.at_start[count - 1] > 0);
    out.rows = rows_of(events);
    return out;
}

}  // namespace solsys::sky
