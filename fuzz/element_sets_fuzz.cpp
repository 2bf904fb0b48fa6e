// Any text as element sets: lines, or messages as JSON or CSV. What is read has a model or is
// refused, and the model's states are finite.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "solsys/element_sets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<TLERecord> sets;
    std::vector<TLEFault> faults;
    TLEConvert::Read(reinterpret_cast<const char*>(data), size, &sets, &faults, size % 2 != 0);
    for (const TLERecord& record : sets) {
        TLEConvert set;
        if (set.Set(record) != 0) continue;
        for (const double minutes : {0.0, -1e4, 1e5}) {
            double state[6];
            const int code = set.GetState(minutes, state);
            if (code != TLE_OK && code != TLE_DECAYED) continue;
            for (const double x : state)
                if (!std::isfinite(x)) std::abort();
        }
    }
    return 0;
}
