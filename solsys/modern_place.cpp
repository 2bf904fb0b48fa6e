// How the observer sees an object under the modern reduction.
#include <cmath>

#include "solsys/light_time.h"
#include "solsys/pipeline.h"
#include "solsys/star_place.h"

namespace solsys {
namespace {

// Corrections of the light time [day] at which the search ends. One that is applied along a
// straight line leaves half the acceleration times its square: below 1e-11 au for the fastest
// satellites. Without a velocity the place has to be found again each time.
constexpr double kStraightLine = 2e-5;
constexpr double kNoVelocity = 1e-11;

// What is left of the light time's equation after a guess `tau`, with the path's length
// changing by `rate` per day of emission.
double correction(double tau, double distance, double rate) {
    return (distance * kLightDayPerAu - tau) / (1.0 + kLightDayPerAu * rate);
}

}  // namespace

bool apparent_modern(const Bodies& bodies, const ObserverState& observer,
                     const StateSource& source, Instant t, double light_time,
                     ApparentPlace& out) {
    const ObserverPlace& place = observer.place;
    double tau = light_time;
    if (!(tau != 0.0 && tau <= kFarthestLightTime)) {
        State geometric{};
        if (!from_observer(bodies, observer, source, t, false, geometric)) return false;
        const double distance = norm(geometric.r);
        tau = distance * kLightDayPerAu;
        if (tau > kFarthestLightTime) {
            out = {geometric.r, distance, geometric.r};
            return true;
        }
    }

    bool converged = false;
    for (int step = 0; step < kMaxLightTimeSteps && !converged; ++step) {
        State body{};
        if (!can_be_earlier(t, tau) ||
            !heliocentric(bodies, source, earlier(t, tau), true, body))
            return false;
        // The Sun itself moved on while the light came.
        out.path = body.r - place.heliocentric.r - tau * place.sun.v;
        out.distance = norm(out.path);
        if (!(out.distance > 0.0)) return out.distance == 0.0;  // no direction at the place
        const bool moves = dot(body.v, body.v) > 0.0;
        const Vec3 velocity = body.v + place.sun.v;
        const double delta =
            correction(tau, out.distance, dot(out.path, velocity) / out.distance);
        converged = std::fabs(delta) <= (moves ? kStraightLine : kNoVelocity);
        if (moves) out.path -= delta * velocity;
        tau += delta;
    }
    out.distance = norm(out.path);
    const SSO_ID id(source.body.type, source.body.number);
    const Vec3 bent =
        deflected((1.0 / out.distance) * out.path, out.path, tau, place.bending, id);
    out.direction = aberrated(bent, place.velocity_c, place.lorentz_reciprocal);
    return converged;
}

}  // namespace solsys
