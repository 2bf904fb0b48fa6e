// The Moon's perigees and apogees.
#pragma once

#include <deque>
#include <limits>

#include "events/diary/geocentric_sky.h"
#include "events/search/control.h"
#include "solsys/de_ephemeris.h"

namespace solsys::diary {

// The distance of the centres of Moon and Earth, by the ephemeris that a model has: the file,
// where it reaches, or the built-in theory.
class MoonDistance {
  public:
    explicit MoonDistance(const CSWSolSys& model) : by_file_(model.HasEphemeris()) {}
    // Its rate at an instant (JD TT) [au/day]; NaN when it cannot be computed.
    double rate(double t);

  private:
    bool by_file_;
    DE_EvalState file_;
};

struct Apsis {
    double t = 0;  // JD TT
    bool perigee = false;
};

// The apsides about instants that only grow: extremes of the geometric distance of the centres.
class ApsisWalk {
  public:
    ApsisWalk(CSWSolSys& model, double start);

    // Days from t to the nearest perigee and to the nearest apogee; infinite where there is
    // none to be computed.
    struct Nearest {
        double perigee = std::numeric_limits<double>::infinity();
        double apogee = std::numeric_limits<double>::infinity();
    };
    Nearest nearest(double t);

  private:
    MoonDistance distance_;
    search::Control control_;
    double known_to_;
    std::deque<Apsis> apsides_;  // within a month or so of the last instant
};

// Bound on the second derivative of the rate of the Moon's distance, and its usual size.
constexpr double kMoonDistance3 = 5.6e-6;   // au/day^3
constexpr double kMoonDistanceRate = 2e-5;  // au/day

}  // namespace solsys::diary
