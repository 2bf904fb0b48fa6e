// The members of CSWEclipses that look from one site.
#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "core/constants.h"
#include "events/eclipses/local_lunar.h"
#include "events/eclipses/local_solar.h"
#include "events/eclipses/state.h"

using namespace solsys::eclipses;

namespace {

bool site_of(const OBSERVER* observer, const Radii& radii, Site& site) {
    if (observer == nullptr || observer->kind != LOCATION_SURFACE ||
        observer->body_type != SSO_PLNT || observer->body_number != 3) {
        return false;
    }
    const double* l = observer->location;
    if (!std::isfinite(l[0]) || !std::isfinite(l[1]) ||
        !(std::fabs(l[2]) <= solsys::kHalfPi + 1e-9)) {
        return false;
    }
    site = site_at(l[2], l[1], l[0], radii);
    return true;
}

// The elements at one instant, without their changes. False at full Moon, too.
bool elements_now(CSWSolSys& model, const Radii& radii, double jd_ut, ShadowElements& e) {
    observe_from_geocentre(model);
    Luminaries sky{};
    if (!luminaries_at(model, solsys::split(solsys::search::tt_from_ut(jd_ut)), sky))
        return false;
    const Axis axis = shadow_axis(sky.moon, sky.sun, radii);
    e.x = axis.x, e.y = axis.y;
    e.sin_d = axis.sin_d, e.cos_d = axis.cos_d;
    e.mu = sky.greenwich - axis.right_ascension;
    e.l1 = axis.l1, e.l2 = axis.l2;
    e.tan_f1 = axis.tan_f1, e.tan_f2 = axis.tan_f2;
    return axis.z > 0;
}

// A geocentric vector on the equator of date from the site [equatorial radii].
solsys::Vec3 from_site(solsys::Vec3 body_au, const Site& site, double greenwich,
                       double earth_km) {
    const double sidereal = greenwich + site.longitude;
    const solsys::Vec3 place{site.rho_cos_phi * std::cos(sidereal),
                             site.rho_cos_phi * std::sin(sidereal), site.rho_sin_phi};
    return (solsys::kAuKm / earth_km) * body_au - place;
}

}  // namespace

bool CSWEclipses::GetEclParams(OBSERVER* observer, double time, double* magnitude,
                               double* obscuration, double* position_angle) {
    State& s = *state_;
    if (magnitude) *magnitude = 0;
    if (obscuration) *obscuration = 0;
    if (position_angle) *position_angle = 0;
    Site site{};
    ShadowElements e{};
    if (!s.model || !solsys::search::is_instant(time)) return false;
    const Radii radii = s.shadow_radii();
    if (!site_of(observer, radii, site) || !elements_now(*s.model, radii, time, e))
        return false;
    const Disks d = disks(site, e);
    if (!(d.magnitude() > 0)) return false;
    if (magnitude) *magnitude = d.magnitude();
    if (obscuration) *obscuration = d.obscuration();
    if (position_angle) *position_angle = d.position_angle(false);
    return true;
}

bool CSWEclipses::GetEclipsedSun(OBSERVER* observer, double time, double out[3]) {
    State& s = *state_;
    Site site{};
    ShadowElements e{};
    if (!s.model || !out || !solsys::search::is_instant(time)) return false;
    const Radii radii = s.shadow_radii();
    if (!site_of(observer, radii, site) || !elements_now(*s.model, radii, time, e))
        return false;
    const Disks d = disks(site, e);
    if (!(d.m < 3 * d.l1)) return false;
    const double sun = (d.l1 + d.l2) / 2;
    out[0] = d.u / sun, out[1] = d.v / sun, out[2] = (d.l1 - d.l2) / 2 / sun;
    return true;
}

bool CSWEclipses::GetMoonInShadow(const ECLIPSE* eclipse, double time, double out[5]) {
    const LunarPath* path = state_->lunar_path_of(eclipse);
    if (!path || !out) return false;
    const double h = path->hours(time);
    if (!(std::fabs(h) < kHalfSpan)) return false;
    const LunarPath::Disks d = path->at(h);
    const double x = path->x.at(h), y = path->y.at(h), off = std::hypot(x, y);
    const double scale = off > 0 ? d.separation / off : 0;
    out[0] = x * scale, out[1] = y * scale;
    out[2] = d.moon, out[3] = d.umbra, out[4] = d.penumbra;
    return true;
}

double CSWEclipses::GetSolarEclipsePhase(OBSERVER* observer, double time) {
    double magnitude = 0;
    GetEclParams(observer, time, &magnitude, nullptr, nullptr);
    return magnitude;
}

double CSWEclipses::GetSolarEclipsePhase(double latitude, double longitude, double time) {
    OBSERVER observer;
    observer.kind = LOCATION_SURFACE;
    observer.body_type = SSO_PLNT, observer.body_number = 3;
    observer.location[1] = longitude, observer.location[2] = latitude;
    return GetSolarEclipsePhase(&observer, time);
}

bool CSWEclipses::GetSunMoonVisRad(OBSERVER* observer, double time, double* sun, double* moon) {
    State& s = *state_;
    Site site{};
    Luminaries sky{};
    if (!s.model || !sun || !moon || !solsys::search::is_instant(time)) return false;
    const Radii radii = s.shadow_radii();
    if (!site_of(observer, radii, site)) return false;
    observe_from_geocentre(*s.model);
    const auto t = solsys::split(solsys::search::tt_from_ut(time));
    if (!luminaries_at(*s.model, t, sky)) return false;
    *sun = std::asin(radii.sun / radii.earth /
                     norm(from_site(sky.sun, site, sky.greenwich, radii.earth)));
    *moon = std::asin(radii.moon_penumbra / radii.earth /
                      norm(from_site(sky.moon, site, sky.greenwich, radii.earth)));
    return true;
}

