#include "events/diary/moon_apsides.h"

#include <cmath>

#include "ephemeris/analytic/analytic_theory.h"
#include "ephemeris/planet_states.h"
#include "events/diary/search.h"
#include "events/search/crossings.h"

namespace solsys::diary {

namespace {

// From an apsis to the next one of its kind it is at most 28.6 days.
constexpr double kApsisReach = 29;  // day

}  // namespace

double MoonDistance::rate(double t) {
    if (!search::is_instant(t)) return std::nan("");
    const Instant instant = search::split(t);
    State moon{};
    const bool known = (by_file_ && moon_in_file(file_, instant, true, moon)) ||
                       analytic_moon(instant, true, moon);
    return known ? dot(moon.r, moon.v) / norm(moon.r) : std::nan("");
}

ApsisWalk::ApsisWalk(CSWSolSys& model, double start)
    : distance_(model), known_to_(start - kApsisReach) {}

ApsisWalk::Nearest ApsisWalk::nearest(double t) {
    if (known_to_ < t + kApsisReach) {
        search::Span walk{known_to_, t + kApsisReach, known_to_};
        const auto f = [this](double at) { return distance_.rate(at); };
        crossings(walk, control_, f, kMoonDistance3,
                  std::sqrt(3 * kMoonDistanceRate / kMoonDistance3),
                  [&](const search::Bracket& x) {
                      apsides_.push_back({root(f, x, search::kSecond).t, x.a.f < 0});
                      return true;
                  });
        known_to_ = walk.end;
    }
    while (!apsides_.empty() && apsides_.front().t < t - kApsisReach) apsides_.pop_front();
    Nearest found;
    for (const Apsis& apsis : apsides_) {
        double& days = apsis.perigee ? found.perigee : found.apogee;
        if (std::fabs(apsis.t - t) < std::fabs(days)) days = apsis.t - t;
    }
    return found;
}

bool Diary::find_moon_apsides() {
    GeocentricSky sky(*model);
    MoonDistance distance(*model);
    const auto distance_rate = [&distance](double t) { return distance.rate(t); };
    return zeros(distance_rate, kMoonDistance3, kMoonDistanceRate, [&](double t, bool rises) {
        SKYEVENT_BODY detail = body_detail(sky, t, {kMoon}, nullptr);
        detail.distance = norm(sky.heliocentric(kMoon).r - sky.earth().r);
        return add(t, rises ? SKYEVENT_CLOSEST : SKYEVENT_FARTHEST, detail);
    });
}

}  // namespace solsys::diary
