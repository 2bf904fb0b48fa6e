// Names of the constellations.
#pragma once

#include <string_view>

#include "solsys/solar_system.h"

namespace app {

struct Constellation {
    int index = 0;                  // in the alphabetical order of the Latin names
    const char* name = "";          // "Orion"
    const char* abbreviation = "";  // "Ori"
};

// The constellation of a direction on the true equator of date [deg].
const Constellation& constellation_at(const CSWSolSys& model, double ra_deg, double dec_deg);

// Latin name by the abbreviation; empty for what is none.
const char* constellation_name(std::string_view abbreviation);

}  // namespace app
