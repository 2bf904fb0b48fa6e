#include "solsys/sky/batch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>

#include "core/angles.h"
#include "core/spherical.h"
#include "ephemeris/de/open_file.h"
#include "ephemeris/de/state_batch.h"
#include "events/search/keep_model.h"
#include "sky/units.h"
#include "solsys/model.h"
#include "solsys/pipeline.h"
#include "solsys/sky/appearance.h"

namespace solsys::sky {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kInstantsPerStep = 1024;  // between two looks at the control
constexpr std::size_t kInstantsPerBlock = 128;
constexpr int kLastInFile = 11;
constexpr Place kNowhere{kNone, kNone, kNone, kNone};

template <class T>
void fill_with_none(std::span<T> out) {
    if constexpr (std::is_same_v<T, Place>) {
        std::fill(out.begin(), out.end(), kNowhere);
    } else if constexpr (std::is_same_v<T, StateVector>) {
        std::fill(out.begin(), out.end(),
                  StateVector{kNone, kNone, kNone, kNone, kNone, kNone});
    } else if constexpr (std::is_same_v<T, Horizontal>) {
        std::fill(out.begin(), out.end(), Horizontal{kNone, kNone});
    } else if constexpr (std::is_same_v<T, std::int8_t>) {
        std::fill(out.begin(), out.end(), std::int8_t{-1});
    } else {
        std::fill(out.begin(), out.end(), kNone);
    }
}

// The product of the counts, or nothing when it is beyond all memory.
std::optional<std::size_t> product(std::size_t a, std::size_t b) {
    if (b != 0 && a > std::numeric_limits<std::size_t>::max() / b) return std::nullopt;
    return a * b;
}

std::optional<Failure> wrong_size(std::size_t size, std::size_t rows, std::size_t instants) {
    const auto wanted = product(rows, instants);
    if (wanted && size == *wanted) return std::nullopt;
    return Failure{"the output holds " + std::to_string(size) + " values instead of " +
                   std::to_string(rows) + " times " + std::to_string(instants)};
}

std::optional<Failure> add_all(Model& model, std::span<const Body> bodies) {
    for (const Body& body : bodies)
        if (const Result<bool> added = model.add(body); !added) return Failure{added.message()};
    return std::nullopt;
}

// The instants one after another, with the model moved to each: `use` gets those that can be
// reached. Ends early when the control says so; the model comes back.
class Walk {
  public:
    Walk(Model& model, std::span<const Instant> instants, SearchControl* control)
        : keep_(model.classic()),
          model_(model),
          before_(model.instant()),
          instants_(instants),
          control_(control) {}
    ~Walk() { model_.move_to(before_); }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    // As one of several passes over the instants; false when it was stopped.
    template <class Use>
    bool operator()(std::size_t pass, std::size_t passes, Use&& use) {
        for (std::size_t i = 0; i < instants_.size(); ++i) {
            if (control_ != nullptr && i % kInstantsPerStep == 0) {
                if (control_->stopped()) return false;
                const double done =
                    static_cast<double>(i) / static_cast<double>(instants_.size());
                control_->tell((static_cast<double>(pass) + done) /
                               static_cast<double>(passes));
            }
            if (model_.move_to(instants_[i])) use(i);
        }
        return true;
    }

