// A solar eclipse as one site sees it.
#pragma once

#include "events/eclipses/contact_roots.h"
#include "events/eclipses/ground.h"

namespace solsys::eclipses {

// Upper limb on the horizon with mean refraction: altitude of the centre [rad].
constexpr double kSunriseAltitude = -50.0 / 60 * kDegree;

// The disks from a site at an instant; lengths on the plane through the site.
struct Disks {
    double u, v;    // the axis from the site: towards the Moon's centre, east and north
    double m;       // its distance
    double l1, l2;  // the cones at the site
    double du, dv;  // hourly changes
    double sin_altitude;

    // Fraction of the Sun's diameter covered, of the disks' diameters within totality and
    // annularity; not positive: no eclipse.
    [[nodiscard]] double magnitude() const;
    // Fraction of the Sun's disk covered.
    [[nodiscard]] double obscuration() const;
    // Of the Moon's centre; of the last or first sliver of the Sun in an inner contact.
    [[nodiscard]] double position_angle(bool inner) const;
};
Disks disks(const Site& site, const ShadowElements& e);

struct LocalSolar {
    bool touched = false;     // the penumbra passes the site, above the horizon or not
    bool visible = false;     // some of it with the Sun up
    Pair outer, inner;        // C1 C4, C2 C3 [hours from t0]
    double maximum = kNever;  // least distance of the disks
    double best = kNever;     // the greatest phase with the Sun up
    double sunrise = kNever, sunset = kNever;  // during the eclipse
};
LocalSolar local_solar(const SolarPath& path, const Site& site);

// Of the Sun, from north through east [rad].
double azimuth(const Site& site, const ShadowElements& e);

}  // namespace solsys::eclipses
