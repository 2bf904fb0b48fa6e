/// \file
/// What is observed of the Earth's rotation, for the hour angles of the modern reduction.
///
/// \code
///     auto model = Model::open();
///     const auto table = read_earth_orientation("finals2000A.all");
///     if (!table) return complain(table.message());
///     const auto report = set_earth_orientation(*model, *table);
///     if (!report) return complain(report.message());
///     if (const auto text = summary_of(*report); !text.empty()) warn(text);
/// \endcode
#pragma once

#include <string>
#include <vector>

#include "solsys/earth_rotation.h"
#include "solsys/export.h"
#include "solsys/sky/model.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A table as read, with the lines that were skipped and why.
struct EarthOrientationTable {
    std::vector<EarthOrientationRow> rows;  ///< as the file has them
    std::vector<std::string> problems;      ///< lines skipped, at most a hundred
};

/// Reads UT1 - UTC and the pole from a file of the IERS: finals2000A (all, data, daily) or EOP
/// C04 (14 and 20). A Failure for a file that cannot be read or holds no such table.
[[nodiscard]] SOLSYS_API Result<EarthOrientationTable> read_earth_orientation(
    const std::string& path);

/// Gives a table to a model. A Failure for one without usable rows. Holes, disorder and
/// rejected rows are in the answer; outside the span of the table, and inside its holes, what
/// `set_earth_rotation` was given serves, else UT1 as without a table.
SOLSYS_API Result<EarthOrientationReport> set_earth_orientation(
    Model& model, const EarthOrientationTable& table);

/// What was wrong with the rows of a table, in one line for people; empty when nothing was.
[[nodiscard]] SOLSYS_API std::string summary_of(const EarthOrientationReport& report);

/// UT1 - UTC [s] and the pole [arcsec: towards Greenwich, towards 90 degrees west] for every
/// instant that no table answers for. A Failure, and nothing changed, beyond 1 s or 2 arcsec
/// and for what is not finite.
SOLSYS_API Result<bool> set_earth_rotation(Model& model, double ut1_minus_utc_s,
                                           double pole_x_arcsec = 0, double pole_y_arcsec = 0);

/// Gives a model a newer table of leap seconds than the one built in: a file in the format
/// leap-seconds.list. A Failure for a file that cannot be read or is none.
SOLSYS_API Result<bool> set_leap_seconds(Model& model, const std::string& path);

}  // namespace solsys::sky
