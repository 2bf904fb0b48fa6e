#include "io/fields.h"

#include "core/calendar.h"

namespace solsys_io {

std::optional<double> julian_date(int year, int month, int day) {
    // Four digits are what the formats hold.
    if (year < -4712 || year > 9999 || !solsys::exists({year, month, day})) return std::nullopt;
    return static_cast<double>(solsys::day_number({year, month, day})) - 0.5;
}

}  // namespace solsys_io
