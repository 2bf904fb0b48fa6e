// What risings and their days by a clock are made of: the passages of a body through altitudes
// and the meridian of a site.
#pragma once

#include <span>
#include <vector>

#include "events/visibility/crossings.h"
#include "solsys/sky/risings.h"

namespace solsys::sky {

// Empty for a body that cannot be computed. The model's own site and instant come back. Both
// searches end early, with what they have, when the control says so.
visibility::Passings passings(Model& model, const Site& site, const Body& body,
                              std::span<const Altitude> altitudes, const Span& span,
                              const search::Control& control = {});

// An upper transit, wherever the body is then.
struct Culmination {
    double jd_tt = 0;
    double altitude_deg = 0;  // without refraction
};
std::vector<Culmination> culminations(Model& model, const Site& site, const Body& body,
                                      const Span& span, const search::Control& control = {});

}  // namespace solsys::sky
