// The bright stars that come with the command.
#pragma once

#include <span>
#include <string>

#include "solsys/stars.h"

namespace app {

// A row of the list; directions and motions at J2000.0.
struct StarRow {
    int hip, hr, hd;
    const char* name;       // proper name, or empty
    const char* bayer;      // "alp CMa", or empty
    const char* flamsteed;  // "9 CMa", or empty
    const char* constellation;
    double ra_deg, dec_deg;
    double pm_ra_mas_yr, pm_dec_mas_yr;  // the first with the cosine of the declination
    double parallax_mas;                 // not above 0: not known
    double radial_velocity_km_s;
    int radial_velocity_source;
    double magnitude;
    const char* spectral_type;
    const char* astrometry_source;
};

std::span<const StarRow> bright_stars();

StarObject star_object(const StarRow& row);

// Proper name, else Bayer or Flamsteed designation, else "HIP 122".
std::string star_name(const StarRow& row);

// By proper name ("sirius"), Bayer ("alp CMa", "alpha CMa") or Flamsteed designation
// ("9 CMa"), or by number ("32349" with hip: or star: or HIP before it, "hr:2491",
// "hd:48915"). Null: none.
const StarRow* find_star(const std::string& text);

}  // namespace app
