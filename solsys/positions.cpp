#include "solsys/positions.h"

#include <cmath>

#include "ephemeris/two_body/kepler_equation.h"
#include "solsys/spacecraft_track.h"

using solsys::Instant;
using solsys::State;
using solsys::StateSource;
using solsys::Vec3;

namespace solsys {
namespace {

constexpr int kMaxDepth = 8;  // centres of centres

// Energy, in units of mu over the distance, above which an orbit of e = 1 is no parabola but a
// path along the radius.
constexpr double kParabolicEnergy = 1e-4;

bool state_of_object(SS_Object* object, Instant t, bool velocity, bool relative, State& out) {
    double s[6];
    s[3] = s[4] = s[5] = 0.0;
    const int status = object == nullptr ? SS_UNKNOWN
                       : relative        ? object->GetState(t.day, t.fraction, velocity, s)
                                         : object->ComputeState(t.day, t.fraction, velocity, s);
    if (status != SS_OK) {
        out = State{};
        return false;
    }
    out = load_state(s);
    return true;
}

// The orbit of a state, in what `Kepler` takes. False for a path along the radius, which has no
// plane.
bool orbit_of(const State& state, double mu, Elements& out) {
    double r[3];
    double v[3];
    store(state.r, r);
    store(state.v, v);
    VectorToElements(mu, r, v, &out);
    if (std::fabs(out.e - 1.0) > kParabolicBand) return std::isfinite(out.e);

    // Moved as a parabola, whichever side of it the orbit is on: Barker's quantities.
    const double h = norm(cross(state.r, state.v));
    const double energy = 1.0 - dot(state.v, state.v) * norm(state.r) / (2.0 * mu);
    out.q = h * h / (2.0 * mu);
    if (!(out.q > 0.0 && std::fabs(energy) < kParabolicEnergy)) return false;
    const double D = dot(state.r, state.v) / h;
    out.n = std::sqrt(mu / (2.0 * out.q * out.q * out.q));
    out.M = D + D * D * D / 3.0;
    return true;
}

}  // namespace

bool has_states(std::int32_t type) {
    switch (type) {
        case SSO_PLNT:
        case SSO_MOON:
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
        case SSO_SCFT:
        case SSO_USCO:
        case SSO_FSCO:
        case SSO_TLE:
            return true;
        default:
            return false;
    }
}

}  // namespace solsys

StateSource CSWSolSys::Positions::find(std::int32_t type, std::int32_t number) const {
    StateSource source;
    source.type = type;
    source.number = number;
    const std::uint64_t key = solsys::key_of(type, number);
    const solsys::ElementTables& tables = model_.elements;
    switch (type) {
        case SSO_PLNT:
        case SSO_MOON:
            if (const auto* object = model_.objects.find(key)) source.object = object->get();
            break;
        case SSO_ASTR:
            if (model_.resolved_centre.type == type &&
                model_.resolved_centre.number == number) {
                source.elements = &model_.eros;
            } else if (const AsteroidRecord* record = tables.asteroids.find(key)) {
                source.elements = &record->elements;
            } else if (tables.held_asteroid != nullptr &&
                       tables.held_asteroid->number == static_cast<std::uint32_t>(number)) {
                source.held_asteroid = tables.held_asteroid.get();
            }
            break;
        case SSO_COMT:
            if (const CometRecord* record = tables.comets.find(key)) {
                source.elements = &record->elements;
            } else if (tables.held_comet != nullptr && tables.held_comet->number == number) {
                source.held_comet = tables.held_comet.get();
            }
            break;
        case SSO_SCFT:
            source.track = tables.spacecraft.find(key);
            break;
        case SSO_USCO:
            source.user_object = tables.user_objects.find(key);
            break;
        default:
            break;
    }
    return source;
}

bool CSWSolSys::Positions::heliocentric(const StateSource& source, Instant t, bool velocity,
                                        State& out, int depth) {
    switch (source.type) {
        case SSO_PLNT:
        case SSO_MOON:
            return solsys::state_of_object(source.object, t, velocity, false, out);
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
            // True even for a body that is in no table: it is then shown at the Sun.
            about_centre(source, t, velocity, out);
            return true;
        case SSO_USCO:
        case SSO_FSCO:
        case SSO_TLE:
            return about_centre(source, t, velocity, out) &&
                   add_centre(t, velocity, out, depth);
        case SSO_SCFT:
            if (source.track != nullptr) {
                return spacecraft_heliocentric(*source.track, t, velocity, out, depth);
            }
            break;
        default:
            break;
    }
    out = State{};
    return false;
}

bool CSWSolSys::Positions::about_centre(const StateSource& source, Instant t, bool velocity,
                                        State& out) {
    if (source.object != nullptr) {
        return solsys::state_of_object(source.object, t, velocity, true, out);
    }
    if (source.elements != nullptr) {
        return by_elements(*source.elements, solsys::kSunGm, t, velocity, out);
    }
    if (source.held_asteroid != nullptr || source.held_comet != nullptr) {
        double s[6] = {};
        const bool solved =
            source.held_asteroid != nullptr
                ? KeplerPQ5(velocity, t.day, t.fraction, source.held_asteroid, s)
                : KeplerPQ5(velocity, t.day, t.fraction, source.held_comet, s);
        out = transpose_times(model_.ecl2k_from_j2000, solsys::load_state(s));
        return solved;
    }
    if (source.track != nullptr) {
        const solsys::TrackPlace place = locate(*source.track, t);
        if (place.record != nullptr) {
            return spacecraft(*place.record, elements_at(place, t), t, velocity, out);
        }
    }
    if (source.user_object != nullptr) {
        return user_object(*source.user_object, t, velocity, out);
    }
    out = State{};
    return false;
}

