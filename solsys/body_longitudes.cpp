// How the maps of a body count longitude.
#include <cmath>

#include "core/constants.h"
#include "solsys/solar_system.h"
#include "solsys/toolkit.h"

namespace {

enum class Longitude { kEast, kWest, kSigned };

Longitude convention(const SSO_ID& body) {
    if (body.type != SSO_PLNT && body.type != SSO_MOON) return Longitude::kEast;
    const std::int32_t n = body.number;
    if (n == 3 || n == 301) return Longitude::kSigned;
    const bool west_planet = n == 1 || (n >= 4 && n <= 6) || n == 8;
    const bool west_satellite =
        (n >= 401 && n <= 699 && n % 100 != 0) || (n >= 802 && n <= 899);
    return west_planet || west_satellite ? Longitude::kWest : Longitude::kEast;
}

constexpr short kFullCircle = 0;  // modes of Rad2GMS
constexpr short kSignedLongitude = 1;
constexpr short kLatitude = 2;

}  // namespace

char LonLatForObjects(const SSO_ID* body, double longitude, double latitude, GMSAngle* lon_out,
                      GMSAngle* lat_out) {
    if (lon_out == nullptr || lat_out == nullptr) return '\0';
    Rad2GMS(latitude, lat_out, kLatitude);
    if (body == nullptr || body->number == -1) {
        const double shown = longitude < 0.0 ? solsys::kTwoPi - longitude : longitude;
        Rad2GMS(shown, lon_out, kFullCircle);
        return '\0';
    }
    lat_out->sign = latitude < 0.0 ? 'S' : 'N';
    switch (convention(*body)) {
        case Longitude::kSigned:
            Rad2GMS(longitude, lon_out, kSignedLongitude);
            lon_out->sign = std::remainder(longitude, solsys::kTwoPi) < 0.0 ? 'W' : 'E';
            break;
        case Longitude::kWest:
            Rad2GMS(-longitude, lon_out, kFullCircle);
            lon_out->sign = 'W';
            break;
        case Longitude::kEast:
            Rad2GMS(longitude, lon_out, kFullCircle);
            lon_out->sign = 'E';
            break;
    }
    return lon_out->sign;
}
