// Eclipses decided by the ephemeris: polynomials around each syzygy instead of the series.
#include <cmath>

#include "events/eclipses/solar_circumstances.h"
#include "events/eclipses/state.h"
#include "solsys/time_scales.h"

using namespace solsys::eclipses;
using solsys::Instant;

namespace {

// How far the series' gamma may be wrong t centuries from 1900; beyond 1.57 + 0.02 + this there
// is no eclipse. Measured: 0.006 within five centuries of today, 0.04 in -2000.
double gamma_margin(double k) {
    const double t = k / 1236.85;
    return 0.06 + 2.5e-5 * t * t;
}

bool possible(const Lunation& l, short kind) {
    const double limit = kind == ECLIPSE_SOLAR ? kSolarLimit + l.u : 1.5572 + l.u + 0.03;
    return std::fabs(l.gamma) <= limit + gamma_margin(l.k);
}

// Times of a record: UT days from its day number; -1.0 for what does not happen.
class Clock {
  public:
    Clock(Instant t0, double greatest, double delta_t) : t0_(t0), delta_t_(delta_t) {
        const Instant t = later(t0, greatest);
        day_ = t.day;
        greatest_ = t;
    }
    [[nodiscard]] int day() const { return day_; }
    [[nodiscard]] Instant greatest() const { return greatest_; }
    [[nodiscard]] double et(double h) const {
        return std::isnan(h) ? -1.0 : (t0_.day - day_) + t0_.fraction + h / 24;
    }
    [[nodiscard]] double ut(double h) const {
        return std::isnan(h) ? -1.0 : et(h) - delta_t_ / 86400;
    }

  private:
    Instant t0_, greatest_{};
    double delta_t_;
    int day_;
};

void set_pair(const Clock& clock, Pair p, int first, int last, ECLIPSE& e, double et[8]) {
    e.contact[first] = clock.ut(p.first);
    e.contact[last] = clock.ut(p.last);
    et[first] = clock.et(p.first);
    et[last] = clock.et(p.last);
}

// The Moon's zenith point.
void sublunar_point(const LunarPath& path, double h, double flattening, double place[2]) {
    const double s = path.dec.at(h);
    place[0] = std::atan(s / std::sqrt(1 - s * s) / ((1 - flattening) * (1 - flattening)));
    place[1] = std::remainder(-path.hour_angle.at(h), solsys::kTwoPi);
}

}  // namespace

bool CSWEclipses::State::next_by_ephemeris(ECLIPSE& eclipse, short kind) {
    const double half = kind == ECLIPSE_SOLAR ? 0.0 : 0.5;
    const double at = day + fraction;
    // The first lunation that is not surely before the cursor.
    double k = std::floor((at - 2 - kSeriesEpoch) / kSynodicMonth - half) + half;
    while (approximate_syzygy(mean_lunation(k)) < at - 2) k += 1;
    const Lunation l = lunation_series(k);
    const double syzygy = approximate_syzygy(l);
    const double next = std::max(syzygy, at) + 10;
    bool found = false;
    if (possible(l, kind)) {
        const Instant t = solsys::split(syzygy);
        eclipse = ECLIPSE{};
        found =
            kind == ECLIPSE_SOLAR ? precise_solar(t, eclipse) : precise_lunar(t, l.u, eclipse);
        const double jd = greatest.jd();
        found = found && jd >= at && jd < span.end;
    }
    day = static_cast<int>(next);
    fraction = next - day;
    return found;
}

bool CSWEclipses::State::precise_solar(Instant syzygy, ECLIPSE& e) {
    observe_from_geocentre(*model);
    solar = solar_path(*model, syzygy, shadow_radii());
    if (!solar) return false;
    const SolarPath& path = *solar;
    const SolarCircumstances c = solar_circumstances(path);
    const Clock clock(path.t0, path.greatest, path.delta_t);
    greatest = clock.greatest();
    e.day = clock.day();
    e.present = c.exists ? 1 : 0;
    e.gamma = c.gamma;
    e.magnitude = c.magnitude;
    if (!c.exists) return false;

    e.greatest = clock.ut(path.greatest);
    e.delta_t = path.delta_t;
    e.type = c.type;
    e.centrality = c.central ? ECLIPSE_CENTRAL : ECLIPSE_NON_CENTRAL;
    e.umbra = c.greatest.l2;
    e.penumbra = c.greatest.l1;
    const SolarContacts contact = solar_contacts(path);
    set_pair(clock, contact.penumbra_outer, ECLIPSE_P1, ECLIPSE_P4, e, contacts);
    set_pair(clock, contact.penumbra_inner, ECLIPSE_P2, ECLIPSE_P3, e, contacts);
    set_pair(clock, contact.umbra_outer, ECLIPSE_U1, ECLIPSE_U4, e, contacts);
    set_pair(clock, contact.umbra_inner, ECLIPSE_U2, ECLIPSE_U3, e, contacts);
    e.begin = e.contact[ECLIPSE_P1];
    e.end = e.contact[ECLIPSE_P4];
    const double hours[3] = {contact.penumbra_outer.first, path.greatest,
                             contact.penumbra_outer.last};
    for (int i = 0; i < 3; ++i) {
        const ShadowElements at = path.at(std::isnan(hours[i]) ? path.greatest : hours[i]);
        const Place place = nearest_place(at.x, at.y, at.earth, at.mu, path.radii.flattening);
        e.place[i][0] = place.latitude;
        e.place[i][1] = place.longitude;
    }
    number_eclipse(e, greatest.jd(), ECLIPSE_SOLAR);
    return true;
}

