// The moons of Jupiter beside the planet, and what will happen to them.
#include <cstdio>

#include "solsys/sky/phenomena.h"
#include "solsys/sky/satellites.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Zone utc;
    const Instant evening = *Instant::from_iso("2026-12-01T22:00:00Z");
    model->move_to(evening);
    const PlanetView jupiter = *view_planet(*model, *find_body("jupiter"));
    std::printf("Jupiter: %.1f arcsec across, north pole tilted %+.1f degrees\n",
                2 * jupiter.radius_arcsec, jupiter.pole_tilt_deg);
    for (const Body& moon : moons_of(*model, jupiter.planet, false))
        if (const auto view = view_satellite(*model, jupiter, moon))
            std::printf("%-9s %+7.2f radii east, %+6.2f north %s\n", moon.name.c_str(),
                        view->x_radii, view->y_radii, view->phenomenon().c_str());

    for (const SatellitePhenomenon& p :
         satellite_phenomena(*model, jupiter.planet, {evening, evening.plus_days(1)}))
        if (!p.hidden)
            std::printf("%s  %-9s %s %s\n", utc.date_time(p.at).c_str(), p.moon.name.c_str(),
                        to_string(p.kind), p.begins ? "begins" : "ends");
}
