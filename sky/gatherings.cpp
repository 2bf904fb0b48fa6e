// Several bodies within a small circle.
#include <algorithm>
#include <cmath>

#include "core/angles.h"
#include "events/diary/motion_bounds.h"
#include "events/diary/quantities.h"
#include "events/search/scan.h"
#include "sky/search_scope.h"
#include "sky/units.h"
#include "solsys/sky/conjunctions.h"

namespace solsys::sky {
namespace {

constexpr double kGatheringPrecision = 0.1 * search::kSecond;
constexpr double kRounding = 1e-12;  // rad: a point on the circle is inside

struct SmallestCircle {
    Vec3 centre{};
    double radius = kPi;  // rad
};

bool holds(const SmallestCircle& circle, const std::vector<Vec3>& points) {
    return std::all_of(points.begin(), points.end(), [&circle](Vec3 p) {
        return separation(circle.centre, p) <= circle.radius + kRounding;
    });
}

// The smallest circle on the sphere around points within a hemisphere: that of two of them, or
// through three of them.
SmallestCircle smallest_circle(const std::vector<Vec3>& points) {
    SmallestCircle best;
    const auto consider = [&](Vec3 centre, Vec3 on) {
        const SmallestCircle circle{centre, separation(centre, on)};
        if (circle.radius < best.radius && holds(circle, points)) best = circle;
    };
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t j = i + 1; j < points.size(); ++j) {
            consider(unit(points[i] + points[j]), points[i]);
            for (std::size_t k = j + 1; k < points.size(); ++k) {
                Vec3 pole = unit(cross(points[j] - points[i], points[k] - points[i]));
                if (dot(pole, points[i]) < 0) pole = -pole;
                consider(pole, points[i]);
            }
        }
    }
    return best;
}

class Gatherings {
  public:
    Gatherings(SearchScope& scope, const std::vector<Body>& bodies, double limit)
        : scope_(scope), limit_(limit), points_(bodies.size()) {
        for (const Body& body : bodies) {
            targets_.push_back(target_of(body));
            // A direction moves faster than its longitude when it climbs in latitude.
            fastest_ = std::max(fastest_, 1.1 * bounds_of(targets_.back()).lon1);
        }
    }

    std::vector<Gathering> find() {
        search::Span walk = scope_.span();
        double start = 0;  // of the stretch
        search::Sample before{walk.cursor, excess(walk.cursor)};
        bool inside = before.f < 0;
        if (inside) start = walk.start;
        while (!walk.over() && scope_.control().go_on(walk) && std::isfinite(before.f)) {
            // The radius changes by no more than the fastest body moves.
            const double step = std::max(std::fabs(before.f) / fastest_, kShortest);
            const double t = search::next_instant(walk, before.t, step);
            const search::Sample now{t, excess(t)};
            walk.cursor = t;
            if ((now.f < 0) != inside) {
                const double edge = search::root([this](double at) { return excess(at); },
                                                 {before, now}, kGatheringPrecision)
                                        .t;
                if (inside) add(start, edge);
                start = edge;
                inside = !inside;
            }
            before = now;
        }
        if (inside) add(start, before.t);
        return found_;
    }

  private:
    // Two stretches closer together than this, or shorter, are not told apart [day].
    static constexpr double kShortest = 10.0 / 1440;

    SmallestCircle circle(double t) {
        scope_.sky.at_in_same_frames(t);
        for (std::size_t i = 0; i < targets_.size(); ++i)
            points_[i] = scope_.sky.apparent(targets_[i]).direction;
        return smallest_circle(points_);
    }
    double excess(double t) {
        const SmallestCircle c = circle(t);
        return std::isfinite(points_[0].x + points_.back().x) ? c.radius - limit_
                                                              : std::nan("");
    }

    // The least circle of a stretch: the best of even samples, refined between its neighbours.
    void add(double from, double to) {
        constexpr int samples = 64;
        const double step = (to - from) / samples;
        double best = from;
        double least = kPi;
        for (int i = 0; i <= samples; ++i) {
            const double f = excess(from + i * step);
            if (f < least) least = f, best = from + i * step;
        }
        const double t = search::maximum([this](double at) { return -excess(at); },
                                         std::max(from, best - step), std::min(to, best + step),
                                         kGatheringPrecision)
                             .t;
        scope_.sky.at(t);
        const SmallestCircle c = circle(t);
        const Vec3 centre = scope_.sky.equator() * c.centre;
        const Vec3 sun = scope_.sky.sun().direction;
        Gathering gathering;
        gathering.at = Instant::from_tt(t);
        gathering.radius_deg = c.radius * kDegrees;
        gathering.ra_deg = longitude_of(centre.x, centre.y) * kDegrees;
        gathering.dec_deg = latitude_of(centre) * kDegrees;
        gathering.within = {Instant::from_tt(from), Instant::from_tt(to)};
        gathering.elongation_deg = separation(c.centre, sun) * kDegrees;
        if (diary::difference(scope_.sky.ecliptic(), c.centre, sun).sine < 0)
            gathering.elongation_deg *= -1;
        found_.push_back(gathering);
    }

    SearchScope& scope_;
    double limit_;
    double fastest_ = 1e-6;  // rad/day
    std::vector<diary::Target> targets_;
    std::vector<Vec3> points_;
    std::vector<Gathering> found_;
};

}  // namespace

std::vector<Gathering> gatherings(Model& model, const std::vector<Body>& bodies,
                                  const Span& span, double limit_deg, SearchControl* control) {
    if (bodies.size() < 2 || !(limit_deg > 0 && limit_deg < 60)) return {};
    for (const Body& body : bodies)
        if (!model.add(body)) return {};
    SearchScope scope(model, span, control);
    return Gatherings(scope, bodies, limit_deg / kDegrees).find();
}

}  // namespace solsys::sky
