// Tables of the Earth's orientation and of leap seconds as the IERS publishes them.
#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string_view>
#include <vector>

#include "io/problem.h"
#include "solsys/earth_rotation.h"

namespace solsys_io {

// The formats of the IERS that hold UT1 - UTC and the pole.
enum class OrientationFormat {
    kFinals2000A,  // rapid service and prediction, fixed columns: finals2000A.all, .daily,
                   // .data
    kC04,          // EOP 14 C04: year month day MJD x y UT1-UTC ...
    kC04Hours      // EOP 20 C04: year month day hour MJD x y UT1-UTC ...
};

// The format of a data line; empty for headers and whatever else is none.
std::optional<OrientationFormat> orientation_format(std::string_view line);

// One line. Empty without a message: a line that has no UT1 (headers, the far end of
// finals2000A); with one: a line that ought to have.
struct OrientationLine {
    std::optional<EarthOrientationRow> row;
    std::string_view message;
};
OrientationLine parse_orientation(std::string_view line, OrientationFormat format);

// Reads a table in the format of its first data line, row after row in the file's order. Of the
// two bulletins in finals2000A the first (A) is taken, which reaches into the future.
struct OrientationFile {
    std::vector<EarthOrientationRow> rows;
    std::optional<OrientationFormat> format;  // empty: no data line was found
    ReadSummary summary;
};
OrientationFile read_orientation(std::istream& in, const ProblemHandler& on_problem = {});

// A table of leap seconds in the format leap-seconds.list (NTP seconds since 1900, TAI - UTC).
struct LeapSecondFile {
    std::vector<LeapSecond> rows;
    std::optional<double> valid_until_mjd;  // of the line that starts with "#@"
    ReadSummary summary;
};
LeapSecondFile read_leap_seconds(std::istream& in, const ProblemHandler& on_problem = {});

}  // namespace solsys_io
