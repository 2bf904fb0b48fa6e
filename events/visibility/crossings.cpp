#include "events/visibility/crossings.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/angles.h"
#include "events/search/crossings.h"
#include "events/visibility/day_step.h"
#include "events/visibility/site_path.h"

namespace solsys::visibility {
namespace {

using search::Bracket;
using search::Inside;

constexpr double kTurnRate = 6.3004;     // of the Earth [rad/day], rounded up
constexpr double kSiteRadius = 4.28e-5;  // au: the Earth's and 9 km more
constexpr double kFreeFall = 5e-4;       // au/day^2: the Earth's own about the Sun, doubled
constexpr double kLongestStep = 0.25;    // day: looks taken whatever the bound says
constexpr double kGrazing = 60 / kSecondsPerDay;        // day
constexpr double kLongestIdleStep = 16;                 // day
constexpr double kLongestPath = 1000;                   // day: a path's clock starts anew
constexpr double kTimeTolerance = 1e-8;                 // day
constexpr double kSteepEnough = 0.02 / kSecondsPerDay;  // day: what an error of a path may cost

// How the places of an object are taken: h apart [day], to an error [rad], and whether its
// motion is known beforehand or has to be watched.
struct Sampling {
    double h = 1;
    double error = 3e-8;
    bool watched = false;
};

Sampling sampling_of(const SSO_ID& id) {
    if (id.type == SSO_PLNT) return {id.number == 1 ? 0.5 : 1.0, 1.5e-7, false};
    if (id.type == SSO_MOON && id.number == 301) return {0.3, 3e-8, false};
    switch (id.type) {
        case SSO_MOON:
        case SSO_ASTR:
        case SSO_COMT:
        case SSO_FAST:
        case SSO_FCOM:
            return {0.5, 2e-7, true};
        case SSO_SCFT:
        case SSO_USCO:
        case SSO_FSCO:
        case SSO_TLE:
            return {0.25, 3e-6, true};
        default:
            return {2, 3e-8, false};
    }
}

// What a sample holds: enough for every level.
struct Sample {
    double t = 0;
    double sine = search::kNone;
    double distance = 0;
    Vec3 direction{};
};

class Walk {
  public:
    Walk(CSWSolSys& model, const SSO_ID& id, std::span<const Level> levels)
        : sky_(model), target_(model, id), sampling_(sampling_of(id)), h_(sampling_.h) {
        for (const Level& level : levels)
            levels_.push_back({std::sin(level.altitude), std::cos(level.altitude),
                               level.upper_limb && target_.radius_km > 0});
        bound_ = sampling_.watched ? 0 : altitude_bound(id, sky_.latitude());
        cos_lat_ = std::cos(sky_.latitude());
    }

    Passings over(search::Span span, const search::Control& control);

  private:
    struct SineLevel {
        double sine, cosine;
        bool upper_limb;
    };
    Sample look(double t);
    Sample look_exactly(double t);
    // Height over a level, as a difference of sines.
    double height(const Sample& s, int level) const;
    // The bound over a step that starts at t and what the step may be; watched objects only.
    void watch(double t, double& step);
    void divide(const Sample& a, const Sample& b, unsigned pending);
    void decide_exactly(const Sample& a, const Sample& b, int level);
    void add(const Bracket& x, int level);
    void add_exactly(const Bracket& x, int level);
    void add(double t, int level, bool up, const Vec3& direction);
    Inside inside(const Bracket& x) const;

