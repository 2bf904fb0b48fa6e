// Which record of a DE file holds an instant.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "core/instant.h"
#include "ephemeris/de/open_file.h"

namespace solsys {

constexpr int kHeaderRecords = 2;

struct RecordPlace {
    const double* record = nullptr;
    std::int64_t number = 0;
    double within = 0;  // 0 to 1
};

// Number of the record of a record time. The end of the file's span belongs to the last record.
inline std::int64_t record_number(const DeFile& file, double record_time) {
    return std::min(static_cast<std::int64_t>(record_time), file.count - 1);
}

// Days of a split instant from the start of the file to the start of a record, and from there
// to the instant; the whole days of both are subtracted exactly.
inline double days_into_record(const DeFile& file, Instant t, std::int64_t record) {
    const double record_start = static_cast<double>(record) * file.header.span;
    return ((t.day - file.start_day) - record_start) + (t.fraction - file.start_fraction);
}

// Day and fraction are never added. Empty outside the file's range and for NaN.
inline std::optional<RecordPlace> locate(const DeFile& file, Instant t) {
    const double jd = t.jd();
    if (!(jd >= file.header.start_jd && jd <= file.last_jd)) return std::nullopt;  // NaN too
    // The sum says which record it is, unless it rounds across the start of one.
    std::int64_t record = record_number(file, (jd - file.header.start_jd) * file.per_span);
    double within = days_into_record(file, t, record) * file.per_span;
    if (within < 0 && record > 0) within = days_into_record(file, t, --record) * file.per_span;
    return RecordPlace{file.records + (record + kHeaderRecords) * file.header.ncoeff, record,
                       std::clamp(within, 0.0, 1.0)};
}

}  // namespace solsys
