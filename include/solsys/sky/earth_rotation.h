/// \file
/// Published tables of the Earth's rotation, for the hour angles of the modern reduction.
#pragma once

#include <string>
#include <vector>

#include "solsys/earth_rotation.h"
#include "solsys/export.h"
#include "solsys/sky/model.h"
#include "solsys/sky/result.h"

namespace solsys::sky {

/// A table as read; `problems` names the lines that were skipped, and why.
struct EarthOrientationTable {
    std::vector<EarthOrientationRow> rows;
    std::vector<std::string> problems;
};

/// Reads UT1 - UTC and the pole from a file of the IERS: finals2000A (all, data, daily) or EOP
/// C04 (14 and 20). A Failure for a file that cannot be read or holds no such table.
[[nodiscard]] SOLSYS_API Result<EarthOrientationTable> read_earth_orientation(
    const std::string& path);

/// Gives a table to a model. A Failure for one without usable rows; holes, disorder and
/// rejected rows are in the answer, and what serves in their place is documented with
/// `CSWSolSys::SetEarthOrientation`.
SOLSYS_API Result<EarthOrientationReport> set_earth_orientation(
    Model& model, const EarthOrientationTable& table);

}  // namespace solsys::sky
