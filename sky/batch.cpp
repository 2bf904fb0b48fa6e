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
#include "sky/batch_in_file.h"
#include "sky/batch_lanes.h"
#include "sky/batch_walk.h"
#include "sky/dynamical_time.h"
#include "sky/place_of.h"
#include "sky/units.h"
#include "solsys/model.h"
#include "solsys/pipeline.h"
#include "solsys/sky/appearance.h"

namespace solsys::sky {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
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

bool is_none(const Place& place) { return std::isnan(place.ra_deg); }
bool is_none(const StateVector& state) { return std::isnan(state[0]); }
bool is_none(const Horizontal& horizontal) { return std::isnan(horizontal.altitude_deg); }
bool is_none(double value) { return std::isnan(value); }

template <class T>
std::size_t count_known(std::span<T> out) {
    return static_cast<std::size_t>(
        std::count_if(out.begin(), out.end(), [](const T& value) { return !is_none(value); }));
}

// Fills the output with nothing and makes the bodies known.
template <class T>
std::optional<Failure> prepare(Model& model, std::span<const Body> bodies, std::size_t rows,
                               std::size_t instants, std::span<T> out) {
    if (auto failure = wrong_size(out.size(), rows, instants)) return failure;
    if (auto failure = add_all(model, bodies)) return failure;
    fill_with_none(out);
    return std::nullopt;
}

// What `compute(body)` answers, an optional, for all bodies at all instants, as far as it is
// not there yet.
template <class T, class Compute>
void complete(Model& model, std::span<const Body> bodies, std::span<const Instant> instants,
              std::span<T> out, Pulse& pulse, PartOfBatch part, Compute&& compute) {
    const auto none = [&](std::size_t b, std::size_t i) {
        return is_none(out[b * instants.size() + i]);
    };
    Walk walk(model, instants, pulse, part);
    walk(
        [&](std::size_t i) {
            for (std::size_t b = 0; b < bodies.size(); ++b)
                if (none(b, i)) return true;
            return false;
        },
        [&](std::size_t i) {
            for (std::size_t b = 0; b < bodies.size(); ++b) {
                if (!none(b, i)) continue;
                if (const auto value = compute(bodies[b]))
                    out[b * instants.size() + i] = *value;
            }
        });
}

// The single call, except that the model stays where it is when there is no place.
// `light_time`: a first guess [day], 0 for none.
std::optional<Place> place_now(Model& model, PlaceKind kind, const Body& body,
                               double light_time = 0) {
    const bool apparent_one = kind == PlaceKind::kApparent;
    if (body.is_star())
        return apparent_one ? apparent_place(model, body) : astrometric_place(model, body);
    const CSWSolSys::Model& m = model.classic().Inside();
    const StateSource source = find_source(m.bodies, body.id);
    ApparentPlace seen;
    if (!source.kind->has_states() ||
        !apparent(m.bodies, m.current.observer, source, m.current.now, light_time, seen))
        return std::nullopt;
    const Vec3 way =
        apparent_one ? m.current.frames.cur_from_j2000 * seen.direction : seen.path;
    const Spherical s = to_spherical(way, seen.distance);
    return place_of(s.r, s.lon, s.lat);
}

// The places of all bodies, instant by instant: what the file holds by groups of instants, the
// rest one by one.
class PlacesOfBodies {
  public:
    PlacesOfBodies(Model& model, PlaceKind kind, std::span<const Body> bodies,
                   std::span<const Instant> instants, std::span<Place> out)
        : model_(model),
          kind_(kind),
          bodies_(bodies),
          in_file_(bodies_in_file(model, bodies)),
          instants_(instants),
          out_(out) {
        const CSWSolSys& classic = model.classic();
        // The guess would show where the light time is settled to 2e-6 day only (classic), and
        // where velocities are differences (the built-in Moon).
        guess_ = classic.GetReduction() == REDUCTION_MODERN && classic.HasEphemeris();
        has_group_ = std::any_of(in_file_.begin(), in_file_.end(),
                                 [](const auto& body) { return body.has_value(); });
    }

    // The instant that the model was moved to.
    void add(std::size_t i) {
        for (std::size_t b = 0; b < bodies_.size(); ++b)
            if (!in_file_[b]) compute(b, i);
        if (!has_group_) return;
        group_.add(model_, i);
        if (group_.full()) finish_group();
    }
    void finish_group() {
        if (group_.empty()) return;
        for (std::size_t b = 0; b < bodies_.size(); ++b)
            if (in_file_[b]) group_.places(*in_file_[b], kind_, instants_, row(b));
        for (const std::size_t i : group_.indices())
            for (std::size_t b = 0; b < bodies_.size(); ++b)
                if (is_none(row(b)[i]) && model_.move_to(instants_[i])) compute(b, i);
        group_.clear();
    }

