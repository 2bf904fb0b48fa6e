#include "events/eclipses/luminaries.h"

#include <cmath>

#include "core/constants.h"

namespace solsys::eclipses {
namespace {

// Radii of the canon of solar eclipses (Espenak & Meeus 2006): the Sun by its semidiameter at
// 1 au (Auwers 1891), the Moon in equatorial radii of the Earth.
constexpr double kSunSemidiameter = 959.63;  // arcsec
constexpr double kMoonPenumbra = 0.272488;
constexpr double kMoonUmbra = 0.272281;

bool apparent(CSWSolSys& model, const SSO_ID& id, const Mat3& cur_from_j2000, Vec3& out) {
    double place[4];
    if (!model.GetSSOVisVec2K(id, place, 0.0)) return false;
    out = place[3] * (cur_from_j2000 * load(place));
    return std::isfinite(dot(out, out));
}

}  // namespace

void observe_from_geocentre(CSWSolSys& model) {
    OBSERVER centre;
    centre.kind = LOCATION_BODY_FIXED;
    centre.body_type = SSO_PLNT;
    centre.body_number = 3;
    model.SetObserver(&centre);
}

bool luminaries_at(CSWSolSys& model, Instant t, Luminaries& out) {
    model.UpdateSys(t.day, t.fraction);
    const Mat3 cur_from_j2000 = load_matrix(model.GetMtrxEq2K_EqCur());
    out.greenwich = model.GetSiderealTime(true);
    return apparent(model, SSO_ID(SSO_MOON, 301), cur_from_j2000, out.moon) &&
           apparent(model, SSO_ID(SSO_PLNT, 10), cur_from_j2000, out.sun);
}

Radii radii_of(CSWSolSys& model, RadiiChoice choice) {
    Radii radii{};
    radii.earth = model.GetRadiEq(SSO_ID(SSO_PLNT, 3), &radii.flattening);
    if (choice == RadiiChoice::kCanon) {
        radii.sun = kAuKm * std::sin(kSunSemidiameter * kArcsec);
        radii.moon_penumbra = kMoonPenumbra * radii.earth;
        radii.moon_umbra = kMoonUmbra * radii.earth;
    } else {
        radii.sun = model.GetRadiEq(SSO_ID(SSO_PLNT, 10));
        radii.moon_penumbra = radii.moon_umbra = model.GetRadiEq(SSO_ID(SSO_MOON, 301));
    }
    return radii;
}

}  // namespace solsys::eclipses
