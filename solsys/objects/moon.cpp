// Natural satellites: a place about the planet on top of the planet's own.
#include "ephemeris/planet_states.h"
#include "solsys/satellite_theory.h"
#include "solsys/ss_object.h"

namespace {

bool by_theory(const SatTheory& theory, int number, solsys::Instant t, bool velocity,
               solsys::State& out) {
    double s[6] = {};
    if (theory.GetSatVector(t.day, t.fraction, number % 100, velocity ? 1 : 0, s) != 0)
        return false;
    out = solsys::load_state(s);
    return true;
}

bool by_callback(PositionCallback callback, solsys::Instant t, bool velocity,
                 solsys::State& out) {
    double s[6] = {};
    if (callback == nullptr || callback(t.day, t.fraction, velocity, s) != SS_OK) return false;
    out = solsys::load_state(s);
    return true;
}

}  // namespace

SS_MoonObject::SS_MoonObject(const SS_BodyData& data, SS_Object* parent,
                             DE_EvalState* ephemeris)
    : SS_Object(data, parent), ephemeris_(ephemeris) {}

SS_MoonObject::SS_MoonObject(const SS_BodyData& data, SS_Object* parent, std::nullptr_t)
    : SS_Object(data, parent) {}

SS_MoonObject::SS_MoonObject(const SS_BodyData& data, SS_Object* parent,
                             const SatTheory* theory)
    : SS_Object(data, parent), theory_(theory) {}

SS_MoonObject::~SS_MoonObject() = default;

void SS_MoonObject::SetPositionCallback(PositionCallback callback) {
    callback_ = callback;
    SourceChanged();
}

void SS_MoonObject::SetEphemeris(DE_EvalState* ephemeris) {
    ephemeris_ = ephemeris;
    SourceChanged();
}

double SS_MoonObject::GetParentGM() const {
    return parent_ != nullptr ? parent_->GM() : SS_Object::GetParentGM();
}

int SS_MoonObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    double planet[6] = {};
    if (parent_ == nullptr || parent_->ComputeState(day, fraction, velocity, planet) != SS_OK)
        return SS_UNKNOWN;

    const solsys::Instant t{day, fraction};
    solsys::State about_planet{};
    const bool known = theory_ != nullptr
                           ? by_theory(*theory_, number_, t, velocity, about_planet)
                           : (ephemeris_ != nullptr &&
                              solsys::moon_in_file(*ephemeris_, t, velocity, about_planet)) ||
                                 by_callback(callback_, t, velocity, about_planet);
    if (!known) return SS_UNKNOWN;

    double relative[6];
    double heliocentric[6];
    store(about_planet, relative);
    store(solsys::load_state(planet) + about_planet, heliocentric);
    return Keep(day, fraction, velocity, heliocentric, relative, out);
}
