/// \file
/// The identifier of every object the library knows.
#pragma once

#include <cstdint>

#include "solsys/export.h"

/// A four-character type code, first character in the most significant byte.
constexpr std::int32_t SSO_TYPE(const char (&code)[5]) {
    return static_cast<std::int32_t>(
        static_cast<std::uint32_t>(code[0]) << 24 | static_cast<std::uint32_t>(code[1]) << 16 |
        static_cast<std::uint32_t>(code[2]) << 8 | static_cast<std::uint32_t>(code[3]));
}

/// \name Type codes
/// The comment says which number goes with the type.
/// @{
constexpr std::int32_t SSO_PLNT =
    SSO_TYPE("plnt");  ///< 1-9 planets, 10 Sun, 11-14 dwarf planets
constexpr std::int32_t SSO_MOON = SSO_TYPE("moon");  ///< planet x 100 + satellite; 301 the Moon
constexpr std::int32_t SSO_ASTR = SSO_TYPE("astr");  ///< asteroid by orbital elements
constexpr std::int32_t SSO_COMT = SSO_TYPE("comt");  ///< comet by orbital elements
constexpr std::int32_t SSO_FAST = SSO_TYPE("fAST");  ///< asteroid, numerically integrated
constexpr std::int32_t SSO_FCOM = SSO_TYPE("fCOM");  ///< comet, numerically integrated
constexpr std::int32_t SSO_SCFT = SSO_TYPE("scft");  ///< spacecraft by element records
constexpr std::int32_t SSO_USCO = SSO_TYPE("uSCO");  ///< user's object given by a state vector
constexpr std::int32_t SSO_FSCO = SSO_TYPE("fSCO");  ///< user's object, integrated
constexpr std::int32_t SSO_TLE = SSO_TYPE("TLE_");   ///< Earth satellite by two-line elements
constexpr std::int32_t SSO_STAR = SSO_TYPE("star");  ///< star
constexpr std::int32_t SSO_USTR = SSO_TYPE("uSTR");  ///< user's star
constexpr std::int32_t SSO_UDSO = SSO_TYPE("uDSO");  ///< user's deep-sky object
constexpr std::int32_t SSO_GALA = SSO_TYPE("gala");  ///< galaxy
constexpr std::int32_t SSO_DSNV = SSO_TYPE("dsnv");  ///< other deep-sky object
constexpr std::int32_t SSO_NEBU = SSO_TYPE("nebu");  ///< nebula
constexpr std::int32_t SSO_CNST = SSO_TYPE("cnst");  ///< constellation
constexpr std::int32_t SSO_CLST = SSO_TYPE("clst");  ///< star cluster
constexpr std::int32_t SSO_LETN = SSO_TYPE("letn");  ///< label of the host
constexpr std::int32_t SSO_MESH = SSO_TYPE("mesh");  ///< shape model of the host
/// @}

/// Identifier of an object: type and number. The name and the two spare words travel with it
/// and take no part in comparisons.
class SSO_ID {
  public:
    std::int32_t type = 0;     ///< four-character code, see above
    std::int32_t number = 0;   ///< number within the type
    std::uint32_t spare1 = 0;  ///< the host's own; zero in what the library builds
    char name[80] = {};        ///< NUL-terminated; empty in what the library builds
    std::uint32_t spare2 = 0;  ///< the host's own; zero in what the library builds

    SSO_ID() = default;  ///< type and number 0
    /// The object of a type and number, without a name.
    SSO_ID(std::int32_t type_code, std::int32_t object_number)
        : type(type_code), number(object_number) {}
    /// Copies at most 79 characters of the name; a longer one (no NUL within the array) is cut
    /// there, after "SSOName too short\n" on standard output.
    SOLSYS_API SSO_ID(const SSO_ID& other);
    /// As the copy constructor.
    SOLSYS_API SSO_ID& operator=(const SSO_ID& other);
    ~SSO_ID() = default;

    /// The order of tables: by type code, then by number, both signed.
    friend bool operator<(const SSO_ID& a, const SSO_ID& b) {
        return a.type != b.type ? a.type < b.type : a.number < b.number;
    }
    /// Equal type and number.
    friend bool operator==(const SSO_ID& a, const SSO_ID& b) {
        return a.type == b.type && a.number == b.number;
    }
};
