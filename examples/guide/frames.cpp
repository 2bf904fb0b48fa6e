// One body, in the frames that people use.
#include <cstdio>

#include "solsys/sky/appearance.h"
#include "solsys/sky/places.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    model->move_to(*Instant::from_iso("2026-12-01T00:00:00Z"));
    model->observe_from(*parse_site("51.4779,-0.0015,46"));
    const Body mars = *find_body("mars");

    const Place j2000 = *astrometric_place(*model, mars);
    const Place date = *apparent_place(*model, mars);
    const Horizontal over = horizontal_of(*model, date);
    const LonLat ecliptic = ecliptic_of(*model, date);
    const LonLat galactic = galactic_of(*model, date);
    const auto sun = *heliocentric_state(*model, mars);

    std::printf("J2000 equator     ra %9.4f  dec %8.4f\n", j2000.ra_deg, j2000.dec_deg);
    std::printf("equator of date   ra %9.4f  dec %8.4f\n", date.ra_deg, date.dec_deg);
    std::printf("ecliptic of date  l  %9.4f  b   %8.4f\n", ecliptic.lon_deg, ecliptic.lat_deg);
    std::printf("galactic          l  %9.4f  b   %8.4f\n", galactic.lon_deg, galactic.lat_deg);
    std::printf("horizon           az %9.4f  alt %8.4f\n", over.azimuth_deg, over.altitude_deg);
    std::printf("distance %.6f au, the light is %.2f minutes old\n", date.distance_au,
                date.light_time_days * 1440);
    std::printf("from the Sun: x %.5f  y %.5f  z %.5f au (J2000 equator)\n", sun[0], sun[1],
                sun[2]);
    std::printf("in %s\n", constellation_at(*model, date.ra_deg, date.dec_deg).name);
}
