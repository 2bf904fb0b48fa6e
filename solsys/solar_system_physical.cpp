// Sizes, masses, periods and axes of the objects.
#include "solsys/arguments.h"
#include "solsys/model.h"
#include "solsys/physical.h"
#include "solsys/states.h"

using solsys::body_key;

namespace {}  // namespace

double CSWSolSys::GetRadiEq(const SSO_ID& id, double* flattening) {
    const SS_Object* object = GetSS_Object(id);
    if (flattening != nullptr) *flattening = object != nullptr ? object->Flattening() : 0.0;
    return equatorial_radius_km(model_->bodies, body_key(id));
}

double CSWSolSys::GetGravity(const SSO_ID& id) {
    return gravity_of(model_->bodies, body_key(id));
}

double CSWSolSys::GetParentGravity(const SSO_ID& id) {
    switch (solsys::kind_of(id.type).centre) {
        case solsys::Centre::sun:
            return solsys::kSunGm;
        case solsys::Centre::planet_by_number: {
            const SS_Object* object = GetSS_Object(id);
            return object != nullptr ? object->GetParentGM() : solsys::kUnknownQuantity;
        }
        default:
            return GetGravity(GetCentralBodyID(id));
    }
}

double CSWSolSys::GetPeriodRotation(const SSO_ID& id) {
    const SS_Object* object = GetSS_Object(id);
    return object != nullptr ? object->RotationPeriod() : solsys::kUnknownQuantity;
}

double CSWSolSys::GetAngVelocity(const SSO_ID& id) {
    const SS_Object* object = GetSS_Object(id);
    return object != nullptr ? solsys::kTwoPi / object->RotationPeriod()
                             : solsys::kUnknownQuantity;
}

bool CSWSolSys::GetPolarAxes(const SSO_ID& id, double* out) {
    SS_Object* object = GetSS_Object(id);
    if (object == nullptr || out == nullptr) return false;
    const solsys::Instant t = model_->current.now;
    return object->GetRotationElements(t.day, t.fraction, out, out + 1, out + 2);
}

double CSWSolSys::GetOrbitalPeriod(const SSO_ID& id) {
    return orbital_period(model_->bodies, body_key(id), model_->current.now);
}

double CSWSolSys::GetSolarDay(const SSO_ID& id) {
    const solsys::ModelInstant& current = model_->current;
    return mean_solar_day(model_->bodies, body_key(id), current.now,
                          current.frames.cur_from_j2000);
}
