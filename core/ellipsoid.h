// Ellipsoids of revolution: the figure that heights and geodetic latitudes are counted from.
#pragma once

#include <cmath>

#include "core/angles.h"
#include "core/linalg.h"
#include "core/sin_cos.h"

namespace solsys {

struct Ellipsoid {
    double radius;      // equatorial
    double flattening;  // 1 - polar radius / equatorial radius

    [[nodiscard]] constexpr double polar_radius() const { return radius * (1 - flattening); }
    [[nodiscard]] constexpr double eccentricity_squared() const {
        return (2 - flattening) * flattening;
    }
    // From a point of the surface along its normal to the axis, by the sine of its geodetic
    // latitude: the radius of curvature in the prime vertical.
    [[nodiscard]] double normal_to_axis(double sin_lat) const {
        return radius / std::sqrt(1 - eccentricity_squared() * sin_lat * sin_lat);
    }
};

// Height above the ellipsoid in the unit of its radius, east longitude, geodetic
// (planetographic) latitude [rad].
struct Geodetic {
    double height, lon, lat;
};

// Body-fixed Cartesian coordinates, z axis to the north pole, x axis to the prime meridian.
// Heiskanen & Moritz 1967, Physical Geodesy.
inline Vec3 cartesian(const Ellipsoid& figure, double height, SinCos lon, SinCos lat) {
    const double n = figure.normal_to_axis(lat.sin);
    const double to_axis = (n + height) * lat.cos;
    return {to_axis * lon.cos, to_axis * lon.sin,
            ((1 - figure.eccentricity_squared()) * n + height) * lat.sin};
}
inline Vec3 cartesian(const Ellipsoid& figure, const Geodetic& place) {
    return cartesian(figure, place.height, {std::sin(place.lon), std::cos(place.lon)},
                     {std::sin(place.lat), std::cos(place.lat)});
}

// Geocentric (planetocentric) latitude of a point of the surface, from the geodetic, and back:
// tan(geocentric) = (1 - f)^2 tan(geodetic).
inline double geocentric_latitude(const Ellipsoid& figure, double geodetic) {
    const double k = 1 - figure.flattening;
    return std::atan2(k * k * std::sin(geodetic), std::cos(geodetic));
}
inline double geodetic_latitude(const Ellipsoid& figure, double geocentric) {
    const double k = 1 - figure.flattening;
    return std::atan2(std::sin(geocentric), k * k * std::cos(geocentric));
}

// The way back from Cartesian coordinates. `iterations` is -1 where the corrections of the
// latitude stopped shrinking (deep inside the body); the place is then the last one found.
struct GeodeticFix {
    Geodetic place;
    int iterations;
};
GeodeticFix geodetic(const Ellipsoid& figure, Vec3 v);

}  // namespace solsys
