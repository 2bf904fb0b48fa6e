// How a body looks: how bright, how full, how large, and in which constellation.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "apps/solsys/place.h"
#include "apps/solsys/report.h"

namespace app {

// NaN stands for what is not known or has no meaning for the body.
struct Appearance {
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    double magnitude = kNone;  // visual
    double phase_angle_deg = kNone;
    double illuminated_fraction = kNone;
    double elongation_deg = kNone;  // from the Sun, positive east of it
    double angular_diameter_arcsec = kNone;
    std::string constellation;  // IAU abbreviation
};

// At the model's instant, for its observer; `apparent` is the body's place there.
Appearance appearance_of(CSWSolSys& model, const SSO_ID& id, const Place& apparent);

// The same as columns; `in_table` gives the short ones that a table shows a heading.
void add_appearance_columns(std::vector<Column>& columns, bool in_table);
void add_appearance_cells(std::vector<Cell>& row, const Appearance& appearance);

}  // namespace app
