// The DE file that the process has open.
#pragma once

#include <atomic>
#include <cstdint>

#include "platform/mapped_file.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

struct OpenDeFile {
    MappedFile mapping;
    const double* records = nullptr;  // start of the mapping: null when closed
    double time_range[2] = {0, 0};    // Julian dates of the header, for the host to see
    double last_jd = 0;               // end of the last record, where evaluation ends
    DEHeader header;                  // checked: its numbers fit the mapping
    std::int64_t count = 0;           // data records
    double per_span = 0;              // 1/span [1/day]
    double per_au = 0;                // 1/au [1/km]
    double moon_share = 0;            // of the Moon's mass in the Earth-Moon system
    std::uint32_t generation = 0;     // counts openings and closings
    std::atomic<bool> replacing{false};
};

extern OpenDeFile de_file;

// Data records of a checked header. Its dates may go a part of a record beyond the last one.
inline std::int64_t data_records(const DEHeader& header) {
    return static_cast<std::int64_t>((header.end_jd - header.start_jd) / header.span);
}

}  // namespace solsys
