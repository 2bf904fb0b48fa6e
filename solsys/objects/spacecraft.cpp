#include "solsys/ss_object.h"

SS_SCObject::SS_SCObject(const SS_BodyData& data, SS_Object* parent, StateFn state,
                         void* context)
    : SS_Object(data, parent), state_(state), context_(context) {}

SS_SCObject::~SS_SCObject() = default;

void SS_SCObject::SetPositionCallback(PositionCallback /*callback*/) {}

int SS_SCObject::ComputeState(int day, double fraction, bool velocity, double* out) {
    if (Cached(day, fraction, velocity)) return CopyCached(velocity, out);

    double state[6] = {};
    if (state_ == nullptr || state_(context_, day, fraction, velocity, state) != SS_OK)
        return SS_UNKNOWN;

    // Relative to the parent, which for a spacecraft in transit is the Sun at the origin.
    double relative[6] = {};
    double parent[6] = {};
    if (parent_ != nullptr && parent_->ComputeState(day, fraction, velocity, parent) != SS_OK)
        return SS_UNKNOWN;
    for (int i = 0; i < (velocity ? 6 : 3); ++i) relative[i] = state[i] - parent[i];
    return Keep(day, fraction, velocity, state, relative, out);
}
