#include "solsys/sky/phases.h"

#include <cmath>

#include "sky/units.h"
#include "solsys/sky/places.h"

namespace solsys::sky {
namespace {

constexpr double kStepDays = 1;
constexpr double kToleranceDays = 0.5 / 86400;

// Puts the observer at the Earth's centre for as long as it lives.
class FromEarthCentre {
  public:
    explicit FromEarthCentre(Model& model) : model_(model), site_(model.site()) {
        model.observe_from_earth_centre();
    }
    ~FromEarthCentre() {
        if (site_) model_.observe_from(*site_);
    }
    FromEarthCentre(const FromEarthCentre&) = delete;
    FromEarthCentre& operator=(const FromEarthCentre&) = delete;

  private:
    Model& model_;
    std::optional<Site> site_;
};

double phase_angle(Model& model, const Instant& t) {
    if (!model.move_to(t)) return std::nan("");
    const auto longitude = [&model](const Body& body) {
        const auto place = apparent_place(model, body);
        return place ? ecliptic_of(model, *place).lon_deg : std::nan("");
    };
    const double angle = longitude(moon()) - longitude(sun());
    return angle < 0 ? angle + 360 : angle;
}

// How far the angle is beyond a quarter, in (-180, 180].
double beyond(double angle_deg, int quarter) {
    return std::remainder(angle_deg - 90.0 * quarter, 360.0);
}

// The phase gains 10 to 15 degrees a day: a secant from inside the day settles in a few steps.
Instant refined(Model& model, Instant from, Instant to, int quarter) {
    while (days_between(from, to) > kToleranceDays) {
        const double low = beyond(phase_angle(model, from), quarter);
        const double high = beyond(phase_angle(model, to), quarter);
        const double length = days_between(from, to);
        const double guess = length * -low / (high - low);
        // A little to both sides of the guess; half the interval where that fails.
        const double margin = std::max(kToleranceDays / 3, length * 1e-3);
        const Instant left = from.plus_days(std::max(0.0, guess - margin));
        const Instant right = from.plus_days(std::min(length, guess + margin));
        if (beyond(phase_angle(model, left), quarter) <= 0 &&
            beyond(phase_angle(model, right), quarter) > 0) {
            from = left, to = right;
            continue;
        }
        const Instant middle = from.plus_days(length / 2);
        (beyond(phase_angle(model, middle), quarter) <= 0 ? from : to) = middle;
    }
    return from.plus_days(days_between(from, to) / 2);
}

}  // namespace

MoonPhase moon_phase(Model& model, const Instant& t) {
    const FromEarthCentre observer(model);
    MoonPhase phase;
    phase.angle_deg = phase_angle(model, t);
    model.classic().PhaseElongation(moon().id, nullptr, &phase.illuminated, nullptr, nullptr,
                                    nullptr);
    return phase;
}

const char* to_string(Phase phase) {
    switch (phase) {
        case Phase::kNew:
            return "new Moon";
        case Phase::kFirstQuarter:
            return "first quarter";
        case Phase::kFull:
            return "full Moon";
        case Phase::kLastQuarter:
            return "last quarter";
    }
    return "";
}

std::vector<PhaseEvent> principal_phases(Model& model, const Span& span) {
    const FromEarthCentre observer(model);
    std::vector<PhaseEvent> events;
    Instant from = span.from;
    double before = phase_angle(model, from);
    while (from < span.to) {
        Instant to = from.plus_days(kStepDays);
        if (to > span.to) to = span.to;
        const double after = phase_angle(model, to);
        if (!std::isfinite(before) || !std::isfinite(after)) return events;
        for (int quarter = 0; quarter < 4; ++quarter)
            if (beyond(before, quarter) <= 0 && beyond(before, quarter) > -90 &&
                beyond(after, quarter) > 0 && beyond(after, quarter) < 90)
                events.push_back(
                    {refined(model, from, to, quarter), static_cast<Phase>(quarter)});
        from = to;
        before = after;
    }
    return events;
}

}  // namespace solsys::sky
