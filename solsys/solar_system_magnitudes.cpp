// Visual magnitudes of every kind of object at the model's instant.
#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "solsys/body_magnitude.h"
#include "solsys/magnitudes.h"
#include "solsys/model.h"
#include "solsys/modern_magnitude.h"
#include "solsys/states.h"

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

float comet_magnitude(std::int32_t number, const CometRecord& comet, double r, double delta) {
    if (number == kOwnLawComet) {
        return static_cast<float>(5.0 * std::log10(delta) + 9.8 +
                                  2.5 * (std::pow(r, 1.8) - 1.0));
    }
    return MagnitudeComet(r, delta, comet.H, comet.K);
}

// By the object's own function, from plain vectors.
bool by_law(const SS_Object& object, Vec3 observer, Vec3 body, float& magnitude) {
    const MagnitudeFn law = object.Magnitude();
    if (law == nullptr) return false;
    double from[3];
    double at[3];
    store(observer, from);
    store(body, at);
    law(from, object.Number(), at, &magnitude);
    return true;
}

// An asteroid's or a comet's, from its record; false without one.
bool by_record(const CSWSolSys& model, const SSO_ID& id, Vec3 body, Vec3 seen,
               float& magnitude) {
    const double r = norm(body), delta = norm(seen);
    if (solsys::kind_of(id.type).brightness == solsys::Brightness::hg) {
        const AsteroidRecord* record = id.type == SSO_FAST
                                           ? model.GetIntegratedAsteroid(id.number)
                                           : model.GetAsteroid(id.number);
        if (record == nullptr) return false;
        magnitude = MagnitudeHG(r, delta, solsys::separation(body, seen), record->H, record->G);
        return true;
    }
    const CometRecord* record =
        id.type == SSO_FCOM ? model.GetIntegratedComet(id.number) : model.GetComet(id.number);
    if (record == nullptr) return false;
    magnitude = comet_magnitude(id.number, *record, r, delta);
    return true;
}

float by_distance(std::int32_t number, double distance) {
    const double m = 5.0 * std::log10(distance) + user_object_at_1au(number);
    return static_cast<float>(std::max(0.0, m));
}

}  // namespace

bool solsys::magnitude_by_law(const Bodies& bodies, const StateSource& source, Vec3 body,
                              Vec3 observer, Instant now, float& magnitude) {
    if (bodies.modern != nullptr && source.body.type == SSO_PLNT &&
        modern_magnitude(bodies, source.body.number, body, observer, now, magnitude))
        return true;
    return by_law(*source.object, observer, body, magnitude);
}

bool CSWSolSys::GetMagnitude(const SSO_ID& id, float* magnitude) {
    if (magnitude == nullptr) return false;
    *magnitude = kNoMagnitude;
    const solsys::Brightness brightness = solsys::kind_of(id.type).brightness;
    if (brightness == solsys::Brightness::meaningless) {
        *magnitude = kMeaninglessMagnitude;
        return true;
    }
    if (brightness == solsys::Brightness::stored) {
        const StarObject* star = GetStar(id);
        if (star != nullptr) *magnitude = star->magnitude;
        return star != nullptr;
    }

    const solsys::Bodies& bodies = model_->bodies;
    const solsys::ObserverPlace& observer = model_->current.observer.place;
    const StateSource source = find_source(bodies, id);
    State body{};
    if (!observer.known || !source.found() ||
        !heliocentric(bodies, source, model_->current.now, false, body))
        return false;
    const Vec3 seen = body.r - observer.heliocentric.r;
    switch (brightness) {
        case solsys::Brightness::law_of_body:
            return magnitude_by_law(bodies, source, body.r, observer.heliocentric.r,
                                    model_->current.now, *magnitude);
        case solsys::Brightness::hg:
        case solsys::Brightness::comet:
            return by_record(*this, id, body.r, seen, *magnitude);
        case solsys::Brightness::by_distance:
            *magnitude = by_distance(id.number, norm(seen));
            return true;
        default:
            return false;
    }
}
