// Where the user stands.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "solsys/observer.h"

namespace app {

struct Site {
    std::string name;
    double latitude_deg = 0;
    double longitude_deg = 0;
    double height_m = 0;
    std::string zone = "UTC";  // IANA name where known
};

// "LAT,LON[,HEIGHT_M]" in degrees north and east and metres. Throws BadInput.
Site parse_site(const std::string& text);

// A city of the built-in list by name (any case), or "NAME,CC" with a country code. Throws
// BadInput, naming close matches.
Site find_city(const std::string& name);

// The observer's record for a model: surface of the Earth, height in au.
OBSERVER observer_at(const Site& site);
// The centre of the Earth.
OBSERVER geocentric_observer();

}  // namespace app
