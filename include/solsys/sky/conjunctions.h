/// \file
/// Conjunctions as almanacs print them, and gatherings of several bodies.
///
/// Geocentric apparent places of date (IAU 2006 precession, IAU 1980 nutation). Bodies and
/// stars in any mix. For the Sun, the Moon, the planets and stars the searches are certified:
/// bounds on the motion exclude every interval that is passed over. Other bodies are taken to
/// move by less than 28 degrees a day. Instants are refined to a tenth of a second.
#pragma once

#include <vector>

#include "solsys/export.h"
#include "solsys/sky/body.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

/// What "in conjunction" means.
enum class ConjunctionWay {
    kRightAscension,  ///< equal right ascensions
    kLongitude,       ///< equal ecliptic longitudes
    kClosest          ///< the angle between the two is least, below `closest_limit_deg`
};

/// Two bodies in conjunction.
struct Conjunction {
    Instant at;                 ///< when, in the way asked for
    double separation_deg = 0;  ///< of the centres, as an angle
    double position_angle_deg =
        0;                      ///< of the first body from the second, from north through east
    double elongation_deg = 0;  ///< of the first body from the Sun, positive east
};

/// In order of time. Empty for the same body twice and for what cannot be computed. Moves the
/// model; its observer stays.
SOLSYS_API std::vector<Conjunction> conjunctions(Model& model, const Body& first,
                                                 const Body& second, const Span& span,
                                                 ConjunctionWay way,
                                                 double closest_limit_deg = 10,
                                                 SearchControl* control = nullptr);

/// Several bodies within a small circle.
struct Gathering {
    Instant at;                 ///< when the smallest circle around all of them is least
    double radius_deg = 0;      ///< of that circle
    double ra_deg = 0;          ///< of its centre, of date
    double dec_deg = 0;         ///< likewise
    Span within;                ///< as long as they stay within the limit
    double elongation_deg = 0;  ///< of the centre from the Sun, positive east
};

/// Every stretch during which two or more bodies stay within a circle of this radius, with its
/// least circle. None is passed over: no circle shrinks faster than its fastest body moves.
SOLSYS_API std::vector<Gathering> gatherings(Model& model, const std::vector<Body>& bodies,
                                             const Span& span, double limit_deg,
                                             SearchControl* control = nullptr);

}  // namespace solsys::sky
