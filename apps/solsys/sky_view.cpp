#include "apps/solsys/sky_view.h"

#include <algorithm>
#include <cmath>

#include "apps/solsys/appearance.h"
#include "apps/solsys/bodies.h"
#include "apps/solsys/star_list.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr double kBesideDegrees = 0.05;

const SSO_ID kBodies[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1},
                          {SSO_PLNT, 2},  {SSO_PLNT, 4},   {SSO_PLNT, 5},
                          {SSO_PLNT, 6},  {SSO_PLNT, 7},   {SSO_PLNT, 8}};

std::vector<SkyStar> stars_up(CSWSolSys& model) {
    std::vector<SkyStar> stars;
    for (const StarRow& row : bright_stars()) {
        const StarObject star = star_object(row);
        double direction[3] = {0, 0, 0};
        double spherical[3] = {0, 0, 0};
        model.GetRADecVisStar(&star, nullptr, direction, true);
        psf1(direction, 1.0, spherical);
        const Place place{spherical[1] * kDegrees, spherical[2] * kDegrees, 0, 0};
        const Horizontal at = horizontal_of(model, place);
        if (at.altitude_deg > 0)
            stars.push_back(
                {at, row.magnitude, row.spectral_type[0], row.name, row.constellation});
    }
    std::sort(stars.begin(), stars.end(),
              [](const SkyStar& a, const SkyStar& b) { return a.magnitude < b.magnitude; });
    return stars;
}

SkyBody body_at(CSWSolSys& model, const SSO_ID& id) {
    const Place place = apparent_place(model, id);
    const Appearance looks = appearance_of(model, id, place);
    SkyBody body{id,
                 name_of(id),
                 horizontal_of(model, place),
                 looks.magnitude,
                 looks.illuminated_fraction,
                 {}};
    double limb = 0;
    model.PhaseElongation(id, nullptr, nullptr, nullptr, &limb, nullptr);
    const double cos_dec = std::max(0.01, std::cos(place.dec_deg / kDegrees));
    body.towards_sun =
        horizontal_of(model, {place.ra_deg + kBesideDegrees * std::sin(limb) / cos_dec,
                              place.dec_deg + kBesideDegrees * std::cos(limb), 0, 0});
    return body;
}

}  // namespace

SkyView view_sky(CSWSolSys& model) {
    SkyView view;
    view.stars = stars_up(model);
    for (const SSO_ID& id : kBodies) view.bodies.push_back(body_at(model, id));
    view.sun_altitude_deg = view.bodies[0].at.altitude_deg;
    view.moon_illuminated = view.bodies[1].illuminated;
    for (int degree = 0; degree <= 360; ++degree) {
        const double lon = degree / kDegrees;
        const double lat = 0;
        double ra = 0;
        double dec = 0;
        model.FromEclAngToRA(false, &lon, &lat, &ra, &dec);
        view.ecliptic.push_back(horizontal_of(model, {ra * kDegrees, dec * kDegrees, 0, 0}));
    }
    return view;
}

}  // namespace app