  private:
    search::KeepModel keep_;  // the classic model, wherever its host had put it
    Model& model_;
    Instant before_;
    std::span<const Instant> instants_;
    SearchControl* control_;
};

// What `compute(body, row, i)` answers, an optional, for all bodies at all instants; the row is
// what was computed of the body before instant i.
template <class T, class Compute>
Result<std::size_t> for_bodies(Model& model, std::span<const Body> bodies,
                               std::span<const Instant> instants, std::span<T> out,
                               SearchControl* control, Compute&& compute) {
    if (auto failure = wrong_size(out.size(), bodies.size(), instants.size())) return *failure;
    if (auto failure = add_all(model, bodies)) return *failure;
    fill_with_none(out);
    std::size_t done = 0;
    Walk walk(model, instants, control);
    walk(0, 1, [&](std::size_t i) {
        for (std::size_t b = 0; b < bodies.size(); ++b) {
            const auto value =
                compute(bodies[b], out.subspan(b * instants.size(), instants.size()), i);
            if (!value) continue;
            out[b * instants.size() + i] = *value;
            ++done;
        }
    });
    return done;
}

// The single call, except that the model stays where it is when there is no place.
// `light_time`: a first guess [day], 0 for none.
std::optional<Place> apparent_now(Model& model, const Body& body, double light_time = 0) {
    if (body.is_star()) return apparent_place(model, body);
    const CSWSolSys::Model& m = model.classic().Inside();
    const StateSource source = find_source(m.bodies, body.id);
    ApparentPlace seen;
    if (!source.kind->has_states() ||
        !apparent(m.bodies, m.current.observer, source, m.current.now, light_time, seen))
        return std::nullopt;
    const Spherical s =
        to_spherical(m.current.frames.cur_from_j2000 * seen.direction, seen.distance);
    return Place{s.lon * kDegrees, s.lat * kDegrees, s.r, s.r * kLightDaysPerAu};
}

// The light time that two neighbours before lead to; 0 without them. Over steps as short as
// these it errs by less than the distance of the moment does, from which a single call starts:
// one evaluation of the body settles it instead of two.
double expected_light_time(std::span<const Instant> instants, std::span<const Place> row,
                           std::size_t i) {
    constexpr double kLongestStep = 0.125;  // day
    if (i < 2) return 0;
    const double step = days_between(instants[i - 1], instants[i]);
    const double before = days_between(instants[i - 2], instants[i - 1]);
    if (!(std::fabs(step) <= std::fabs(before) && std::fabs(before) <= kLongestStep) ||
        before == 0)
        return 0;
    const double last = row[i - 1].light_time_days;
    const double expected = last + (last - row[i - 2].light_time_days) * (step / before);
    return expected > 0 ? expected : 0;
}

// Instant::tdb of one instant after another. Delta T is looked up once a half day, for which it
// holds: its steps, and the months of its polynomials, begin at noon or at midnight.
class DynamicalTime {
  public:
    solsys::Instant operator()(const Instant& t) {
        const JulianDate utc = t.utc();
        const bool after_midnight = utc.fraction >= 0.5;
        if (utc.day != day_ || after_midnight != after_midnight_) {
            day_ = utc.day, after_midnight_ = after_midnight;
            delta_t_ = t.delta_t_seconds() / kSecondsPerDay;
        }
        const double fraction = utc.fraction + delta_t_;
        if (fraction >= 0 && fraction < 1) return {utc.day, fraction};
        const JulianDate tdb = t.tdb();
        return {tdb.day, tdb.fraction};
    }

  private:
    int day_ = std::numeric_limits<int>::min();
    bool after_midnight_ = false;
    double delta_t_ = 0;  // day
};

Vec3 direction_of(const Place& place) {
    const double ra = place.ra_deg / kDegrees, dec = place.dec_deg / kDegrees;
    return {std::cos(dec) * std::cos(ra), std::cos(dec) * std::sin(ra), std::sin(dec)};
}

}  // namespace

Result<std::size_t> file_states(int body, std::span<const Instant> instants,
                                std::span<StateVector> out) {
    if (auto failure = wrong_size(out.size(), 1, instants.size())) return *failure;
    if (!de_file_is_open()) return Failure{"no ephemeris file is open"};
    if (body < 1 || body > kLastInFile)
        return Failure{"no body " + std::to_string(body) + " in the ephemeris file: 1 to 11"};
    std::size_t done = 0;
    DynamicalTime dynamical;
    solsys::Instant block[kInstantsPerBlock];
    for (std::size_t first = 0; first < instants.size(); first += kInstantsPerBlock) {
        const std::size_t count = std::min(kInstantsPerBlock, instants.size() - first);
        for (std::size_t i = 0; i < count; ++i) {
            block[i] = dynamical(instants[first + i]);
        }
        done += de_states(body, {block, count}, out.subspan(first, count)).value_or(0);
    }
    return done;
}

Result<std::size_t> heliocentric_states(Model& model, std::span<const Body> bodies,
                                        std::span<const Instant> instants,
                                        std::span<StateVector> out, SearchControl* control) {
    return for_bodies(
        model, bodies, instants, out, control,
        [&](const Body& body, auto, std::size_t) { return heliocentric_state(model, body); });
}

