// The Sun and the Moon in deep space: Hujsak 1979, Spacetrack Report No. 1; Vallado and others
// 2006, AIAA 2006-6753.
#include <cmath>

#include "core/constants.h"
#include "ephemeris/tle/sgp4_set.h"

namespace solsys {
namespace {

constexpr int kDay1900 = 2415020;  // 1900 January 0.5
// Closer to the equator than this the node has no lunisolar rate [rad].
constexpr double kFlat = 0.052359877;

double sq(double x) { return x * x; }

// A perturbing body: rate [rad/min], eccentricity, strength, cosine and sine of its argument of
// perigee (g), inclination (z) and node from that of the satellite (h), mean anomaly.
struct Body {
    double N, E, C;
    double cg, sg, cz, sz, ch, sh;
    double mu;
};

Body sun(const MeanElements& el, double D) {
    return {kSunRate,          kSunEccentricity,
            2.9864797e-6,      0.1945905,
            -0.98088458,       0.91744867,
            0.39785416,        std::cos(el.node),
            std::sin(el.node), std::fmod(6.2565837 + 0.017201977 * D, kTwoPi)};
}

Body moon(const MeanElements& el, double D) {
    // Node on the ecliptic; inclination I and node H on the equator; perigee.
    const double Nm = std::fmod(4.5236020 - 0.00092422029 * D, kTwoPi);
    const double cI = 0.91375164 - 0.03568096 * std::cos(Nm), sI = std::sqrt(1 - sq(cI));
    const double sH = 0.089683511 * std::sin(Nm) / sI, cH = std::sqrt(1 - sq(sH));
    const double gam = 5.8351514 + 0.0019443680 * D;
    const double gm = gam - Nm +
                      std::atan2(0.39785416 * std::sin(Nm) / sI,
                                 cH * std::cos(Nm) + 0.91744867 * sH * std::sin(Nm));
    const double cn = std::cos(el.node), sn = std::sin(el.node);
    return {kMoonRate,
            kMoonEccentricity,
            4.7968065e-7,
            std::cos(gm),
            std::sin(gm),
            cI,
            sI,
            cH * cn + sH * sn,
            cH * sn - sH * cn,
            std::fmod(4.7199672 + 0.22997150 * D - gam, kTwoPi)};
}

LunisolarTerms<double> add_body(const Body& body, Sgp4Coefficients<double>& c) {
    const auto& [N, E, C, cg, sg, cz, sz, ch, sh, mu] = body;
    const double e2 = sq(c.e0), b = std::sqrt(1 - e2);
    const double A1 = cg * ch + sg * cz * sh, A3 = -sg * ch + cg * cz * sh;
    const double A7 = -cg * sh + sg * cz * ch, A8 = sg * sz;
    const double A9 = sg * sh + cg * cz * ch, A10 = cg * sz;
    const double A2 = c.cos_i0 * A7 + c.sin_i0 * A8, A4 = c.cos_i0 * A9 + c.sin_i0 * A10;
    const double A5 = -c.sin_i0 * A7 + c.cos_i0 * A8, A6 = -c.sin_i0 * A9 + c.cos_i0 * A10;
    const double cw = std::cos(c.w0), sw = std::sin(c.w0);
    const double X1 = A1 * cw + A2 * sw, X2 = A3 * cw + A4 * sw;
    const double X3 = -A1 * sw + A2 * cw, X4 = -A3 * sw + A4 * cw;
    const double X5 = A5 * sw, X6 = A6 * sw, X7 = A5 * cw, X8 = A6 * cw;

    const double Z31 = 12 * sq(X1) - 3 * sq(X3);
    const double Z32 = 24 * X1 * X2 - 6 * X3 * X4;
    const double Z33 = 12 * sq(X2) - 3 * sq(X4);
    const double Z1 = 6 * (sq(A1) + sq(A2)) + (1 + e2) * Z31;
    const double Z2 = 12 * (A1 * A3 + A2 * A4) + (1 + e2) * Z32;
    const double Z3 = 6 * (sq(A3) + sq(A4)) + (1 + e2) * Z33;
    const double Z11 = -6 * A1 * A5 - e2 * (24 * X1 * X7 + 6 * X3 * X5);
    const double Z12 =
        -6 * (A1 * A6 + A3 * A5) - e2 * (24 * (X2 * X7 + X1 * X8) + 6 * (X3 * X6 + X4 * X5));
    const double Z13 = -6 * A3 * A6 - e2 * (24 * X2 * X8 + 6 * X4 * X6);
    const double Z21 = 6 * A2 * A5 + e2 * (24 * X1 * X5 - 6 * X3 * X7);
    const double Z22 =
        6 * (A4 * A5 + A2 * A6) + e2 * (24 * (X2 * X5 + X1 * X6) - 6 * (X4 * X7 + X3 * X8));
    const double Z23 = 6 * A4 * A6 + e2 * (24 * X2 * X6 - 6 * X4 * X8);

    const double S3 = C / c.n0, S2 = -0.5 * S3 / b, S4 = S3 * b, S1 = -15 * c.e0 * S4;
    const double S5 = X1 * X3 + X2 * X4, S6 = X2 * X3 + X1 * X4, S7 = X2 * X4 - X1 * X3;

    const bool flat = c.i0 < kFlat || c.i0 > kPi - kFlat;
    const double dh = flat ? 0 : -N * S2 * (Z21 + Z23) / c.sin_i0;
    c.e_dot += N * S1 * S5;
    c.i_dot += N * S2 * (Z11 + Z13);
    c.M_dot -= N * S3 * (Z1 + Z3 - 14 - 6 * e2);
    c.w_dot += N * S4 * (Z31 + Z33 - 6) - c.cos_i0 * dh;
    c.node_dot += dh;
    return {mu,
            2 * S1 * S6,
            2 * S1 * S7,
            2 * S2 * Z12,
            2 * S2 * (Z13 - Z11),
            -2 * S3 * Z2,
            -2 * S3 * (Z3 - Z1),
            2 * S3 * (21 + 9 * e2) * E,
            2 * S4 * Z32,
            2 * S4 * (Z33 - Z31),
            -18 * S4 * E,
            -2 * S2 * Z22,
            -2 * S2 * (Z23 - Z21)};
}

}  // namespace

void add_lunisolar_terms(const MeanElements& el, Sgp4Coefficients<double>& c) {
    const double D = (static_cast<double>(el.epoch.day) - kDay1900) + el.epoch.fraction;
    c.sun = add_body(sun(el, D), c);
    c.moon = add_body(moon(el, D), c);
}

}  // namespace solsys
