// The Moon in the Earth's shadow as functions of time.
#pragma once

#include <optional>

#include "core/instant.h"
#include "events/eclipses/besselian.h"
#include "events/eclipses/contact_roots.h"
#include "events/eclipses/quartic.h"
#include "solsys/solar_system.h"

namespace solsys::eclipses {

enum class ShadowRule { kSeries, kDanjon, kFiftieth };

struct LunarPath {
    Instant t0{};  // dynamical time, near greatest eclipse; h counts hours from it
    double delta_t = 0;
    Radii radii{};
    ShadowRule rule = ShadowRule::kDanjon;
    double u = 0;             // of the mean-lunation series, for its rule
    Quartic x, y, z;          // the Moon against the shadow's axis [Earth radii]
    Quartic sun_distance;     // [Earth radii]
    Quartic hour_angle, dec;  // of the Moon: at Greenwich, and its sine of declination
    double greatest = 0;      // hours: least distance of the Moon's centre from the axis

    // As seen from the Earth's centre [rad]; the rule of the series measures on the plane
    // through the Moon instead, in Earth radii.
    struct Disks {
        double separation, moon, umbra, penumbra;
    };
    [[nodiscard]] Disks at(double h) const;
    [[nodiscard]] double jd_ut(double h) const { return t0.jd() + h / 24 - delta_t / 86400; }
    [[nodiscard]] double hours(double jd_ut) const {
        return 24 * ((jd_ut - t0.day) - t0.fraction + delta_t / 86400);
    }
};

// As solar_path.
std::optional<LunarPath> lunar_path(CSWSolSys& model, Instant syzygy, const Radii& radii,
                                    ShadowRule rule, double u);

struct LunarContacts {
    Pair penumbra_outer, penumbra_inner;  // P1 P4, P2 P3
    Pair umbra_outer, umbra_inner;        // U1 U4, U2 U3
};
LunarContacts lunar_contacts(const LunarPath& path);

struct LunarCircumstances {
    bool exists = false;
    short type = 0;  // as in ECLIPSE
    double gamma = 0, penumbral_magnitude = 0, umbral_magnitude = 0;
    double umbra = 0, penumbra = 0;  // radii at the Moon [Earth radii]
};
LunarCircumstances lunar_circumstances(const LunarPath& path);

}  // namespace solsys::eclipses
