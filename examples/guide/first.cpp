#include <cstdio>

#include "solsys/sky/sky.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();  // the built-in theory; a DE file's path serves as well
    model->observe_from(*find_city("Oslo"));
    model->move_to(*parse_time("2026-12-01 18:00", *Zone::find("Europe/Oslo")));
    for (const char* name : {"moon", "jupiter", "saturn", "vesta", "vega", "M31"}) {
        const Horizontal h = horizontal_of(*model, *apparent_place(*model, *find_body(name)));
        std::printf("%-8s azimuth %6.2f  altitude %6.2f\n", name, h.azimuth_deg,
                    h.altitude_deg);
    }
}
