// The DE file that the process has open.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/mapped_file.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

// A mapped file and what its evaluation needs; nothing of it changes once it is published. The
// evaluation states that read from it own it together with the process: a file that has been
// replaced stays mapped until the last of them has let go.
struct DeFile {
    MappedFile mapping;
    const double* records = nullptr;  // start of the mapping
    double last_jd = 0;               // end of the last record, where evaluation ends
    DEHeader header;                  // checked: its numbers fit the mapping
    std::int64_t count = 0;           // data records
    double start_day = 0;             // of header.start_jd: whole days and the rest
    double start_fraction = 0;
    double per_span = 0;    // 1/span [1/day]
    double per_au = 0;      // 1/au [1/km]
    double moon_share = 0;  // of the Moon's mass in the Earth-Moon system
};

struct OpenDeFile {
    double time_range[2] = {0, 0};  // Julian dates of the header, for the host to see
    std::atomic<std::uint32_t> generation{0};  // counts openings and closings
    std::atomic<bool> replacing{false};
};

extern OpenDeFile de_file;

// The open file, or null; one more owner of it.
std::shared_ptr<const DeFile> current_de_file();

// Whether a file is mapped.
bool de_file_is_open();

// Data records of a checked header. Its dates may go a part of a record beyond the last one.
inline std::int64_t data_records(const DEHeader& header) {
    return static_cast<std::int64_t>((header.end_jd - header.start_jd) / header.span);
}

}  // namespace solsys
