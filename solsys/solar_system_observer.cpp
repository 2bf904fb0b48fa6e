// The observer of the model.
#include "solsys/model.h"
#include "solsys/observer_state.h"

using solsys::ObserverState;

bool CSWSolSys::SetObserver(const OBSERVER* observer) {
    if (observer == nullptr || !solsys::well_formed(*observer)) return false;
    Model& m = *model_;
    ObserverState& o = m.current.observer;

    // The record handed in may be the model's own.
    const OBSERVER record = *observer;
    const bool gravity = o.record.gravity;
    if (record.body_type != o.record.body_type || record.body_number != o.record.body_number)
        o.frames.orbit_from_j2000 = solsys::kIdentity;
    o.record = record;
    o.record.gravity = gravity;

    if (!m.current.has_frames || m.current.frames_on_earth != o.on_earth()) m.update_frames();
    m.derive_observer();
    return true;
}

const OBSERVER& CSWSolSys::GetObserver() const { return model_->current.observer.record; }

SS_Object* CSWSolSys::GetObserverSSO() const {
    return model_->bodies.find(model_->current.observer.body());
}

bool CSWSolSys::GetObserverVec2K(double* out) const {
    if (out == nullptr) return false;
    const solsys::ObserverPlace& place = model_->current.observer.place;
    store(place.heliocentric, out);
    return place.known;
}

void CSWSolSys::setUseGravityForRNB(bool use) { model_->current.observer.record.gravity = use; }

void CSWSolSys::Model::derive_observer() {
    solsys::derive_observer(bodies, current.now, current.frames, current.observer);
    refresh_visible();
}
