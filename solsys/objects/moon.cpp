#include "core/linalg.h"
#include "solsys/de_ephemeris.h"
#include "solsys/satellite_theory.h"
#include "solsys/ss_object.h"

namespace {

constexpr short kMoonInFile = 10;  // the geocentric Moon of a DE file

}  // namespace

SS_MoonObject::SS_MoonObject(const SS_BodyData& data, SS_Object* parent,
                             DE_EvalState* ephemeris)
    : SS_Object(data, parent), ephemeris_(ephemeris) {}

SS_MoonObject::SS_MoonObject(const SS_BodyData& data, SS_Object* parent,
                             const SatTheory* theory)
    : SS_Object(data, parent), theory_(theory) {}

SS_MoonObject::~SS_MoonObject() = default;

void SS_MoonObject::SetPositionCallback(PositionCallback callback) {
    callback_ = callback;
    ForgetState();
}

void SS_MoonObject::SetEphemeris(DE_EvalState* ephemeris) {
    ephemeris_ = ephemeris;
    ForgetState();
}

double SS_MoonObject::GetParentGM() const {
    return parent_ != nullptr ? parent_->GM() : SS_Object::GetParentGM();
}

bool SS_MoonObject::RelativeState(int day, double fraction, bool velocity, double* out) const {
    if (theory_ != nullptr)
        return theory_->GetSatVector(day, fraction, number_ % 100, velocity ? 1 : 0, out) == 0;
    if (ephemeris_ != nullptr && DE_Ephemeris::getState(*ephemeris_, day, fraction, kMoonInFile,
                                                        velocity ? 1 : 0, out) == 0)
        return true;
    return callback_ != nullptr && callback_(day, fraction, velocity, out) == SS_OK;
}

int SS_MoonObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    double planet[6] = {};
    double relative[6] = {};
    if (parent_ == nullptr || parent_->ComputeState(day, fraction, velocity, planet) != SS_OK ||
        !RelativeState(day, fraction, velocity, relative))
        return SS_UNKNOWN;

    double heliocentric[6];
    store(solsys::load_state(planet) + solsys::load_state(relative), heliocentric);
    return Keep(day, fraction, velocity, heliocentric, relative, out);
}
