// Observed orientation of the Earth: UT1 - UTC and polar motion, as the IERS publishes them.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "frames/leap_seconds.h"
#include "solsys/earth_rotation.h"

namespace solsys {

// Rows put in order, ready to be interpolated.
class OrientationTable {
  public:
    // What was wrong with the rows is told in the answer; usable ones are taken all the same.
    EarthOrientationReport set(std::span<const EarthOrientationRow> rows,
                               const LeapSeconds& leap_seconds);
    [[nodiscard]] bool empty() const { return rows_.empty(); }

    // Values at an instant by the four rows around it (at an end of the table or of a hole: the
    // nearest four, or as many as there are on this side). Empty outside the span and inside a
    // hole.
    [[nodiscard]] std::optional<EarthOrientationRow> at(double mjd_utc,
                                                        const LeapSeconds& leap_seconds) const;

  private:
    std::vector<EarthOrientationRow>
        rows_;  // ut1_minus_utc holds UT1 - TAI, which has no steps
};

}  // namespace solsys
