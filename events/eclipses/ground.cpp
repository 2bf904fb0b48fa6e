#include "events/eclipses/ground.h"

#include <cmath>

#include "core/angles.h"

namespace solsys::eclipses {

Place place_at(double xi, double eta1, double zeta1, const Flattening& earth, double mu,
               double flattening) {
    // Reduced latitude and local hour angle, then the geodetic latitude.
    const double s = eta1 * earth.cos_d1 + zeta1 * earth.sin_d1;
    const double c = -eta1 * earth.sin_d1 + zeta1 * earth.cos_d1;
    const double hour_angle = std::atan2(xi, c);
    return {std::atan2(s, (1 - flattening) * std::hypot(xi, c)),
            wrap_half_turn(hour_angle - mu)};
}

Place nearest_place(double x, double y, const Flattening& earth, double mu, double flattening) {
    const double eta1 = y / earth.rho1;
    const double zeta1_squared = 1 - x * x - eta1 * eta1;
    if (zeta1_squared >= 0)
        return place_at(x, eta1, std::sqrt(zeta1_squared), earth, mu, flattening);
    const double m = std::hypot(x, y);
    return place_at(x / m, y / m, 0, earth, mu, flattening);
}

Site site_at(double latitude, double longitude, double height_km, const Radii& radii) {
    const double reduced = std::atan((1 - radii.flattening) * std::tan(latitude));
    const double height = height_km / radii.earth;
    return {latitude, longitude, std::cos(reduced) + height * std::cos(latitude),
            (1 - radii.flattening) * std::sin(reduced) + height * std::sin(latitude)};
}

Standpoint stand(const Site& site, const ShadowElements& e) {
    const double hour_angle = e.mu + site.longitude;
    const double sin_h = std::sin(hour_angle), cos_h = std::cos(hour_angle);
    Standpoint p{};
    p.xi = site.rho_cos_phi * sin_h;
    p.eta = site.rho_sin_phi * e.cos_d - site.rho_cos_phi * e.sin_d * cos_h;
    p.zeta = site.rho_sin_phi * e.sin_d + site.rho_cos_phi * e.cos_d * cos_h;
    p.dxi = e.dmu * site.rho_cos_phi * cos_h;
    p.deta = e.dmu * p.xi * e.sin_d - e.dd * p.zeta;
    p.sin_altitude =
        std::sin(site.latitude) * e.sin_d + std::cos(site.latitude) * e.cos_d * cos_h;
    return p;
}

}  // namespace solsys::eclipses
