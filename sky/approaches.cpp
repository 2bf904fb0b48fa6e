#include "solsys/sky/approaches.h"

#include <algorithm>
#include <cmath>

#include "core/constants.h"
#include "core/instant.h"
#include "core/linalg.h"
#include "core/root_finder.h"

namespace solsys::sky {
namespace {

constexpr double kFarthestApproach = 100;     // au: of `within_au`
constexpr double kPlanetSpeed = 0.035;        // au/day: more than Mercury's at perihelion
constexpr double kPerturbed = 1.05;           // margin of the orbit's own greatest speed
constexpr double kPartOfFlight = 0.1;         // of distance over speed: a step close by
constexpr double kLongestStep = 1.0;          // day, close by
constexpr double kShortestStep = 1e-4;        // day
constexpr double kTimeTolerance = 1e-10;      // day
constexpr double kLongestApproachSpan = 4e6;  // day
constexpr double kKmPerSecond = kAuKm / kSecondsPerDay;  // of au/day

// States of the body and of a planet beside each other, at days after the start.
class Pair {
  public:
    Pair(CSWSolSys& model, const SSO_ID& body, const SSO_ID& planet, JulianDate start)
        : model_(model), body_(body), planet_(planet), start_(start) {}

    bool relative(double days, State& out) {
        model_.SetTime(start_.day, start_.fraction + days, false);
        double body[6], planet[6];
        if (!model_.GetHelVec2K(body_, 1, body) || !model_.GetHelVec2K(planet_, 1, planet))
            return false;
        orbit_ = load_state(body);
        out = orbit_ - load_state(planet);
        return std::isfinite(dot(out.r, out.v));
    }
    // The greatest speed that the orbit last asked for comes to, at its perihelion.
    [[nodiscard]] double greatest_speed() const {
        const Vec3 h = cross(orbit_.r, orbit_.v);
        const double p = dot(h, h) / kSunGm;
        const Vec3 e = (1 / kSunGm) * cross(orbit_.v, h) - unit(orbit_.r);
        return kPerturbed * kSunGm / std::sqrt(kSunGm * p) * (1 + norm(e));
    }

  private:
    CSWSolSys& model_;
    SSO_ID body_, planet_;
    JulianDate start_;
    State orbit_{};
};

struct Found {
    double days;
    State relative;
};

class ApproachSearch {
  public:
    ApproachSearch(Pair& pair, double days, double within)
        : pair_(pair), days_(days), within_(within) {}

    // False: there is no state somewhere in the span, or `report` has ended it.
    template <class Report>
    bool run(std::vector<Found>& found, Report&& report) {
        State before{};
        if (!pair_.relative(0, before)) return false;
        for (double t = 0; t < days_;) {
            const double next = std::min(t + step(before), days_);
            State after{};
            if (!pair_.relative(next, after)) return false;
            if (dot(before.r, before.v) < 0 && dot(after.r, after.v) >= 0)
                refine(t, next, found);
            t = next;
            before = after;
            if (!report(t / days_)) {
                stopped_ = true;
                return true;
            }
        }
        return true;
    }
    [[nodiscard]] bool stopped() const { return stopped_; }

  private:
    [[nodiscard]] double step(const State& relative) const {
        const double distance = norm(relative.r);
        const double skip = (distance - within_) / (pair_.greatest_speed() + kPlanetSpeed);
        const double close = std::clamp(kPartOfFlight * distance / norm(relative.v),
                                        kShortestStep, kLongestStep);
        return std::max(skip, close);
    }

    void refine(double low, double high, std::vector<Found>& found) {
        const double t = zeroin(
            low, high,
            [this](double days) {
                State s{};
                return pair_.relative(days, s) ? dot(s.r, s.v) : std::nan("");
            },
            kTimeTolerance);
        State s{};
        if (pair_.relative(t, s) && norm(s.r) <= within_) found.push_back({t, s});
    }

    Pair& pair_;
    double days_, within_;
    bool stopped_ = false;
};

std::vector<Body> planets_and_moon() {
    std::vector<Body> bodies;
    for (const int number : {1, 2, 3, 4, 5, 6, 7, 8})
        bodies.emplace_back(SSO_ID(SSO_PLNT, number));
    bodies.push_back(moon());
    return bodies;
}

// Puts the model back where it was.
class Kept {
  public:
    explicit Kept(CSWSolSys& model) : model_(model) { model.GetTime(&day_, &fraction_); }
    ~Kept() { model_.SetTime(day_, fraction_, false); }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

  private:
    CSWSolSys& model_;
    int day_ = 0;
    double fraction_ = 0;
};

// Whether the integration comes to both ends: the model would show the osculating orbit beyond.
bool is_integrated(CSWSolSys& model, const SSO_ID& id, const Span& span) {
    if (!model.SetIntegrated(id)) return false;
    for (const Instant& end : {span.from, span.to}) {
        const JulianDate t = end.tt();
        model.SetTime(t.day, t.fraction, false);
        double state[6];
        if (!model.GetHelVec2K(id, 1, state) || !model.IsIntegrated(id)) return false;
    }
    return true;
}

}  // namespace

Result<std::vector<Approach>> find_approaches(Model& model, const Body& body, const Span& span,
                                              const ApproachOptions& options) {
    const double days = span.to.jd_tt() - span.from.jd_tt();
    if (!(days > 0 && days < kLongestApproachSpan)) return Failure{"the span of time is empty"};
    if (!(options.within_au > 0 && options.within_au <= kFarthestApproach))
        return Failure{"approaches are told within a distance above 0 and up to 100 au"};
    if (body.id.type != SSO_ASTR && body.id.type != SSO_COMT)
        return Failure{body.name + " has no orbit of its own: name a minor planet or a comet"};
    if (const auto added = model.add(body); !added) return Failure{added.message()};

    CSWSolSys& classic = model.classic();
    const Kept kept(classic);
    if (options.two_body) {
        classic.SetIntegrated(body.id, false);
    } else if (!is_integrated(classic, body.id, span)) {
        return Failure{body.name + " cannot be integrated over all of the span"};
    }

    std::vector<Approach> approaches;
    const std::vector<Body> planets = planets_and_moon();
    for (std::size_t i = 0; i < planets.size(); ++i) {
        Pair pair(classic, body.id, planets[i].id, span.from.tt());
        ApproachSearch search(pair, days, options.within_au);
        std::vector<Found> found;
        const auto report = [&](double done) {
            const double all = static_cast<double>(planets.size());
            return !options.progress || options.progress((static_cast<double>(i) + done) / all);
        };
        if (!search.run(found, report))
            return Failure{"no places of " + body.name + " and " + planets[i].name +
                           " in all of the span"};
        for (const Found& f : found) {
            const JulianDate tt = span.from.tt();
            approaches.push_back({planets[i],
                                  Instant::from_tt(JulianDate{tt.day, tt.fraction + f.days}),
                                  norm(f.relative.r), kKmPerSecond * norm(f.relative.v)});
        }
        if (search.stopped()) break;
    }
    std::sort(approaches.begin(), approaches.end(),
              [](const Approach& a, const Approach& b) { return a.time < b.time; });
    return approaches;
}

}  // namespace solsys::sky
