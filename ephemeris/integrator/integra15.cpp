#include <algorithm>
#include <cmath>
#include <limits>

#include "core/answer_or.h"
#include "ephemeris/integrator/small_body_force.h"
#include "ephemeris/planet_states.h"
#include "solsys/integrator.h"
#include "solsys/time_scales.h"

namespace solsys {
namespace {

constexpr double kTolerance = 1e-6;
constexpr double kLeastTolerance = 1e-12, kMostTolerance = 1e-3;
constexpr int kMostCoordinates = 3000;

// A host's function of days after the start.
class HostForce final : public Force {
  public:
    HostForce(IntegRA15::ForceFn function, void* context)
        : function_(function), context_(context) {}
    bool prepare(double t, std::span<const double> offsets) override {
        for (std::size_t i = 0; i < offsets.size(); ++i) times_[i] = t + offsets[i];
        return true;
    }
    bool evaluate(int node, const double* x, const double* v, double* f) override {
        return function_(times_[static_cast<std::size_t>(node)], x, v, f, context_);
    }

  private:
    IntegRA15::ForceFn function_;
    void* context_;
    std::array<double, radau::kTerms + 1> times_{};
};

IntegrStatus public_status(StepStatus status, bool host) {
    switch (status) {
        case StepStatus::kOk:
            return INTEGR_OK;
        case StepStatus::kNoForce:
            return INTEGR_NO_FORCE;
        case StepStatus::kCollision:
            return host ? INTEGR_NO_FORCE : INTEGR_COLLISION;
        case StepStatus::kTooSmall:
            return INTEGR_STEP;
        case StepStatus::kTooManySteps:
            return INTEGR_STEPS;
        case StepStatus::kStopped:
            return INTEGR_STOPPED;
        case StepStatus::kNoMemory:
            return INTEGR_MEMORY;
        case StepStatus::kNotFinite:
            break;
    }
    return INTEGR_NOT_STARTED;
}

}  // namespace
}  // namespace solsys

struct IntegRA15::Work {
    std::shared_ptr<solsys::Perturbers> perturbers;
    int coordinates = 3, order = 2;
    ForceFn host_force = nullptr;
    void* host_context = nullptr;
    SmallForces forces;
    double tolerance = solsys::kTolerance;
    double step1 = 1.0, step2 = 0.015;
    ProgressFn progress = nullptr;
    void* progress_context = nullptr;

    std::unique_ptr<solsys::Force> force;
    solsys::SmallBodyForce* built_in = nullptr;  // the force, when it is that
    std::unique_ptr<solsys::Trajectory> motion;  // null: to be begun
    solsys::Instant epoch{0, 0.0};
    std::vector<double> start, state;  // no start: not started
    std::uint32_t file_changes = 0;
    bool moved = false;  // whether a direction has been taken
    bool has_state = false;
    int status = INTEGR_NOT_STARTED;

    void forget() {
        motion.reset();
        built_in = nullptr;
        force.reset();
        start.clear();
        has_state = false;
        status = INTEGR_NOT_STARTED;
    }
    bool begin(double first, double other);
    IntegrStatus go_to(double t, double first, double other);
    // Adds `sign` times where the Sun is from the origin of the coordinates at a time.
    bool from_origin(double t, double sign, std::vector<double>& bodies) const;
};

Integrator::~Integrator() = default;

IntegRA15::IntegRA15() : IntegRA15(nullptr) {}

IntegRA15::IntegRA15(std::shared_ptr<solsys::Perturbers> perturbers)
    : work_(std::make_unique<Work>()) {
    work_->perturbers = std::move(perturbers);
    ET_UT::Init(nullptr);
}

IntegRA15::~IntegRA15() { ET_UT::Finish(); }

bool IntegRA15::Init(int equations, short coordinates, short order) {
    if (coordinates < 1 || coordinates > solsys::kMostCoordinates || order < 1 || order > 2 ||
        equations < 2 * coordinates * order) {
        return false;
    }
    work_->forget();
    work_->coordinates = coordinates;
    work_->order = order;
    return true;
}

void IntegRA15::SetForce(ForceFn force, void* context) {
    work_->forget();
    work_->host_force = force;
    work_->host_context = context;
}

void IntegRA15::SetForces(const SmallForces& forces) {
    work_->forget();
    work_->forces = forces;
}

