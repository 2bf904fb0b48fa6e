// Visual magnitudes of every kind of object at the model's instant.
#include <algorithm>
#include <cmath>

#include "solsys/magnitudes.h"
#include "solsys/positions.h"

using solsys::State;
using solsys::StateSource;
using solsys::Vec3;

namespace {

constexpr float kNoMagnitude = 20.0F;  // shown for what has none
constexpr float kMeaninglessMagnitude = 9999.0F;

// A comet whose brightness followed 9.8 + 2.5 (r^1.8 - 1) in the heliocentric distance.
constexpr std::int32_t kOwnLawComet = 2031814021;

// Two spacecraft seen by their users, and all others: magnitude at 1 au.
constexpr std::int32_t kBrightUserObject = 617989043;
constexpr std::int32_t kFaintUserObject = 953399444;
double user_object_at_1au(std::int32_t number) {
    if (number == kBrightUserObject) return 21.5;
    return number == kFaintUserObject ? 23.5 : 26.5;
}

// Angle at the body between the Sun and the observer, from the heliocentric vector and the one
// from the observer; the cosine loses half the digits near 0 and pi, the tangent none.
double phase_angle(Vec3 heliocentric, Vec3 seen) {
    return std::atan2(norm(cross(heliocentric, seen)), dot(heliocentric, seen));
}

float comet_magnitude(std::int32_t number, const CometRecord& comet, double r, double delta) {
    if (number == kOwnLawComet) {
        return static_cast<float>(5.0 * std::log10(delta) + 9.8 +
                                  2.5 * (std::pow(r, 1.8) - 1.0));
    }
    return MagnitudeComet(r, delta, comet.H, comet.K);
}

}  // namespace

bool CSWSolSys::GetMagnitude(const SSO_ID& id, float* magnitude) {
    *magnitude = kNoMagnitude;
    if (id.type == SSO_SCFT || id.type == SSO_CNST) {
        *magnitude = kMeaninglessMagnitude;
        return true;
    }
    if (!solsys::has_states(id.type)) {
        const StarObject* star = GetStar(id);
        if (star != nullptr) *magnitude = star->magnitude;
        return star != nullptr;
    }

    Positions positions(*this);
    const StateSource source = positions.find(id);
    State body{};
    if (!positions.heliocentric(source, positions.now(), false, body)) return false;
    const Vec3 observer = model_->current.observer.heliocentric.r;
    const Vec3 seen = body.r - observer;
    switch (id.type) {
        case SSO_PLNT:
        case SSO_MOON: {
            const MagnitudeFn law = source.object->Magnitude();
            if (law == nullptr) return false;
            double from[3];
            double at[3];
            store(observer, from);
            store(body.r, at);
            law(from, id.number, at, magnitude);
            return true;
        }
        case SSO_ASTR: {
            const AsteroidRecord* record = GetAsteroid(id.number);
            if (record == nullptr) return false;
            *magnitude = MagnitudeHG(norm(body.r), norm(seen), phase_angle(body.r, seen),
                                     record->H, record->G);
            return true;
        }
        case SSO_COMT: {
            const CometRecord* record = GetComet(id.number);
            if (record == nullptr) return false;
            *magnitude = comet_magnitude(id.number, *record, norm(body.r), norm(seen));
            return true;
        }
        case SSO_USCO: {
            const double at_1au = user_object_at_1au(id.number);
            const double m = 5.0 * std::log10(norm(seen)) + at_1au;
            *magnitude = static_cast<float>(std::max(0.0, m));
            return true;
        }
        default:
            return false;
    }
}
