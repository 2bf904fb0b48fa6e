// The prescribed and the modern reduction, side by side.
#include <cstdio>

#include "solsys/sky/earth_rotation.h"
#include "solsys/sky/places.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    model->move_to(*Instant::from_iso("2026-12-01T00:00:00Z"));
    model->observe_from(*parse_site("51.4779,-0.0015,46"));

    for (const char* name : {"venus", "jupiter", "sirius"}) {
        const Body body = *find_body(name);
        model->use(REDUCTION_CLASSIC);
        const Place classic = *apparent_place(*model, body);
        model->use(REDUCTION_MODERN);
        const Place modern = *apparent_place(*model, body);
        std::printf("%-8s modern ra %.5f dec %.5f, classic %+.2f %+.2f arcsec from it\n", name,
                    modern.ra_deg, modern.dec_deg, (classic.ra_deg - modern.ra_deg) * 3600,
                    (classic.dec_deg - modern.dec_deg) * 3600);
    }

    // What is observed of the Earth's rotation: half a second of time is 7.5 arcsec of azimuth.
    const Body sirius = *find_body("sirius");
    const double azimuth = horizontal_of(*model, *apparent_place(*model, sirius)).azimuth_deg;
    if (!set_earth_rotation(*model, 0.5, 0.1, 0.3)) return 1;
    model->move_to(model->instant());
    std::printf(
        "azimuth of Sirius with UT1 - UTC = 0.5 s: %+.1f arcsec\n",
        (horizontal_of(*model, *apparent_place(*model, sirius)).azimuth_deg - azimuth) * 3600);
}
