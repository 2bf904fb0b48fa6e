// The bright stars and the deep-sky objects that come with the library.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sky/text.h"
#include "solsys/sky/body.h"
#include "solsys/stars.h"

namespace solsys::sky {

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

// The approved proper name, or empty.
std::string_view proper_name(const StarRow& row);
// Proper name, else Bayer or Flamsteed designation, else "HIP 122".
std::string star_name(const StarRow& row);
Body body_of(const StarRow& row);

// By proper name ("sirius"), Bayer ("alp CMa", "alpha CMa", a Greek letter) or Flamsteed
// designation ("9 CMa"), or by number ("hip:32349" or "HIP 32349", "star:32349", "hr:2491",
// "hd:48915"). Null: none.
const StarRow* find_star(std::string_view text);

// A galaxy, cluster or nebula; direction at J2000.0.
struct DeepSkyRow {
    std::string_view id;            // "M31", "C14", "LMC"
    int messier = 0, caldwell = 0;  // 0: none
    std::string_view designation;   // "NGC 224"; several with semicolons
    std::string_view name;          // "Andromeda Galaxy", or empty; several with semicolons
    std::string_view type;          // OC GC CN EN RN PN SNR DN G SC DS AST
    double ra_deg = 0, dec_deg = 0;
    double magnitude = 99;  // integrated; 99: not known
    double major_arcmin = 0, minor_arcmin = 0;
    std::string_view constellation;
};
const std::vector<DeepSkyRow>& deep_sky_objects();
Body body_of(const DeepSkyRow& row);
// "M31", "Messier 31", "NGC 224", "C14", "Andromeda Galaxy", "Pleiades". Null: none.
const DeepSkyRow* find_deep_sky(std::string_view text);

// Offers all their names.
void suggest_stars(Suggestions& suggestions);

}  // namespace solsys::sky
