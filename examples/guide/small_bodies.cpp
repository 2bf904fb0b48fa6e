// Minor planets and comets: by name, by elements, integrated, and who comes near.
#include <cstdio>

#include "solsys/sky/approaches.h"
#include "solsys/sky/orbits.h"
#include "solsys/sky/places.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const Zone utc;
    model->move_to(*parse_time("2030-12-01"));
    const Body own = *parse_elements(
        "name=Mine,epoch=jd:2461200.5,a=2.77,e=0.078,i=10.6,node=80.3,peri=73.6,M=34,H=9");
    for (const Body& body : {*find_body("vesta"), *find_body("halley"), own}) {
        const Place orbit = *apparent_place(*model, body);
        model->classic().SetIntegrated(body.id);  // among the planets from here on
        model->move_to(model->instant());
        const Place moved = *apparent_place(*model, body);
        std::printf("%-10s ra %7.2f  dec %6.2f  %.3f au; on its orbit alone %+.0f %+.0f\"\n",
                    body.name.c_str(), moved.ra_deg, moved.dec_deg, moved.distance_au,
                    (orbit.ra_deg - moved.ra_deg) * 3600,
                    (orbit.dec_deg - moved.dec_deg) * 3600);
    }

    const Span years{*parse_time("2029"), *parse_time("2030")};
    const auto found =
        find_approaches(*model, *find_body("apophis"), years, {.within_au = 0.02});
    if (!found) return 1;
    for (const Approach& a : *found)
        std::printf("Apophis: %.5f au from %s on %s, %.1f km/s\n", a.distance_au,
                    a.planet.name.c_str(), utc.date_time(a.time).c_str(), a.speed_km_s);
}
