// Any bytes as a compiled zone file: what is accepted answers an offset at every instant.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "sky/zone_rules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto rules = solsys::sky::read_zone_file({reinterpret_cast<const char*>(data), size});
    if (!rules) return 0;
    for (const long long t :
         {std::numeric_limits<long long>::min(), -62135596800LL, 0LL, 1800000000LL,
          253402300800LL, std::numeric_limits<long long>::max()})
        if (std::abs(static_cast<long long>(rules->offset_at(t))) > 200LL * 3600) std::abort();
    return 0;
}
