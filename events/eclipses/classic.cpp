// Circumstances by the mean-lunation series, timed by the ephemeris.
#include <cmath>

#include "core/angles.h"
#include "core/constants.h"
#include "events/eclipses/state.h"
#include "solsys/calendar.h"
#include "solsys/earth_orientation.h"
#include "solsys/platform.h"
#include "solsys/time_scales.h"

using namespace solsys::eclipses;
using solsys::Instant;

namespace {

constexpr double kDerivativeStep = 0.5 / solsys::kSecondsPerDay;  // day
constexpr double kWalkStep = 3 / 1440.0;                          // day
constexpr double kWalkEnd = 0.5 / solsys::kSecondsPerDay;         // day
constexpr double kLongestWalk = 5;                                // day
constexpr double kContactWindow = 0.125;                          // day
constexpr double kClassicContactTolerance = 5e-7;                 // Earth radii
constexpr double kLongestContactStep = 4 / 24.0;                  // day
constexpr double kLimb = 0.999999;                                // Earth radii
constexpr double kCentralLimit = 0.9972;

// Sidereal turns in a day of UT.
constexpr double kTurnPerDay = 1.002737909350795 * solsys::kTwoPi;

// Walks from `t` to the least value of m: by three minutes as long as it falls, then by thirds.
// False when m cannot be computed or falls for five days.
template <class Distance>
bool walk_to_least(Distance&& m, double& t) {
    const auto slope = [&](double at) { return (m(at + kDerivativeStep) - m(at)); };
    const double start = t;
    double step = kWalkStep;
    double old = slope(t);
    while (step > kWalkEnd) {
        const double move = old > 0 ? -step : step;
        t += move;
        const double now = slope(t);
        if (!(std::fabs(t - start) < kLongestWalk) || std::isnan(now)) return false;
        if ((now > 0) == (old > 0)) {
            old = now;
        } else {
            t -= move;
            step /= 3;
        }
    }
    return true;
}

// "1999/08/11 - 11:03:07.12UTC" after a label.
void print_instant(const char* label, int day, double fraction) {
    short year = 0, month = 0, date = 0, hour = 0, minute = 0;
    double day_fraction = 0, second = 0;
    JD(day, fraction, &year, &month, &date, &day_fraction, &hour, &minute, &second);
    PrintDebugString("%s%4.4d/%2.2d/%2.2d - %2.2d:%2.2d:%5.2fUTC\n", label, year, month, date,
                     hour, minute, second);
}

// Type and magnitude of a solar eclipse by the series.
void classify_solar(double gamma, double u, ECLIPSE& e) {
    const double off = std::fabs(gamma);
    if (off <= kCentralLimit) {
        e.centrality = ECLIPSE_CENTRAL;
        if (u < 0) {
            e.type = ECLIPSE_TOTAL;
        } else if (u > 0.0047) {
            e.type = ECLIPSE_ANNULAR;
        } else if (u > 0 && u < 0.0047) {
            const double hybrid = 0.00464 * std::sqrt(1 - gamma * gamma);
            e.type = hybrid > u ? ECLIPSE_HYBRID : ECLIPSE_ANNULAR;
        }
        e.magnitude = 0.546 / (2 * u + 0.546);
        return;
    }
    e.centrality = ECLIPSE_NON_CENTRAL;
    if (off < kCentralLimit + std::fabs(u)) {
        e.type = u < 0 ? ECLIPSE_TOTAL : ECLIPSE_ANNULAR;
    } else {
        e.type = ECLIPSE_PARTIAL;
    }
    e.magnitude = (u + kSolarLimit - off) / (2 * u + 0.546);
}

// Type, magnitude and duration of a lunar eclipse by the series.
void classify_lunar(double gamma, double u, double n, double penumbral, double umbral,
                    ECLIPSE& e) {
    const double per_day = 60 / n / 1440;  // day per Earth radius
    const double partial = (1.0129 - u) * (1.0129 - u) - gamma * gamma;
    double half = std::sqrt(std::fabs(partial)) * per_day;
    e.type = ECLIPSE_PENUMBRAL;
    e.magnitude = penumbral;
    if (umbral > 0) {
        e.type = ECLIPSE_PARTIAL;
        e.magnitude = umbral;
        half = std::sqrt(partial) * per_day;
        const double total = (0.4679 - u) * (0.4679 - u) - gamma * gamma;
        if (total > 0) {
            e.type = ECLIPSE_TOTAL;
            const double total_half = std::sqrt(total) * per_day;
            e.total_begin = e.greatest - total_half;
            e.total_end = e.greatest + total_half;
        }
    }
    e.begin = e.greatest - half;
    e.end = e.greatest + half;
}

// Geodetic latitude and longitude of the place that the Moon is overhead of [rad].
void store_sublunar(CSWSolSys& model, const Luminaries& sky, double (&place)[2]) {
    double flattening = 0;
    model.GetRadiEq(SSO_ID(SSO_PLNT, 3), &flattening);
    const double polar = (1 - flattening) * (1 - flattening);
    place[0] = std::atan(sky.moon.z / std::hypot(sky.moon.x, sky.moon.y) / polar);
    place[1] = solsys::wrap_half_turn(std::atan2(sky.moon.y, sky.moon.x) - sky.greenwich);
}

}  // namespace

