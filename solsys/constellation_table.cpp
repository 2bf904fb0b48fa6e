#include "solsys/constellation_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "core/constants.h"

namespace solsys {
namespace {

struct BoundaryLine {
    double ra_low_h, ra_up_h, dec_low_deg;
    int con_index;
    const char* con;
};
constexpr BoundaryLine kBoundaryLines[] = {
#include "constellation_boundaries.inc"
};

// A direction with ra_low <= ra < ra_up and dec >= dec_low [rad] belongs to the first zone that
// holds it.
struct Zone {
    double ra_low, ra_up, dec_low;
    std::uint8_t constellation;
};

constexpr std::size_t kZoneCount = 357;
static_assert(std::size(kBoundaryLines) == kZoneCount);

constexpr auto kZones = [] {
    std::array<Zone, kZoneCount> zones{};
    for (std::size_t i = 0; i < kZoneCount; ++i) {
        zones[i] = {kBoundaryLines[i].ra_low_h * (kPi / 12.0),
                    kBoundaryLines[i].ra_up_h * (kPi / 12.0),
                    kBoundaryLines[i].dec_low_deg * kDegree,
                    static_cast<std::uint8_t>(kBoundaryLines[i].con_index)};
    }
    return zones;
}();

// Zones descend in declination, so those that lie wholly above a direction are skipped: the
// first zone worth trying is tabulated for bands of declination.
constexpr int kBands = 360;
constexpr int kNorthern = kBands / 2;  // the first band north of the equator
constexpr double kBandsPerRadian = kBands / kPi;

constexpr auto kFirstZone = [] {
    std::array<std::uint16_t, kBands + 1> first{};
    for (int band = 0; band <= kBands; ++band) {
        const double top = (band + 1 - kNorthern) / kBandsPerRadian;
        std::size_t zone = 0;
        while (zone + 1 < kZoneCount && kZones[zone].dec_low > top) ++zone;
        first[static_cast<std::size_t>(band)] = static_cast<std::uint16_t>(zone);
    }
    return first;
}();

static_assert([] {
    for (std::size_t i = 1; i < kZoneCount; ++i) {
        if (kZones[i].dec_low > kZones[i - 1].dec_low) return false;
    }
    return true;
}());

}  // namespace

unsigned char constellation_of(double ra, double dec) {
    if (!std::isfinite(ra) || !std::isfinite(dec)) return kNoConstellation;
    dec = std::clamp(dec, -kHalfPi, kHalfPi);  // a pole rounded outwards is still the pole
    if (ra < 0 || ra >= kTwoPi) {
        ra = std::fmod(ra, kTwoPi);
        if (ra < 0) ra += kTwoPi;
        if (ra >= kTwoPi) ra = 0;  // a tiny negative angle rounds to a whole turn
    }

    const auto band = static_cast<std::size_t>(dec * kBandsPerRadian + kNorthern);
    for (std::size_t i = kFirstZone[band]; i < kZoneCount; ++i) {
        const Zone& zone = kZones[i];
        if (dec >= zone.dec_low && ra >= zone.ra_low && ra < zone.ra_up) {
            return zone.constellation;
        }
    }
    return kNoConstellation;
}

}  // namespace solsys