void IntegRA15::SetTolerance(double tolerance) {
    work_->forget();
    if (!std::isnan(tolerance))
        work_->tolerance =
            std::clamp(tolerance, solsys::kLeastTolerance, solsys::kMostTolerance);
}

void IntegRA15::SetCallBack(ProgressFn progress, void* context) {
    work_->progress = progress;
    work_->progress_context = context;
}

void IntegRA15::SetSteps(double step1, double step2) {
    work_->step1 = step1;
    work_->step2 = step2;
}

bool IntegRA15::Work::begin(double first, double other) {
    using namespace solsys;
    motion.reset();
    built_in = nullptr;
    force.reset();
    moved = has_state = false;
    file_changes = de_file_changes();
    if (host_force != nullptr) {
        force = std::make_unique<HostForce>(host_force, host_context);
    } else {
        if (order != 2 || coordinates % 3 != 0) return false;
        if (!perturbers) perturbers = std::make_shared<Perturbers>(true);
        perturbers->renew();
        auto made = std::make_unique<SmallBodyForce>(*perturbers, days_since_j2000(epoch),
                                                     kTheSun, forces, coordinates / 3);
        made->tell_apart(start.data());
        built_in = made.get();
        force = std::move(made);
    }
    motion = std::make_unique<Trajectory>(coordinates, order, *force, tolerance);
    std::vector<double> from = start;
    from_origin(0, 1, from);  // none: the integration finds no force either
    if (motion->start(from.data(), first, other) == StepStatus::kOk) return true;
    motion.reset();
    return false;
}

bool IntegRA15::Work::from_origin(double t, double sign, std::vector<double>& bodies) const {
    if (built_in == nullptr) return true;
    solsys::State sun{};
    if (!built_in->origin(t, sun)) return false;
    const auto n = static_cast<std::size_t>(coordinates);
    for (std::size_t i = 0; i < n; i += 3) {
        store(solsys::load(&bodies[i]) + sign * sun.r, &bodies[i]);
        store(solsys::load(&bodies[n + i]) + sign * sun.v, &bodies[n + i]);
    }
    return true;
}

bool IntegRA15::Start(int day, double fraction, const double* state) {
    Work& w = *work_;
    w.forget();
    if (state == nullptr || !std::isfinite(fraction)) return false;
    w.epoch = {day, fraction};
    w.status = solsys::answer_or(INTEGR_MEMORY, [&] {
        w.start.assign(state, state + w.coordinates * w.order);
        return w.begin(w.step1, w.step2) ? INTEGR_OK : INTEGR_NOT_STARTED;
    });
    return w.status == INTEGR_OK;
}

bool IntegRA15::RA15(int day, double fraction, double step1, double step2) {
    Work& w = *work_;
    if (w.start.empty() || !std::isfinite(fraction) || !std::isfinite(step1) ||
        !std::isfinite(step2) || step1 == 0 || step2 == 0) {
        w.status = INTEGR_NOT_STARTED;
        return false;
    }
    const double t = days_between(w.epoch, {day, fraction});
    w.status = solsys::answer_or(INTEGR_MEMORY, [&] { return w.go_to(t, step1, step2); });
    w.has_state = w.status == INTEGR_OK;
    return w.has_state;
}

IntegrStatus IntegRA15::Work::go_to(double t, double first, double other) {
    const bool another_file =
        host_force == nullptr && file_changes != solsys::de_file_changes();
    if ((another_file || !moved || !motion) && !begin(first, other)) return INTEGR_NOT_STARTED;
    moved = true;
    solsys::Trajectory::Progress told;
    if (progress != nullptr)
        told = [this](double done) { return progress(done, progress_context); };
    state.resize(start.size());
    solsys::StepStatus reached = motion->state_at(t, state.data(), told);
    if (reached == solsys::StepStatus::kOk && !from_origin(t, -1, state))
        reached = solsys::StepStatus::kNoForce;
    return solsys::public_status(reached, host_force != nullptr);
}

bool IntegRA15::GetState(double* state) const {
    if (!work_->has_state) return false;
    std::copy(work_->state.begin(), work_->state.end(), state);
    return true;
}

bool IntegRA15::IntegrateTo(int day, double fraction, double* state) {
    return RA15(day, fraction, work_->step1, work_->step2) && GetState(state);
}

int IntegRA15::Status() const { return work_->status; }

int IntegRA15::StepCount() const {
    return work_->motion ? static_cast<int>(work_->motion->steps()) : 0;
}
