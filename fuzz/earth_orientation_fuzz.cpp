// Any text as tables of the Earth's orientation and of leap seconds, and as packed
// designations.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "frames/leap_seconds.h"
#include "frames/orientation_table.h"
#include "io/designations.h"
#include "io/earth_orientation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream leaps(text);
    const auto seconds = solsys_io::read_leap_seconds(leaps);
    std::vector<solsys::LeapSecondRow> steps;
    for (const LeapSecond& row : seconds.rows)
        steps.push_back({row.mjd_utc, row.tai_minus_utc, 0, 0});
    solsys::LeapSeconds leap_seconds;
    leap_seconds.replace(steps, seconds.valid_until_mjd.value_or(0));
    std::istringstream lines(text);
    const auto rows = solsys_io::read_orientation(lines).rows;
    solsys::OrientationTable table;
    table.set(rows, leap_seconds);
    for (const EarthOrientationRow& row : rows) {
        (void)table.at(row.mjd_utc, leap_seconds);
        (void)table.at(row.mjd_utc + 0.3, leap_seconds);
    }
    (void)solsys_io::unpack_number(text), (void)solsys_io::unpack_provisional(text);
    (void)solsys_io::unpack_date(text);
    return 0;
}
