// The zeros of a function of time whose second derivative is bounded: none is missed.
#pragma once

#include <cmath>

#include "events/search/scan.h"

namespace solsys::search {

// The narrowest interval that is looked into [day]: of zeros closer together than this an even
// number is not seen, and of an odd number one is.
constexpr double kNarrowest = kSecond;

// What the bound says about f between two samples.
enum class Inside {
    kNothing,  // no zero
    kOne,      // exactly one
    kUnclear
};

// With |f''| <= bound over the bracket. Between ends of equal signs f must come down to zero
// and back: from the lowest point, where it is level, it has risen by at most bound t^2 / 2 at
// each end. Between ends of opposite signs the slope nowhere leaves the mean slope by more than
// bound h / 2.
inline Inside inside(const Bracket& x, double bound) {
    const double h = x.b.t - x.a.t;
    if (changes_sign(x))
        return std::fabs(x.b.f - x.a.f) > 0.5 * bound * h * h ? Inside::kOne : Inside::kUnclear;
    const double reach = std::sqrt(std::fabs(x.a.f)) + std::sqrt(std::fabs(x.b.f));
    return 0.5 * bound * h * h < reach * reach ? Inside::kNothing : Inside::kUnclear;
}

// The zeros of f between two samples, in order: found(bracket) gets a bracket over which f
// changes sign once, and answers whether to go on; the answer is whether it never said no.
//
// NaN: a bracket with one such end is halved down to the edge of what can be computed; between
// two such ends nothing is looked for.
template <class Function, class Found>
bool isolate(const Function& f, const Bracket& x, double bound, const Found& found) {
    const bool first = std::isnan(x.a.f);
    const bool second = std::isnan(x.b.f);
    if (first && second) return true;
    const Inside what = first || second ? Inside::kUnclear : inside(x, bound);
    if (what == Inside::kNothing) return true;
    if (what == Inside::kOne) return found(x);
    if (x.b.t - x.a.t <= kNarrowest) return changes_sign(x) ? found(x) : true;
    const double t = x.a.t + (x.b.t - x.a.t) / 2;
    const Sample middle{t, f(t)};
    return isolate(f, {x.a, middle}, bound, found) && isolate(f, {middle, x.b}, bound, found);
}

// All zeros of f from the cursor to the end of the span, as `isolate` hands them over. `bound`
// is that of |f''| [f/day^2] over the whole span, `step` the width of the intervals begun with
// [day]. Costs a sample a step and a few around each zero; more where f stays near zero without
// crossing it. True at the end of the span; false when `found` or the host ended it.
template <class Function, class Found>
bool crossings(Span& span, const Control& control, const Function& f, double bound, double step,
               const Found& found) {
    if (span.over()) return true;
    Sample a{span.cursor, f(span.cursor)};
    while (!span.over()) {
        if (!control.go_on(span)) return false;
        const double t = next_instant(span, a.t, step);
        const Sample b{t, f(t)};
        span.cursor = t;
        if (!isolate(f, {a, b}, bound, found)) return false;
        a = b;
    }
    return true;
}

}  // namespace solsys::search
