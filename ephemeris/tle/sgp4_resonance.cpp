// Resonance with the Earth's rotation: Hujsak 1979, Spacetrack Report No. 1; Vallado and others
// 2006, AIAA 2006-6753. Constants with the digits of the publication.
#include <cmath>

#include "core/constants.h"
#include "ephemeris/tle/sgp4_set.h"
#include "ephemeris/tle/teme.h"

namespace solsys {
namespace {

double sq(double x) { return x * x; }

// Polynomial in the eccentricity.
struct Cubic {
    double c0, c1, c2, c3;
    [[nodiscard]] double at(double e) const { return c0 + e * (c1 + e * (c2 + e * c3)); }
};

// Functions of the eccentricity of the half-day resonance, each for its range of e.
struct HalfDayG {
    double G201, G211, G310, G322, G410, G422, G520, G521, G532, G533;
};

constexpr Cubic kG201{-0.0244, -0.440, 0, 0};
constexpr Cubic kG211[] = {{3.616, -13.2470, 16.2900, 0},
                           {-72.099, 331.819, -508.738, 266.724}};
constexpr Cubic kG310[] = {{-19.302, 117.3900, -228.4190, 156.5910},
                           {-346.844, 1582.851, -2415.925, 1246.113}};
constexpr Cubic kG322[] = {{-18.9068, 109.7927, -214.6334, 146.5816},
                           {-342.585, 1554.908, -2366.899, 1215.972}};
constexpr Cubic kG410[] = {{-41.122, 242.6940, -471.0940, 313.9530},
                           {-1052.797, 4758.686, -7193.992, 3651.957}};
constexpr Cubic kG422[] = {{-146.407, 841.8800, -1629.014, 1083.4350},
                           {-3581.690, 16178.110, -24462.770, 12422.520}};
constexpr Cubic kG520[] = {{-532.114, 3017.977, -5740.032, 3708.2760},
                           {1464.74, -4664.75, 3763.64, 0},
                           {-5149.66, 29936.92, -54087.36, 31324.56}};
constexpr Cubic kG521[] = {{-822.71072, 4568.6173, -8491.4146, 5337.524},
                           {-51752.104, 218913.95, -309468.16, 146349.42}};
constexpr Cubic kG532[] = {{-853.66600, 4690.2500, -8624.7700, 5341.4},
                           {-40023.880, 170470.89, -242699.48, 115605.82}};
constexpr Cubic kG533[] = {{-919.22770, 4988.6100, -9064.7700, 5542.21},
                           {-37995.780, 161616.52, -229838.20, 109377.94}};

HalfDayG half_day_g(double e) {
    const int above_65 = e > 0.65 ? 1 : 0, from_70 = e >= 0.7 ? 1 : 0;
    return {kG201.at(e),
            kG211[above_65].at(e),
            kG310[above_65].at(e),
            kG322[above_65].at(e),
            kG410[above_65].at(e),
            kG422[above_65].at(e),
            kG520[e > 0.715 ? 2 : above_65].at(e),
            kG521[from_70].at(e),
            kG532[from_70].at(e),
            kG533[from_70].at(e)};
}

// A term amplitude * sin(angle - phase), added to the coefficients of its angle.
void add_term(PullTerm<double>& term, double amplitude, double phase) {
    term.of_sine += amplitude * std::cos(phase);
    term.of_cosine -= amplitude * std::sin(phase);
}

void add_one_day(Sgp4Coefficients<double>& c) {
    const double s2 = sq(c.sin_i0), k = 1 + c.cos_i0, e2 = sq(c.e0);
    const double F22 = 0.75 * sq(k);
    const double F31 = 0.9375 * s2 * (1 + 3 * c.cos_i0) - 0.75 * k;
    const double F33 = 1.875 * sq(k) * k;
    const double G20 = 1 + e2 * (-2.5 + 0.8125 * e2);
    const double G31 = 1 + 2 * e2;
    const double G30 = 1 + e2 * (-6 + 6.60937 * e2);
    const double v = 1 / c.a0, scale = 3 * sq(c.n0) * sq(v);
    add_term(c.pull[0], scale * v * 2.1460748e-6 * F31 * G31, 0.13130908);
    add_term(c.pull[1], 2 * scale * 1.7891679e-6 * F22 * G20, 2 * 2.8843198);
    add_term(c.pull[2], 3 * scale * v * 2.2123015e-7 * F33 * G30, 3 * 0.37448087);
    c.lam0 = std::fmod(c.M0 + c.node0 + c.w0 - c.theta0, kTwoPi);
    c.lam_rate =
        c.M_rate + c.w_rate + c.node_rate + c.M_dot + c.w_dot + c.node_dot - kEarthRate - c.n0;
}

void add_half_day(Sgp4Coefficients<double>& c) {
    const double s = c.sin_i0, s2 = sq(s), k = c.cos_i0, k2 = sq(k);
    const double F220 = 0.75 * (1 + 2 * k + k2), F221 = 1.5 * s2;
    const double F321 = 1.875 * s * (1 - 2 * k - 3 * k2);
    const double F322 = -1.875 * s * (1 + 2 * k - 3 * k2);
    const double F441 = 35 * s2 * F220, F442 = 39.375 * sq(s2);
    const double F522 =
        9.84375 * s * (s2 * (1 - 2 * k - 5 * k2) + 0.33333333 * (-2 + 4 * k + 6 * k2));
    const double F523 =
        s * (4.92187512 * s2 * (-2 - 4 * k + 10 * k2) + 6.56250012 * (1 + 2 * k - 3 * k2));
    const double F542 = 29.53125 * s * (2 - 8 * k + k2 * (-12 + 8 * k + 10 * k2));
    const double F543 = 29.53125 * s * (-2 - 8 * k + k2 * (12 + 8 * k - 10 * k2));
    const HalfDayG G = half_day_g(c.e0);

    const double v = 1 / c.a0, scale2 = 3 * sq(c.n0) * sq(v), scale3 = scale2 * v,
                 scale4 = scale3 * v, scale5 = scale4 * v;
    constexpr double kRoot22 = 1.7891679e-6, kRoot32 = 3.7393792e-7, kRoot44 = 7.3636953e-9,
                     kRoot52 = 1.1428639e-7, kRoot54 = 2.1765803e-9;
    constexpr double kPhase22 = 5.7686396, kPhase32 = 0.95240898, kPhase44 = 1.8014998,
                     kPhase52 = 1.0508330, kPhase54 = 4.4108898;
    add_term(c.pull[0], scale2 * kRoot22 * F220 * G.G201, kPhase22);
    add_term(c.pull[1], scale2 * kRoot22 * F221 * G.G211, kPhase22);
    add_term(c.pull[2], scale3 * kRoot32 * F321 * G.G310, kPhase32);
    add_term(c.pull[3], scale3 * kRoot32 * F322 * G.G322, kPhase32);
    add_term(c.pull[4], 2 * scale4 * kRoot44 * F441 * G.G410, kPhase44);
    add_term(c.pull[5], 2 * scale4 * kRoot44 * F442 * G.G422, kPhase44);
    add_term(c.pull[2], scale5 * kRoot52 * F522 * G.G520, kPhase52);
    add_term(c.pull[3], scale5 * kRoot52 * F523 * G.G532, kPhase52);
    add_term(c.pull[6], 2 * scale5 * kRoot54 * F542 * G.G521, kPhase54);
    add_term(c.pull[7], 2 * scale5 * kRoot54 * F543 * G.G533, kPhase54);
    c.lam0 = std::fmod(c.M0 + 2 * c.node0 - 2 * c.theta0, kTwoPi);
    c.lam_rate = c.M_rate + c.M_dot + 2 * (c.node_rate + c.node_dot - kEarthRate) - c.n0;
}

// Turns to [0, 2 pi).
double mod(double angle) {
    const double rest = std::fmod(angle, kTwoPi);
    return rest < 0 ? rest + kTwoPi : rest;
}

// Sidereal time as the issuing centres are thought to have it, from 1970.
double sidereal_time_1970(Instant epoch) {
    constexpr int kDay1970 = 2440586;  // 1969 December 31 0h less half a day
    constexpr double kRate = 0.0172027916940703639;
    const double days = (static_cast<double>(epoch.day) - kDay1970) + (epoch.fraction - 0.5);
    const double whole = std::floor(days + 1e-8);
    return mod(1.7321343856509374 + kRate * whole + (kRate + kTwoPi) * (days - whole) +
               5.07551419432269442e-15 * days * days);
}

}  // namespace

Sgp4Kind add_resonance(const MeanElements& el, Sgp4Mode mode, Sgp4Coefficients<double>& c) {
    c.theta0 =
        mode == Sgp4Mode::afspc ? sidereal_time_1970(el.epoch) : sidereal_time_1982(el.epoch);
    if (c.n0 > 0.0034906585 && c.n0 < 0.0052359877) {
        add_one_day(c);
        return Sgp4Kind::one_day;
    }
    if (c.n0 >= 0.00826 && c.n0 <= 0.00924 && c.e0 >= 0.5) {
        add_half_day(c);
        return Sgp4Kind::half_day;
    }
    return Sgp4Kind::deep;
}

}  // namespace solsys
