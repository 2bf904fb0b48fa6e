#include "solsys/sky/passes.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "events/search/crossings.h"
#include "sky/satellite_track.h"
#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLongestPassSpan = 100'000;                        // days
constexpr double kGm = 398600.8 * kSecondsPerDay * kSecondsPerDay;  // km^3/day^2
constexpr double kEarthTurn = 6.300388;                             // rad/day
constexpr double kCivilDusk = -6;                                   // degrees
constexpr double kRootTolerance = 1e-9;                             // day

double sq(double x) { return x * x; }

// Height over the horizon asked for, f = up . d - sin(h) |d| [km], with what bounds its second
// derivative.
struct Sample {
    double t = 0;
    double f = kNan;
    double radius = 0, range = 0;  // km
};

// A bound of a speed on an ellipse about the Earth [km/day].
double fastest(double radius) { return std::sqrt(2 * kGm / radius); }

class PassSearch {
  public:
    PassSearch(SatelliteTrack& track, double horizon_deg, double days)
        : track_(track), sine_(std::sin(horizon_deg / kDegrees)), days_(days) {}

    struct Stretch {
        double from, to;
        bool rises, sets;
    };
    // In order, each when it has ended; that in which the search is stopped is none.
    void each_stretch(SearchControl* control, const std::function<void(const Stretch&)>& take);

  private:
    Sample sample(double t);
    double bound(const Sample& a, const Sample& b) const;
    void find(const Sample& a, const Sample& b, std::vector<double>& found);

    SatelliteTrack& track_;
    double sine_;
    double days_;
};

Sample PassSearch::sample(double t) {
    const auto look = track_.look(t);
    if (!look) return {t, kNan, 0, 0};
    const double range = look->range();
    return {t, dot(track_.up(*look), look->line) - sine_ * range, norm(look->satellite), range};
}

// In the Earth's turning frame, where the site rests: |(up . d)''| is at most the acceleration,
// |d''| at most that and v^2/|d|. The satellite's own is that of the Earth's mass; 2 per cent
// hold its oblateness, the Moon and the Sun. Speeds are below that of escape, which also bounds
// how far radius and range can be from their values at the ends.
double PassSearch::bound(const Sample& a, const Sample& b) const {
    const double h = b.t - a.t;
    const double ground = 0.98 * kEarthRadiusKm;  // states below it are none
    const auto least = [h](double x, double y, double speed) {
        return (x + y - speed * h) / 2;
    };
    double low = std::max(ground, least(a.radius, b.radius, fastest(ground)));
    low = std::max(low, least(a.radius, b.radius, fastest(low)));
    const double high = (a.radius + b.radius + fastest(low) * h) / 2;
    const double v = fastest(low) + kEarthTurn * high;
    const double acceleration =
        1.02 * kGm / sq(low) + 2 * kEarthTurn * v + sq(kEarthTurn) * high;
    const double range =
        std::max({1.0, low - track_.site_radius(), least(a.range, b.range, v)});
    return acceleration + std::fabs(sine_) * (acceleration + sq(v) / range);
}

// The zeros between two samples, in order.
void PassSearch::find(const Sample& a, const Sample& b, std::vector<double>& found) {
    const search::Bracket x{{a.t, a.f}, {b.t, b.f}};
    const bool first = std::isnan(a.f), second = std::isnan(b.f);
    if (first && second) return;
    const auto what = first || second ? search::Inside::kUnclear : inside(x, bound(a, b));
    if (what == search::Inside::kNothing) return;
    const bool narrow = b.t - a.t <= search::kNarrowest;
    if (what == search::Inside::kOne || (narrow && search::changes_sign(x))) {
        found.push_back(
            search::root([this](double t) { return sample(t).f; }, x, kRootTolerance).t);
        return;
    }
    if (narrow) return;
    const Sample middle = sample(a.t + (b.t - a.t) / 2);
    find(a, middle, found);
    find(middle, b, found);
}

void PassSearch::each_stretch(SearchControl* control,
                              const std::function<void(const Stretch&)>& take) {
    const double step = std::clamp(track_.period_days() / 12, 1 / 1440.0, 1 / 24.0);
    const auto stopped = [control] { return control != nullptr && control->stopped(); };
    Sample a = sample(0);
    std::optional<Stretch> up;
    if (a.f >= 0) up = Stretch{0, days_, false, false};
    const auto ends = [&](double t, bool sets) {
        up->to = t, up->sets = sets;
        take(*up);
        up.reset();
    };
    while (a.t < days_ && !stopped()) {
        const Sample b = sample(std::min(a.t + step, days_));
        std::vector<double> found;
        find(a, b, found);
        for (const double t : found) {
            if (up)
                ends(t, true);
            else
                up = Stretch{t, days_, true, false};
        }
        // The orbit ends, or begins again, where it has no state.
        if (up && std::isnan(b.f)) ends(a.t, false);
        if (!up && std::isnan(a.f) && b.f >= 0) up = Stretch{b.t, days_, false, false};
        a = b;
        if (control != nullptr) control->tell(a.t / days_);
    }
    if (up && !stopped()) ends(days_, false);
}

// A pass in detail.
class PassDetails {
  public:
    PassDetails(SatelliteTrack& track, const PassSearch::Stretch& stretch)
        : track_(track), x_(stretch) {}

    Pass pass() {
        Pass out;
        if (x_.rises) out.rise = view(x_.from);
        if (x_.sets) out.set = view(x_.to);
        out.culmination = view(highest());
        add_light_changes(out);
        choose_best(out);
        return out;
    }

