#include "solsys/states.h"

#include "ephemeris/planet_states.h"
#include "solsys/body_frames.h"
#include "solsys/orbit_motion.h"
#include "solsys/reduction.h"
#include "solsys/spacecraft_track.h"

namespace solsys {
namespace {

constexpr int kMaxDepth = 8;  // centres of centres: a ring of objects going round each other
constexpr double kUnknownGm = -1.0;

bool none(State& out) {
    out = State{};
    return false;
}

// Element orbits lie in the J2000 ecliptic.
bool by_elements(const Bodies& bodies, const Elements& elements, double mu, Instant t,
                 bool velocity, State& out) {
    State ecliptic{};
    const bool solved = state_on_orbit(elements, mu, t, velocity, ecliptic);
    out = transpose_times(bodies.ecl2k_from_j2000, ecliptic);
    return solved;
}

bool by_held_record(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                    State& out) {
    double s[6] = {};
    const bool solved = source.held_asteroid != nullptr
                            ? KeplerPQ5(velocity, t.day, t.fraction, source.held_asteroid, s)
                            : KeplerPQ5(velocity, t.day, t.fraction, source.held_comet, s);
    out = transpose_times(bodies.ecl2k_from_j2000, load_state(s));
    return solved;
}

bool integrated(const Bodies& bodies, IntegratedMotion& motion, Instant t, bool velocity,
                State& out) {
    if (!motion.state(t, out, bodies.integrated.progress)) return false;
    if (!velocity) out.v = Vec3{};
    return true;
}

BodyKey centre_of(const SpacecraftRecord& record) {
    return {record.central_type, record.central_number};
}
BodyKey centre_of(const UserObjectRecord& record) {
    return {record.central_type, record.central_number};
}

bool spacecraft(const Bodies& bodies, const SpacecraftRecord& record, Elements elements,
                Instant t, bool velocity, State& out) {
    double mu = gravity_of(bodies, centre_of(record));
    if (!(mu > 0.0)) {  // of unknown mass: an ellipse tells it by its period
        if (elements.e >= 1.0) return none(out);
        mu = elements.n * elements.n * elements.q * elements.q * elements.q;
    }
    if (elements.n == 0.0) elements.n = mean_motion(elements.q, elements.e, mu);
    return by_elements(bodies, elements, mu, t, velocity, out);
}

bool user_object(const Bodies& bodies, const UserObjectRecord& record, Instant t, bool velocity,
                 State& out) {
    const double days = days_between(Instant{record.epoch_day, record.epoch_fraction}, t);
    const State start = start_state(bodies, record);
    out = State{};
    if (!moved_state(start, gravity_of(bodies, centre_of(record)), days, out)) return false;
    if (!velocity) out.v = Vec3{};
    return true;
}

bool satellite(const EarthSatellite& satellite, Instant t, bool velocity, State& out) {
    ResonanceState<double> resonance{};
    if (satellite.set.j2000_state(t, resonance, out) != TLE_OK) return none(out);
    if (!velocity) out.v = Vec3{};
    return true;
}

bool heliocentric(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  int depth, State& out);

// Adds the heliocentric state of a central body.
bool add_centre(const Bodies& bodies, BodyKey centre, Instant t, bool velocity, int depth,
                State& out) {
    State of_centre{};
    if (centre.type == -1 || depth >= kMaxDepth ||
        !heliocentric(bodies, find_source(bodies, centre), t, velocity, depth + 1, of_centre)) {
        return none(out);
    }
    out = out + of_centre;
    return true;
}

bool spacecraft_heliocentric(const Bodies& bodies, const SpacecraftTrack& track, Instant t,
                             bool velocity, int depth, State& out) {
    const TrackPlace place = locate(track, t);
    if (place.record == nullptr) return none(out);
    if (!spacecraft(bodies, *place.record, elements_at(place, t), t, velocity, out) ||
        !add_centre(bodies, centre_of(*place.record), t, velocity, depth, out)) {
        return false;
    }
    if (place.changes_centre()) {
        State second{};
        if (!spacecraft(bodies, *place.next, elements_of(*place.next), t, velocity, second) ||
            !add_centre(bodies, centre_of(*place.next), t, velocity, depth, second)) {
            return false;
        }
        out = (1.0 - place.weight) * out + place.weight * second;
    }
    return true;
}

bool state_of_object(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                     bool relative, State& out) {
    SS_Object* const object = source.object;
    if (bodies.modern != nullptr) {
        t = bodies.modern->dynamical(t);
        if (!relative && exact_state(*bodies.modern, source, t, out)) return true;
    }
    double s[6];
    s[3] = s[4] = s[5] = 0.0;
    const int status = object == nullptr ? SS_UNKNOWN
                       : relative        ? object->GetState(t.day, t.fraction, velocity, s)
                                         : object->ComputeState(t.day, t.fraction, velocity, s);
    if (status != SS_OK) return none(out);
    out = load_state(s);
    return true;
}

bool heliocentric(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  int depth, State& out) {
    switch (source.kind->road) {
        case Road::itself:
            return state_of_object(bodies, source, t, velocity, false, out);
        case Road::about_sun:
            about_centre(bodies, source, t, velocity, out);
            return true;
        case Road::about_centre:
            return about_centre(bodies, source, t, velocity, out) &&
                   add_centre(bodies, centre_of(bodies, source.body, t), t, velocity, depth,
                              out);
        case Road::about_earth:
            return about_centre(bodies, source, t, velocity, out) &&
                   add_centre(bodies, kEarthKey, t, velocity, depth, out);
        case Road::blended:
            if (source.track == nullptr) break;
            return spacecraft_heliocentric(bodies, *source.track, t, velocity, depth, out);
        case Road::none:
            break;
    }
    return none(out);
}

void find_asteroid(const Bodies& bodies, StateSource& source) {
    const ElementTables& tables = bodies.elements;
    if (tables.is_central_asteroid(source.body.number)) {
        source.elements = &bodies.eros;
    } else if (const auto* held = tables.held_for_asteroid(source.body.number)) {
        source.held_asteroid = held;
    } else if (const AsteroidRecord* record = tables.asteroids.find(key_of(source.body))) {
        source.elements = &record->elements;
    }
}

void find_comet(const ElementTables& tables, StateSource& source) {
    if (const auto* held = tables.held_for_comet(source.body.number)) {
        source.held_comet = held;
    } else if (const CometRecord* record = tables.comets.find(key_of(source.body))) {
        source.elements = &record->elements;
    }
}

}  // namespace

std::optional<std::uint32_t> Bodies::source_changes() const {
    const SS_Object* sun = find(kSunKey);
    if (sun == nullptr) return std::nullopt;
    return sun->SourceChanges() - de_file_changes();
}

bool Bodies::only_theories() const {
    return theories_since && theories_since == source_changes();
}

StateSource find_source(const Bodies& bodies, BodyKey body) {
    StateSource source{.body = body, .kind = &kind_of(body.type)};
    const ElementTables& tables = bodies.elements;
    const std::uint64_t key = key_of(body);
    switch (source.kind->table) {
        case Table::objects:
            source.object = bodies.find(body);
            break;
        case Table::asteroids:
            find_asteroid(bodies, source);
            break;
        case Table::comets:
            find_comet(tables, source);
            break;
        case Table::spacecraft:
            source.track = tables.spacecraft.find(key);
            break;
        case Table::user_objects:
            source.user_object = tables.user_objects.find(key);
            break;
        case Table::integrated:
            source.elements = bodies.integrated.elements(key);
            source.user_object = bodies.integrated.user_objects.find(key);
            break;
        case Table::satellites:
            source.satellite = find_satellite(bodies.satellites, key);
            break;
        case Table::stars:
        case Table::none:
            break;
    }
    const bool of_record = source.elements != nullptr || source.user_object != nullptr;
    if (of_record && source.elements != &bodies.eros)
        source.motion = bodies.integrated.motion(key);
    return source;
}

State start_state(const Bodies& bodies, const UserObjectRecord& record) {
    const State start = load_state(record.state);
    const BodyKey centre = centre_of(record);
    const Instant epoch{record.epoch_day, record.epoch_fraction};
    // The axes are those of the epoch: an orbit does not turn with the body below it.
    Mat3 body_from_j2000{};
    if (centre != kEarthKey && body_frame(bodies, centre, epoch, body_from_j2000))
        return transpose_times(body_from_j2000, start);
    return start;
}

bool heliocentric(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  State& out) {
    return heliocentric(bodies, source, t, velocity, 0, out);
}

bool about_centre(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                  State& out) {
    if (source.object != nullptr)
        return state_of_object(bodies, source, t, velocity, true, out);
    if (source.motion != nullptr && integrated(bodies, *source.motion, t, velocity, out))
        return true;
    if (source.elements != nullptr)
        return by_elements(bodies, *source.elements, kSunGm, t, velocity, out);
    if (source.held_asteroid != nullptr || source.held_comet != nullptr)
        return by_held_record(bodies, source, t, velocity, out);
    if (source.track != nullptr) {
        const TrackPlace place = locate(*source.track, t);
        if (place.record == nullptr) return none(out);
        return spacecraft(bodies, *place.record, elements_at(place, t), t, velocity, out);
    }
    if (source.user_object != nullptr)
        return user_object(bodies, *source.user_object, t, velocity, out);
    if (source.satellite != nullptr) return satellite(*source.satellite, t, velocity, out);
    return none(out);
}

bool on_one_centre(const Bodies& bodies, const StateSource& source, Instant t, bool velocity,
                   State& out) {
    const BodyKey centre =
        source.satellite != nullptr ? kEarthKey : centre_of(bodies, source.body, t);
    return about_centre(bodies, source, t, velocity, out) &&
           add_centre(bodies, centre, t, velocity, 0, out);
}

BodyKey centre_of(const Bodies& bodies, BodyKey body, Instant t) {
    switch (kind_of(body.type).centre) {
        case Centre::sun:
            return kSunKey;
        case Centre::planet_by_number:
            return {SSO_PLNT, body.number / 100};
        case Centre::of_record:
            if (const auto* track = bodies.elements.spacecraft.find(key_of(body))) {
                const SpacecraftRecord* record = locate(*track, t).record;
                return centre_of(record != nullptr ? *record : track->records.front());
            }
            if (const auto* record = bodies.elements.user_objects.find(key_of(body)))
                return centre_of(*record);
            if (const auto* record = bodies.integrated.user_objects.find(key_of(body)))
                return centre_of(*record);
            break;
        case Centre::none:
            break;
    }
    return {};
}

double gravity_of(const Bodies& bodies, BodyKey body) {
    if (const SS_Object* object = bodies.find(body)) return object->GM();
    const bool eros = body.type == SSO_ASTR && bodies.elements.is_central_asteroid(body.number);
    return eros ? bodies.eros_gm : kUnknownGm;
}

}  // namespace solsys
