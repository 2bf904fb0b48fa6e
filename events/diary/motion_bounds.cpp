#include "events/diary/motion_bounds.h"

#include <algorithm>
#include <cmath>

namespace solsys::diary {

namespace {

// Largest values met: planets and Sun sampled twice a day from 1600 to 2200, the Moon twenty
// times a day over 27 years.
struct MotionRow {
    std::int32_t type, number;
    MotionBounds largest;
};
constexpr MotionRow kRows[] = {
    {SSO_PLNT, 1, {.0421, .0037, 8.74e-4, .0384, .00346, 8.26e-4, 3.42e-4, 3.71e-4, 1.35e-5}},
    {SSO_PLNT, 2, {.0241, 8.05e-4, 8.21e-5, .022, 7.41e-4, 7.75e-5, 9.85e-6, 6.05e-5, 8.04e-8}},
    {SSO_PLNT,
     4,
     {.0148, 2.87e-4, 1.77e-5, .0138, 2.65e-4, 1.62e-5, 4.94e-6, 2.23e-5, 1.73e-7}},
    {SSO_PLNT,
     5,
     {.00441, 6.42e-5, 2.12e-6, .00423, 6.14e-5, 1.99e-6, 5.49e-6, 7.97e-6, 4.34e-9}},
    {SSO_PLNT,
     6,
     {.00247, 3.59e-5, 9.79e-7, .00228, 3.33e-5, 9.09e-7, 5.64e-6, 6.81e-6, 1.66e-9}},
    {SSO_PLNT,
     7,
     {.00116, 1.72e-5, 4.04e-7, .0011, 1.66e-5, 3.78e-7, 5.82e-6, 6.34e-6, 2.79e-8}},
    {SSO_PLNT,
     8,
     {7.16e-4, 1.08e-5, 2.38e-7, 6.64e-4, 1.03e-5, 2.21e-7, 5.87e-6, 6.25e-6, 6.01e-9}},
    {SSO_PLNT,
     9,
     {6.73e-4, 1.0e-5, 1.96e-7, 7.08e-4, 1.07e-5, 2.15e-7, 5.75e-6, 6.07e-6, 3.87e-9}},
    {SSO_PLNT, 10, {.0194, 6.34e-5, 2.98e-6, .0178, 1.15e-5, 6.14e-7, 4.4e-7, 0, 0}},
    {SSO_MOON, 301, {.304, .0248, .0164, .269, .00896, .00361, 3.7e-6, .0143, 2.94e-5}},
};
constexpr double kMargin = 1.5;

constexpr MotionBounds kOther{.5, .2, .2, .5, .2, .2, .1, .2, .01};

// Aberration (1e-4 rad, once a year), precession (1e-6 rad/day) and nutation (a few 1e-6 rad
// in a fortnight at the fastest), all over the cosine of the declination.
MotionBounds of_star(const StarObject& star) {
    const double widen = 1 / std::max(std::fabs(std::cos(star.dec)), 1e-4);
    const double rate = 5e-6 * widen;
    const double acceleration = 1e-6 * widen * widen;
    return {rate, acceleration, acceleration, rate, acceleration, acceleration, 0, 0, 0};
}

}  // namespace

MotionBounds bounds_of(const Target& target) {
    if (target.star != nullptr) return of_star(*target.star);
    for (const MotionRow& row : kRows) {
        if (row.type != target.id.type || row.number != target.id.number) continue;
        const MotionBounds& b = row.largest;
        return {kMargin * b.ra1,       kMargin * b.ra2,     kMargin * b.ra3,
                kMargin * b.lon1,      kMargin * b.lon2,    kMargin * b.lon3,
                kMargin * b.distance3, kMargin * b.cosine3, kMargin * b.radial2};
    }
    return kOther;
}

}  // namespace solsys::diary
