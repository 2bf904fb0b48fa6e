// What the model of the element sets keeps of one set: the prepared coefficients that every
// state is made of, for one satellite (T = double) or for some beside each other (T = a vector
// of lanes). Lengths in equatorial radii, times in minutes, angles in radians.
//
// Hoots & Roehrich 1980, Spacetrack Report No. 3; Vallado, Crawford, Hujsak & Kelso 2006,
// AIAA 2006-6753. Near-earth drag and rates after the latter; M mean anomaly, w argument of
// perigee.
//
// This header includes nothing: the kernel is compiled for several processors.
#pragma once

namespace solsys {

// What a set needs of the model. Sets of one kind go through the same statements.
enum class Sgp4Kind : int { near_earth, deep, one_day, half_day };
constexpr int kSgp4Kinds = 4;

// Amplitudes of the periodic terms of the Sun or the Moon.
template <class T>
struct LunisolarTerms {
    T mu;  // mean anomaly at epoch
    T e1, e2, i1, i2, l1, l2, l3, g1, g2, g3, h1, h2;
};

// Sine and cosine coefficients of one angle of the pull of the Earth's tesseral harmonics.
template <class T>
struct PullTerm {
    T of_sine, of_cosine;
};
constexpr int kPullTerms = 8;

// Only members of type T: n records are turned into one of n lanes number by number.
template <class T>
struct Sgp4Coefficients {
    T epoch_day, epoch_fraction;  // Julian date, UTC
    // Constants of gravity.
    T radius_km, ke, j2, j3_j2;
    // Elements at epoch: Brouwer's mean motion n0, a0 = (ke/n0)^(2/3).
    T n0, a0, e0, i0, node0, w0, M0, sin_i0, cos_i0;
    T M_rate, w_rate, node_rate;
    // Drag: in all sets, then what reduced drag leaves out (zero there).
    T KN, C1, Bs_C4, T2;
    T D2, D3, D4, Bs_C5, T3, T4, T5, KW, KM, eta, m0, sin_M0;
    // Deep space: secular rates and periodic terms of Sun and Moon.
    T e_dot, i_dot, M_dot, w_dot, node_dot;
    LunisolarTerms<T> sun, moon;
    T turned;  // 1: nodes are counted from 0 to 2 pi where it matters (mode afspc), else 0
    // Resonance with the Earth's rotation.
    T theta0, lam0, lam_rate;
    PullTerm<T> pull[kPullTerms];
};

// Where the integration of a resonance stands: minutes from epoch, longitude, mean motion.
// Zeros: at the epoch. What is kept is a mere speed-up: states do not depend on it.
template <class T>
struct ResonanceState {
    T tau, lam, n;
};

// The pull's angles in the order of `pull`: k_w w + k_lam lam. The one-day resonance has the
// first three.
struct PullAngle {
    int k_w, k_lam;
};
constexpr PullAngle kHalfDayAngles[kPullTerms] = {{2, 1}, {0, 1}, {1, 1}, {-1, 1},
                                                  {2, 2}, {0, 2}, {1, 2}, {-1, 2}};
constexpr PullAngle kOneDayAngles[3] = {{0, 1}, {0, 2}, {0, 3}};

// Earth's rotation in the resonance, rad/min.
constexpr double kEarthRate = 4.37526908801129966e-3;
// Sun and Moon: mean motion [rad/min], eccentricity.
constexpr double kSunRate = 1.19459e-5, kSunEccentricity = 0.01675;
constexpr double kMoonRate = 1.5835218e-4, kMoonEccentricity = 0.05490;

}  // namespace solsys