bool CSWSolSys::Positions::from_observer(const StateSource& source, Instant t, bool velocity,
                                         State& out) {
    const solsys::ObserverState& observer = model_.current.observer;
    const OBSERVER& place = observer.record;
    if (source.type == place.body_type && source.number == place.body_number) {
        out = -observer.relative;
        return true;
    }
    // Differences of small numbers where the detour over the Sun would cost digits.
    const bool satellite_of_its_body = source.type == SSO_MOON && place.body_type == SSO_PLNT &&
                                       source.number / 100 == place.body_number;
    const bool near_earth = source.type == SSO_USCO && model_.observer_on_earth();
    State origin = observer.heliocentric;
    bool known = false;
    if (satellite_of_its_body || near_earth) {
        known = about_centre(source, t, velocity, out);
        origin = observer.relative;
    } else {
        known = heliocentric(source, t, velocity, out);
    }
    if (!known) {
        out = State{};
        return false;
    }
    out = out - origin;
    return true;
}

// Element orbits lie in the J2000 ecliptic.
bool CSWSolSys::Positions::by_elements(const Elements& elements, double mu, Instant t,
                                       bool velocity, State& out) const {
    double r[3] = {};
    double v[3] = {};
    const bool solved = Kepler(velocity, mu, t.day, t.fraction, elements, r, v);
    out = transpose_times(model_.ecl2k_from_j2000, State{solsys::load(r), solsys::load(v)});
    return solved;
}

bool CSWSolSys::Positions::spacecraft(const SpacecraftRecord& record, const Elements& elements,
                                      Instant t, bool velocity, State& out) {
    record_centre(record.central_type, record.central_number);
    double mu = system_.GetGravity(model_.resolved_centre);
    if (!(mu > 0.0)) {  // of unknown mass: an ellipse tells it by its period
        out = State{};
        if (elements.e >= 1.0) return false;
        mu = elements.n * elements.n * elements.q * elements.q * elements.q;
    }
    return by_elements(elements, mu, t, velocity, out);
}

bool CSWSolSys::Positions::spacecraft_heliocentric(const solsys::SpacecraftTrack& track,
                                                   Instant t, bool velocity, State& out,
                                                   int depth) {
    out = State{};
    const solsys::TrackPlace place = locate(track, t);
    if (place.record == nullptr) return false;
    if (!spacecraft(*place.record, elements_at(place, t), t, velocity, out) ||
        !add_centre(t, velocity, out, depth)) {
        return false;
    }
    if (place.changes_centre()) {
        State second{};
        if (!spacecraft(*place.next, solsys::elements_of(*place.next), t, velocity, second) ||
            !add_centre(t, velocity, second, depth)) {
            return false;
        }
        record_centre(place.record->central_type, place.record->central_number);
        out = (1.0 - place.weight) * out + place.weight * second;
    }
    return true;
}

bool CSWSolSys::Positions::user_object(const UserObjectRecord& record, Instant t, bool velocity,
                                       State& out) {
    record_centre(record.central_type, record.central_number);
    const SSO_ID& centre = model_.resolved_centre;
    State start = solsys::load_state(record.state);
    // The axes are those of the epoch: an orbit does not turn with the body below it.
    if (!(centre.type == SSO_PLNT && centre.number == 3)) {
        double body_from_j2000[9];
        double j2000_from_body[9];
        if (system_.GetMtrxEq2K_PlEq(centre, record.epoch_day, record.epoch_fraction,
                                     body_from_j2000, j2000_from_body)) {
            start = transpose_times(solsys::load_matrix(body_from_j2000), start);
        }
    }
    out = State{};
    const double mu = system_.GetGravity(centre);
    if (!(mu > 0.0)) return false;
    Elements elements{};
    if (!solsys::orbit_of(start, mu, elements)) return false;
    elements.epochDay = record.epoch_day;
    elements.epochFraction = record.epoch_fraction;
    double there[6] = {};
    const bool solved = Kepler(velocity, mu, t.day, t.fraction, elements, there, there + 3);
    out = solsys::load_state(there);
    return solved;
}

// Adds the heliocentric state of the centre recorded last.
bool CSWSolSys::Positions::add_centre(Instant t, bool velocity, State& out, int depth) {
    const std::int32_t type = model_.resolved_centre.type;
    const std::int32_t number = model_.resolved_centre.number;
    State centre{};
    if (type == -1 || depth >= solsys::kMaxDepth ||
        !heliocentric(find(type, number), t, velocity, centre, depth + 1)) {
        out = State{};
        return false;
    }
    record_centre(type, number);
    out = out + centre;
    return true;
}
