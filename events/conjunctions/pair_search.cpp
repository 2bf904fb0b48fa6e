// Conjunctions of two bodies: a walk by days, false position at each change of sign.
#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "events/conjunctions/state.h"
#include "solsys/time_scales.h"

using solsys::conjunctions::Pair;

namespace {

constexpr double kStep = 10;     // day
constexpr double kMoonStep = 5;  // day
constexpr double kNear = 0.1;    // rad: from here on in steps of a tenth
constexpr double kTolerance = solsys::kArcsec;
constexpr double kMoonTolerance = 10 * solsys::kArcsec;
constexpr double kShortest = 1.1574074074074074e-06;  // day: 0.1 s
constexpr double kAfterEvent = 0.1;                   // day
constexpr int kMaxPasses = 1000;

struct Sample {
    double t, f;
};

// False position between two samples of opposite signs. The last sample: where |f| is below the
// tolerance, or the bracket too short. Time -1 when the signs agree.
template <class Function>
Sample false_position(Function&& f, Sample a, Sample b, double tolerance) {
    if (a.f * b.f > 0) return {-1, a.f};
    Sample s{-1, a.f};
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        s.t = (a.f * b.t - b.f * a.t) / (a.f - b.f);
        s.f = f(s.t);
        if (!(std::fabs(s.f) >= tolerance)) break;
        (a.f * s.f > 0 ? a : b) = s;
        if (std::fabs(b.t - a.t) <= kShortest) break;
    }
    return s;
}

}  // namespace

bool CSWConjunc::State::next_of_pair(CONJUN& event) {
    const SSO_ID& asked1 = (*request)[0];
    const SSO_ID& asked2 = (*request)[1];
    const Pair pair = solsys::conjunctions::ordered(asked1, asked2);
    const double step = pair.has_moon() ? kMoonStep : kStep;
    const double tolerance = pair.has_moon() ? kMoonTolerance : kTolerance;
    const auto f = [&](double t) { return difference(*model, pair, ecliptic, t); };

    Sample a{cursor, runs() ? f(cursor) : 0};
    double days = step;
    while (a.t < end && !stopped && std::isfinite(a.f)) {
        Sample b{std::min(a.t + days, end), 0};
        if (!(b.t > a.t)) break;  // a step that is lost in the date's rounding
        b.f = f(b.t);
        if (a.f * b.f < 0) {
            const Sample root = false_position(f, a, b, tolerance);
            if (root.t > 0 && std::fabs(root.f) < tolerance) {
                event.time = root.t - ET_UT::Get(0, root.t) / solsys::kSecondsPerDay;
                event.separation = separation(*model, pair);
                event.type1 = asked1.type, event.number1 = asked1.number;
                event.type2 = asked2.type, event.number2 = asked2.number;
                cursor = std::min(root.t + kAfterEvent, end);
                return true;
            }
        }
        days = std::fabs(b.f) < kNear ? 0.1 * step : step;
        a = b;
        cursor = a.t;
    }
    return false;
}