    SkyAt sky_;
    Target target_;
    Sampling sampling_;
    double h_;
    std::vector<SineLevel> levels_;
    std::optional<SitePath> path_;
    double path_start_ = 0;
    double bound_ = 0;
    double cos_lat_ = 1;
    Passings out_;
};

double Walk::height(const Sample& s, int level) const {
    const SineLevel& l = levels_[static_cast<unsigned>(level)];
    if (!l.upper_limb) return s.sine - l.sine;
    // sin(level - atan(x)), x the tangent of the semidiameter.
    const double x = target_.radius_km / (s.distance * kAuKm);
    return s.sine - (l.sine - x * l.cosine) / std::sqrt(1 + x * x);
}

Sample Walk::look(double t) {
    if (!path_ || t - path_start_ > kLongestPath) {
        if (path_) path_->observe_from_site();
        path_.emplace(sky_.model(), target_.id, t, h_);
        path_start_ = t;
    }
    const auto seen = path_->at(t);
    if (std::isnan(seen.distance)) return look_exactly(t);  // within three h of an edge
    return {t, seen.direction.z, seen.distance, seen.direction};
}

Sample Walk::look_exactly(double t) {
    if (path_) path_->observe_from_site();
    SkyAt anew(sky_.model());  // no light time carried over
    const auto place = anew.apparent(target_.id, t);
    const auto direction = anew.from_horizon(target_.id);
    if (!place || !direction) return {t, search::kNone, 0, {}};
    return {t, direction->z, place->distance, *direction};
}

void Walk::watch(double t, double& step) {
    constexpr double nearest = 1e-6;  // au
    constexpr double too_coarse = 0.15, too_fine = 0.05, finest = 1e-4;
    SitePath::Motion m = path_->motion(t);
    const double part = m.speed * h_ / m.distance;
    if (part < too_fine && 32 * m.error < sampling_.error && 2 * h_ <= sampling_.h) {
        path_->set_h(h_ *= 2);
        m = path_->motion(t);
    }
    while ((m.speed * h_ / m.distance > too_coarse || m.error > sampling_.error) &&
           h_ > finest) {
        const double error = m.error;
        path_->set_h(h_ /= 2);
        m = path_->motion(t);
        // What does not shrink is no error of the polynomial, but in the places themselves.
        if (m.speed * h_ / m.distance <= too_coarse && m.error > error / 4) break;
    }
    // Within the middle interval and the two beside it.
    if (h_ < step) step = h_;
    const double site_speed = kTurnRate * kSiteRadius * cos_lat_;
    const double speed = 1.2 * m.speed + site_speed;
    const double distance = std::max(m.distance - kSiteRadius, nearest);
    const double acceleration = 1.5 * m.acceleration + kFreeFall + kTurnRate * site_speed;
    const double rate = speed / distance;
    bound_ = kTurnRate * kTurnRate * cos_lat_ + 2 * kTurnRate * rate * cos_lat_ +
             acceleration / distance + 3 * rate * rate;
    if (std::isnan(bound_)) bound_ = altitude_bound(SSO_ID(SSO_PLNT, 10), sky_.latitude());
}

// As search::inside, for heights known to an error.
Inside Walk::inside(const Bracket& x) const {
    const double h = x.b.t - x.a.t;
    const double e = sampling_.error;
    const double bend = 0.5 * bound_ * h * h;
    if (changes_sign(x))
        return std::fabs(x.b.f - x.a.f) - 2 * e > bend ? Inside::kOne : Inside::kUnclear;
    const double a = std::fabs(x.a.f) - e;
    const double b = std::fabs(x.b.f) - e;
    if (!(a > 0 && b > 0)) return Inside::kUnclear;
    const double reach = std::sqrt(a) + std::sqrt(b);
    return bend <= reach * reach ? Inside::kNothing : Inside::kUnclear;
}

void Walk::divide(const Sample& a, const Sample& b, unsigned pending) {
    const bool first = std::isnan(a.sine);
    const bool second = std::isnan(b.sine);
    if (first && second) return;
    unsigned unclear = 0;
    for (int k = 0; k < static_cast<int>(levels_.size()); ++k) {
        if ((pending >> k & 1U) == 0) continue;
        const Bracket x{{a.t, height(a, k)}, {b.t, height(b, k)}};
        const Inside what = first || second ? Inside::kUnclear : inside(x);
        if (what == Inside::kOne) add(x, k);
        if (what == Inside::kUnclear) unclear |= 1U << k;
    }
    if (unclear == 0) return;
    if (b.t - a.t <= kGrazing) {
        for (int k = 0; k < static_cast<int>(levels_.size()); ++k)
            if ((unclear >> k & 1U) != 0) decide_exactly(a, b, k);
        return;
    }
    const Sample middle = look(a.t + (b.t - a.t) / 2);
    divide(a, middle, unclear);
    divide(middle, b, unclear);
}

void Walk::decide_exactly(const Sample& a, const Sample& b, int level) {
    const auto f = [&](double t) { return height(look_exactly(t), level); };
    const Bracket x{{a.t, f(a.t)}, {b.t, f(b.t)}};
    search::isolate(f, x, bound_, [&](const Bracket& found) {
        add_exactly(found, level);
        return true;
    });
}

void Walk::add_exactly(const Bracket& x, int level) {
    const auto f = [&](double t) { return height(look_exactly(t), level); };
    const double t = search::root(f, x, kTimeTolerance).t;
    add(t, level, x.a.f < 0, look_exactly(t).direction);
}

// The root in a bracket that holds one; by the model's own places where the error of the path
// would show.
void Walk::add(const Bracket& x, int level) {
    Sample last;
    const auto f = [&](double t) { return height(last = look(t), level); };
    const search::Sample root = search::root(f, x, kTimeTolerance);
    if (last.t != root.t) last = look(root.t);
    const Vec3 direction = last.direction;
    constexpr double apart = search::kSecond;
    const double slope = std::fabs(f(root.t + apart) - f(root.t - apart)) / (2 * apart);
    if (slope * kSteepEnough >= sampling_.error) {
        add(root.t, level, x.a.f < 0, direction);
        return;
    }
    const double reach = std::max(4 * sampling_.error / slope, 1e-6);
    const auto exactly = [&](double t) { return height(look_exactly(t), level); };
    const Bracket near{{root.t - reach, exactly(root.t - reach)},
                       {root.t + reach, exactly(root.t + reach)}};
    if (changes_sign(near)) {
        add_exactly(near, level);
    } else {
        add(root.t, level, x.a.f < 0, direction);
    }
}

void Walk::add(double t, int level, bool up, const Vec3& direction) {
    out_.list.push_back({t, level, up ? 1 : -1, longitude_of(direction.x, -direction.y)});
}

Passings Walk::over(search::Span span, const search::Control& control) {
    out_ = {};
    Sample a = look(span.cursor);
    for (int k = 0; k < static_cast<int>(levels_.size()); ++k) {
        const double f = height(a, k);
        out_.at_start.push_back(static_cast<std::int8_t>(f >= 0 ? 1 : f < 0 ? -1 : 0));
    }
    const unsigned all = (1U << levels_.size()) - 1;
    double idle = kLongestStep;  // the step where nothing can be computed
    while (!span.over() && control.go_on(span)) {
        double step = kLongestStep;
        if (std::isnan(a.sine)) {
            path_->observe_from_site();
            const double next = next_computable(sky_, span);
            if (next > span.cursor) a.t = span.cursor = next;
            step = idle = std::min(2 * idle, kLongestIdleStep);
        } else {
            idle = kLongestStep;
        }
        if (sampling_.watched) watch(a.t, step);
        if (span.over()) break;
        const Sample b = look(search::next_instant(span, a.t, step));
        span.cursor = b.t;
        const auto before = out_.list.size();
        divide(a, b, all);
        std::sort(out_.list.begin() + static_cast<std::ptrdiff_t>(before), out_.list.end(),
                  [](const Passing& x, const Passing& y) { return x.time < y.time; });
        a = b;
    }
    path_->observe_from_site();
    return std::move(out_);
}

bool is_on_earth(const OBSERVER& o) {
    return o.kind == LOCATION_SURFACE && o.body_type == SSO_PLNT && o.body_number == 3;
}

}  // namespace

double altitude_bound(const SSO_ID& id, double latitude) {
    const double c = std::fabs(std::cos(latitude));
    if (id.type == SSO_MOON) return 0.55 + 45.5 * c;
    if (id.type == SSO_PLNT) return 0.03 + 40.5 * c;
    return 0.001 + 39.8 * c;
}

Passings level_passings(CSWSolSys& model, const SSO_ID& id, std::span<const Level> levels,
                        search::Span span, const search::Control& control) {
    constexpr std::size_t most_levels = 16;
    if (levels.empty() || levels.size() > most_levels || span.over() ||
        !is_on_earth(model.GetObserver()))
        return {};
    return Walk(model, id, levels).over(span, control);
}

std::vector<Stretch> stretches_above(const Passings& passings, int level,
                                     const search::Span& span) {
    std::vector<Stretch> out;
    bool up = static_cast<std::size_t>(level) < passings.at_start.size() &&
              passings.at_start[static_cast<std::size_t>(level)] > 0;
    double since = span.start;
    for (const Passing& p : passings.list) {
        if (p.level != level) continue;
        if (up && p.sense < 0) out.push_back({since, p.time});
        if (p.sense > 0) since = p.time;
        up = p.sense > 0;
    }
    if (up) out.push_back({since, span.end});
    return out;
}

}  // namespace solsys::visibility