bool CSWEclipses::State::precise_lunar(Instant syzygy, double u, ECLIPSE& e) {
    observe_from_geocentre(*model);
    lunar = lunar_path(*model, syzygy, shadow_radii(), shadow, u);
    if (!lunar) return false;
    const LunarPath& path = *lunar;
    const LunarCircumstances c = lunar_circumstances(path);
    const Clock clock(path.t0, path.greatest, path.delta_t);
    greatest = clock.greatest();
    e.day = clock.day();
    e.gamma = c.gamma;
    if (!c.exists) return false;

    e.greatest = clock.ut(path.greatest);
    e.delta_t = path.delta_t;
    e.type = c.type;
    e.penumbral_magnitude = c.penumbral_magnitude;
    e.magnitude = c.type == ECLIPSE_PENUMBRAL ? c.penumbral_magnitude : c.umbral_magnitude;
    e.umbra = c.umbra;
    e.penumbra = c.penumbra;
    const LunarContacts contact = lunar_contacts(path);
    set_pair(clock, contact.penumbra_outer, ECLIPSE_P1, ECLIPSE_P4, e, contacts);
    set_pair(clock, contact.penumbra_inner, ECLIPSE_P2, ECLIPSE_P3, e, contacts);
    set_pair(clock, contact.umbra_outer, ECLIPSE_U1, ECLIPSE_U4, e, contacts);
    set_pair(clock, contact.umbra_inner, ECLIPSE_U2, ECLIPSE_U3, e, contacts);
    const bool penumbral = c.type == ECLIPSE_PENUMBRAL;
    e.begin = e.contact[penumbral ? ECLIPSE_P1 : ECLIPSE_U1];
    e.end = e.contact[penumbral ? ECLIPSE_P4 : ECLIPSE_U4];
    if (c.type == ECLIPSE_TOTAL) {
        e.total_begin = e.contact[ECLIPSE_U2];
        e.total_end = e.contact[ECLIPSE_U3];
    }
    sublunar_point(path, path.greatest, path.radii.flattening, e.place[1]);
    number_eclipse(e, greatest.jd(), ECLIPSE_LUNAR);
    return true;
}

const SolarPath* CSWEclipses::State::solar_path_of(const ECLIPSE* e) {
    if (!e || e->kind != ECLIPSE_SOLAR || e->present != 1 || !model) return nullptr;
    const double ut = e->greatest + e->day;
    if (!solsys::search::is_instant(ut)) return nullptr;
    const Radii wanted = shadow_radii();
    const bool same = solar && std::fabs(solar->hours(ut) - solar->greatest) < 0.5 &&
                      solar->radii.moon_umbra == wanted.moon_umbra &&
                      solar->radii.sun == wanted.sun;
    if (!same) {
        observe_from_geocentre(*model);
        const Instant t{e->day, e->greatest + e->delta_t / 86400};
        solar = solar_path(*model, t, wanted);
    }
    return solar ? &*solar : nullptr;
}

const LunarPath* CSWEclipses::State::lunar_path_of(const ECLIPSE* e) {
    if (!e || e->kind != ECLIPSE_LUNAR || e->type == 0 || !model) return nullptr;
    const double ut = e->greatest + e->day;
    if (!solsys::search::is_instant(ut)) return nullptr;
    const bool same =
        lunar && std::fabs(lunar->hours(ut) - lunar->greatest) < 0.5 && lunar->rule == shadow;
    if (!same) {
        observe_from_geocentre(*model);
        const double k = std::round((ut - kSeriesEpoch - 0.76) / kSynodicMonth - 0.5) + 0.5;
        lunar = lunar_path(*model, {e->day, e->greatest + e->delta_t / 86400}, shadow_radii(),
                           shadow, lunation_series(k).u);
    }
    return lunar ? &*lunar : nullptr;
}
