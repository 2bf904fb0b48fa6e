// Walking a function of time and refining what the walk meets. A function takes a Julian date
// (TT, as everything in a search) and answers NaN where it cannot be computed; neither a walk
// nor a refinement runs longer for that.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/root_finder.h"
#include "events/search/control.h"
#include "events/search/span.h"

namespace solsys::search {

constexpr double kSecond = 1.1574074074074073e-05;  // day

struct Sample {
    double t = 0;
    double f = 0;
};

// Neighbouring samples, a before b.
struct Bracket {
    Sample a;
    Sample b;
};

// Whether f goes from below zero to zero or above, or back. NaN changes no sign.
inline bool changes_sign(const Bracket& x) {
    return x.a.f < 0 ? x.b.f >= 0 : x.a.f >= 0 && x.b.f < 0;
}

// The next instant of a walk: never beyond the end, and at least a second on.
inline double next_instant(const Span& span, double t, double step) {
    return std::min(t + (step > kSecond ? step : kSecond), span.end);
}

// Walks the cursor to the end of the span in steps of step(sample) days, the last one cut, and
// hands every bracket over which f changes sign to found(bracket), the cursor being at its end.
// `found` answers whether to go on; when it does not, the cursor stays where `found` put it.
// True at the end of the span; false when `found` or the host ended the walk.
template <class Function, class Step, class Found>
bool scan(Span& span, const Control& control, Function&& f, Step&& step, Found&& found) {
    if (span.over()) return true;
    Sample a{span.cursor, f(span.cursor)};
    while (!span.over()) {
        if (!control.go_on(span)) return false;
        const double t = next_instant(span, a.t, step(a));
        const Sample b{t, f(t)};
        span.cursor = t;
        if (changes_sign({a, b}) && !found(Bracket{a, b})) return false;
        a = b;
    }
    return true;
}

// The same for maxima: hands over every three neighbouring samples of which the middle one is
// not below the others, as the bracket of the outer two. Maxima at the ends of the span are
// none. For minima negate f.
template <class Function, class Step, class Found>
bool scan_maxima(Span& span, const Control& control, Function&& f, Step&& step, Found&& found) {
    if (span.over()) return true;
    Sample a{span.cursor, f(span.cursor)};
    Sample b = a;
    while (!span.over()) {
        if (!control.go_on(span)) return false;
        const double t = next_instant(span, b.t, step(b));
        const Sample c{t, f(t)};
        span.cursor = t;
        if (a.t < b.t && b.f >= a.f && b.f > c.f && !found(Bracket{a, c})) return false;
        a = std::exchange(b, c);
    }
    return true;
}

// Root of f in a bracket where it changes sign, to t_tol [day] (Brent's method, see
// core/root_finder.h). The ends are not evaluated again.
template <class Function>
Sample root(Function&& f, const Bracket& bracket, double t_tol) {
    Sample last = bracket.a;
    const auto remembered = [&](double t) {
        if (t == bracket.a.t) return bracket.a.f;
        if (t == bracket.b.t) return bracket.b.f;
        last = {t, f(t)};
        return last.f;
    };
    const double t = zeroin(bracket.a.t, bracket.b.t, remembered, t_tol);
    return {t, t == last.t ? last.f : remembered(t)};
}

// Root of f in a bracket, either end first, by halving it until |f| is at most f_tol or it is
// no longer than t_tol. Takes the ends' values by their signs alone. The middle that came last.
template <class Function>
Sample bisection(Function&& f, Bracket x, double f_tol, double t_tol) {
    constexpr int most_passes = 100;
    Sample middle;
    for (int pass = 0; pass < most_passes; ++pass) {
        middle.t = x.a.t + (x.b.t - x.a.t) / 2;
        middle.f = f(middle.t);
        if (std::fabs(x.b.t - x.a.t) <= t_tol || std::fabs(middle.f) <= f_tol ||
            std::isnan(middle.f))
            break;
        ((middle.f > 0) == (x.b.f > 0) ? x.b : x.a) = middle;
    }
    return middle;
}

// Root of f by false position, without safeguards: until |f| is below f_tol or the bracket no
// longer than t_tol, at most 1,000 times. The last iterate; t is -1 when f has the same sign at
// both ends.
template <class Function>
Sample false_position(Function&& f, Bracket x, double f_tol, double t_tol) {
    constexpr int most_passes = 1000;
    if (x.a.f * x.b.f > 0) return {-1, x.a.f};
    Sample c;
    for (int pass = 0; pass < most_passes; ++pass) {
        c.t = (x.a.f * x.b.t - x.b.f * x.a.t) / (x.a.f - x.b.f);
        c.f = f(c.t);
        if (std::fabs(c.f) < f_tol || !std::isfinite(c.f)) return c;
        (c.f * x.a.f > 0 ? x.a : x.b) = c;
        if (x.b.t - x.a.t <= t_tol) return c;
    }
    return c;
}

// From a to the top of the parabola through a, b and c [day]; not finite where there is none.
inline double way_to_top(const Sample& a, const Sample& b, const Sample& c) {
    const double r = (a.t - b.t) * (a.f - c.f);
    const double s = (a.t - c.t) * (a.f - b.f);
    const double p = (a.t - c.t) * s - (a.t - b.t) * r;
    const double q = 2 * (s - r);
    return -p / q;
}

// Maximum of f between a and b, where it has one, to t_tol [day]; for a minimum negate f. A
// function that is rounded to eps tells instants apart only to sqrt(2 eps / |f''|).
//
// Source: Brent 1973, Algorithms for Minimization without Derivatives, chapter 5.
template <class Function>
Sample maximum(Function&& f, double a, double b, double t_tol) {
    constexpr double golden = 0.3819660112501051;
    constexpr int most_passes = 200;
    Sample best{a + golden * (b - a), 0};
    best.f = f(best.t);
    Sample second = best, third = best;
    double step = 0, before = 0;
    for (int pass = 0; pass < most_passes; ++pass) {
        const double middle = a + (b - a) / 2;
        if (!(std::fabs(best.t - middle) > 2 * t_tol - (b - a) / 2)) break;
        // The top of the parabola through the three best, unless it leaves [a, b] or does not
        // halve the step before the last; then a golden section of the longer part.
        const double to_top = way_to_top(best, second, third);
        const double t_top = best.t + to_top;
        const double allowed = std::fabs(before) / 2;
        before = step;
        if (std::fabs(to_top) < allowed && t_top > a + t_tol && t_top < b - t_tol) {
            step = to_top;
        } else {
            before = best.t < middle ? b - best.t : a - best.t;
            step = golden * before;
        }
        const double t =
            best.t + (std::fabs(step) >= t_tol ? step : std::copysign(t_tol, step));
        const Sample next{t, f(t)};
        if (next.f >= best.f) {
            (t >= best.t ? a : b) = best.t;
            third = std::exchange(second, std::exchange(best, next));
        } else {
            (t < best.t ? a : b) = t;
            if (next.f >= second.f || second.t == best.t) {
                third = std::exchange(second, next);
            } else if (next.f >= third.f || third.t == best.t || third.t == second.t) {
                third = next;
            }
        }
    }
    return best;
}

// When an iteration by corrections has come to rest.
struct Rest {
    double tolerance = 0;    // a correction above this is never the last [day]
    double remaining = 0;    // what may be left over after the last one [day]
    double first_ratio = 0;  // what a first correction leaves behind, of itself
    int most_passes = 1;
};

// Moves t by correction(t) [day] until what remains is small: corrections shrink by an even
// ratio. False when they do not come to rest, or are no numbers.
template <class Correction>
bool settle(Correction&& correction, double& t, const Rest& rest) {
    double previous = 0;
    for (int pass = 0; pass < rest.most_passes; ++pass) {
        const double step = correction(t);
        if (!std::isfinite(step)) return false;
        t += step;
        const double c = std::fabs(step);
        const double ratio = previous != 0 ? c / std::fabs(previous) : rest.first_ratio;
        if (c <= rest.remaining ||
            (c <= rest.tolerance && c * ratio <= rest.remaining * (1 - ratio)))
            return true;
        previous = step;
    }
    return false;
}

}  // namespace solsys::search
