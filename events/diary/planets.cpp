// The events of one planet.
#include <cmath>

#include "events/diary/motion_bounds.h"
#include "events/diary/quantities.h"
#include "events/diary/search.h"
#include "events/diary/transit.h"

using solsys::diary::Circle;
using solsys::diary::Diary;
using solsys::diary::GeocentricSky;
using solsys::diary::MotionBounds;
using solsys::diary::Target;

namespace {

constexpr double kRateStep = 0.5;        // day: of derivatives by differences
constexpr double kBrillianceStep = 2.0;  // day: magnitudes come in single precision
// The greatest brilliancies lie 33 to 39 days either side of inferior conjunction, where the
// magnitude's second and third derivatives are moderate.
constexpr double kBrilliance[2] = {15, 60};  // day
constexpr double kMagnitude3 = 1.2e-3;       // mag/day^3
constexpr double kMagnitudeRate = 0.01;      // mag/day

// One planet's search: the functions of time and what their zeros are.
struct PlanetSearch {
    Diary& s;
    GeocentricSky sky;
    Target planet;
    MotionBounds b;
    Target sun{solsys::diary::kSun};

    PlanetSearch(Diary& state, const SSO_ID& id)
        : s(state), sky(*state.model), planet{id}, b(solsys::diary::bounds_of(planet)) {}

    [[nodiscard]] double difference_bound() const {
        const MotionBounds of_sun = solsys::diary::bounds_of(sun);
        return solsys::diary::sine_bound(b.lon1, b.lon2, of_sun.lon1, of_sun.lon2);
    }
    bool add(double t, std::int32_t kind, bool with_sun) {
        return s.add(t, kind, s.body_detail(sky, t, planet, with_sun ? &sun : nullptr));
    }

    // kind(t, cosine of the difference): which event a zero of the sine is.
    template <class Kind>
    bool with_sun(const Kind& kind) {
        const auto sine = [this](double t) {
            return difference_at(sky, planet, sun, Circle::kEcliptic, t).sine;
        };
        return s.zeros(sine, difference_bound(), 1,
                       [&](double t, bool) { return add(t, kind(t), true); });
    }

    bool quadratures() {
        const auto cosine = [this](double t) {
            return difference_at(sky, planet, sun, Circle::kEcliptic, t).cosine;
        };
        return s.zeros(cosine, difference_bound(), 1, [&](double t, bool) {
            const bool east = difference_at(sky, planet, sun, Circle::kEcliptic, t).sine > 0;
            return add(t, east ? SKYEVENT_QUADRATURE_EAST : SKYEVENT_QUADRATURE_WEST, true);
        });
    }

    // The angle from the Sun is largest where its cosine is least. The cosine is smooth in a
    // transit too, where the angle itself has a cusp.
    bool greatest_elongations() {
        const auto cosine_rate = [this](double t) {
            return solsys::diary::rate(
                [this](double at) {
                    sky.at_in_same_frames(at);
                    return dot(sky.apparent(planet).direction, sky.sun().direction);
                },
                t, kRateStep, solsys::diary::plain);
        };
        return s.zeros(cosine_rate, b.cosine3, 0.2 * b.lon1, [&](double t, bool rises) {
            if (!rises) return true;
            const bool east = difference_at(sky, planet, sun, Circle::kEcliptic, t).sine > 0;
            return add(
                t, east ? SKYEVENT_GREATEST_ELONGATION_EAST : SKYEVENT_GREATEST_ELONGATION_WEST,
                true);
        });
    }

    bool stations(Circle circle) {
        const auto longitude_rate = [this, circle](double t) {
            return solsys::diary::rate(
                [this, circle](double at) { return longitude_at(sky, planet, circle, at); }, t,
                kRateStep, solsys::diary::turn);
        };
        const bool equator = circle == Circle::kEquator;
        return s.zeros(longitude_rate, equator ? b.ra3 : b.lon3,
                       0.2 * (equator ? b.ra1 : b.lon1), [&](double t, bool rises) {
                           SKYEVENT_BODY detail = s.body_detail(sky, t, planet, nullptr);
                           detail.in_longitude = equator ? 0 : 1;
                           return s.add(t,
                                        rises ? SKYEVENT_STATIONARY_DIRECT
                                              : SKYEVENT_STATIONARY_RETROGRADE,
                                        detail);
                       });
    }

