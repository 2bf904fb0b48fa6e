#include "ephemeris/analytic/analytic_theory.h"

#include "ephemeris/analytic/chebyshev_planets.h"
#include "ephemeris/analytic/elpmpp02.h"
#include "ephemeris/analytic/vsop87a.h"

namespace solsys {
namespace {

// One span for all bodies: that of the Chebyshev tables. Not a number is outside.
bool covered(double days) { return days >= kChebyshevStart && days <= kChebyshevEnd; }

}  // namespace

bool analytic_planet(int planet, Instant t, bool with_velocity, State& out) {
    const double days = days_since_j2000(t);
    if (planet < 1 || planet > 9 || !covered(days)) return false;
    out = planet <= 6 ? vsop87a_planet(planet, days, with_velocity)
                      : chebyshev_planet(planet, days, with_velocity) -
                            sun_from_barycentre(days, with_velocity);
    return true;
}

bool analytic_covers(Instant t) { return covered(days_since_j2000(t)); }

bool analytic_moon(Instant t, bool with_velocity, State& out) {
    const double days = days_since_j2000(t);
    if (!covered(days)) return false;
    out = elpmpp02_moon(days, with_velocity);
    return true;
}

bool analytic_sun_barycentric(Instant t, State& out) {
    const double days = days_since_j2000(t);
    if (!covered(days)) return false;
    out = sun_from_barycentre(days, true);
    return true;
}

}  // namespace solsys
