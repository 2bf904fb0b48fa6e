#include "solsys/physical.h"

#include <cmath>

#include "solsys/body_frames.h"
#include "solsys/spacecraft_track.h"
#include "solsys/states.h"

namespace solsys {
namespace {

constexpr double kMinutesPerDay = 1440;

constexpr BodyKey kMeasuredComet{SSO_COMT, 611674338};  // its nucleus has been measured
constexpr double kMeasuredCometKm = 2.94;

// Beyond this eccentricity no period is given.
constexpr double kLargestPeriodicE = 0.999999;

double period(double a, double e, double mu) {
    if (!(e < kLargestPeriodicE && a > 0.0 && std::isfinite(a) && mu > 0.0))
        return kUnknownQuantity;
    return kTwoPi * std::sqrt(a * a * a / mu);
}

// The direction about which a body turns by the right-hand rule: its pole or the opposite one,
// from its axes at two instants soon after each other, v_j2000 = M v_body. The first row is the
// equator's x axis as the body sees it, which turns backwards under a body that turns forwards.
Vec3 spin_axis(const Mat3& before, const Mat3& after) {
    const Vec3 pole = before * Vec3{0, 0, 1};
    return cross(before.r0, after.r0).z < 0.0 ? pole : -pole;
}

// The sense of a body's turning against that of its way (a satellite's planet's) about the Sun.
bool turns_backwards(const Bodies& bodies, const SS_Object& object, BodyKey body, Instant t,
                     Vec3 spin) {
    const BodyKey traveller = body.type == SSO_MOON && object.Parent() != nullptr
                                  ? BodyKey{SSO_PLNT, object.Parent()->Number()}
                                  : body;
    State about_sun{};
    heliocentric(bodies, find_source(bodies, traveller), t, true, about_sun);
    return dot(spin, cross(about_sun.r, about_sun.v)) < 0.0;  // the Sun itself: forwards
}

}  // namespace

double equatorial_radius_km(const Bodies& bodies, BodyKey body) {
    if (const SS_Object* object = bodies.find(body)) return object->RadiusKm();
    const Kind& kind = kind_of(body.type);
    if (kind.table == Table::asteroids) {
        const AsteroidRecord* record = bodies.elements.asteroids.find(key_of(body));
        return record != nullptr ? record->radius_km : kUnknownQuantity;
    }
    return body == kMeasuredComet ? kMeasuredCometKm : kind.radius_km;
}

double orbital_period(const Bodies& bodies, BodyKey body, Instant t) {
    const StateSource source = find_source(bodies, body);
    if (source.object != nullptr) return source.object->OrbitalPeriod();
    if (source.elements != nullptr)
        return period(source.elements->q, source.elements->e, kSunGm);
    if (source.held_asteroid != nullptr)
        return period(source.held_asteroid->a, source.held_asteroid->e, kSunGm);
    if (source.held_comet != nullptr)
        return period(source.held_comet->q, source.held_comet->e, kSunGm);

    const double mu = gravity_of(bodies, centre_of(bodies, body, t));
    if (source.track != nullptr) {
        const TrackPlace place = locate(*source.track, t);
        if (place.record == nullptr) return kUnknownQuantity;
        const Elements elements = elements_at(place, t);
        return period(elements.q, elements.e, mu);
    }
    if (source.user_object != nullptr) {
        const State start = load_state(source.user_object->state);
        const double reciprocal_a = 2.0 / norm(start.r) - dot(start.v, start.v) / mu;
        return period(1.0 / reciprocal_a, 0.0, mu);
    }
    if (source.satellite != nullptr)
        return source.satellite->set.period_minutes() / kMinutesPerDay;
    return kUnknownQuantity;
}

double mean_solar_day(const Bodies& bodies, BodyKey body, Instant t,
                      const Mat3& cur_from_j2000) {
    constexpr double minute = 0.0006944444444444445;  // day
    const SS_Object* object = bodies.find(body);
    Mat3 before{}, after{};
    const Instant later{t.day, t.fraction + minute};
    if (object == nullptr || !surface_frame(bodies, body, t, cur_from_j2000, before) ||
        !surface_frame(bodies, body, later, cur_from_j2000, after))
        return kUnknownQuantity;

    double rotation = object->RotationPeriod();
    double orbit = object->OrbitalPeriod();
    if (body.type == SSO_MOON) {
        if (rotation == 0.0) rotation = orbit;
        orbit = object->Parent() != nullptr ? object->Parent()->OrbitalPeriod() : 0.0;
    }
    const Vec3 spin = spin_axis(before, after);
    return solar_day(rotation, orbit, turns_backwards(bodies, *object, body, t, spin));
}

}  // namespace solsys