    bool apsides() {
        const auto radial = [this](double t) {
            sky.at_in_same_frames(t);
            const solsys::State state = sky.heliocentric(planet.id);
            return dot(state.r, state.v);
        };
        // The usual size: what the bound gives over a twentieth of a revolution.
        const double period = s.model->GetOrbitalPeriod(planet.id);
        return s.zeros(
            radial, b.radial2, b.radial2 * period * period / 4000, [&](double t, bool rises) {
                SKYEVENT_BODY detail = s.body_detail(sky, t, planet, nullptr);
                detail.distance = norm(sky.heliocentric(planet.id).r);
                return s.add(t, rises ? SKYEVENT_PERIHELION : SKYEVENT_APHELION, detail);
            });
    }

    bool distances() {
        const auto distance_rate = [this](double t) {
            return solsys::diary::rate(
                [this](double at) {
                    sky.at_in_same_frames(at);
                    return sky.apparent(planet).distance;
                },
                t, kRateStep, solsys::diary::plain);
        };
        return s.zeros(distance_rate, b.distance3, 0.008, [&](double t, bool rises) {
            return add(t, rises ? SKYEVENT_CLOSEST : SKYEVENT_FARTHEST, false);
        });
    }

    bool greatest_brilliancy() {
        const auto magnitude_rate = [this](double t) {
            return solsys::diary::rate(
                [this](double at) {
                    const solsys::Instant instant = solsys::search::split(at);
                    s.model->UpdateSys(instant.day, instant.fraction);
                    float magnitude = 0;
                    const bool known = s.model->GetMagnitude(planet.id, &magnitude);
                    return known ? static_cast<double>(magnitude) : std::nan("");
                },
                t, kBrillianceStep, solsys::diary::plain);
        };
        solsys::search::Span window;
        const auto brilliancies = [&](double from, double to) {
            window = {from, to, from};
            const double step = std::sqrt(3 * kMagnitudeRate / kMagnitude3);
            return crossings(
                window, s.control, magnitude_rate, kMagnitude3, step,
                [&](const solsys::search::Bracket& x) {
                    if (x.a.f > 0) return true;  // a maximum of the magnitude
                    const double t =
                        solsys::search::root(magnitude_rate, x, solsys::search::kSecond).t;
                    return !s.within(t) || add(t, SKYEVENT_GREATEST_BRILLIANCY, false);
                });
        };
        const auto sine = [this](double t) {
            return difference_at(sky, planet, sun, Circle::kEcliptic, t).sine;
        };
        const auto near_conjunction = [&](double t, bool) {
            if (beyond_sun(t)) return true;
            return brilliancies(t - kBrilliance[1], t - kBrilliance[0]) &&
                   brilliancies(t + kBrilliance[0], t + kBrilliance[1]);
        };
        return s.zeros(sine, difference_bound(), 1, near_conjunction, kBrilliance[1]);
    }

    bool transits() {
        const auto sine = [this](double t) {
            return difference_at(sky, planet, sun, Circle::kEcliptic, t).sine;
        };
        const auto conjunction = [&](double t, bool) {
            if (beyond_sun(t)) return true;
            const solsys::diary::Transit transit =
                solsys::diary::transit_near(sky, planet.id, t);
            if (!transit.exists || !s.within(transit.greatest)) return true;
            SKYEVENT_BODY detail = s.body_detail(sky, transit.greatest, planet, &sun);
            for (int i = 0; i < 4; ++i) {
                if (transit.contact[i] != 0)
                    detail.contact[i] = solsys::search::ut_from_tt(transit.contact[i]);
            }
            return s.add(transit.greatest, SKYEVENT_TRANSIT, detail);
        };
        return s.zeros(sine, difference_bound(), 1, conjunction, 1.0);
    }

    // Whether the planet is farther than the Sun.
    bool beyond_sun(double t) {
        sky.at(t);
        return sky.apparent(planet).distance > sky.sun().distance;
    }
};

}  // namespace

bool Diary::find_inner(const SSO_ID& id) {
    PlanetSearch search(*this, id);
    return search.with_sun([&search](double t) {
        return search.beyond_sun(t) ? SKYEVENT_SUPERIOR_CONJUNCTION
                                    : SKYEVENT_INFERIOR_CONJUNCTION;
    }) && search.greatest_elongations() &&
           search.stations(Circle::kEquator) && search.stations(Circle::kEcliptic) &&
           (id.number != 2 || search.greatest_brilliancy()) && search.apsides() &&
           search.transits();
}

bool Diary::find_outer(const SSO_ID& id) {
    PlanetSearch search(*this, id);
    return search.with_sun([&search](double t) {
        return difference_at(search.sky, search.planet, search.sun, Circle::kEcliptic, t)
                           .cosine < 0
                   ? SKYEVENT_OPPOSITION
                   : SKYEVENT_CONJUNCTION;
    }) && search.quadratures() &&
           search.stations(Circle::kEquator) && search.stations(Circle::kEcliptic) &&
           search.apsides() && search.distances();
}
