#include "solsys/pipeline.h"

#include <cmath>

#include "solsys/held_motion.h"
#include "solsys/light_time.h"
#include "solsys/star_place.h"

namespace solsys {
namespace {

// Objects of a host's own by their velocity: nothing is computed anew for the earlier instant,
// and aberration is the sum of the velocities.
bool apparent_in_line(const Bodies& bodies, const ObserverPlace& observer,
                      const StateSource& source, Instant t, ApparentPlace& out) {
    State body{};
    if (!heliocentric(bodies, source, t, true, body)) return false;
    const Vec3 delta = body.r - observer.heliocentric.r;
    out = {delta, norm(delta), delta};
    const double tau = out.distance * kLightDayPerAu;
    if (tau > kFarthestLightTime) return true;
    out.path -= tau * body.v;
    out.distance = norm(out.path);
    out.direction = Vec3{};
    if (out.distance > 0.0)
        out.direction = unit((1.0 / out.distance) * out.path + observer.velocity_c);
    return std::isfinite(out.distance);
}

// The way that the light took which arrives at `t`, from a first guess of its time.
bool light_path(HeldMotion& body, const ObserverPlace& observer, Instant t, double tau,
                ApparentPlace& out, std::optional<Instant>* failed_at) {
    for (int step = 0; step < kMaxLightTimeSteps; ++step) {
        if (!can_be_earlier(t, tau)) return false;
        const Instant emission = earlier(t, tau);
        Vec3 r{};
        if (!body.position(emission, r)) {
            if (failed_at != nullptr) *failed_at = emission;
            return false;
        }
        out.path = r - observer.heliocentric.r;
        out.distance = norm(out.path);
        const double next = out.distance * kLightDayPerAu;
        if (std::fabs(tau - next) <= kLightTimeTolerance) return true;
        tau = next;
    }
    return false;
}

// From the observer to the body at one instant.
bool geometric_path(const Bodies& bodies, const ObserverState& observer,
                    const StateSource& source, HeldMotion& body, Instant t, Vec3& out) {
    if (body.carries()) {
        if (!body.position(t, out)) return false;
        out -= observer.place.heliocentric.r;
        return true;
    }
    State state{};
    if (!from_observer(bodies, observer, source, t, false, state)) return false;
    out = state.r;
    return true;
}

}  // namespace

bool from_observer(const Bodies& bodies, const ObserverState& observer,
                   const StateSource& source, Instant t, bool velocity, State& out) {
    out = State{};
    if (!observer.place.known) return false;
    const BodyKey home = observer.body();
    if (source.body == home) {
        out = -observer.place.relative;
        return true;
    }
    // Differences of small numbers.
    const bool satellite_of_its_body = source.body.type == SSO_MOON && home.type == SSO_PLNT &&
                                       source.body.number / 100 == home.number;
    const bool near_earth = source.body.type == SSO_USCO && observer.on_earth();
    const bool nearby = satellite_of_its_body || near_earth;
    const bool known = nearby ? about_centre(bodies, source, t, velocity, out)
                              : heliocentric(bodies, source, t, velocity, out);
    if (!known) {
        out = State{};
        return false;
    }
    out = out - (nearby ? observer.place.relative : observer.place.heliocentric);
    return true;
}

bool apparent(const Bodies& bodies, const ObserverState& observer, const StateSource& source,
              Instant t, double light_time, ApparentPlace& out,
              std::optional<Instant>* failed_at) {
    out = ApparentPlace{};
    const ObserverPlace& place = observer.place;
    if (!place.known) return false;
    if (bodies.modern != nullptr)
        return apparent_modern(bodies, observer, source, t, light_time, out);
    if (source.user_object != nullptr) return apparent_in_line(bodies, place, source, t, out);

    HeldMotion body(bodies, source);
    double tau = light_time;
    if (!(tau != 0.0 && tau <= kFarthestLightTime)) {
        Vec3 geometric{};
        if (!geometric_path(bodies, observer, source, body, t, geometric)) return false;
        const double distance = norm(geometric);
        tau = distance * kLightDayPerAu;
        if (tau > kFarthestLightTime) {
            out = {geometric, distance, geometric};
            return true;
        }
    }
    if (!light_path(body, place, t, tau, out, failed_at)) return false;
    if (out.distance > 0.0)  // an observer at the very place sees no direction
        out.direction = aberrated((1.0 / out.distance) * out.path, place.velocity_c,
                                  place.lorentz_reciprocal);
    return true;
}

}  // namespace solsys
