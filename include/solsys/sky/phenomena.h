/// \file
/// Phenomena of the great satellites of Jupiter and Saturn.
///
/// Seen from the Earth's centre, light time included. An instant is that of the satellite's
/// centre (or of the centre of its shadow) on the limb of the planet's ellipsoid as seen from
/// the Earth (occultations, transits) or from the centre of the Sun (eclipses, shadow
/// transits): the middle of the minutes that the satellite takes. Certified: a bound on each
/// satellite's motion excludes every interval that is passed over.
#pragma once

#include <string>
#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

/// A satellite's beginning or end of a transit, an occultation, an eclipse.
struct SatellitePhenomenon {
    /// What happens to it.
    enum class Kind {
        kTransit,            ///< the satellite before the planet's disk
        kShadowTransit,      ///< its shadow on the disk
        kOccultation,        ///< behind the disk
        kEclipse,            ///< in the planet's shadow
        kMutualOccultation,  ///< another satellite before it
        kMutualEclipse       ///< in another satellite's shadow (penumbra)
    };
    Instant at;                  ///< as seen from the Earth's centre
    Kind kind = Kind::kTransit;  ///< what
    bool begins = true;          ///< or ends
    /// Not to be seen: an occultation of a satellite in the shadow, an eclipse of one behind
    /// the disk.
    bool hidden = false;
    Body moon;   ///< that it happens to
    Body other;  ///< mutual: the one that occults or casts the shadow
};

/// "transit", "shadow transit", "occultation", "eclipse" ...
SOLSYS_API const char* to_string(SatellitePhenomenon::Kind kind);

/// In order of time: Io, Europa, Ganymede and Callisto (Jupiter), Tethys, Dione, Rhea and Titan
/// (Saturn). Empty for other planets. With `mutual` also those of the satellites among each
/// other, which happen in seasons of some months around the planet's equinoxes. Moves the
/// model; its observer stays.
SOLSYS_API std::vector<SatellitePhenomenon> satellite_phenomena(
    Model& model, const Body& planet, const Span& span, bool mutual = false,
    SearchControl* control = nullptr);

}  // namespace solsys::sky
