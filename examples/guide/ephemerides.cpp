// Where states come from, and how far they reach.
// Run as: ephemerides [DE FILE]
#include <cstdio>

#include "solsys/sky/places.h"
#include "solsys/sky/zone.h"
using namespace solsys::sky;

int main(int argc, char** argv) {
    auto model = Model::open(argc > 1 ? argv[1] : "");
    if (!model) {
        std::printf("%s\n", model.message().c_str());
        return 1;
    }
    Model& sky = *model;
    std::printf("places from the %s\n", sky.source().c_str());
    for (const char* when : {"-2999-06-01", "1066-04-24", "2026-12-01", "3001-01-01"}) {
        sky.move_to(*parse_time(when));
        const auto saturn = apparent_place(sky, *find_body("saturn"));
        if (saturn)
            std::printf("%-11s ra %7.2f  dec %6.2f\n", when, saturn->ra_deg, saturn->dec_deg);
        else
            std::printf("%-11s not covered\n", when);
    }
    std::printf("%s\n", Model::open("no_such_file.bin").message().c_str());
}
