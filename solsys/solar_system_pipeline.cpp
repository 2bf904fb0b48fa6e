// The position members of CSWSolSys: look up, compute at the model's instant, rotate, store.
#include "solsys/positions.h"
#include "solsys/toolkit.h"

using solsys::ApparentPlace;
using solsys::State;
using solsys::StateSource;
using solsys::Vec3;

namespace {

bool answer(bool known, const State& state, bool velocity, double* out) {
    store(state.r, out);
    if (velocity) store(state.v, out + 3);
    return known;
}

}  // namespace

bool CSWSolSys::GetHelVec2K(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    State state{};
    const bool known =
        positions.heliocentric(positions.find(id), positions.now(), velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetVecCentre2K(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    State state{};
    const bool known =
        positions.about_centre(positions.find(id), positions.now(), velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetHelVecCur(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    State state{};
    const bool known =
        positions.heliocentric(positions.find(id), positions.now(), velocity != 0, state);
    return answer(known, model_->current.frames.cur_from_j2000 * state, velocity != 0, out);
}

bool CSWSolSys::GetHelEcl2K(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    const StateSource source = positions.find(id);
    State state{};
    bool known = false;
    switch (id.type) {
        case SSO_PLNT:
        case SSO_MOON:
            known = positions.heliocentric(source, positions.now(), velocity != 0, state);
            break;
        case SSO_ASTR:
        case SSO_FAST:
        case SSO_COMT:
        case SSO_FCOM:
            known = positions.about_centre(source, positions.now(), velocity != 0, state);
            break;
        case SSO_SCFT:
        case SSO_FSCO:
        case SSO_TLE:
            known = positions.on_one_centre(source, positions.now(), velocity != 0, state);
            break;
        default:
            break;
    }
    return answer(known, model_->ecl2k_from_j2000 * state, velocity != 0, out);
}

bool CSWSolSys::GetRefVec2K(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    State state{};
    const bool known =
        positions.from_observer(positions.find(id), positions.now(), velocity != 0, state);
    return answer(known, state, velocity != 0, out);
}

bool CSWSolSys::GetRefVecCur(const SSO_ID& id, char velocity, double* out) {
    Positions positions(*this);
    State state{};
    const bool known =
        positions.heliocentric(positions.find(id), positions.now(), velocity != 0, state);
    if (known) state = state - model_->current.observer.heliocentric;
    return answer(known, model_->current.frames.cur_from_j2000 * state, velocity != 0, out);
}

bool CSWSolSys::GetCurVec(const SSO_ID& id, double* out, bool toDate) {
    store(Vec3{}, out);
    if (!solsys::has_states(id.type)) {
        const StarObject* star = GetStar(id);
        return star != nullptr && GetRADecVisStar(star, nullptr, out, toDate);
    }
    Positions positions(*this);
    State state{};
    const bool known =
        positions.from_observer(positions.find(id), positions.now(), false, state);
    store(toDate ? model_->current.frames.cur_from_j2000 * state.r : state.r, out);
    return known;
}

bool CSWSolSys::GetRADec(const SSO_ID& id, double* out, bool toDate) {
    store(Vec3{}, out);
    double vector[3];
    if (!solsys::has_states(id.type)) {
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
    Positions positions(*this);
    ApparentPlace place;
    const bool known = positions.apparent(positions.find(id), lightTime, place);
    store(place.direction, out);
    out[3] = place.distance;
    return known;
}

bool CSWSolSys::GetRADecVis(const SSO_ID& id, double* out, double lightTime) {
    if (!solsys::has_states(id.type)) return GetRADec(id, out, true);
    Positions positions(*this);
    ApparentPlace place;
    const bool known = positions.apparent(positions.find(id), lightTime, place);
    double direction[3];
    store(model_->current.frames.cur_from_j2000 * place.direction, direction);
    psf1(direction, place.distance, out);
    return known;
}

bool CSWSolSys::GetAsterVecCentre2K(unsigned char velocity, double* out,
                                    const tagAster_SPH_5* asteroid) {
    State state{};
    bool known = false;
    if (asteroid != nullptr) {
        double s[6] = {};
        const solsys::Instant t = model_->current.now;
        known = KeplerPQ5(velocity, t.day, t.fraction, asteroid, s);
        state = model_->current.frames.cur_from_j2000 *
                (solsys::load_state(s) - model_->current.observer.heliocentric);
    }
    return answer(known, state, velocity != 0, out);
}
