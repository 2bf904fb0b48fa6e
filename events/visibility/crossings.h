// When an object passes through altitudes, none missed: rise and set, upper limb and centre,
// the twilights, all in one pass.
//
// The sine of the altitude less that of the level has a second derivative that is bounded: the
// zenith turns by the Earth's rate W about the pole (W^2 cos lat), the object moves before it
// (2 W w cos lat, w its apparent rate), and its own path bends. `search::inside` concludes from
// the bound where no zero can hide; see there. Places come from SitePath; what it cannot decide
// (a passage that grazes the level by less than its error) is decided by the model's own.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "events/search/control.h"
#include "events/visibility/hour_angle.h"

namespace solsys::visibility {

struct Passing {
    double time = 0;  // JD TT
    int level = 0;    // which of the levels asked for
    int sense = 0;    // 1 up, -1 down
    double azimuth = 0;
};

struct Passings {
    std::vector<Passing> list;  // in order of time
    // Of each level: 1 the object is above it at the start of the span, -1 below, 0 it cannot
    // be computed there. Without a passing of a level that is how it stays all the span; with
    // some, each passing tells the side that follows it.
    std::vector<std::int8_t> at_start;
};

// How sharply the sine of an altitude may bend [1/day^2], for a latitude: measured maxima over
// 1960 to 2059 and heights up to 9 km stay below.
double altitude_bound(const SSO_ID& id, double latitude);

// All passings of the levels (at most 16) in the span, to 0.1 s of the altitudes that the model
// gives. The site is the model's observer, on the surface of the Earth; the model is left
// there, at another instant. Passings closer together than a second are not told apart.
//
// An object that cannot be computed has none; where it can only in part (a spacecraft before
// its first epoch), those of that part. Empty for an observer elsewhere. Ends early, with what
// it has, when the host says so.
Passings level_passings(CSWSolSys& model, const SSO_ID& id, std::span<const Level> levels,
                        search::Span span, const search::Control& control);

// The stretches in which an object is above one of the levels of `passings`, within a span.
struct Stretch {
    double from = 0;
    double to = 0;
};
std::vector<Stretch> stretches_above(const Passings& passings, int level,
                                     const search::Span& span);

}  // namespace solsys::visibility
