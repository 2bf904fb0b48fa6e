#include "ephemeris/planet_states.h"
#include "solsys/ss_object.h"

SS_PlanetObject::SS_PlanetObject(const SS_BodyData& data, SS_Object* parent,
                                 DE_EvalState* ephemeris)
    : SS_Object(data, parent), ephemeris_(ephemeris) {
    cached_time_ = solsys::kJ2000Day;
}

SS_PlanetObject::~SS_PlanetObject() = default;

void SS_PlanetObject::SetPositionCallback(PositionCallback /*callback*/) {}

void SS_PlanetObject::SetEphemeris(DE_EvalState* ephemeris) {
    ephemeris_ = ephemeris;
    SourceChanged();
}

double SS_PlanetObject::GetParentGM() const {
    return parent_ != nullptr ? parent_->GM() : SS_Object::GetParentGM();
}

int SS_PlanetObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    solsys::State planet{};
    if (!solsys::planet_state(ephemeris_, number_, {day, fraction}, velocity, planet))
        return SS_UNKNOWN;
    double state[6];
    store(planet, state);
    return Keep(day, fraction, velocity, state, state, out);
}
