// The published verification sets by the key of their files.
#pragma once

#include <cmath>
#include <map>
#include <stdexcept>
#include <string>

#include "solsys/element_sets.h"
#include "tests/support/named_csv.h"

namespace solsys::test {

const std::string kElementSets = std::string(SOLSYS_TEST_DATA) + "/reference/element_sets/";

// As they were run: the epoch one Julian date in double precision, which is worth up to 4e-6
// km; three sets were altered without a new checksum.
inline const std::map<std::string, TLERecord>& published_sets() {
    static const std::map<std::string, TLERecord> sets = [] {
        std::map<std::string, TLERecord> read;
        for (const NamedRow& row : read_named_csv(kElementSets + "check_elements.csv")) {
            TLEConvert set;
            if (set.Set(row.text("line1").c_str(), row.text("line2").c_str(), true) != 0)
                throw std::runtime_error(row.text("case"));
            TLERecord record = *set.GetRecord();
            const double jd = record.epochDay + record.epochFraction;
            record.epochFraction = jd - record.epochDay;
            read[row.text("case")] = record;
        }
        return read;
    }();
    return sets;
}

}  // namespace solsys::test
