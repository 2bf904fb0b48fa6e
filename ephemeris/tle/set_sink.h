// Where the readers put what they find.
#pragma once

#include <vector>

#include "solsys/element_sets.h"

namespace solsys {

struct SetSink {
    std::vector<TLERecord>* sets;
    std::vector<TLEFault>* faults;  // may be null

    static constexpr std::size_t kMostFaults = 1000;

    // A record that was read, or why not; `line` of the text replaces that of the fault.
    void take(const TLERecord& record, TLEFault fault, int line) {
        if (fault.code == TLE_FAULT_NONE) return sets->push_back(record);
        fault.line = line;
        if (faults != nullptr && faults->size() < kMostFaults) faults->push_back(fault);
    }
};

}  // namespace solsys