  private:
    SatellitePlace view(double t) {
        const auto look = track_.look(t);
        return look ? track_.view(*look, t) : SatellitePlace{};
    }
    double sine(double t) {
        const auto look = track_.look(t);
        return look ? track_.sine_of_altitude(*look) : -1;
    }
    // Samples close enough that the highest one stands beside the highest place.
    [[nodiscard]] int samples() const {
        const double per_pass = (x_.to - x_.from) / track_.period_days() * 90;
        return static_cast<int>(std::clamp(per_pass, 8.0, 5000.0));
    }
    [[nodiscard]] double sample_time(int k, int n) const {
        return x_.from + (x_.to - x_.from) * k / n;
    }

    double highest() {
        const int n = samples();
        int best = 0;
        double top = -2;
        for (int k = 0; k <= n; ++k)
            if (const double s = sine(sample_time(k, n)); s > top) top = s, best = k;
        const auto function = [this](double t) { return sine(t); };
        const auto found = search::maximum(function, sample_time(std::max(best - 1, 0), n),
                                           sample_time(std::min(best + 1, n), n), 1e-8);
        return found.f > top ? found.t : sample_time(best, n);
    }

    // The angle from the shadow's edge changes no faster than this [rad/day].
    static double fastest_change(double radius) {
        const double r = std::max(radius, kEarthRadiusKm + 60);
        const double edge = kEarthRadiusKm / std::sqrt(r * r - sq(kEarthRadiusKm));
        return 1.2 * fastest(r) / r * (1 + edge) + 0.02;
    }

    // Steps that cannot jump over the edge, and where it is crossed.
    void add_crossings(int side, std::vector<std::pair<double, int>>& found) {
        const auto outside = [this, side](double t) {
            const auto look = track_.look(t);
            return look ? track_.outside_shadow(*look, t, side) : kNan;
        };
        double t = x_.from;
        double f = outside(t);
        while (t < x_.to && !std::isnan(f)) {
            const auto look = track_.look(t);
            if (!look) return;
            const double safe = std::fabs(f) / fastest_change(norm(look->satellite));
            const double next =
                std::min(t + std::clamp(safe, search::kSecond, 1 / 72.0), x_.to);
            const double g = outside(next);
            const search::Bracket x{{t, f}, {next, g}};
            if (search::changes_sign(x))
                found.emplace_back(search::root(outside, x, kRootTolerance).t,
                                   side < 0 ? (g < 0 ? 2 : 1) : (g < 0 ? 1 : 0));
            t = next, f = g;
        }
    }

    void add_light_changes(Pass& out) {
        std::vector<std::pair<double, int>> found;
        add_crossings(1, found);
        add_crossings(-1, found);
        std::sort(found.begin(), found.end());
        for (const auto& [t, light] : found) {
            out.light_changes.push_back({view(t)});
            out.light_changes.back().place.light = static_cast<Light>(light);
        }
    }

    void choose_best(Pass& out) {
        const int n = samples();
        double best = std::numeric_limits<double>::infinity();
        for (int k = 0; k <= n; ++k) {
            const SatellitePlace v = view(sample_time(k, n));
            if (v.light == Light::umbra || v.sun_altitude_deg > kCivilDusk) continue;
            const double score = v.magnitude ? *v.magnitude : -v.altitude_deg;
            if (score < best) best = score, out.best = v;
        }
    }

    SatelliteTrack& track_;
    PassSearch::Stretch x_;
};

}  // namespace

std::vector<Pass> passes(Model& model, const Site& site, const Satellite& satellite,
                         const Span& span, const PassLimits& limits, SearchControl* control) {
    const auto elements = prepared(satellite.elements);
    const double days = std::min(span.days(), kLongestPassSpan);
    if (!elements || !(days > 0) || !(limits.horizon_deg >= -10 && limits.horizon_deg <= 89))
        return {};
    SatelliteTrack track(model, site, *elements, span.from);
    track.set_standard_magnitude(satellite.standard_magnitude);
    std::vector<Pass> out;
    PassSearch search(track, limits.horizon_deg, days);
    search.each_stretch(control, [&](const PassSearch::Stretch& stretch) {
        Pass pass = PassDetails(track, stretch).pass();
        if (pass.culmination.altitude_deg >= limits.culmination_deg)
            out.push_back(std::move(pass));
    });
    return out;
}

std::vector<SatellitePlace> path_of(Model& model, const Site& site, const Satellite& satellite,
                                    const Span& span, double step_s) {
    constexpr double kMost = 1e6;
    const auto elements = prepared(satellite.elements);
    const double count = span.days() * kSecondsPerDay / step_s;
    if (!elements || !(step_s > 0) || !(count >= 0 && count <= kMost)) return {};
    SatelliteTrack track(model, site, *elements, span.from);
    track.set_standard_magnitude(satellite.standard_magnitude);
    std::vector<SatellitePlace> out;
    for (int k = 0; k <= count; ++k) {
        const double t = k * step_s / kSecondsPerDay;
        if (const auto look = track.look(t)) out.push_back(track.view(*look, t));
    }
    return out;
}

std::optional<SatellitePlace> satellite_place(Model& model, const Site& site,
                                              const Satellite& satellite, const Instant& t) {
    const auto elements = prepared(satellite.elements);
    if (!elements) return std::nullopt;
    SatelliteTrack track(model, site, *elements, t);
    track.set_standard_magnitude(satellite.standard_magnitude);
    const auto look = track.look(0);
    return look ? std::optional(track.view(*look, 0)) : std::nullopt;
}

}  // namespace solsys::sky
