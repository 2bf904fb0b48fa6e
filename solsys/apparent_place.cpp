// How the observer sees an object: light time, then aberration.
#include <cmath>

#include "solsys/light_time.h"
#include "solsys/positions.h"
#include "solsys/star_place.h"

using solsys::ApparentPlace;
using solsys::Instant;
using solsys::State;
using solsys::StateSource;
using solsys::Vec3;

bool CSWSolSys::Positions::apparent(const StateSource& source, double light_time,
                                    ApparentPlace& out) {
    out = ApparentPlace{};
    if (source.type == SSO_USCO) return apparent_in_line(source, out);

    const solsys::ObserverState& observer = model_.current.observer;
    const Instant t = model_.current.now;
    double tau = light_time;
    if (!(tau != 0.0 && tau <= solsys::kFarthestLightTime)) {
        State geometric{};
        if (!from_observer(source, t, false, geometric)) return false;
        const double distance = norm(geometric.r);
        tau = distance * solsys::kLightDayPerAu;
        if (tau > solsys::kFarthestLightTime) {
            out = {geometric.r, distance, geometric.r};
            return true;
        }
    }

    bool converged = false;
    for (int step = 0; step < solsys::kMaxLightTimeSteps && !converged; ++step) {
        if (!solsys::can_be_earlier(t, tau)) return false;
        const Instant emission = solsys::earlier(t, tau);
        State body{};
        if (!heliocentric(source, emission, false, body)) {
            model_.current.now = emission;
            return false;
        }
        out.path = body.r - observer.heliocentric.r;
        out.distance = norm(out.path);
        const double next = out.distance * solsys::kLightDayPerAu;
        converged = std::fabs(tau - next) <= solsys::kLightTimeTolerance;
        tau = next;
    }
    if (out.distance > 0.0) {  // an observer at the very place sees no direction
        out.direction = solsys::aberrated((1.0 / out.distance) * out.path, observer.velocity_c,
                                          observer.lorentz_reciprocal);
    }
    return converged;
}

// Objects of a host's own by their velocity: nothing is computed anew for the earlier instant,
// and aberration is the sum of the velocities.
bool CSWSolSys::Positions::apparent_in_line(const StateSource& source, ApparentPlace& out) {
    const solsys::ObserverState& observer = model_.current.observer;
    State body{};
    if (!heliocentric(source, model_.current.now, true, body)) return false;
    const Vec3 delta = body.r - observer.heliocentric.r;
    out = {delta, norm(delta), delta};
    const double tau = out.distance * solsys::kLightDayPerAu;
    if (tau > solsys::kFarthestLightTime) return true;
    out.path -= tau * body.v;
    out.distance = norm(out.path);
    out.direction = Vec3{};
    if (out.distance > 0.0) {
        out.direction = unit((1.0 / out.distance) * out.path + observer.velocity_c);
    }
    return std::isfinite(out.distance);
}