bool CSWEclipses::State::elements_at(int at_day, double at_fraction, BesselElems& out) {
    Luminaries sky{};
    if (!luminaries_at(*model, {at_day, at_fraction}, sky)) return false;
    double moon[3], sun[3], flattening = 0;
    store(sky.moon, moon);
    store(sky.sun, sun);
    const double earth_km = model->GetRadiEq(SSO_ID(SSO_PLNT, 3), &flattening);
    const double delta_t = ET_UT::Get(at_day, at_fraction) / solsys::kSecondsPerDay;
    BessEl(at_day, at_fraction - delta_t, moon, model->GetRadiEq(SSO_ID(SSO_MOON, 301)), sun,
           model->GetRadiEq(SSO_ID(SSO_PLNT, 10)), earth_km, &out);
    earth = flattened(out.sin_d, out.cos_d, flattening);
    return true;
}

double CSWEclipses::State::axis_distance(int at_day, double at_fraction) {
    BesselElems e;
    if (!elements_at(at_day, at_fraction, e)) return kNever;
    return std::hypot(e.x, earth.rho1 * e.y);
}

void CSWEclipses::BesselianElements(int day, double fraction, BesselElems* elements) {
    State& s = *state_;
    if (!s.model || elements == nullptr) return;
    observe_from_geocentre(*s.model);
    s.elements_at(day, fraction, *elements);
}

bool CSWEclipses::CircumstanceSolarEclipse(int day, double fraction, double gamma, double u,
                                           ECLIPSE* eclipse) {
    State& s = *state_;
    if (!s.model || eclipse == nullptr || !solsys::search::is_instant(day + fraction))
        return false;
    if (s.precise) return s.precise_solar({day, fraction}, *eclipse);
    ECLIPSE& e = *eclipse;
    e.present = 0;
    if (!(std::fabs(gamma) <= u + kSolarLimit)) return false;
    e.present = 1;
    classify_solar(gamma, u, e);
    const double delta_t = ET_UT::Get(day, fraction) / solsys::kSecondsPerDay;
    e.delta_t = delta_t * solsys::kSecondsPerDay;
    e.greatest = fraction - delta_t;
    e.gamma = gamma;

    observe_from_geocentre(*s.model);
    double t = fraction;
    if (!walk_to_least([&](double at) { return s.axis_distance(day, at); }, t)) return false;
    print_instant("", day, t - delta_t);
    BesselElems elements;
    if (!s.elements_at(day, t, elements)) return false;
    if (std::hypot(elements.x, elements.y) - elements.l1 > 1.0) return false;

    s.greatest = {day, t};
    s.solar.reset();
    FindContact(false, true, day, t - kContactWindow, t + kContactWindow);
    e.day = day;
    e.greatest = t - delta_t;
    const auto ut = [&](double et) { return et == -1.0 ? -1.0 : et - delta_t; };
    e.begin = e.contact[ECLIPSE_P1] = ut(s.contacts[ECLIPSE_P1]);
    e.end = e.contact[ECLIPSE_P4] = ut(s.contacts[ECLIPSE_P4]);
    e.umbra = elements.l2;
    e.penumbra = elements.l1;
    number_eclipse(e, day + t, ECLIPSE_SOLAR);
    GetSpecialPoints(&e);
    return true;
}

