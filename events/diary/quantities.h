// The functions of time whose zeros are events. All take JD TT.
#pragma once

#include <cmath>

#include "core/angles.h"
#include "events/diary/geocentric_sky.h"

namespace solsys::diary {

enum class Circle { kEquator, kEcliptic };

inline constexpr double kSunRate = 0.017202;  // rad/day: mean motion

inline const Mat3& frame(const GeocentricSky& sky, Circle circle) {
    return circle == Circle::kEquator ? sky.equator() : sky.ecliptic();
}

// Sine and cosine of the first longitude (or right ascension) less the second.
struct Difference {
    double sine, cosine;
};
inline Difference difference(const Mat3& of_date, Vec3 first, Vec3 second) {
    const Vec3 a = of_date * first;
    const Vec3 b = of_date * second;
    const double scale = 1 / std::sqrt((a.x * a.x + a.y * a.y) * (b.x * b.x + b.y * b.y));
    return {scale * (a.y * b.x - a.x * b.y), scale * (a.x * b.x + a.y * b.y)};
}

inline Difference difference_at(GeocentricSky& sky, const Target& first, const Target& second,
                                Circle circle, double t) {
    sky.at(t);
    return difference(frame(sky, circle), sky.apparent(first).direction,
                      sky.apparent(second).direction);
}

inline double longitude_at(GeocentricSky& sky, const Target& target, Circle circle, double t) {
    sky.at(t);
    const Vec3 v = frame(sky, circle) * sky.apparent(target).direction;
    return std::atan2(v.y, v.x);
}

// Derivative of a function of time by the central difference of fourth order over h days.
// `minus` takes the difference of two values (angles: without whole turns).
template <class Function, class Minus>
double rate(const Function& f, double t, double h, const Minus& minus) {
    const double outer = minus(f(t + 2 * h), f(t - 2 * h));
    const double inner = minus(f(t + h), f(t - h));
    return (8 * inner - outer) / (12 * h);
}
inline double turn(double a, double b) { return wrap_half_turn(a - b); }
inline double plain(double a, double b) { return a - b; }

// The instant near t at which the Sun, which moves by 0.0166 to 0.0178 rad a day, has a
// longitude (of a kind that `longitude_at(t)` tells): each step leaves at most a thirtieth of
// the error. NaN when it cannot be computed.
template <class LongitudeAt>
double instant_of_sun(const LongitudeAt& longitude_at, double longitude, double t,
                      double settled) {
    constexpr int kMostSteps = 20;
    for (int step = 0; step < kMostSteps; ++step) {
        const double days = turn(longitude, longitude_at(t)) / kSunRate;
        t += days;
        if (!(std::fabs(days) > settled)) break;
    }
    return t;
}

}  // namespace solsys::diary
