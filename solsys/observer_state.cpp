#include "solsys/observer_state.h"

#include <algorithm>
#include <cmath>

#include "core/ellipsoid.h"
#include "core/spherical.h"
#include "solsys/body_frames.h"
#include "solsys/earth_orientation.h"
#include "solsys/physical.h"
#include "solsys/reduction.h"
#include "solsys/states.h"

namespace solsys {
namespace {

bool is_placed(std::int8_t kind) {
    return kind == LOCATION_BODY_FIXED || kind == LOCATION_SURFACE ||
           kind == LOCATION_HELIOCENTRIC || kind == LOCATION_GALACTOCENTRIC;
}

Vec3 from_spherical(const double location[3]) {
    return to_cartesian({location[0], location[1], location[2]});
}

// The Earth of the modern reduction.
constexpr double kWgs84RadiusKm = 6378.137;
constexpr double kWgs84Flattening = 1 / 298.257223563;

// What a surface is like for its observer.
struct Ground {
    double radius_km = 1;  // of a body without known size
    double flattening = 0;
    double spin = 0;  // rad/day
};

// False for a body with neither size nor turn.
bool ground_of(const Bodies& bodies, BodyKey body, Ground& out) {
    if (bodies.modern != nullptr && body == kEarthKey) {
        out = {kWgs84RadiusKm, kWgs84Flattening, kEarthRotationRate};
        return true;
    }
    if (const SS_Object* object = bodies.find(body)) {
        const double period = object->RotationPeriod();
        out = {object->RadiusKm(), object->Flattening(), period != 0 ? kTwoPi / period : 0.0};
        return true;
    }
    const BodyRotationParams* rotation = registered_rotation(body);
    if (rotation == nullptr) return false;
    if (const double known = equatorial_radius_km(bodies, body); known > 0)
        out.radius_km = known;
    out.spin = rotation->rate;
    return true;
}

// Places an observer on the surface, relative to the body's centre, and sets up its horizon.
void stand_on_surface(const Bodies& bodies, const FrameSet& frames, ObserverState& o) {
    const auto& [height, longitude, latitude] = o.record.location;
    Ground ground;
    if (!ground_of(bodies, o.body(), ground)) {  // at the centre
        o.place.relative = {};
        o.frames.cur_from_body = kIdentity;
        return;
    }
    o.frames.body_from_horizon = horizon_frame(longitude, latitude);
    const Vec3 offset =
        o.frames.cur_from_body * cartesian({ground.radius_km * kAuPerKm, ground.flattening},
                                           Geodetic{height, longitude, latitude});
    // Carried about the z axis of the equator of date, whichever way the body's pole points.
    const Vec3 velocity{-ground.spin * offset.y, ground.spin * offset.x, 0};
    o.place.relative = transpose_times(frames.cur_from_j2000, State{offset, velocity});
}

void place(const Bodies& bodies, const State& of_body, const FrameSet& frames,
           ObserverState& o) {
    ObserverPlace& p = o.place;
    switch (o.record.kind) {
        case LOCATION_BODY:
            p.relative = {};
            p.heliocentric = of_body;
            break;
        case LOCATION_BODY_FIXED:
            p.relative = {
                transpose_times(o.frames.body_from_j2000, from_spherical(o.record.location)),
                {}};
            p.heliocentric = of_body + p.relative;
            break;
        case LOCATION_SURFACE:
            stand_on_surface(bodies, frames, o);
            p.heliocentric = of_body + p.relative;
            break;
        case LOCATION_HELIOCENTRIC:
            p.heliocentric = {
                transpose_times(frames.ecl_from_j2000, from_spherical(o.record.location)), {}};
            p.relative = p.heliocentric - of_body;
            break;
        case LOCATION_GALACTOCENTRIC: {
            const Vec3 offset = from_spherical(o.record.location);
            const Vec3 from_sun = offset + Vec3{kGalacticCentreOfObserver, 0, 0};
            p.relative = {transpose_times(frames.gal_from_cur(), offset), {}};
            p.heliocentric = {transpose_times(kGalFromJ2000, from_sun), {}};
            break;
        }
        default:
            break;  // no place of its own: the observer stays where it was
    }
}

// The Sun about the barycentre, and who bends the light.
void derive_modern(const Bodies& bodies, Instant t, ObserverState& o) {
    o.place.sun = barycentric_sun(bodies.modern->file, bodies.modern->dynamical(t));
    State jupiter{};
    State saturn{};
    heliocentric(bodies, find_source(bodies, BodyKey{SSO_PLNT, 5}), t, true, jupiter);
    heliocentric(bodies, find_source(bodies, BodyKey{SSO_PLNT, 6}), t, true, saturn);
    o.place.bending = bodies_around(o.place.heliocentric, jupiter, saturn, o.on_earth());
}

void derive_velocity(ObserverPlace& p) {
    p.velocity_c = kLightDayPerAu * (p.heliocentric.v + p.sun.v);
    p.lorentz_reciprocal = std::sqrt(std::max(0.0, 1 - dot(p.velocity_c, p.velocity_c)));
}

// The orbit frame of a body that goes round another one than the Sun; of a spacecraft with
// gravity for its vertical, or the direction from the centre.
void orient_orbit(const Bodies& bodies, BodyKey body, Instant t, bool gravity,
                  Mat3& orbit_from_j2000) {
    const BodyKey centre = centre_of(bodies, body, t);
    if (centre == kSunKey) return;
    State about{};
    if (!about_centre(bodies, find_source(bodies, body), t, true, about)) return;
    if (gravity && body.type == SSO_SCFT)
        about.r = bodies.integrated.up_from(centre.type, centre.number, t, about);
    double r[3], v[3], matrix[9];
    store(about.r, r);
    store(about.v, v);
    RNB_matrix(r, v, matrix);
    orbit_from_j2000 = load_matrix(matrix);
}

}  // namespace

bool well_formed(const OBSERVER& record) {
    return !is_placed(record.kind) ||
           std::all_of(std::begin(record.location), std::end(record.location),
                       [](double x) { return std::isfinite(x); });
}

void orient_body_frame(const Bodies& bodies, BodyKey body, Instant t,
                       const Mat3& cur_from_j2000, ObserverFrames& out) {
    // The Earth's axes are those of the equator of date, which does not turn.
    if (body == kEarthKey) {
        out.body_from_j2000 = cur_from_j2000;
    } else if (!body_frame(bodies, body, t, out.body_from_j2000)) {
        out.body_from_j2000 = kIdentity;
    }
    out.j2000_from_body = transpose(out.body_from_j2000);
}

void derive_observer(const Bodies& bodies, Instant t, const FrameSet& frames,
                     ObserverState& o) {
    const BodyKey body = o.body();
    const auto kind = o.record.kind;
    // A body that cannot be computed leaves its observer at the Sun, and unknown.
    State of_body{};
    const bool computed = heliocentric(bodies, find_source(bodies, body), t, true, of_body);
    if (!computed) of_body = State{};

    orient_body_frame(bodies, body, t, frames.cur_from_j2000, o.frames);
    if (!surface_frame_of_date(bodies, body, t, frames.cur_from_j2000, o.frames.cur_from_body))
        o.frames.cur_from_body = kIdentity;
    o.frames.body_from_horizon = kIdentity;

    place(bodies, of_body, frames, o);
    if (kind == LOCATION_BODY || kind == LOCATION_BODY_FIXED || kind == LOCATION_SURFACE)
        o.place.known = computed;
    if (kind == LOCATION_HELIOCENTRIC || kind == LOCATION_GALACTOCENTRIC) o.place.known = true;
    if (kind == LOCATION_BODY || kind == LOCATION_SURFACE)
        orient_orbit(bodies, body, t, o.record.gravity, o.frames.orbit_from_j2000);

    o.place.sun = {};
    if (bodies.modern != nullptr) derive_modern(bodies, t, o);
    derive_velocity(o.place);
}

ObserverState on_surface(const Bodies& bodies, const FrameSet& frames,
                         const ObserverState& at_centre, const OBSERVER& record) {
    ObserverState o = at_centre;
    o.record = record;
    stand_on_surface(bodies, frames, o);
    o.place.heliocentric = at_centre.place.heliocentric + o.place.relative;
    for (DeflectingBody& body : o.place.bending.farthest_first)
        body.to_observer += o.place.relative.r;
    derive_velocity(o.place);
    return o;
}

}  // namespace solsys
