#include "solsys/sky/conjunctions.h"

#include <cmath>

#include "core/angles.h"
#include "events/diary/motion_bounds.h"
#include "events/diary/quantities.h"
#include "sky/search_scope.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

using diary::Circle;
using diary::GeocentricSky;
using diary::MotionBounds;
using diary::Target;

constexpr double kConjunctionPrecision = 0.1 * search::kSecond;
constexpr double kRateStep = 0.05;  // day

Conjunction conjunction_at(GeocentricSky& sky, const Target& first, const Target& second,
                           double t) {
    sky.at(t);
    const Vec3 a = sky.apparent(first).direction;
    const Vec3 b = sky.apparent(second).direction;
    const Vec3 sun = sky.sun().direction;
    Conjunction event;
    event.at = Instant::from_tt(t);
    event.separation_deg = separation(a, b) * kDegrees;
    event.position_angle_deg = position_angle(sky.equator() * b, sky.equator() * a) * kDegrees;
    event.elongation_deg = separation(a, sun) * kDegrees;
    if (diary::difference(sky.ecliptic(), a, sun).sine < 0) event.elongation_deg *= -1;
    return event;
}

// Zeros of the sine of the difference, those half a turn apart left out.
void find_equal(SearchScope& scope, const Target& first, const Target& second, Circle circle,
                std::vector<Conjunction>& events) {
    GeocentricSky& sky = scope.sky;
    const MotionBounds a = bounds_of(first);
    const MotionBounds b = bounds_of(second);
    const bool equator = circle == Circle::kEquator;
    const double bound = equator ? diary::sine_bound(a.ra1, a.ra2, b.ra1, b.ra2)
                                 : diary::sine_bound(a.lon1, a.lon2, b.lon1, b.lon2);
    const auto sine = [&](double t) {
        return difference_at(sky, first, second, circle, t).sine;
    };
    search::Span walk = scope.span();
    crossings(
        walk, scope.control(), sine, bound, std::sqrt(3 / bound),
        [&](const search::Bracket& x) {
            const double t = search::root(sine, x, kConjunctionPrecision).t;
            if (scope.within(t) && difference_at(sky, first, second, circle, t).cosine > 0)
                events.push_back(conjunction_at(sky, first, second, t));
            return true;
        });
}

// Zeros of the rate of the cosine of the angle, where it falls. The third derivative of the
// cosine of an angle between two directions is bounded by those of the directions: rates w,
// accelerations and their rates come in products of at most three.
void find_closest(SearchScope& scope, const Target& first, const Target& second,
                  double limit_deg, std::vector<Conjunction>& events) {
    GeocentricSky& sky = scope.sky;
    const MotionBounds a = bounds_of(first);
    const MotionBounds b = bounds_of(second);
    const double rate1 = a.lon1 + b.lon1;
    const double rate2 = a.lon2 + b.lon2;
    const double bound = rate1 * rate1 * rate1 + 3 * rate1 * rate2 + a.lon3 + b.lon3;
    const auto cosine = [&](double t) {
        sky.at_in_same_frames(t);
        return dot(sky.apparent(first).direction, sky.apparent(second).direction);
    };
    const auto cosine_rate = [&](double t) {
        return diary::rate(cosine, t, kRateStep, diary::plain);
    };
    search::Span walk = scope.span();
    crossings(walk, scope.control(), cosine_rate, bound, std::sqrt(0.9 * rate1 / bound),
              [&](const search::Bracket& x) {
                  if (x.a.f < 0) return true;  // farthest
                  const double t = search::root(cosine_rate, x, kConjunctionPrecision).t;
                  if (!scope.within(t)) return true;
                  const Conjunction event = conjunction_at(sky, first, second, t);
                  if (event.separation_deg < limit_deg) events.push_back(event);
                  return true;
              });
}

}  // namespace

std::vector<Conjunction> conjunctions(Model& model, const Body& first, const Body& second,
                                      const Span& span, ConjunctionWay way,
                                      double closest_limit_deg, SearchControl* control) {
    std::vector<Conjunction> events;
    if (first.id == second.id || !model.add(first) || !model.add(second)) return events;
    SearchScope scope(model, span, control);
    const Target a = target_of(first);
    const Target b = target_of(second);
    switch (way) {
        case ConjunctionWay::kRightAscension:
            find_equal(scope, a, b, Circle::kEquator, events);
            break;
        case ConjunctionWay::kLongitude:
            find_equal(scope, a, b, Circle::kEcliptic, events);
            break;
        case ConjunctionWay::kClosest:
            find_closest(scope, a, b, closest_limit_deg, events);
            break;
    }
    return events;
}

}  // namespace solsys::sky
