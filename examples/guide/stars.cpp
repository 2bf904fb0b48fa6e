// Stars by their names, and one of the host's own.
#include <cstdio>

#include "solsys/sky/appearance.h"
#include "solsys/sky/places.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    model->move_to(*Instant::from_iso("2026-12-01T00:00:00Z"));
    for (const char* name : {"sirius", "alpha Cen", "hip:32349", "pleiades", "M31"}) {
        const auto body = find_body(name);
        if (!body) {
            std::printf("%s\n", body.message().c_str());
            continue;
        }
        const Place j2000 = *astrometric_place(*model, *body);
        const Place date = *apparent_place(*model, *body);
        std::printf("%-20s J2000 %9.4f %8.4f  of date %9.4f %8.4f\n", body->name.c_str(),
                    j2000.ra_deg, j2000.dec_deg, date.ra_deg, date.dec_deg);
    }
    std::printf("%s\n", find_body("betelgeus").message().c_str());
}
