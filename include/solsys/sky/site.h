/// \file
/// Where an observer stands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "solsys/export.h"
#include "solsys/observer.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A place on the Earth.
///
/// Two heights, because they do two things. The height above sea level (taken as that above the
/// WGS 84 ellipsoid) moves the observer and so the parallax. Only a height above the land or
/// sea at the horizon lowers the horizon and lets the Sun rise earlier; in a mountain valley,
/// or in a city on a plateau, that is 0.
struct SOLSYS_API Site {
    std::string name;            ///< for people
    double latitude_deg = 0;     ///< geodetic, north positive
    double longitude_deg = 0;    ///< east positive
    double height_m = 0;         ///< above sea level
    double above_horizon_m = 0;  ///< above the surroundings as far as the horizon
    std::string zone = "UTC";    ///< IANA name where known
    std::string country;         ///< two letters where known

    /// The record for `CSWSolSys`, whose heights are in au.
    [[nodiscard]] OBSERVER observer() const;
    /// The record for `CSWVisibility`: the height in km, and that above the horizon, because
    /// that class derives the dip from it.
    [[nodiscard]] OBSERVER visibility_observer() const;
    /// Dip of the horizon [deg]: 0.0353 sqrt(height above it in metres).
    [[nodiscard]] double dip_deg() const;
};

/// The record of an observer at the Earth's centre.
[[nodiscard]] SOLSYS_API OBSERVER earth_centre();

/// "51.5,-0.1", "51.5N,0.1W", "51:30:00,-0:07:00", "51d30m N, 0d7m W", each with a height in
/// metres after it: ",120".
SOLSYS_API Result<Site> parse_site(std::string_view text);

/// A city by any of its names, with or without accents, alone ("München", "LA") or with country
/// and region ("Springfield, IL, US"): of several the most populous.
SOLSYS_API Result<Site> find_city(std::string_view name);
/// All cities of that name, the most populous first.
SOLSYS_API std::vector<Site> cities_called(std::string_view name);

/// "69.60° N"; with `east_west` "18.96° E".
[[nodiscard]] SOLSYS_API std::string coordinate_text(double degrees, bool east_west,
                                                     int decimals = 2);

}  // namespace solsys::sky
