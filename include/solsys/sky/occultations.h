/// \file
/// Stars and planets covered by the Moon, for a site.
///
/// The Moon is its mean limb, a circle of 1737.4 km: its mountains shift contacts by some
/// seconds (near-grazing ones by more). Certified: no listed star or planet that comes within
/// reach of the Moon's limb is passed over.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

/// One contact. Planets have two at either limb: first the one, then the other edge of the
/// disk.
struct LunarOccultation {
    /// What happens to the body.
    enum class Contact {
        kDisappears,         ///< the star; the planet's last edge
        kReappears,          ///< the star; the planet's first edge
        kBeginsToDisappear,  ///< the planet's first edge
        kHasReappeared       ///< the planet's last edge
    };
    Instant at;                              ///< of the contact, to 0.1 s for the mean limb
    Body body;                               ///< the star or planet
    Contact contact = Contact::kDisappears;  ///< which contact
    double magnitude = 99;                   ///< 99: not known
    /// Of the contact on the Moon's limb, from north through east [0, 360).
    double position_angle_deg = 0;
    /// Along the limb from the nearer cusp, positive on the dark side.
    double cusp_angle_deg = 0;
    bool north_cusp = true;  ///< whether the nearer cusp is the northern one
    bool dark_limb = true;   ///< whether the contact is on the limb that the Sun does not light
    /// The path cuts the mean limb less than 10 arcsec deep: mountains may decide.
    bool graze = false;
    double moon_altitude_deg = 0;  ///< of its centre, geometric
    double moon_azimuth_deg = 0;   ///< from north through east
    double sun_altitude_deg = 0;   ///< of its centre, geometric
    double moon_illuminated = 0;   ///< fraction of the disk
};
/// "disappears", "reappears", "begins to disappear", "has reappeared".
SOLSYS_API const char* to_string(LunarOccultation::Contact contact);

/// What is looked for.
struct OccultationOptions {
    double faintest_star = 5;  ///< of the built-in list, which ends at 5.0
    bool planets = true;       ///< Mercury to Neptune, and Pluto
    /// Leave out what the Moon below the horizon, or daylight, hides: stars need the Sun below
    /// -6 degrees (those brighter than 1.5, and planets, below 0) or they are left out.
    bool observable_only = true;
};

/// In order of time, for the model's site. Empty without a site. Moves the model's instant and
/// leaves it where it was.
SOLSYS_API std::vector<LunarOccultation> lunar_occultations(
    Model& model, const Span& span, const OccultationOptions& options = {},
    SearchControl* control = nullptr);

}  // namespace solsys::sky
