#include "events/eclipses/lunation_series.h"

#include <cmath>

#include "core/constants.h"
#include "core/fast_trig.h"
#include "solsys/eclipses.h"

namespace solsys::eclipses {
namespace {

// Sine, and cosine by the sine's complement with the sign of the quadrant.
struct Trig {
    double s, c;
};
Trig of_degrees(double angle) {
    const double turn = std::fmod(angle, 360.0);
    const double positive = turn < 0 ? turn + 360.0 : turn;
    const double s = fm_sin(positive * kDegree);
    const double c = unit_leg(s);
    return {s, positive > 90.0 && positive < 270.0 ? -c : c};
}

Trig twice(Trig a) { return {2 * a.s * a.c, a.c * a.c - a.s * a.s}; }
Trig plus(Trig a, Trig b) { return {a.s * b.c + a.c * b.s, a.c * b.c - a.s * b.s}; }
Trig minus(Trig a, Trig b) { return {a.s * b.c - a.c * b.s, a.c * b.c + a.s * b.s}; }

constexpr double kCenturiesPerLunation = 0.0008085054776246109;  // 1 / 1236.85

double centuries(double k) { return k * kCenturiesPerLunation; }

Trig latitude_argument(double k, double t) {
    return of_degrees(21.2964 + 390.67050646 * k - 0.0016528 * t * t - 2.39e-6 * t * t * t);
}

}  // namespace

Lunation mean_lunation(double k) {
    const double t = centuries(k);
    Lunation l;
    l.k = k;
    l.mean = 2415020.75933 + kSynodicMonth * k + 0.0001178 * t * t - 1.55e-7 * t * t * t +
             0.00033 * of_degrees(166.56 + 132.87 * t - 0.009173 * t * t).s;
    l.sin_f = latitude_argument(k, t).s;
    return l;
}

Lunation lunation_series(double k) {
    Lunation l = mean_lunation(k);
    const double t = centuries(k);
    const Trig f = latitude_argument(k, t);
    const Trig m = of_degrees(359.2242 + 29.10535608 * k - 3.33e-5 * t * t -
                              3.47e-6 * t * t * t);  // the Sun's mean anomaly
    const Trig mp = of_degrees(306.0253 + 385.81691806 * k + 0.0107306 * t * t +
                               1.236e-5 * t * t * t);  // the Moon's
    const Trig m2 = twice(m), mp2 = twice(mp), f2 = twice(f);
    const Trig sum = plus(m, mp), difference = minus(m, mp);

    l.correction = (0.1734 - 0.000393 * t) * m.s + 0.0021 * m2.s - 0.4068 * mp.s +
                   0.0161 * mp2.s - 0.0051 * sum.s - 0.0074 * difference.s - 0.0104 * f2.s;
    l.u = 0.0059 + 0.0046 * m.c - 0.0182 * mp.c + 0.0004 * mp2.c - 0.0005 * sum.c;
    const double s = 5.19595 - 0.0048 * m.c + 0.0020 * m2.c - 0.3283 * mp.c - 0.0060 * sum.c +
                     0.0041 * difference.c;
    const double c = 0.2070 * m.s + 0.0024 * m2.s - 0.0390 * mp.s + 0.0115 * mp2.s -
                     0.0073 * sum.s - 0.0067 * difference.s + 0.0117 * f2.s;
    l.gamma = s * f.s + c * f.c;
    l.n = 0.5458 + 0.04 * mp.c;
    return l;
}

double approximate_syzygy(const Lunation& lunation) {
    // Mean syzygies of Chapront-Touze & Chapront 1988 (Astron. Astrophys. 190, 342), lunation 0
    // being the new Moon of 2000 January 6.
    const double k = lunation.k - 1237;
    const double t = k * kCenturiesPerLunation;
    const double mean =
        2451550.09766 + 29.530588861 * k + 0.00015437 * t * t - 0.000000150 * t * t * t;
    return mean + lunation.correction;
}

}  // namespace solsys::eclipses

namespace {

// The lunation that a kind of search takes from an instant x lunations after the epoch.
double chosen_lunation(short kind, double x) {
    switch (kind) {
        case ECLIPSE_SOLAR:
            return x >= 0 ? std::trunc(x) + 1 : std::trunc(x);
        case ECLIPSE_LUNAR:
            return (x >= 0 ? std::trunc(x + 0.5) : std::trunc(x - 0.5)) + 0.5;
        default:
            return std::trunc(x);
    }
}

}  // namespace

bool PossibilityOfEclipse(short kind, int* day, double* fraction, double* u, double* gamma,
                          double* n) {
    using namespace solsys::eclipses;
    if (!day || !fraction || !u || !gamma || !n) return false;
    const double x = (*day - kSeriesEpoch + *fraction) / kSynodicMonth;
    if (!(std::fabs(x) < 5e7)) return false;  // day numbers beyond int
    const Lunation mean = mean_lunation(chosen_lunation(kind, x));
    *day = static_cast<int>(mean.mean);
    *fraction = mean.mean - *day;
    if (std::fabs(mean.sin_f) > kLargestSinF) return false;

    const Lunation l = lunation_series(mean.k);
    *fraction += l.correction;
    *u = l.u;
    *gamma = l.gamma;
    if (kind == ECLIPSE_SOLAR) return std::fabs(l.gamma) <= l.u + kSolarLimit;
    if (kind == ECLIPSE_LUNAR) *n = l.n;
    return true;
}
