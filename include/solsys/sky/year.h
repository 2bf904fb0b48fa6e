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
    CivilDate date;     ///< of the evening
    Span span;          ///< noon to noon
    double hours = 24;  ///< 23 or 25 when the clocks change
    /// Altitudes of the Sun's centre [deg], geometric, at even steps from noon to noon.
    std::vector<double> sun;
    std::vector<double> moon;     ///< of the Moon's centre, likewise
    double moon_illuminated = 0;  ///< fraction of the disk at midnight
};

/// All nights of a year.
struct NightsOfYear {
    int year = 2000;                 ///< in which their evenings lie
    std::vector<Night> nights;       ///< from January 1 to December 31
    std::vector<PhaseEvent> phases;  ///< of the Moon in that time
};

/// The nights that begin in a year, for the model's site. Empty without a site, or where the
/// Sun or the Moon cannot be computed. \param steps  intervals a night, at least 1
SOLSYS_API NightsOfYear nights_of_year(Model& model, const Zone& zone, int year,
                                       int steps = 48);

}  // namespace solsys::sky
