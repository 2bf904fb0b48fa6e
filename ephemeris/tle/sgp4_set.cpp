// Preparing the near-earth part: Vallado and others 2006, AIAA 2006-6753; Lane & Cranford 1969,
// AIAA 69-925 (drag); Brouwer 1959, Astron. J. 64, 378 (rates).
#include "ephemeris/tle/sgp4_set.h"

#include <algorithm>
#include <cmath>

#include "core/constants.h"

namespace solsys {
namespace {

constexpr double kMinutesPerDay = 1440;
constexpr double kDeepPeriod = 225;  // min
// Of the density's power law, km: between the height h_s and this one.
constexpr double kDensityTop = 120;
constexpr double kReducedDragPerigee = 220;  // km
constexpr double kLeastDragEccentricity = 1e-4;

double sq(double x) { return x * x; }
double cube(double x) { return x * x * x; }
double fourth(double x) { return sq(sq(x)); }

bool in_range(const MeanElements& el) {
    return el.motion_rev_day > 0 && el.e >= 0 && el.e < 1 && el.i >= 0 && el.i <= kPi &&
           std::isfinite(el.motion_rev_day + el.node + el.w + el.M + el.bstar +
                         el.epoch.fraction);
}

// Brouwer's mean motion from Kozai's, and the semi-major axis.
void set_motion(const MeanElements& el, const GravityConstants& gravity,
                Sgp4Coefficients<double>& c) {
    const double nK = kTwoPi * el.motion_rev_day / kMinutesPerDay;
    const double b = std::sqrt(1 - sq(el.e)), A = 3 * sq(c.cos_i0) - 1;
    const double a1 = std::pow(c.ke / nK, 2.0 / 3);
    const double k0 = 0.75 * gravity.j2 * A / cube(b);
    const double d1 = k0 / sq(a1);
    const double a2 = a1 * (1 - d1 / 3 - sq(d1) - (134.0 / 81) * cube(d1));
    c.n0 = nK / (1 + k0 / sq(a2));
    c.a0 = std::pow(c.ke / c.n0, 2.0 / 3);
}

// Lower height of the density's power law by the height of the perigee [km].
double density_height(double perigee) {
    if (perigee >= 156) return 78;
    return perigee < 98 ? 20 : perigee - 78;
}

void set_higher_drag(double S, double xi, Sgp4Coefficients<double>& c) {
    const double a0 = c.a0, C1 = c.C1;
    c.D2 = 4 * a0 * xi * sq(C1);
    c.D3 = 4.0 / 3 * a0 * sq(xi) * (17 * a0 + S) * cube(C1);
    c.D4 = 2.0 / 3 * sq(a0) * cube(xi) * (221 * a0 + 31 * S) * fourth(C1);
    c.T3 = c.D2 + 2 * sq(C1);
    c.T4 = 0.25 * (3 * c.D3 + 12 * C1 * c.D2 + 10 * cube(C1));
    c.T5 =
        0.2 * (3 * c.D4 + 12 * C1 * c.D3 + 6 * sq(c.D2) + 30 * sq(C1) * c.D2 + 15 * fourth(C1));
}

void set_drag(const GravityConstants& gravity, double Bs, bool deep,
              Sgp4Coefficients<double>& c) {
    const double a0 = c.a0, e0 = c.e0, cosine = c.cos_i0, A = 3 * sq(cosine) - 1;
    const double b2 = 1 - sq(e0), q = a0 * (1 - e0);
    const double h_s = density_height((q - 1) * gravity.radius_km);
    const double S = 1 + h_s / gravity.radius_km;
    const double Q = fourth((kDensityTop - h_s) / gravity.radius_km);
    const double xi = 1 / (a0 - S), eta = a0 * e0 * xi, eta2 = sq(eta);
    const double psi = std::fabs(1 - eta2);
    const double G0 = Q * fourth(xi), G1 = G0 / std::pow(psi, 3.5);
    const double C2 = G1 * c.n0 *
                      (a0 * (1 + 1.5 * eta2 + 4 * e0 * eta + e0 * cube(eta)) +
                       0.375 * gravity.j2 * (xi / psi) * A * (8 + 24 * eta2 + 3 * sq(eta2)));
    c.C1 = Bs * C2;
    c.T2 = 1.5 * c.C1;
    const double C4 = 2 * c.n0 * G1 * a0 * b2 *
                      (eta * (2 + 0.5 * eta2) + e0 * (0.5 + 2 * eta2) -
                       (gravity.j2 * xi / (a0 * psi)) *
                           (-3 * A * (1 - 2 * e0 * eta + eta2 * (1.5 - 0.5 * e0 * eta)) +
                            0.75 * (1 - sq(cosine)) * (2 * eta2 - e0 * eta * (1 + eta2)) *
                                std::cos(2 * c.w0)));
    c.Bs_C4 = Bs * C4;
    if (deep || q < 1 + kReducedDragPerigee / gravity.radius_km) return;
    c.eta = eta;
    c.m0 = cube(1 + eta * std::cos(c.M0));
    c.sin_M0 = std::sin(c.M0);
    c.Bs_C5 = Bs * 2 * G1 * a0 * b2 * (1 + 2.75 * (eta2 + e0 * eta) + e0 * cube(eta));
    if (e0 > kLeastDragEccentricity) {
        const double C3 = -2 * G0 * xi * c.j3_j2 * c.n0 * c.sin_i0 / e0;
        c.KW = Bs * C3 * std::cos(c.w0);
        c.KM = -2.0 / 3 * G0 * Bs / (e0 * eta);
    }
    set_higher_drag(S, xi, c);
}

void set_rates(const GravityConstants& gravity, Sgp4Coefficients<double>& c) {
    const double cosine = c.cos_i0, c2 = sq(cosine), c4 = sq(c2);
    const double b2 = 1 - sq(c.e0), b = std::sqrt(b2);
    const double p2 = sq(c.a0 * b2), p4 = sq(p2);
    const double u1 = 1.5 * gravity.j2 * c.n0 / p2;
    const double u2 = 0.75 * sq(gravity.j2) * c.n0 / p4;
    const double u3 = -15.0 / 32 * gravity.j4 * c.n0 / p4;
    c.M_rate = c.n0 + 0.5 * u1 * b * (3 * c2 - 1) + u2 / 16 * b * (13 - 78 * c2 + 137 * c4);
    c.w_rate = -0.5 * u1 * (1 - 5 * c2) + u2 / 16 * (7 - 114 * c2 + 395 * c4) +
               u3 * (3 - 36 * c2 + 49 * c4);
    c.node_rate = -u1 * cosine + (0.5 * u2 * (4 - 19 * c2) + 2 * u3 * (3 - 7 * c2)) * cosine;
    c.KN = -3.5 * b2 * u1 * cosine * c.C1;
}

bool all_finite(const Sgp4Coefficients<double>& c) {
    const auto* first = reinterpret_cast<const double*>(&c);
    return std::all_of(first, first + sizeof c / sizeof *first,
                       [](double x) { return std::isfinite(x); });
}

}  // namespace

std::optional<Sgp4Set> sgp4_set(const MeanElements& el, const GravityConstants& gravity,
                                Sgp4Mode mode) {
    if (!in_range(el)) return std::nullopt;
    Sgp4Set set{Sgp4Kind::near_earth, {}};
    Sgp4Coefficients<double>& c = set.c;
    c.epoch_day = el.epoch.day, c.epoch_fraction = el.epoch.fraction;
    c.radius_km = gravity.radius_km, c.ke = gravity.ke();
    c.j2 = gravity.j2, c.j3_j2 = gravity.j3 / gravity.j2;
    c.e0 = el.e, c.i0 = el.i, c.node0 = el.node, c.w0 = el.w, c.M0 = el.M;
    c.sin_i0 = std::sin(el.i), c.cos_i0 = std::cos(el.i);
    c.turned = mode == Sgp4Mode::afspc ? 1 : 0;

    set_motion(el, gravity, c);
    const bool deep = kTwoPi / c.n0 >= kDeepPeriod;
    set_drag(gravity, el.bstar, deep, c);
    set_rates(gravity, c);
    if (deep) {
        add_lunisolar_terms(el, c);
        set.kind = add_resonance(el, mode, c);
    }
    if (!(c.n0 > 0) || !all_finite(c)) return std::nullopt;
    return set;
}

}  // namespace solsys