bool CSWEclipses::GetSpecialPoints(ECLIPSE* eclipse) {
    State& s = *state_;
    if (!s.model || eclipse == nullptr || eclipse->kind != ECLIPSE_SOLAR) return false;
    observe_from_geocentre(*s.model);
    double flattening = 0;
    s.model->GetRadiEq(SSO_ID(SSO_PLNT, 3), &flattening);
    const double delta_t = eclipse->delta_t / solsys::kSecondsPerDay;
    const double times[3] = {eclipse->begin, eclipse->greatest, eclipse->end};
    for (int i = 0; i < 3; ++i) {
        const double t = (i != 1 && times[i] == -1.0 ? times[1] : times[i]) + delta_t;
        BesselElems e;
        if (!s.elements_at(eclipse->day, t, e)) return false;
        // Puts back the turn of the Earth during Delta T, by which mu lags.
        const double mu = e.mu + delta_t * kTurnPerDay;
        const Place place = nearest_place(e.x, e.y, s.earth, mu, flattening);
        eclipse->place[i][0] = place.latitude;
        eclipse->place[i][1] = place.longitude;
    }
    return true;
}

void CSWEclipses::FindContact(bool umbral, bool outer, int day, double t0, double t1) {
    State& s = *state_;
    const int first = (umbral ? ECLIPSE_U1 : ECLIPSE_P1) + (outer ? 0 : 1);
    const int last = (umbral ? ECLIPSE_U4 : ECLIPSE_P4) - (outer ? 0 : 1);
    s.contacts[first] = s.contacts[last] = -1.0;
    if (!s.model) return;
    observe_from_geocentre(*s.model);
    const auto condition = [&](double t) {
        BesselElems e;
        if (!s.elements_at(day, t, e)) return kNever;
        const double m = std::hypot(e.x, s.earth.rho1 * e.y);
        const double radius = umbral ? e.l2 : e.l1;
        return (outer ? m - radius : m + radius) - kLimb;
    };
    const auto newton = [&](double t, double longest) {
        for (int i = 0; i < 100; ++i) {
            const double value = condition(t);
            if (std::fabs(value) <= kClassicContactTolerance) return t;
            const double rate = (condition(t + kDerivativeStep) - value) / kDerivativeStep;
            const double step = -value / rate;
            if (!std::isfinite(step)) return -1.0;
            t += std::fabs(step) > longest ? std::copysign(longest, step) : step;
            if (!solsys::search::is_instant(day + t)) return -1.0;
        }
        return -1.0;
    };
    static constexpr const char* kLabels[] = {
        "P1:", "P2:", "P3:", "P4:", "U1:", "U2:", "U3:", "U4:"};
    const auto report = [&](int which, double t) {
        s.contacts[which] = t;
        if (t == -1.0) return;
        print_instant(kLabels[which], day, t - ET_UT::Get(day, t) / solsys::kSecondsPerDay);
    };
    report(first, newton(t0, kNever));
    report(last, newton(t1, kLongestContactStep));
}

bool CSWEclipses::CircumstanceLunarEclipse(int day, double fraction, double gamma, double u,
                                           double n, ECLIPSE* eclipse) {
    State& s = *state_;
    if (!s.model || eclipse == nullptr || !solsys::search::is_instant(day + fraction))
        return false;
    if (s.precise) return s.precise_lunar({day, fraction}, u, *eclipse);
    ECLIPSE& e = *eclipse;
    const double penumbral = (u + 1.5572 - std::fabs(gamma)) / 0.545;
    const double umbral = (1.0129 - u - std::fabs(gamma)) / 0.545;

    // Opposition: the Moon's centre nearest to the axis of the shadow.
    observe_from_geocentre(*s.model);
    const double earth_km = s.model->GetRadiEq(SSO_ID(SSO_PLNT, 3));
    Luminaries sky{};
    const auto distance = [&](double t) {
        if (!luminaries_at(*s.model, {day, t}, sky)) return kNever;
        const solsys::Vec3 m = moon_in_shadow(sky.moon, sky.sun, earth_km);
        return std::hypot(m.x, m.y);
    };
    double t = fraction;
    if (!walk_to_least(distance, t)) return false;
    s.greatest = later({day, t}, 0);
    s.day = s.greatest.day;
    s.fraction = s.greatest.fraction;
    s.lunar.reset();
    const double delta_t = ET_UT::Get(s.day, s.fraction);
    e.day = s.day;
    e.greatest = s.fraction - delta_t / solsys::kSecondsPerDay;
    e.delta_t = delta_t;
    if (!(penumbral > 0)) return false;

    classify_lunar(gamma, u, n, penumbral, umbral, e);
    e.penumbral_magnitude = penumbral;
    e.gamma = gamma;
    e.umbra = 0.7404 - u;
    e.penumbra = 1.2847 + u;
    if (!luminaries_at(*s.model, s.greatest, sky)) return false;
    store_sublunar(*s.model, sky, e.place[1]);
    number_eclipse(e, s.greatest.jd(), ECLIPSE_LUNAR);
    return true;
}
