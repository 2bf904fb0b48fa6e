// The Besselian elements of one solar eclipse as functions of time.
#pragma once

#include <optional>

#include "core/instant.h"
#include "events/eclipses/besselian.h"
#include "events/eclipses/centring.h"
#include "events/eclipses/quartic.h"
#include "solsys/solar_system.h"

namespace solsys::eclipses {

// The elements at one instant with their hourly changes.
struct ShadowElements {
    double x, y, dx, dy;
    double sin_d, cos_d, dd;
    double mu, dmu;  // true Greenwich hour angle of the axis [rad]
    double l1, l2, dl1, dl2;
    double tan_f1, tan_f2;
    Flattening earth;
};

struct SolarPath {
    Instant t0{};  // dynamical time, near greatest eclipse; h counts hours from it
    double delta_t = 0;
    Radii radii{};
    Quartic x, y, sin_d, cos_d, mu, l1, l2;
    double tan_f1 = 0, tan_f2 = 0;
    double greatest = 0;  // hours: least distance of the axis from the Earth's centre

    [[nodiscard]] ShadowElements at(double h) const;
    [[nodiscard]] double jd_ut(double h) const { return t0.jd() + h / 24 - delta_t / 86400; }
    [[nodiscard]] double hours(double jd_ut) const {
        return 24 * ((jd_ut - t0.day) - t0.fraction + delta_t / 86400);
    }
};

// Hours from t at which the motion (x, y) is nearest to the centre, by Newton's method.
double least_distance(const Quartic& x, const Quartic& y);

// The path around a syzygy known to about a quarter of a day. Moves the model, whose observer
// is to be at the Earth's centre. Nothing when the ephemeris does not answer.
std::optional<SolarPath> solar_path(CSWSolSys& model, Instant syzygy, const Radii& radii);

}  // namespace solsys::eclipses
