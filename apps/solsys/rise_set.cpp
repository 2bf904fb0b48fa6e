#include "apps/solsys/rise_set.h"

#include <cmath>

#include "apps/solsys/failure.h"
#include "apps/solsys/place.h"

namespace app {
namespace {

constexpr double kMargin = 1.1;  // day: a day's events lie within that of its transit

bool is_sun(const SSO_ID& id) { return id == SSO_ID(SSO_PLNT, 10); }

bool inside(const Span& span, Utc t) {
    return days_from(span.from, t) >= 0 && days_from(t, span.to) >= 0;
}

const std::vector<VISIBILITY>& search(CSWVisibility& visibility, const SSO_ID& id,
                                      const Site& site, const Span& span) {
    OBSERVER observer = visibility_observer(site);
    visibility.InitSearch(span.from.jd() - kMargin, span.to.jd() + kMargin, id, &observer);
    visibility.SearchVisibility();
    return visibility.GetResults();
}

}  // namespace

OBSERVER visibility_observer(const Site& site) {
    OBSERVER observer = observer_at(site);
    observer.location[0] = site.height_m / 1000;
    return observer;
}

std::vector<RiseSetDay> rise_set_days(CSWVisibility& visibility, const SSO_ID& id,
                                      const Site& site, const Span& span) {
    std::vector<RiseSetDay> days;
    for (const VISIBILITY& found : search(visibility, id, site, span)) {
        const auto kept = [&](double jd, double none) -> std::optional<Utc> {
            if (jd == none) return std::nullopt;
            const Utc t = utc_from_jd(jd);
            if (!inside(span, t)) return std::nullopt;
            return t;
        };
        RiseSetDay day;
        day.anchor = utc_from_jd(found.transit);
        day.transit = kept(found.transit, 0);
        // A level that the Sun does not cross carries the transit.
        if (is_sun(id)) {
            day.dawn = kept(found.dawn, found.transit);
            day.rise = kept(found.sunrise, found.transit);
            day.set = kept(found.sunset, found.transit);
            day.dusk = kept(found.dusk, found.transit);
        } else {
            day.rise = kept(found.rise, 0);
            day.set = kept(found.set, 0);
        }
        day.rise_azimuth_deg = found.rise_azimuth * kDegrees;
        day.set_azimuth_deg = found.set_azimuth * kDegrees;
        day.transit_altitude_deg = found.transit_altitude * kDegrees;
        if (!day.empty()) days.push_back(day);
    }
    return days;
}

std::vector<Span> up_times(CSWVisibility& visibility, const SSO_ID& id, const Site& site,
                           const Span& span) {
    std::vector<Span> up;
    for (const VISIBILITY& day : search(visibility, id, site, span)) {
        // Above the horizon at the lower culmination: up from there on.
        const double from = day.rise != 0 ? day.rise : day.no_rise_time;
        const double to = day.set != 0 ? day.set : day.no_set_time;
        if (from != 0 && to > from) up.push_back({utc_from_jd(from), utc_from_jd(to)});
    }
    return up;
}

Utc to_local(const Zone& zone, Utc utc) {
    return plus_days(utc, zone.offset_seconds(utc) / 86400.0);
}

Utc from_local(const Zone& zone, Utc local) {
    Utc utc = plus_days(local, -zone.offset_seconds(local) / 86400.0);
    return plus_days(local, -zone.offset_seconds(utc) / 86400.0);
}

std::string date_of(Utc local) {
    const std::string text = iso_utc(local);
    return text.substr(0, text.find('T'));
}

MoonPhase moon_phase(CSWSolSys& model, Utc utc) {
    const OBSERVER centre = geocentric_observer();
    model.SetObserver(&centre);
    move_to(model, tt_from_utc(utc));
    const auto longitude = [&model](const SSO_ID& id) {
        const Place place = apparent_place(model, id);
        const double ra = place.ra_deg / kDegrees, dec = place.dec_deg / kDegrees;
        double lon = 0, lat = 0;
        model.FromRAToEclAng(false, &ra, &dec, &lon, &lat);
        return lon * kDegrees;
    };
    const SSO_ID moon(SSO_MOON, 301);
    MoonPhase phase;
    phase.angle_deg = longitude(moon) - longitude(SSO_ID(SSO_PLNT, 10));
    if (phase.angle_deg < 0) phase.angle_deg += 360;
    model.PhaseElongation(moon, nullptr, &phase.illuminated, nullptr, nullptr, nullptr);
    return phase;
}

std::optional<int> principal_phase(CSWSolSys& model, Utc from, Utc to) {
    const double before = moon_phase(model, from).angle_deg / 90;
    double after = moon_phase(model, to).angle_deg / 90;
    if (after < before) after += 4;
    if (std::floor(before) == std::floor(after)) return std::nullopt;
    return static_cast<int>(std::floor(after)) % 4;
}

std::string phase_name(int quarter) {
    static const char* const names[] = {"new Moon", "first quarter", "full Moon",
                                        "last quarter"};
    return names[quarter];
}

}  // namespace app
