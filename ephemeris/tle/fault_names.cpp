#include <iterator>

#include "solsys/element_sets.h"

const char* TLEFaultName(int code) {
    constexpr const char* kNames[] = {
        "none",        "characters",     "length",          "line_number",
        "checksum",    "separator",      "number",          "classification",
        "designator",  "epoch_year",     "epoch_day",       "derivative",
        "drag",        "ephemeris_type", "set_number",      "inclination",
        "node",        "eccentricity",   "perigee",         "anomaly",
        "mean_motion", "revolution",     "number_mismatch", "range",
        "key",         "fields",         "syntax"};
    static_assert(std::size(kNames) == TLE_FAULT_SYNTAX + 1);
    return code >= 0 && code <= TLE_FAULT_SYNTAX ? kNames[code] : "unknown";
}
