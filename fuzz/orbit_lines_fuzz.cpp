// Any text as lines of the minor-planet and comet formats.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "io/comets.h"
#include "io/minor_planets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream planets(text);
    solsys_io::read_minor_planets(planets, [](const solsys_io::MinorPlanet& planet) {
        if (!std::isfinite(planet.a) || planet.e < 0 || planet.e >= 1) std::abort();
    });
    std::istringstream comets(text);
    solsys_io::read_comets(comets, [](const solsys_io::Comet& comet) {
        if (!std::isfinite(comet.q) || comet.q <= 0 || comet.e < 0) std::abort();
    });
    return 0;
}
