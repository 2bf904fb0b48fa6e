// Conjunctions of two bodies: a walk by days, false position at each change of sign.
#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "events/conjunctions/state.h"
#include "events/search/scan.h"

using solsys::conjunctions::BodyPair;
using solsys::search::Bracket;
using solsys::search::Sample;

namespace {

constexpr double kPairStep = 10;  // day
constexpr double kMoonStep = 5;   // day
constexpr double kNear = 0.1;     // rad: from here on in steps of a tenth
constexpr double kPairTolerance = solsys::kArcsec;
constexpr double kMoonTolerance = 10 * solsys::kArcsec;
constexpr double kShortest = 1.1574074074074074e-06;  // day: 0.1 s
constexpr double kAfterEvent = 0.1;                   // day

}  // namespace

bool CSWConjunc::State::next_of_pair(CONJUN& event) {
    const SSO_ID& asked1 = (*request)[0];
    const SSO_ID& asked2 = (*request)[1];
    const BodyPair pair = solsys::conjunctions::ordered(asked1, asked2);
    const double step = pair.has_moon() ? kMoonStep : kPairStep;
    const double tolerance = pair.has_moon() ? kMoonTolerance : kPairTolerance;
    const auto f = [&](double t) { return difference(*model, pair, ecliptic, t); };
    if (span.over()) return false;

    Sample a{span.cursor, f(span.cursor)};
    double days = step;
    while (!span.over() && control.go_on(span) && std::isfinite(a.f)) {
        Sample b{solsys::search::next_instant(span, a.t, days), 0};
        b.f = f(b.t);
        if (a.f * b.f < 0) {
            const Sample root =
                solsys::search::false_position(f, Bracket{a, b}, tolerance, kShortest);
            if (root.t > 0 && std::fabs(root.f) < tolerance) {
                event.time = solsys::search::ut_from_tt(root.t);
                event.separation = separation(*model, pair);
                event.type1 = asked1.type, event.number1 = asked1.number;
                event.type2 = asked2.type, event.number2 = asked2.number;
                span.cursor = std::min(root.t + kAfterEvent, span.end);
                return true;
            }
        }
        days = std::fabs(b.f) < kNear ? 0.1 * step : step;
        a = b;
        span.cursor = a.t;
    }
    return false;
}
