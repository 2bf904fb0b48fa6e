#include "events/eclipses/curves.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/angles.h"
#include "core/root_finder.h"

namespace solsys::eclipses {
namespace {

constexpr int kScan = 96;                 // samples of time that look for a curve
constexpr int kPoints = 120;              // points of a curve found
constexpr double kCurveTolerance = 1e-9;  // hours, of the ends of curves

// A point of the limb, as seen along the axis: height 0 on the sphere of the flattened Earth.
GroundPoint limb_point(const ShadowElements& e, double theta) {
    GroundPoint p{};
    p.xi = std::cos(theta);
    p.eta1 = std::sin(theta);
    p.eta = e.earth.rho1 * p.eta1;
    p.zeta = -e.earth.rho2 * p.eta1 * e.earth.sin_d1_d2;
    return p;
}

// How far a limb point is outside the penumbra.
double outside_penumbra(const ShadowElements& e, double theta) {
    const GroundPoint p = limb_point(e, theta);
    return std::hypot(e.x - p.xi, e.y - p.eta) - (e.l1 - p.zeta * e.tan_f1);
}

double limb_direction(const ShadowElements& e) { return std::atan2(e.y / e.earth.rho1, e.x); }

// The arc of the limb within the penumbra; nothing when there is none.
std::optional<Pair> limb_arc(const ShadowElements& e) {
    const double middle = limb_direction(e);
    const auto f = [&](double theta) { return outside_penumbra(e, theta); };
    if (!(f(middle) < 0)) return std::nullopt;
    return Pair{zeroin(middle - kPi, middle, f, 1e-11), zeroin(middle, middle + kPi, f, 1e-11)};
}

EclipsePoint at_limb(const SolarPath& path, double h, const ShadowElements& e, double theta) {
    return ground_point(path, h, e, std::cos(theta), std::sin(theta), 0);
}

// The limb point that has its greatest phase right at `h`, on one side of the path.
std::optional<double> limb_extreme(const ShadowElements& e, Side side) {
    const std::optional<Pair> arc = limb_arc(e);
    if (!arc) return std::nullopt;
    const auto f = [&](double theta) {
        const GroundPoint p = limb_point(e, theta);
        const Motion m = motion_at(e, p);
        return (e.x - p.xi) * m.u + (e.y - p.eta) * m.v;
    };
    constexpr int kPieces = 16;
    const double piece = (arc->last - arc->first) / kPieces;
    double a = f(arc->first);
    for (int i = 1; i <= kPieces; ++i) {
        const double theta = arc->first + i * piece;
        const double b = f(theta);
        if ((a < 0) != (b < 0)) {
            const double root = zeroin(theta - piece, theta, f, 1e-11);
            const GroundPoint p = limb_point(e, root);
            const Motion m = motion_at(e, p);
            const double left = (p.eta - e.y) * m.u - (p.xi - e.x) * m.v;
            if ((left > 0) == (side == Side::kNorth)) return root;
        }
        a = b;
    }
    return std::nullopt;
}

// Instants over a span, closer together towards its ends.
double clustered(Pair span, int i, int n) {
    const double half = (span.last - span.first) / 2;
    return span.first + half * (1 - std::cos(kPi * i / n));
}

// The runs of time over which `exists` holds, their ends refined.
template <class Exists>
std::vector<Pair> runs_of(Pair span, Exists&& exists) {
    const auto edge = [&](double in, double out) {
        while (std::fabs(out - in) > kCurveTolerance) {
            const double middle = (in + out) / 2;
            (exists(middle) ? in : out) = middle;
        }
        return in;
    };
    std::vector<Pair> runs;
    double previous = 0;
    bool before = false;
    for (int i = 0; i <= kScan; ++i) {
        const double h = clustered(span, i, kScan);
        const bool now = exists(h);
        if (now && !before) runs.push_back({i == 0 ? h : edge(h, previous), h});
        if (now) runs.back().last = h;
        if (!now && before) runs.back().last = edge(runs.back().last, h);
        before = now;
        previous = h;
    }
    return runs;
}

double apart(const EclipsePoint& a, const EclipsePoint& b) {
    const double s = std::sin((a.latitude - b.latitude) / 2);
    const double c = std::sin((a.longitude - b.longitude) / 2);
    return s * s + std::cos(a.latitude) * std::cos(b.latitude) * c * c;
}

// Ends of a cone's curves on the horizon: where along "maximum at the horizon" the distance
// from the axis is the cone's radius.
EclipseCurve horizon_ends(const SolarPath& path, Pair span, ConeAt cone, double parameter,
                          Side side) {
    const auto beyond = [&](double h) {
        const ShadowElements e = path.at(h);
        const std::optional<double> theta = limb_extreme(e, side);
        if (!theta) return kNever;
        const GroundPoint p = limb_point(e, *theta);
        const Cone c = cone(e, parameter);
        return std::hypot(e.x - p.xi, e.y - p.eta) - std::fabs(c.a + c.b * p.zeta);
    };
    EclipseCurve ends;
    double before = beyond(span.first);
    for (int i = 1; i <= kScan; ++i) {
        const double a = clustered(span, i - 1, kScan), b = clustered(span, i, kScan);
        const double now = beyond(b);
        if (std::isfinite(before) && std::isfinite(now) && (before < 0) != (now < 0)) {
            const double h = zeroin(a, b, beyond, kCurveTolerance);
            const ShadowElements e = path.at(h);
            if (const auto theta = limb_extreme(e, side))
                ends.push_back(at_limb(path, h, e, *theta));
        }
        before = now;
    }
    return ends;
}

}  // namespace

EclipsePoint ground_point(const SolarPath& path, double h, const ShadowElements& e, double xi,
                          double eta1, double zeta1) {
    const Place place = place_at(xi, eta1, zeta1, e.earth, e.mu, path.radii.flattening);
    return {place.latitude, place.longitude, path.jd_ut(h)};
}

Curves maximum_at_horizon(const SolarPath& path, Pair span, Side side) {
    Curves curves;
    const auto exists = [&](double h) { return limb_extreme(path.at(h), side).has_value(); };
    for (const Pair& run : runs_of(span, exists)) {
        EclipseCurve& curve = curves.emplace_back();
        for (int i = 0; i <= kPoints; ++i) {
            const double h = clustered(run, i, kPoints);
            const ShadowElements e = path.at(h);
            if (const auto theta = limb_extreme(e, side))
                curve.push_back(at_limb(path, h, e, *theta));
        }
    }
    return curves;
}

Curves limit_curves(const SolarPath& path, Pair span, ConeAt cone, double parameter,
                    Side side) {
    Curves curves;
    if (std::isnan(span.first)) return curves;
    double guess = kNever;
    GroundPoint p{};
    const auto exists = [&](double h) {
        const ShadowElements e = path.at(h);
        const bool found = limit_point(e, cone(e, parameter), side, guess, p);
        if (!found) guess = kNever;
        return found;
    };
    EclipseCurve ends = horizon_ends(path, span, cone, parameter, side);
    for (const Pair& run : runs_of(span, exists)) {
        EclipseCurve curve;
        for (int i = 0; i <= kPoints; ++i) {
            const double h = clustered(run, i, kPoints);
            const ShadowElements e = path.at(h);
            if (limit_point(e, cone(e, parameter), side, guess, p))
                curve.push_back(ground_point(path, h, e, p.xi, p.eta1, p.zeta1));
        }
        if (curve.size() > 1) curves.push_back(std::move(curve));
    }
    // Each end on the horizon closes the nearest open end of a curve.
    for (const EclipsePoint& end : ends) {
        EclipseCurve* nearest = nullptr;
        bool front = false;
        double least = 0.06;  // 28 degrees: the gap where time runs back along a curve is less
        for (EclipseCurve& curve : curves) {
            const double at_front = apart(curve.front(), end);
            const double at_back = apart(curve.back(), end);
            if (std::min(at_front, at_back) >= least) continue;
            least = std::min(at_front, at_back);
            nearest = &curve;
            front = at_front < at_back;
        }
        if (nearest) nearest->insert(front ? nearest->begin() : nearest->end(), end);
    }
    return curves;
}

Curves central_line(const SolarPath& path, Pair span) {
    Curves curves;
    if (std::isnan(span.first)) return curves;
    EclipseCurve curve;
    for (int i = 0; i <= 2 * kPoints; ++i) {
        const double h = clustered(span, i, 2 * kPoints);
        const ShadowElements e = path.at(h);
        const double eta1 = e.y / e.earth.rho1;
        const double rest = 1 - e.x * e.x - eta1 * eta1;
        curve.push_back(ground_point(path, h, e, e.x, eta1, std::sqrt(std::max(rest, 0.0))));
    }
    curves.push_back(std::move(curve));
    return curves;
}

Curves rise_set_curves(const SolarPath& path, const SolarContacts& contacts) {
    std::vector<Pair> spans;
    const Pair outer = contacts.penumbra_outer, inner = contacts.penumbra_inner;
    if (std::isnan(outer.first)) return {};
    if (std::isnan(inner.first)) {
        spans.push_back(outer);
    } else {
        spans.push_back({outer.first, inner.first});
        spans.push_back({inner.last, outer.last});
    }
    Curves curves;
    for (const Pair& span : spans) {
        // There along one end of the arc, back along the other.
        EclipseCurve loop, back;
        for (int i = 0; i <= kPoints; ++i) {
            const double h = clustered(span, i, kPoints);
            const ShadowElements e = path.at(h);
            const Pair arc = limb_arc(e).value_or(Pair{limb_direction(e), limb_direction(e)});
            loop.push_back(at_limb(path, h, e, arc.first));
            back.push_back(at_limb(path, h, e, arc.last));
        }
        loop.insert(loop.end(), back.rbegin(), back.rend());
        curves.push_back(std::move(loop));
    }
    return curves;
}

Curves isochrone(const SolarPath& path, double h) {
    constexpr int kSteps = 24;
    const ShadowElements e = path.at(h);
    Curves curves;
    EclipseCurve current;
    const auto finish = [&] {
        if (current.size() > 1) curves.push_back(current);
        current.clear();
    };
    GroundPoint p{};
    double guess = kNever;
    const auto find = [&](double k) {
        if (k == 0) guess = kNever;
        return limit_point(e, part_of_penumbra(e, std::fabs(k)),
                           k > 0 ? Side::kNorth : Side::kSouth, guess, p);
    };
    double previous = 1;
    bool before = false;
    const auto edge = [&](double in, double out) {
        for (int i = 0; i < 24; ++i) {
            const double middle = (in + out) / 2;
            (find(middle) ? in : out) = middle;
        }
        if (find(in)) current.push_back(ground_point(path, h, e, p.xi, p.eta1, p.zeta1));
    };
    for (int i = kSteps; i >= -kSteps; --i) {
        const double k = static_cast<double>(i) / kSteps;
        if (i == 0 || i == -1) guess = kNever;
        const bool now = find(k);
        const GroundPoint here = p;
        if (now != before && i < kSteps) edge(now ? k : previous, now ? previous : k);
        if (now) current.push_back(ground_point(path, h, e, here.xi, here.eta1, here.zeta1));
        if (!now && before) finish();
        before = now;
        previous = k;
    }
    finish();
    return curves;
}

bool path_point(const SolarPath& path, double h, EclipsePathPoint& out) {
    const ShadowElements e = path.at(h);
    AxisPoint axis{};
    if (!axis_point(e, axis)) return false;
    const double eta1 = e.y / e.earth.rho1;
    const double zeta1 = std::sqrt(std::max(0.0, 1 - e.x * e.x - eta1 * eta1));
    const Place place = place_at(e.x, eta1, zeta1, e.earth, e.mu, path.radii.flattening);
    const Site site = site_at(place.latitude, place.longitude, 0, path.radii);
    const double l1 = e.l1 - axis.zeta * e.tan_f1;
    const double l2 = e.l2 - axis.zeta * e.tan_f2;
    const Motion m = motion_at(e, {axis.xi, eta1, zeta1, axis.eta, axis.zeta});
    const double n = std::hypot(m.u, m.v);

    out.latitude = place.latitude;
    out.longitude = place.longitude;
    out.time = path.jd_ut(h);
    out.magnitude = (l1 - l2) / (l1 + l2);
    out.total = l2 < 0;
    out.sun_altitude = std::asin(std::clamp(stand(site, e).sin_altitude, -1.0, 1.0));
    // Across the path on the ground, the motion and the slant of the ground considered.
    const double slant = (axis.xi * m.u + axis.eta * m.v) / n;
    out.width = 2 * std::fabs(l2) / std::hypot(axis.zeta, slant) * path.radii.earth;
    // Second to third contact of the site itself.
    const auto f = [&](double at) {
        const Standpoint s = stand(site, path.at(at));
        const ShadowElements now = path.at(at);
        return std::hypot(now.x - s.xi, now.y - s.eta) -
               std::fabs(now.l2 - s.zeta * now.tan_f2);
    };
    const double half = std::fabs(l2) / n;
    const Pair inner{root_near(f, h - half, 1e-9), root_near(f, h + half, 1e-9)};
    out.duration =
        3600 * (std::isnan(inner.first + inner.last) ? 2 * half : inner.last - inner.first);
    return true;
}

double longest(const SolarPath& path, Pair line) {
    const auto duration = [&](double h) {
        EclipsePathPoint p;
        return path_point(path, h, p) ? p.duration : 0.0;
    };
    double a = line.first, b = line.last;
    int best = 0;
    double most = 0;
    for (int i = 0; i <= 40; ++i) {
        const double d = duration(clustered({a, b}, i, 40));
        if (d > most) most = d, best = i;
    }
    const Pair around{clustered({a, b}, std::max(best - 1, 0), 40),
                      clustered({a, b}, std::min(best + 1, 40), 40)};
    a = around.first, b = around.last;
    constexpr double kGolden = 0.6180339887498949;
    double c = b - kGolden * (b - a), d = a + kGolden * (b - a);
    double fc = duration(c), fd = duration(d);
    while (b - a > 1e-5) {  // 40 ms; the maximum is flat
        if (fc > fd) {
            b = d, d = c, fd = fc;
            c = b - kGolden * (b - a), fc = duration(c);
        } else {
            a = c, c = d, fc = fd;
            d = a + kGolden * (b - a), fd = duration(d);
        }
    }
    return (a + b) / 2;
}

}  // namespace solsys::eclipses
