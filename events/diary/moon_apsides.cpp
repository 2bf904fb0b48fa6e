#include "events/diary/moon_apsides.h"

#include <cmath>

#include "events/diary/quantities.h"
#include "events/diary/search.h"
#include "events/search/crossings.h"

namespace solsys::diary {

namespace {

constexpr double kRateStep = 0.05;  // day
// From an apsis to the next one of its kind it is at most 28.6 days.
constexpr double kReach = 29;  // day

double moon_distance(CSWSolSys& model, double t) {
    const Instant instant = search::split(t);
    model.SetTime(instant.day, instant.fraction, false);
    double v[3];
    return model.GetVecCentre2K(kMoon, 0, v) ? norm(load(v)) : std::nan("");
}

}  // namespace

double moon_distance_rate(CSWSolSys& model, double t) {
    return rate([&model](double at) { return moon_distance(model, at); }, t, kRateStep, plain);
}

ApsisWalk::ApsisWalk(CSWSolSys& model, double start)
    : model_(model), known_to_(start - kReach) {}

ApsisWalk::Nearest ApsisWalk::nearest(double t) {
    if (known_to_ < t + kReach) {
        search::Span walk{known_to_, t + kReach, known_to_};
        const auto f = [this](double at) { return moon_distance_rate(model_, at); };
        crossings(walk, control_, f, kMoonDistance3,
                  std::sqrt(3 * kMoonDistanceRate / kMoonDistance3),
                  [&](const search::Bracket& x) {
                      apsides_.push_back({root(f, x, search::kSecond).t, x.a.f < 0});
                      return true;
                  });
        known_to_ = walk.end;
    }
    while (!apsides_.empty() && apsides_.front().t < t - kReach) apsides_.pop_front();
    Nearest found;
    for (const Apsis& apsis : apsides_) {
        double& days = apsis.perigee ? found.perigee : found.apogee;
        if (std::fabs(apsis.t - t) < std::fabs(days)) days = apsis.t - t;
    }
    return found;
}

bool Diary::find_moon_apsides() {
    GeocentricSky sky(*model);
    const auto distance_rate = [this](double t) { return moon_distance_rate(*model, t); };
    return zeros(distance_rate, kMoonDistance3, kMoonDistanceRate, [&](double t, bool rises) {
        SKYEVENT_BODY detail = body_detail(sky, t, {kMoon}, nullptr);
        detail.distance = norm(sky.heliocentric(kMoon).r - sky.earth().r);
        return add(t, rises ? SKYEVENT_CLOSEST : SKYEVENT_FARTHEST, detail);
    });
}

}  // namespace solsys::diary
