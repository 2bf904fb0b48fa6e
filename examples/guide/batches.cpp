// A year of all planets in two calls.
#include <cstdio>
#include <string>
#include <vector>

#include "solsys/sky/appearance.h"
#include "solsys/sky/batch.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main() {
    auto model = Model::open();
    const std::vector<Body> planets = *find_bodies("planets");
    std::vector<Instant> days;
    for (int n = 0; n < 365; ++n) days.push_back(parse_time("2027")->plus_days(n));

    std::vector<Place> places(planets.size() * days.size());
    std::vector<double> brightness(places.size());
    const auto computed = apparent_places(*model, planets, days, places);
    if (!computed || !magnitudes(*model, planets, days, brightness)) return 1;

    std::printf("%zu places\n", *computed);
    for (std::size_t p = 0; p < planets.size(); ++p) {
        std::size_t nearest = 0;
        std::size_t brightest = 0;
        for (std::size_t d = 0; d < days.size(); ++d) {
            const std::size_t row = p * days.size();  // bodies, within a body instants
            if (places[row + d].distance_au < places[row + nearest].distance_au) nearest = d;
            if (brightness[row + d] < brightness[row + brightest]) brightest = d;
        }
        std::printf("%-8s nearest %.10s at %.3f au, brightest %.10s with %.1f mag\n",
                    planets[p].name.c_str(), days[nearest].iso(0).c_str(),
                    places[p * days.size() + nearest].distance_au,
                    days[brightest].iso(0).c_str(), brightness[p * days.size() + brightest]);
    }
}
