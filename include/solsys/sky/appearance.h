/// \file
/// How a body looks: how bright, how full, how large, and in which constellation.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "solsys/export.h"
#include "solsys/sky/places.h"

namespace solsys::sky {

/// Empty is what is not known, or has no meaning for the body.
struct Appearance {
    std::optional<double> magnitude;                ///< visual
    std::optional<double> phase_angle_deg;          ///< Sun, body, observer: [0, 180]
    std::optional<double> illuminated_fraction;     ///< of the disk, 0 to 1
    std::optional<double> elongation_deg;           ///< from the Sun, positive east of it
    std::optional<double> bright_limb_deg;          ///< position angle, from north through east
    std::optional<double> angular_diameter_arcsec;  ///< equatorial; comets have none
    std::string constellation;                      ///< IAU abbreviation
};
/// At the model's instant, for its observer; `apparent` is the body's place there.
SOLSYS_API Appearance appearance_of(Model& model, const Body& body, const Place& apparent);

/// The magnitude alone.
SOLSYS_API std::optional<double> magnitude_of(Model& model, const Body& body);

/// A constellation; `index` counts in the alphabetical order of the Latin names, -1 is none.
struct Constellation {
    int index = -1;                 ///< 0 to 87
    const char* name = "";          ///< "Bo\u00f6tes"
    const char* abbreviation = "";  ///< "Boo"
};
/// That of a direction on the true equator of date; boundaries of Delporte 1930.
SOLSYS_API Constellation constellation_at(const Model& model, double ra_deg, double dec_deg);
/// By its index; index -1 for what is none.
SOLSYS_API Constellation constellation_number(int index);
/// By its abbreviation, "Ori"; index -1 for what is none.
SOLSYS_API Constellation constellation_called(std::string_view abbreviation);

}  // namespace solsys::sky
