#include "ephemeris/integrator/trajectory.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace solsys {
namespace {

constexpr std::size_t kMostSteps = 400'000;  // on either side: 100 MB of one body
constexpr std::size_t kStepsPerReport = 64;

}  // namespace

Trajectory::Trajectory(int coordinates, int order, Force& force, double tolerance)
    : coordinates_(coordinates),
      order_(order),
      after_(coordinates, order, force, tolerance),
      before_(coordinates, order, force, tolerance),
      start_(static_cast<std::size_t>(coordinates * order)) {}

void Trajectory::Side::forget() {
    t0.clear();
    numbers.clear();
    end = 0;
    recent = 0;
    started = false;
}

StepStatus Trajectory::start(const double* state, double step, double other_step) {
    std::copy_n(state, start_.size(), start_.begin());
    step_ = std::fabs(step);
    other_step_ = std::fabs(other_step);
    after_.forget();
    before_.forget();
    const StepStatus status = after_.stepper.start(0, state, step_);
    sound_ = status == StepStatus::kOk && std::isfinite(other_step_) && other_step_ > 0;
    return sound_ ? StepStatus::kOk : StepStatus::kNotFinite;
}

StepStatus Trajectory::extend(Side& side, double t, const Progress& progress) {
    if (!side.started) {
        const bool first = !after_.started && !before_.started;
        const double step = first ? step_ : other_step_;
        side.stepper.start(0, start_.data(), std::copysign(step, t));
        side.started = true;
    }
    const double from = side.end;
    while (std::fabs(side.end) < std::fabs(t)) {
        if (side.t0.size() >= kMostSteps) return StepStatus::kTooManySteps;
        if (progress && side.t0.size() % kStepsPerReport == kStepsPerReport - 1 &&
            !progress((side.end - from) / (t - from)))
            return StepStatus::kStopped;
        const StepStatus status = side.stepper.advance();
        if (status != StepStatus::kOk) return status;
        const StepPolynomial step = side.stepper.last();
        side.t0.push_back(step.t0);
        side.numbers.insert(side.numbers.end(), step.numbers,
                            step.numbers + side.stepper.numbers());
        side.end = side.stepper.time();
    }
    return StepStatus::kOk;
}

void Trajectory::evaluate(Side& side, double t, double* out) const {
    const auto later = [&](double a, double b) { return std::fabs(a) < std::fabs(b); };
    const auto covers = [&](std::size_t i) {
        const double next = i + 1 < side.t0.size() ? side.t0[i + 1] : side.end;
        return std::fabs(side.t0[i]) <= std::fabs(t) && std::fabs(t) <= std::fabs(next);
    };
    if (!covers(side.recent)) {
        const auto after = std::upper_bound(side.t0.begin(), side.t0.end(), t, later);
        side.recent = static_cast<std::size_t>(after - side.t0.begin()) - 1;
    }
    const std::size_t i = side.recent;
    const double T = (i + 1 < side.t0.size() ? side.t0[i + 1] : side.end) - side.t0[i];
    const double* numbers = side.numbers.data() + i * side.stepper.numbers();
    evaluate_step({side.t0[i], T, numbers}, coordinates_, order_, (t - side.t0[i]) / T, out);
}

StepStatus Trajectory::state_at(double t, double* out, const Progress& progress) {
    if (!sound_ || !std::isfinite(t)) return StepStatus::kNotFinite;
    if (t == 0) {
        std::copy(start_.begin(), start_.end(), out);
        return StepStatus::kOk;
    }
    Side& side = t > 0 ? after_ : before_;
    if (std::fabs(t) > std::fabs(side.end)) {
        try {
            const StepStatus status = extend(side, t, progress);
            if (status != StepStatus::kOk) return status;
        } catch (const std::bad_alloc&) {
            side.forget();  // a step half made
            throw;
        }
    }
    evaluate(side, t, out);
    return StepStatus::kOk;
}

}  // namespace solsys
