// Where the observer is: from the record to the state and the matrices that follow from it.
#include <algorithm>
#include <cmath>

#include "core/ellipsoid.h"
#include "core/spherical.h"
#include "solsys/earth_orientation.h"
#include "solsys/model.h"

using solsys::Mat3;
using solsys::ObserverState;
using solsys::State;
using solsys::Vec3;

namespace {

bool is_placed(std::int8_t kind) {
    return kind == LOCATION_BODY_FIXED || kind == LOCATION_SURFACE ||
           kind == LOCATION_HELIOCENTRIC || kind == LOCATION_GALACTOCENTRIC;
}

bool well_formed(const OBSERVER& record) {
    return !is_placed(record.kind) ||
           std::all_of(std::begin(record.location), std::end(record.location),
                       [](double x) { return std::isfinite(x); });
}

Vec3 cartesian(const double location[3]) {
    return solsys::to_cartesian({location[0], location[1], location[2]});
}

}  // namespace

void CSWSolSys::SetObserver(const OBSERVER* observer) {
    if (observer == nullptr || !well_formed(*observer)) return;
    Model& m = *model_;
    ObserverState& o = m.current.observer;

    // The record handed in may be the model's own.
    const OBSERVER record = *observer;
    const bool gravity = o.record.gravity;
    if (record.body_type != o.record.body_type || record.body_number != o.record.body_number)
        o.orbit_from_j2000 = solsys::kIdentity;
    o.record = record;
    o.record.gravity = gravity;

    if (!m.current.has_frames || m.current.frames_on_earth != m.observer_on_earth())
        m.update_frames();
    DeriveObserver();
}

const OBSERVER& CSWSolSys::GetObserver() const { return model_->current.observer.record; }

SS_Object* CSWSolSys::GetObserverSSO() const { return model_->observer_object; }

void CSWSolSys::GetObserverVec2K(double* out) const {
    store(model_->current.observer.heliocentric, out);
}

void CSWSolSys::setUseGravityForRNB(bool use) { model_->current.observer.record.gravity = use; }

void CSWSolSys::DeriveObserver() {
    Model& m = *model_;
    ObserverState& o = m.current.observer;
    const solsys::FrameSet& f = m.current.frames;
    const SSO_ID body = m.observer_body();
    const auto kind = o.record.kind;
    m.observer_object = m.find(body);

    // A body that cannot be computed leaves its observer at the Sun.
    double state[6] = {};
    if (!GetHelVec2K(body, 1, state)) std::fill(std::begin(state), std::end(state), 0.0);
    const State of_body = solsys::load_state(state);

    SetMtrxEq2K_PlEq(body);
    double matrix[9];
    o.cur_from_body =
        GetMtrxPl_Eq(body, matrix, true) ? solsys::load_matrix(matrix) : solsys::kIdentity;
    o.body_from_horizon = solsys::kIdentity;

    switch (kind) {
        case LOCATION_BODY:
            o.relative = {};
            o.heliocentric = of_body;
            break;
        case LOCATION_BODY_FIXED:
            o.relative = {transpose_times(o.body_from_j2000, cartesian(o.record.location)), {}};
            o.heliocentric = of_body + o.relative;
            break;
        case LOCATION_SURFACE:
            PlaceOnSurface();
            o.heliocentric = of_body + o.relative;
            break;
        case LOCATION_HELIOCENTRIC:
            o.heliocentric = {transpose_times(f.ecl_from_j2000, cartesian(o.record.location)),
                              {}};
            o.relative = o.heliocentric - of_body;
            break;
        case LOCATION_GALACTOCENTRIC: {
            const Vec3 offset = cartesian(o.record.location);
            const Vec3 from_sun = offset + Vec3{solsys::kGalacticCentreOfObserver, 0, 0};
            o.relative = {transpose_times(f.gal_from_cur, offset), {}};
            o.heliocentric = {transpose_times(f.gal_from_j2000, from_sun), {}};
            break;
        }
        default:
            break;  // no place of its own: the observer stays where it was
    }

    if (kind == LOCATION_BODY || kind == LOCATION_SURFACE) {
        const SSO_ID centre = GetCentralBodyID(body);
        const bool about_sun = centre == SSO_ID(SSO_PLNT, 10);
        if (!about_sun && GetVecCentre2K(body, 1, state)) {
            RNB_matrix(state, state + 3, matrix);
            o.orbit_from_j2000 = solsys::load_matrix(matrix);
        }
    }

    o.velocity_c = solsys::kLightDayPerAu * o.heliocentric.v;
    o.lorentz_reciprocal = std::sqrt(std::max(0.0, 1 - dot(o.velocity_c, o.velocity_c)));
    m.refresh_visible();
}

void CSWSolSys::PlaceOnSurface() {
    Model& m = *model_;
    ObserverState& o = m.current.observer;
    const Mat3& cur_from_j2000 = m.current.frames.cur_from_j2000;
    const double height = o.record.location[0];
    const double longitude = o.record.location[1];
    const double latitude = o.record.location[2];

    double radius_km = 1;  // of a body without known size
    double flattening = 0;
    double spin = 0;  // rad/day
    if (const SS_Object* object = m.observer_object) {
        radius_km = object->RadiusKm();
        flattening = object->Flattening();
        if (object->RotationPeriod() != 0) spin = solsys::kTwoPi / object->RotationPeriod();
    } else {
        const SSO_ID body = m.observer_body();
        const BodyRotationParams* rotation = solsys::registered_rotation(body);
        if (rotation == nullptr) {  // neither size nor turn: at the centre
            o.relative = {};
            o.cur_from_body = solsys::kIdentity;
            return;
        }
        if (const double known = GetRadiEq(body); known > 0) radius_km = known;
        spin = rotation->rate;
    }

    double horizon[9];
    GetMtrxTopo(&o.record, horizon);
    o.body_from_horizon = solsys::load_matrix(horizon);

    const Vec3 offset =
        o.cur_from_body * solsys::cartesian({radius_km * solsys::kAuPerKm, flattening},
                                            {height, longitude, latitude});
    // Carried about the z axis of the equator of date, whichever way the body's pole points.
    const Vec3 velocity{-spin * offset.y, spin * offset.x, 0};
    o.relative = transpose_times(cur_from_j2000, State{offset, velocity});
}
