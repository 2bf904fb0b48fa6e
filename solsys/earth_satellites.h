// The satellites of the Earth that a model has element sets of.
#pragma once

#include <memory>

#include "ephemeris/tle/element_set.h"
#include "solsys/object_table.h"

namespace solsys {

struct EarthSatellite {
    TLERecord record;
    PreparedElements set;
};

using EarthSatellites = FlatTable<std::unique_ptr<EarthSatellite>>;

// Null: not there.
inline const EarthSatellite* find_satellite(const EarthSatellites& table, std::uint64_t key) {
    const auto* found = table.find(key);
    return found != nullptr ? found->get() : nullptr;
}

}  // namespace solsys
