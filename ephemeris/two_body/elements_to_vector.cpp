// State from the elements of a mean ellipse, given by its two longitudes.
#include <cmath>

#include "ephemeris/two_body/orbit_plane.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

constexpr double kSeriesLimit = 0.2;
constexpr double kLargestEccentricity = 0.999999;
constexpr double kTolerance = 1e-6;  // rad, of the last Newton step
constexpr int kPasses = 30;

// Equation of the centre to the fifth power of e. Brouwer & Clemence 1961, Methods of Celestial
// Mechanics.
double true_anomaly_by_series(double e, double M) {
    const double e2 = e * e, e3 = e2 * e, e4 = e3 * e, e5 = e4 * e;
    return M + (2 * e - e3 / 4 + 5 * e5 / 96) * std::sin(M) +
           (5 * e2 / 4 - 11 * e4 / 24) * std::sin(2 * M) +
           (13 * e3 / 12 - 43 * e5 / 64) * std::sin(3 * M) + 103 * e4 / 96 * std::sin(4 * M) +
           1097 * e5 / 960 * std::sin(5 * M);
}

Anomaly newton(double e, double M, double start) {
    double E = start;
    for (int pass = 0; pass < kPasses; ++pass) {
        const double step = (e * std::sin(E) + M - E) / (1 - e * std::cos(E));
        E += step;
        if (std::fabs(step) < kTolerance) return {E, true};
    }
    return {E, false};
}

double eccentric_anomaly_of_mean(double mu, double a, double e, double M) {
    if (e > kNearParabolic)
        return near_parabolic_anomaly(mu, (1 - e) * a, e, M * a * std::sqrt(a / mu));
    const Anomaly E = newton(e, M, M);
    if (E.converged) return E.value;
    // From e = 0.98 on that start can go astray near perihelion. From aphelion the equation is
    // convex all the way.
    const double reduced = std::remainder(M, kTwoPi);
    return newton(e, reduced, std::copysign(kPi, reduced)).value;
}

double true_anomaly(double mu, double a, double e, double M) {
    if (e < kSeriesLimit) return true_anomaly_by_series(e, M);
    const double E = eccentric_anomaly_of_mean(mu, a, e, M);
    return 2 * std::atan(std::sqrt((1 + e) / (1 - e)) * std::tan(E / 2));
}

}  // namespace
}  // namespace solsys

bool ElementsToVector(short velocity, double mu, double a, double e, double i, double node,
                      double perihelion_longitude, double mean_longitude, double r[3],
                      double* distance, double v[3]) {
    using namespace solsys;
    if (!(e <= kLargestEccentricity)) {
        *distance = 0;
        return false;
    }
    const double nu = true_anomaly(mu, a, e, mean_longitude - perihelion_longitude);
    const double p = a * (1 - e * e);
    const double cos_nu = std::cos(nu), sin_nu = std::sin(nu);
    *distance = p / (1 + e * cos_nu);

    const double u = nu + perihelion_longitude - node;
    const double cos_u = std::cos(u), sin_u = std::sin(u);
    const OrbitPlane plane = orbit_plane(i, node);
    const Vec3 radial = plane.radial(cos_u, sin_u);
    store(*distance * radial, r);
    if (velocity != 0)
        store(conic_velocity(mu, p, e, cos_nu, sin_nu, radial, plane.transverse(cos_u, sin_u)),
              v);
    return true;
}
