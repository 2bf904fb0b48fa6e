// Kepler's equation in its four forms, each solved as the orbit routines need it.
#pragma once

namespace solsys {

// Half width of the band about e = 1 in which an orbit is moved as a parabola: 1e-6 with the
// rounding of (1 + 1e-6) - 1, so that both of its ends belong to it.
constexpr double kParabolicBand = 1.0000000000287557e-6;
// Ellipses above are solved in the time since perihelion.
constexpr double kNearParabolic = 0.99995;

// An anomaly, and whether its iteration converged. What did not converge is the last iterate.
struct Anomaly {
    double value;
    bool converged;
};

// M in [0, 2 pi].
double reduced_mean_anomaly(double M);

// The mean anomalies that are not iterated: within 1e-9 of 0 or 2 pi the eccentric anomaly is
// 0, within 1e-9 of pi it is pi. M in [0, 2 pi].
struct Apsis {
    bool at;
    double E;
};
Apsis apsis_of(double M);

// E - e sin E = M by Danby's start (Danby & Burkardt 1983, Celest. Mech. 31, 95) and
// Steffensen's acceleration of the fixed-point map, to 1e-10 or rounding over 1 - e cos E,
// whichever is more. M in [-pi, pi].
Anomaly ellipse_by_steffensen(double e, double M);

// E - e sin E = M by Newton's method on the toolkit's fast cosine, from a given start.
Anomaly ellipse_by_newton(double e, double M, double start);

// e sinh H - H = M by Newton's method, from a given start. The relative rule stops at
// |step| <= 1e-10 (1 + |H + M|) instead of 1e-10.
enum class Stop { absolute, relative };
double hyperbola_start(double e, double M);
Anomaly hyperbola_by_newton(double e, double M, double start, Stop stop);

// s + s^3/3 = W (Barker), by Newton's method.
Anomaly barker_by_newton(double W);

// The same in closed form, s = y - 1/y with y the cube root of a + sqrt(a^2 + 1), a = 3 W / 2,
// and ds/dW. Meeus 1998, Astronomical Algorithms, chapter 34.
struct BarkerRoot {
    double s;
    double slope;
};
BarkerRoot barker_root(double W);

// Eccentric anomaly of a near-parabolic ellipse tau days from perihelion, q its perihelion
// distance. No limit of the iteration is reported.
double near_parabolic_anomaly(double mu, double q, double e, double tau);

}  // namespace solsys