double CSWEclipses::GetSunAltitude(OBSERVER* observer, double time) {
    State& s = *state_;
    Site site{};
    Luminaries sky{};
    if (!s.model || !solsys::search::is_instant(time)) return 0;
    const Radii radii = s.shadow_radii();
    if (!site_of(observer, radii, site)) return 0;
    observe_from_geocentre(*s.model);
    const auto t = solsys::split(solsys::search::tt_from_ut(time));
    if (!luminaries_at(*s.model, t, sky)) return 0;
    const solsys::Vec3 sun = unit(from_site(sky.sun, site, sky.greenwich, radii.earth));
    const double sidereal = sky.greenwich + site.longitude;
    const double up =
        std::cos(site.latitude) * (sun.x * std::cos(sidereal) + sun.y * std::sin(sidereal)) +
        std::sin(site.latitude) * sun.z;
    return std::asin(std::clamp(up, -1.0, 1.0));
}

namespace {

bool fill_solar(const SolarPath& path, const Site& site, ECLIPSE& e) {
    const LocalSolar local = local_solar(path, site);
    if (!local.touched) return false;
    const auto ut = [&](double h) {
        return std::isnan(h)
                   ? -1.0
                   : (path.t0.day - e.day) + path.t0.fraction + h / 24 - path.delta_t / 86400;
    };
    e.begin = ut(local.outer.first);
    e.greatest = ut(local.maximum);
    e.end = ut(local.outer.last);
    e.total_begin = ut(local.inner.first);
    e.total_end = ut(local.inner.last);
    e.rise = ut(local.sunrise);
    e.set = ut(local.sunset);
    std::fill_n(e.contact, 8, -1.0);
    const double hours[5] = {local.outer.first, local.inner.first, local.maximum,
                             local.inner.last, local.outer.last};
    for (int i = 0; i < 5; ++i) {
        if (std::isnan(hours[i])) continue;
        const ShadowElements at = path.at(hours[i]);
        const Disks d = disks(site, at);
        e.altitude[i] = std::asin(d.sin_altitude);
        e.azimuth[i] = azimuth(site, at);
        e.position_angle[i] = d.position_angle(i == 1 || i == 3);
    }
    const Disks at_maximum = disks(site, path.at(local.maximum));
    e.magnitude = at_maximum.magnitude();
    e.type = std::isnan(local.inner.first) ? ECLIPSE_PARTIAL
             : at_maximum.l2 < 0           ? ECLIPSE_TOTAL
                                           : ECLIPSE_ANNULAR;
    e.visible = local.visible ? 1 : 0;
    if (local.visible) {
        const Disks best = disks(site, path.at(local.best));
        e.local_magnitude = best.magnitude();
        e.obscuration = best.obscuration();
    }
    return local.visible;
}

bool fill_lunar(const LunarPath& path, const Site& site, ECLIPSE& e) {
    const LunarContacts c = lunar_contacts(path);
    const LocalLunar local = local_lunar(path, site, c.penumbra_outer);
    const auto ut = [&](double h) {
        return std::isnan(h)
                   ? -1.0
                   : (path.t0.day - e.day) + path.t0.fraction + h / 24 - path.delta_t / 86400;
    };
    e.rise = ut(local.moonrise);
    e.set = ut(local.moonset);
    const double hours[7] = {c.penumbra_outer.first, c.umbra_outer.first, c.umbra_inner.first,
                             path.greatest,          c.umbra_inner.last,  c.umbra_outer.last,
                             c.penumbra_outer.last};
    for (int i = 0; i < 7; ++i) {
        if (std::isnan(hours[i])) continue;
        const Horizontal moon = moon_at(path, site, hours[i]);
        e.altitude[i] = moon.altitude;
        e.azimuth[i] = moon.azimuth;
    }
    e.visible = local.visible ? 1 : 0;
    if (local.visible) {
        const LunarPath::Disks d = path.at(local.best);
        const bool umbral = e.type != ECLIPSE_PENUMBRAL;
        const double reach = (umbral ? d.umbra : d.penumbra) + d.moon;
        e.local_magnitude = std::max(0.0, (reach - d.separation) / (2 * d.moon));
    }
    return local.visible;
}

}  // namespace

bool CSWEclipses::EclipseParamsForLocation(const ECLIPSE* eclipse, short kind, ECLIPSE* local,
                                           OBSERVER* observer) {
    State& s = *state_;
    Site site{};
    if (!s.model || !eclipse || !local || kind != eclipse->kind) return false;
    if (!site_of(observer, s.shadow_radii(), site)) return false;
    ECLIPSE filled = *eclipse;
    bool visible = false;
    if (kind == ECLIPSE_LUNAR) {
        const LunarPath* path = s.lunar_path_of(eclipse);
        visible = path != nullptr && fill_lunar(*path, site, filled);
    } else {
        const SolarPath* path = s.solar_path_of(eclipse);
        visible = path != nullptr && fill_solar(*path, site, filled);
    }
    *local = filled;
    return visible;
}

bool CSWEclipses::CheckForLocation(const ECLIPSE* eclipse, short kind, ECLIPSE* local) {
    return state_->has_site && EclipseParamsForLocation(eclipse, kind, local, &state_->site);
}
