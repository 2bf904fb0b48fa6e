/// \file
/// The typed layer: all its headers.
///
/// Where the classic interface (`solsys.h`) answers to the letter in split Julian dates,
/// radians and output arguments, this one answers what an almanac prints, in types: instants,
/// sites in degrees and metres, bodies by name, `std::optional` or `Result` instead of marks in
/// numbers. Angles are degrees unless a name says otherwise, lengths say their unit.
///
/// Short of memory everything here throws std::bad_alloc, as the containers of the standard
/// library do that it answers with; models and lists serve on afterwards.
#pragma once

#include "solsys/sky/appearance.h"
#include "solsys/sky/approaches.h"
#include "solsys/sky/batch.h"
#include "solsys/sky/body.h"
#include "solsys/sky/chart.h"
#include "solsys/sky/conjunctions.h"
#include "solsys/sky/diary.h"
#include "solsys/sky/earth_rotation.h"
#include "solsys/sky/eclipses.h"
#include "solsys/sky/element_sets.h"
#include "solsys/sky/facts.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/minor_planet_survey.h"
#include "solsys/sky/model.h"
#include "solsys/sky/names.h"
#include "solsys/sky/occultations.h"
#include "solsys/sky/orbits.h"
#include "solsys/sky/passes.h"
#include "solsys/sky/phases.h"
#include "solsys/sky/phenomena.h"
#include "solsys/sky/places.h"
#include "solsys/sky/planet_year.h"
#include "solsys/sky/refraction.h"
#include "solsys/sky/result.h"
#include "solsys/sky/rise_set_days.h"
#include "solsys/sky/risings.h"
#include "solsys/sky/satellites.h"
#include "solsys/sky/search.h"
#include "solsys/sky/site.h"
#include "solsys/sky/tonight.h"
#include "solsys/sky/year.h"
#include "solsys/sky/zone.h"
