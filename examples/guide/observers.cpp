// Where one stands matters most for the Moon.
#include <cstdio>

#include "solsys/sky/places.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    model->move_to(*Instant::from_iso("2026-12-01T00:00:00Z"));

    const Place centre = *apparent_place(*model, moon());
    std::printf("%-18s ra %8.3f  dec %7.3f\n", "Earth's centre", centre.ra_deg, centre.dec_deg);
    for (const char* text : {"Quito", "Springfield, IL, US", "69.65N,18.96E,100"}) {
        auto site = find_city(text);
        if (!site) site = parse_site(text);
        model->observe_from(*site);
        const Place here = *apparent_place(*model, moon());
        std::printf("%-18s ra %8.3f  dec %7.3f  altitude %6.2f\n",
                    site->name.empty() ? "a place" : site->name.c_str(), here.ra_deg,
                    here.dec_deg, horizontal_of(*model, here).altitude_deg);
    }

    // Not only the Earth: the classic interface underneath stands anywhere.
    OBSERVER crater;
    crater.kind = LOCATION_SURFACE;
    crater.body_type = SSO_MOON;
    crater.body_number = 301;
    crater.location[1] = -0.196;  // Tycho: east longitude and latitude [rad]
    crater.location[2] = -0.756;
    model->classic().SetObserver(&crater);
    const Place earth = *apparent_place(*model, *find_body("earth"));
    std::printf("the Earth over Tycho: %.0f degrees up, %.0f km away\n",
                horizontal_of(*model, earth).altitude_deg, earth.distance_au * 149597870.7);
}
