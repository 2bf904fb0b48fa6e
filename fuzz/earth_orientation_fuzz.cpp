// Any text as tables of the Earth's orientation and of leap seconds, and as packed
// designations.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "io/designations.h"
#include "io/earth_orientation.h"
#include "solsys/solar_system.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static CSWSolSys model;
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::istringstream table(text);
    const auto rows = solsys_io::read_orientation(table).rows;
    model.SetEarthOrientation(rows.data(), static_cast<int>(rows.size()));
    std::istringstream leaps(text);
    const auto seconds = solsys_io::read_leap_seconds(leaps);
    model.SetLeapSeconds(seconds.rows.data(), static_cast<int>(seconds.rows.size()),
                         seconds.valid_until_mjd.value_or(0));
    (void)solsys_io::unpack_number(text), (void)solsys_io::unpack_provisional(text);
    (void)solsys_io::unpack_date(text);
    return 0;
}
