#include "core/instant.h"
#include "core/linalg.h"
#include "ephemeris/analytic/analytic_theory.h"
#include "solsys/de_ephemeris.h"
#include "solsys/ss_object.h"

namespace {

constexpr int kSun = 10;

}  // namespace

SS_PlanetObject::SS_PlanetObject(const SS_BodyData& data, SS_Object* parent,
                                 DE_EvalState* ephemeris)
    : SS_Object(data, parent), ephemeris_(ephemeris) {
    cached_time_ = solsys::kJ2000Day;
}

SS_PlanetObject::~SS_PlanetObject() = default;

void SS_PlanetObject::SetPositionCallback(PositionCallback /*callback*/) {}

void SS_PlanetObject::SetEphemeris(DE_EvalState* ephemeris) {
    ephemeris_ = ephemeris;
    ForgetState();
}

double SS_PlanetObject::GetParentGM() const {
    return parent_ != nullptr ? parent_->GM() : SS_Object::GetParentGM();
}

int SS_PlanetObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    double state[6] = {};
    if (number_ != kSun) {
        const auto body = static_cast<short>(number_);
        const bool in_file =
            ephemeris_ != nullptr && DE_Ephemeris::getState(*ephemeris_, day, fraction, body,
                                                            velocity ? 1 : 0, state) == 0;
        if (!in_file) {
            solsys::State theory{};
            if (!solsys::analytic_planet(number_, {day, fraction}, velocity, theory))
                return SS_UNKNOWN;
            store(theory, state);
        }
    }
    return Keep(day, fraction, velocity, state, state, out);
}
