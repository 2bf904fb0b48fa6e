// Sizes, masses, periods and axes of the objects.
#include <cmath>

#include "solsys/positions.h"
#include "solsys/spacecraft_track.h"

using solsys::Vec3;

namespace {

constexpr double kUnknown = -1.0;

constexpr std::int32_t kMeasuredComet = 611674338;  // its nucleus has been measured
constexpr double kMeasuredCometKm = 2.94;
constexpr double kCometKm = 1.0;
constexpr double kUserObjectKm = 0.1;
constexpr double kSpacecraftKm = 0.02;

// Beyond this eccentricity no period is given.
constexpr double kLargestPeriodicE = 0.999999;

double period(double a, double e, double mu) {
    if (!(e < kLargestPeriodicE && a > 0.0 && std::isfinite(a) && mu > 0.0)) return kUnknown;
    return solsys::kTwoPi * std::sqrt(a * a * a / mu);
}

}  // namespace

double CSWSolSys::GetRadiEq(const SSO_ID& id, double* flattening) {
    const SS_Object* object = model_->find(id);
    if (flattening != nullptr) *flattening = object != nullptr ? object->Flattening() : 0.0;
    if (object != nullptr) return object->RadiusKm();
    switch (id.type) {
        case SSO_ASTR: {
            const AsteroidRecord* record = GetAsteroid(id.number);
            return record != nullptr ? record->radius_km : kUnknown;
        }
        case SSO_COMT:
            return id.number == kMeasuredComet ? kMeasuredCometKm : kCometKm;
        case SSO_USCO:
            return kUserObjectKm;
        case SSO_SCFT:
            return kSpacecraftKm;
        default:
            return kUnknown;
    }
}

double CSWSolSys::GetGravity(const SSO_ID& id) {
    if (const SS_Object* object = model_->find(id)) return object->GM();
    return id.type == SSO_ASTR && id == model_->resolved_centre ? model_->eros_gm : kUnknown;
}

double CSWSolSys::GetParentGravity(const SSO_ID& id) {
    switch (id.type) {
        case SSO_PLNT:
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
            return solsys::kSunGm;
        case SSO_MOON: {
            const SS_Object* object = model_->find(id);
            return object != nullptr ? object->GetParentGM() : kUnknown;
        }
        default:
            return GetGravity(GetCentralBodyID(id));
    }
}

double CSWSolSys::GetPeriodRotation(const SSO_ID& id) {
    const SS_Object* object = model_->find(id);
    return object != nullptr ? object->RotationPeriod() : kUnknown;
}

double CSWSolSys::GetAngVelocity(const SSO_ID& id) {
    const SS_Object* object = model_->find(id);
    return object != nullptr ? solsys::kTwoPi / object->RotationPeriod() : kUnknown;
}

bool CSWSolSys::GetPolarAxes(const SSO_ID& id, double* out) {
    SS_Object* object = model_->find(id);
    if (object == nullptr) return false;
    const solsys::Instant t = model_->current.now;
    return object->GetRotationElements(t.day, t.fraction, out, out + 1, out + 2);
}

double CSWSolSys::GetOrbitalPeriod(const SSO_ID& id) {
    if (const SS_Object* object = model_->find(id)) return object->OrbitalPeriod();

    Positions positions(*this);
    const solsys::StateSource source = positions.find(id);
    if (source.elements != nullptr) {
        return period(source.elements->q, source.elements->e, solsys::kSunGm);
    }
    if (source.held_asteroid != nullptr) {
        return period(source.held_asteroid->a, source.held_asteroid->e, solsys::kSunGm);
    }
    if (source.held_comet != nullptr) {
        return period(source.held_comet->q, source.held_comet->e, solsys::kSunGm);
    }
    if (source.track != nullptr) {
        const solsys::TrackPlace place = locate(*source.track, positions.now());
        if (place.record == nullptr) return kUnknown;
        const Elements elements = elements_at(place, positions.now());
        return period(elements.q, elements.e, GetGravity(GetCentralBodyID(id)));
    }
    if (source.user_object != nullptr) {
        const double mu = GetGravity(GetCentralBodyID(id));
        const solsys::State start = solsys::load_state(source.user_object->state);
        const double reciprocal_a = 2.0 / norm(start.r) - dot(start.v, start.v) / mu;
        return period(1.0 / reciprocal_a, 0.0, mu);
    }
    return kUnknown;
}

// The solar day follows from the sidereal rotation R and the orbit P; the sense of the rotation
// is read off the body's own axes, a minute apart. The first row of the matrix from the body to
// the equator is the equator's x axis as the body sees it: it turns backwards under a body
// that turns forwards.
double CSWSolSys::GetSolarDay(const SSO_ID& id) {
    constexpr double minute = 0.0006944444444444445;  // day
    const SS_Object* object = model_->find(id);
    if (object == nullptr) return kUnknown;

    const solsys::Instant now = model_->current.now;
    double before[9];
    double after[9];
    if (!GetMtrxPl_Eq(id, before, false)) return kUnknown;
    SetTime(now.day, now.fraction + minute, false);
    const bool formed = GetMtrxPl_Eq(id, after, false);
    model_->current.now = now;
    if (!formed) return kUnknown;
    const Vec3 turn = unit(cross(solsys::load(before), solsys::load(after)));

    double R = object->RotationPeriod();
    double P = object->OrbitalPeriod();
    if (id.type == SSO_MOON) {
        if (R == 0.0) R = P;
        P = object->Parent() != nullptr ? object->Parent()->OrbitalPeriod() : 0.0;
    }
    const bool retrograde = turn.z >= 0.0;
    return P * R / (retrograde ? P + R : P - R);
}
