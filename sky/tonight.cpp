#include "solsys/sky/tonight.h"

#include <algorithm>

#include "events/search/keep_model.h"
#include "sky/passings.h"
#include "sky/units.h"
#include "solsys/sky/places.h"

namespace solsys::sky {
namespace {

constexpr std::size_t kNightTwilights = 3;
constexpr Altitude kTwilight[] = {kCivilTwilight, kNauticalTwilight, kAstronomicalTwilight};

Span noon_to_noon(const Zone& zone, const CivilDate& evening) {
    const CivilDate next = date_of_julian_day(julian_day_number(evening) + 1);
    return {zone.instant({evening, 12, 0, 0}), zone.instant({next, 12, 0, 0})};
}

// What is left of a span without some stretches of it; less than a second is rounding.
std::vector<Span> outside(const Span& whole, const std::vector<Span>& stretches) {
    constexpr double kSecond = 1.0 / 86400;
    std::vector<Span> rest;
    Instant from = whole.from;
    const auto take_until = [&](const Instant& to) {
        if (days_between(from, to) > kSecond) rest.push_back({from, to});
    };
    for (const Span& s : stretches) {
        take_until(s.from);
        from = s.to;
    }
    take_until(whole.to);
    return rest;
}

std::vector<Span> below(Model& model, const Site& site, const Body& body,
                        const Altitude& altitude, const Span& span) {
    return outside(span, times_above(model, site, body, altitude, span));
}

std::vector<Span> common(const std::vector<Span>& a, const std::vector<Span>& b) {
    std::vector<Span> both;
    for (const Span& x : a)
        for (const Span& y : b) {
            const Span overlap{std::max(x.from, y.from), std::min(x.to, y.to)};
            if (overlap.from < overlap.to) both.push_back(overlap);
        }
    return both;
}

void take(NightHours& night, const Passage& passage) {
    if (passage.which == 0) {
        std::optional<Instant>& slot = passage.rising ? night.sunrise : night.sunset;
        if (!slot || passage.rising) slot = passage.at;
        return;
    }
    auto& slot = (passage.rising ? night.dawn : night.dusk)[passage.which - 1];
    if (!slot || passage.rising) slot = passage.at;
}

// Noon to noon, from the evening that comes or has been.
CivilDate evening_of(Model& model, const Site& site, const Zone& zone, const Instant& t) {
    const CivilTime clock = zone.civil(t);
    if (clock.hour >= 12) return clock.date;
    const Span rest{t, t.plus_seconds(1)};
    const bool night = times_above(model, site, sun(), horizon_of(site, sun()), rest).empty();
    return night ? date_of_julian_day(julian_day_number(clock.date) - 1) : clock.date;
}

}  // namespace

NightHours night_around(Model& model, const Site& site, const Zone& zone, const Instant& t) {
    NightHours night;
    night.date = evening_of(model, site, zone, t);
    night.span = noon_to_noon(zone, night.date);
    const Altitude horizon = horizon_of(site, sun());
    const Altitude levels[] = {horizon, kTwilight[0], kTwilight[1], kTwilight[2]};
    for (const Passage& passage : passages(model, site, sun(), levels, night.span))
        take(night, passage);
    night.dark = below(model, site, sun(), kTwilight[0], night.span);
    if (night.dark.empty()) night.dark = below(model, site, sun(), horizon, night.span);
    night.moonless =
        common(below(model, site, sun(), kTwilight[kNightTwilights - 1], night.span),
               below(model, site, moon(), horizon_of(site, moon()), night.span));
    return night;
}

std::optional<BestView> best_view(Model& model, const Site& site, const Body& body,
                                  const NightHours& night) {
    // Highest at a culmination in the dark, else where the dark begins or ends.
    std::vector<Instant> candidates;
    for (const Culmination& c : culminations(model, site, body, night.span)) {
        const Instant at = Instant::from_tt(c.jd_tt);
        for (const Span& dark : night.dark)
            if (dark.holds(at)) candidates.push_back(at);
    }
    for (const Span& dark : night.dark)
        for (const Instant& end : {dark.from, dark.to}) candidates.push_back(end);

    std::optional<BestView> best;
    const std::optional<Site> own = model.site();
    const Instant instant = model.instant();
    model.observe_from(site);
    for (const Instant& t : candidates) {
        if (!model.move_to(t)) continue;
        const auto place = apparent_place(model, body);
        if (!place) continue;
        const Horizontal over = horizontal_of(model, *place);
        if (over.altitude_deg < horizon_of(site, body).degrees) continue;
        if (!best || over.altitude_deg > best->altitude_deg)
            best = BestView{t, over.altitude_deg, over.azimuth_deg};
    }
    own ? model.observe_from(*own) : model.observe_from_earth_centre();
    model.move_to(instant);
    return best;
}

}  // namespace solsys::sky
