/// \file
/// A year's nights at a site: darkness, twilight and Moon, as a picture or a table wants them.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/phases.h"
#include "solsys/sky/zone.h"

namespace solsys::sky {

/// From the noon of a date to the next noon by the clock of the zone.
struct Night {
    CivilDate date;  ///< of the evening
    Span span;
    double hours = 24;  ///< 23 or 25 when the clocks change
    /// Altitudes of the centres of Sun and Moon [deg], geometric, at even steps from noon to
    /// noon.
    std::vector<double> sun, moon;
    double moon_illuminated = 0;  ///< at midnight
};

struct NightsOfYear {
    int year = 2000;
    std::vector<Night> nights;
    std::vector<PhaseEvent> phases;
};

/// The nights that begin in a year, for the model's site. Empty without a site, or where the
/// Sun or the Moon cannot be computed. \param steps  intervals a night, at least 1
SOLSYS_API NightsOfYear nights_of_year(Model& model, const Zone& zone, int year,
                                       int steps = 48);

}  // namespace solsys::sky
