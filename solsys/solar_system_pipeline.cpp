// The position members of CSWSolSys: look up, compute at the model's instant, rotate, store.
#include "core/spherical.h"
#include "solsys/arguments.h"
#include "solsys/model.h"
#include "solsys/pipeline.h"
#include "solsys/toolkit.h"

using solsys::ApparentPlace;
using solsys::find_source;
using solsys::State;
using solsys::Vec3;

namespace {

bool answer(bool known, const State& state, bool velocity, double* out) {
    store(state.r, out);
    if (velocity) store(state.v, out + 3);
    return known;
}

bool heliocentric_now(const CSWSolSys::Model& m, const SSO_ID& id, bool velocity, State& out) {
    return heliocentric(m.bodies, find_source(m.bodies, id), m.current.now, velocity, out);
}

// What the observer sees now. An object that cannot be computed at the instant its light left
// it takes the model there: that asymmetry is kept.
bool apparent_now(CSWSolSys::Model& m, const SSO_ID& id, double light_time,
                  ApparentPlace& out) {
    std::optional<solsys::Instant> failed_at;
    const bool known = apparent(m.bodies, m.current.observer, find_source(m.bodies, id),
                                m.current.now, light_time, out, &failed_at);
    if (failed_at) m.current.now = *failed_at;
    return known;
}

}  // namespace

bool CSWSolSys::GetHelVec2K(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    State state{};
    const bool known = heliocentric_now(*model_, id, velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetVecCentre2K(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    const solsys::Bodies& bodies = model_->bodies;
    State state{};
    const bool known = about_centre(bodies, find_source(bodies, id), model_->current.now,
                                    velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetHelVecCur(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    State state{};
    const bool known = heliocentric_now(*model_, id, velocity != 0, state);
    return answer(known, model_->current.frames.cur_from_j2000 * state, velocity != 0, out);
}

bool CSWSolSys::GetHelEcl2K(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    const solsys::Bodies& bodies = model_->bodies;
    const solsys::StateSource source = find_source(bodies, id);
    const solsys::Instant t = model_->current.now;
    const bool with_velocity = velocity != 0;
    State state{};
    bool known = false;
    if (source.kind->in_ecliptic) {
        switch (source.kind->road) {
            case solsys::Road::itself:
                known = heliocentric(bodies, source, t, with_velocity, state);
                break;
            case solsys::Road::about_sun:
                known = about_centre(bodies, source, t, with_velocity, state);
                break;
            case solsys::Road::about_centre:
            case solsys::Road::about_earth:
            case solsys::Road::blended:
                known = on_one_centre(bodies, source, t, with_velocity, state);
                break;
            case solsys::Road::none:
                break;
        }
    }
    return answer(known, ecliptic_of(bodies) * state, with_velocity, out);
}

bool CSWSolSys::GetRefVec2K(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    const Model& m = *model_;
    State state{};
    const bool known = from_observer(m.bodies, m.current.observer, find_source(m.bodies, id),
                                     m.current.now, velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetRefVecCur(const SSO_ID& id, char velocity, double* out) {
    if (out == nullptr) return false;
    const solsys::ObserverPlace& observer = model_->current.observer.place;
    State state{};
    const bool known = observer.known && heliocentric_now(*model_, id, velocity != 0, state);
    if (known) state = state - observer.heliocentric;
    return answer(known, model_->current.frames.cur_from_j2000 * state, velocity != 0, out);
}

bool CSWSolSys::GetCurVec(const SSO_ID& id, double* out, bool toDate) {
    if (out == nullptr) return false;
    store(Vec3{}, out);
    if (!solsys::kind_of(id.type).has_states()) {
        const StarObject* star = GetStar(id);
        return star != nullptr && GetRADecVisStar(star, nullptr, out, toDate);
    }
    if (!GetRefVec2K(id, 0, out)) return false;
    if (toDate) store(model_->current.frames.cur_from_j2000 * solsys::load(out), out);
    return true;
}

bool CSWSolSys::GetRADec(const SSO_ID& id, double* out, bool toDate) {
    if (out == nullptr) return false;
    store(Vec3{}, out);
    double vector[3];
    if (!solsys::kind_of(id.type).has_states()) {
        const StarObject* star = GetStar(id);
        return star != nullptr && GetRADecVisStar(star, out, vector, toDate);
    }
    if (!GetCurVec(id, vector, toDate)) return false;
    const double distance = norm(solsys::load(vector));
    if (toDate) {
        psf1(vector, distance, out);
    } else {
        psf(vector, distance, out);
    }
    return true;
}

bool CSWSolSys::GetSSOVisVec2K(const SSO_ID& id, double* out, double lightTime) {
    if (out == nullptr) return false;
    ApparentPlace place;
    const bool known = apparent_now(*model_, id, lightTime, place);
    store(place.direction, out);
    out[3] = place.distance;
    return known;
}

bool CSWSolSys::GetAstrometricVec2K(const SSO_ID& id, double* out, double lightTime) {
    if (out == nullptr) return false;
    const Model& m = *model_;
    ApparentPlace place;
    const bool known = apparent(m.bodies, m.current.observer, find_source(m.bodies, id),
                                m.current.now, lightTime, place);
    store(place.path, out);
    out[3] = place.distance;
    return known;
}

bool CSWSolSys::GetRADecVis(const SSO_ID& id, double* out, double lightTime) {
    if (out == nullptr) return false;
    if (!solsys::kind_of(id.type).has_states()) return GetRADec(id, out, true);
    ApparentPlace place;
    const bool known = apparent_now(*model_, id, lightTime, place);
    double direction[3];
    store(model_->current.frames.cur_from_j2000 * place.direction, direction);
    psf1(direction, place.distance, out);
    return known;
}

bool CSWSolSys::GetAsterVecCentre2K(unsigned char velocity, double* out,
                                    const tagAster_SPH_5* asteroid) {
    if (out == nullptr) return false;
    const solsys::ModelInstant& current = model_->current;
    State state{};
    bool known = false;
    if (asteroid != nullptr && current.observer.place.known) {
        double s[6] = {};
        known = KeplerPQ5(velocity, current.now.day, current.now.fraction, asteroid, s);
        state = current.frames.cur_from_j2000 *
                (solsys::load_state(s) - current.observer.place.heliocentric);
    }
    return answer(known, state, velocity != 0, out);
}