Result<std::size_t> apparent_places(Model& model, std::span<const Body> bodies,
                                    std::span<const Instant> instants, std::span<Place> out,
                                    SearchControl* control) {
    // The guess would show where the light time is settled to 2e-6 day only (classic), and
    // where velocities are differences (the built-in Moon).
    const CSWSolSys& classic = model.classic();
    const bool guess = classic.GetReduction() == REDUCTION_MODERN && classic.HasEphemeris();
    return for_bodies(model, bodies, instants, out, control,
                      [&](const Body& body, std::span<const Place> row, std::size_t i) {
                          return apparent_now(
                              model, body, guess ? expected_light_time(instants, row, i) : 0);
                      });
}

Result<std::size_t> astrometric_places(Model& model, std::span<const Body> bodies,
                                       std::span<const Instant> instants, std::span<Place> out,
                                       SearchControl* control) {
    return for_bodies(
        model, bodies, instants, out, control,
        [&](const Body& body, auto, std::size_t) { return astrometric_place(model, body); });
}

Result<std::size_t> magnitudes(Model& model, std::span<const Body> bodies,
                               std::span<const Instant> instants, std::span<double> out,
                               SearchControl* control) {
    return for_bodies(
        model, bodies, instants, out, control,
        [&](const Body& body, auto, std::size_t) { return magnitude_of(model, body); });
}

Result<std::size_t> horizontals(Model& model, std::span<const Site> sites,
                                std::span<const Body> bodies, std::span<const Instant> instants,
                                std::span<Horizontal> out, SearchControl* control) {
    const auto rows = product(sites.size(), bodies.size());
    if (!rows) return Failure{"more sites and bodies than there is memory"};
    if (auto failure = wrong_size(out.size(), *rows, instants.size())) return *failure;
    if (auto failure = add_all(model, bodies)) return *failure;
    fill_with_none(out);
    std::size_t done = 0;
    Walk walk(model, instants, control);
    for (std::size_t s = 0; s < sites.size(); ++s) {
        const OBSERVER observer = sites[s].observer();
        model.classic().SetObserver(&observer);
        const bool whole = walk(s, sites.size(), [&](std::size_t i) {
            for (std::size_t b = 0; b < bodies.size(); ++b) {
                const auto place = apparent_now(model, bodies[b]);
                if (!place) continue;
                out[(s * bodies.size() + b) * instants.size() + i] =
                    horizontal_of(model, *place);
                ++done;
            }
        });
        if (!whole) break;
    }
    return done;
}

Result<std::size_t> constellations(Model& model, std::span<const Instant> instants,
                                   std::span<const Place> places, std::span<std::int8_t> out,
                                   SearchControl* control) {
    if (instants.empty() ? !places.empty() : places.size() % instants.size() != 0)
        return Failure{"the places are no rows of one per instant"};
    if (out.size() != places.size())
        return Failure{"the output holds " + std::to_string(out.size()) + " values for " +
                       std::to_string(places.size()) + " places"};
    fill_with_none(out);
    std::size_t done = 0;
    Walk walk(model, instants, control);
    walk(0, 1, [&](std::size_t i) {
        for (std::size_t at = i; at < places.size(); at += instants.size()) {
            const int index =
                constellation_at(model, places[at].ra_deg, places[at].dec_deg).index;
            out[at] = static_cast<std::int8_t>(index);
            done += index >= 0;
        }
    });
    return done;
}

Result<std::size_t> separations(std::span<const Place> first, std::span<const Place> second,
                                std::span<double> out) {
    const std::size_t count = first.size() == 1 ? second.size() : first.size();
    if ((second.size() != count && second.size() != 1) || out.size() != count)
        return Failure{"separations of " + std::to_string(first.size()) + " and " +
                       std::to_string(second.size()) + " places into " +
                       std::to_string(out.size()) + " values"};
    std::size_t done = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Place& a = first[first.size() == 1 ? 0 : i];
        const Place& b = second[second.size() == 1 ? 0 : i];
        out[i] = separation(direction_of(a), direction_of(b)) * kDegrees;
        done += std::isfinite(out[i]);
    }
    return done;
}

}  // namespace solsys::sky
