/// \file
/// The observer and located spherical vectors.
#pragma once

#include <cstdint>

/// How an observer's location is given (`OBSERVER::kind`). The same numbers are the frame codes
/// of `CSWSolSys::TransferLocationVec` and `SphCoor`.
enum : std::int8_t {
    LOCATION_BODY = 0,            ///< at the body itself; frame code: its orbit frame
    LOCATION_BODY_FIXED = 1,      ///< offset in the body's frame; also the body's centre
    LOCATION_SURFACE = 2,         ///< on the body's surface
    LOCATION_HELIOCENTRIC = 3,    ///< heliocentric, ecliptic and equinox of date
    LOCATION_GALACTIC = 4,        ///< frame code only
    LOCATION_GALACTIC_SUN = 5,    ///< frame code only
    LOCATION_GALACTOCENTRIC = 6,  ///< galactocentric, galactic axes
    LOCATION_ECLIPTIC_2K = 7,     ///< frame code only: J2000 ecliptic
    LOCATION_EQUATOR_CUR = 8,     ///< frame code only: true equator and equinox of date
    LOCATION_EQUATOR_2K = 9       ///< frame code only: J2000 equator
};

/// The observer's location. `CSWSolSys::SetObserver` tells what comes of a body that is not
/// known and of numbers that are not finite.
struct OBSERVER {
    std::uint8_t lead = 0;                   ///< carried, not interpreted
    std::int8_t kind = LOCATION_BODY_FIXED;  ///< one of the constants above
    std::int32_t body_type = 0;    ///< type code of the body observed from, as in SSO_ID
    std::int32_t body_number = 0;  ///< its number
    /// Spherical kinds: distance [au], longitude [rad], latitude [rad]. Surface: height above
    /// the ellipsoid, east longitude [rad], planetographic latitude [rad]. The height is in au
    /// for `CSWSolSys` and in km for `CSWVisibility`, which converts it for the model.
    double location[3] = {0, 0, 0};
    bool gravity = true;  ///< kept by the model, see CSWSolSys::setUseGravityForRNB
};

/// A location in spherical form, with the frame it is expressed in.
struct SphCoor {
    double location[3] = {0, 0, 0};           ///< as OBSERVER::location, by the frame code
    std::int8_t frame = LOCATION_EQUATOR_2K;  ///< frame code: one of the constants above
};