  private:
    static constexpr double kLongestStep = 0.125;  // day: else the moons' guesses cost digits

    std::span<Place> row(std::size_t b) const {
        return out_.subspan(b * instants_.size(), instants_.size());
    }
    void compute(std::size_t b, std::size_t i) {
        const double expected =
            guess_ ? ExpectedLightTime(instants_, row(b), i).at(instants_[i], kLongestStep) : 0;
        row(b)[i] = place_now(model_, kind_, bodies_[b], expected).value_or(kNowhere);
    }

    Model& model_;
    PlaceKind kind_;
    std::span<const Body> bodies_;
    std::vector<std::optional<FileBody>> in_file_;
    std::span<const Instant> instants_;
    std::span<Place> out_;
    PlaceGroup group_;
    bool guess_ = false, has_group_ = false;
};

Result<std::size_t> places_of(Model& model, PlaceKind kind, std::span<const Body> bodies,
                              std::span<const Instant> instants, std::span<Place> out,
                              SearchControl* control) {
    if (auto failure = prepare(model, bodies, bodies.size(), instants.size(), out))
        return *failure;
    PlacesOfBodies places(model, kind, bodies, instants, out);
    Pulse pulse(control);
    Walk walk(model, instants, pulse);
    walk([&](std::size_t i) { places.add(i); });
    places.finish_group();
    return count_known(out);
}

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
    if (auto failure = prepare(model, bodies, bodies.size(), instants.size(), out))
        return *failure;
    Pulse pulse(control);
    states_in_file(model, bodies, instants, out, pulse, {0, 2});
    complete(model, bodies, instants, out, pulse, {1, 2},
             [&](const Body& body) { return heliocentric_state(model, body); });
    return count_known(out);
}

Result<std::size_t> apparent_places(Model& model, std::span<const Body> bodies,
                                    std::span<const Instant> instants, std::span<Place> out,
                                    SearchControl* control) {
    return places_of(model, PlaceKind::kApparent, bodies, instants, out, control);
}

Result<std::size_t> astrometric_places(Model& model, std::span<const Body> bodies,
                                       std::span<const Instant> instants, std::span<Place> out,
                                       SearchControl* control) {
    return places_of(model, PlaceKind::kAstrometric, bodies, instants, out, control);
}

Result<std::size_t> magnitudes(Model& model, std::span<const Body> bodies,
                               std::span<const Instant> instants, std::span<double> out,
                               SearchControl* control) {
    if (auto failure = prepare(model, bodies, bodies.size(), instants.size(), out))
        return *failure;
    Pulse pulse(control);
    magnitudes_in_file(model, bodies, instants, out, pulse, {0, 2});
    complete(model, bodies, instants, out, pulse, {1, 2},
             [&](const Body& body) { return magnitude_of(model, body); });
    return count_known(out);
}

Result<std::size_t> horizontals(Model& model, std::span<const Site> sites,
                                std::span<const Body> bodies, std::span<const Instant> instants,
                                std::span<Horizontal> out, SearchControl* control) {
    const auto rows = product(sites.size(), bodies.size());
    if (!rows) return Failure{"more sites and bodies than there is memory"};
    if (auto failure = prepare(model, bodies, *rows, instants.size(), out)) return *failure;
    const search::KeepModel keep(model.classic());
    Pulse pulse(control);
    const std::size_t parts = sites.size() + 1;
    horizontals_in_file(model, sites, bodies, instants, out, pulse, {0, parts});
    const std::size_t of_site = bodies.size() * instants.size();
    for (std::size_t s = 0; s < sites.size(); ++s) {
        const OBSERVER observer = sites[s].observer();
        if (!model.classic().SetObserver(&observer)) continue;
        complete(model, bodies, instants, out.subspan(s * of_site, of_site), pulse,
                 {s + 1, parts}, [&](const Body& body) -> std::optional<Horizontal> {
                     const auto place = place_now(model, PlaceKind::kApparent, body);
                     if (!place) return std::nullopt;
                     return horizontal_of(model, *place);
                 });
    }
    return count_known(out);
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
    Pulse pulse(control);
    Walk walk(model, instants, pulse);
    walk([&](std::size_t i) {
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
