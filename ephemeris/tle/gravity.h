// Constants of the Earth's gravity that element sets are made with.
#pragma once

#include <cmath>

namespace solsys {

struct GravityConstants {
    double mu;  // km^3/s^2
    double radius_km;
    double j2, j3, j4;

    // sqrt(mu) in equatorial radii and minutes.
    [[nodiscard]] double ke() const {
        return 60 / std::sqrt(radius_km * radius_km * radius_km / mu);
    }
};

// World Geodetic System 1972, which published sets are made with, and 1984.
constexpr GravityConstants kWgs72{398600.8, 6378.135, 0.001082616, -0.00000253881,
                                  -0.00000165597};
constexpr GravityConstants kWgs84{398600.5, 6378.137, 0.00108262998905, -0.00000253215306,
                                  -0.00000161098761};

}  // namespace solsys
