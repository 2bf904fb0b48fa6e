#include "ephemeris/integrator/integrated_motion.h"

#include <cmath>

#include "core/answer_or.h"
#include "ephemeris/planet_states.h"

namespace solsys {
namespace {

constexpr double kTolerance = 1e-6;  // of the last term of a step: 1e-10 au in a century
// First steps tried [day], about the Sun and about a planet.
constexpr double kFirstStep = 1.0, kFirstStepAboutPlanet = 1e-3;
constexpr double kOtherStep = 0.015;

}  // namespace

IntegratedMotion::IntegratedMotion(std::shared_ptr<Perturbers> perturbers, MassiveBody centre,
                                   Instant epoch, const State& start, const SmallForces& forces)
    : perturbers_(std::move(perturbers)),
      centre_(centre),
      epoch_(epoch),
      start_(start),
      forces_(forces) {}

bool IntegratedMotion::starts_as(MassiveBody centre, Instant epoch, const State& start,
                                 const SmallForces& forces) const {
    const State d = start - start_;
    const SmallForces& f = forces_;
    return centre == centre_ && days_between(epoch_, epoch) == 0 &&
           dot(d.r, d.r) + dot(d.v, d.v) == 0 && f.A1 == forces.A1 && f.A2 == forces.A2 &&
           f.A3 == forces.A3 && f.inverse_square == forces.inverse_square &&
           f.radiation == forces.radiation;
}

void IntegratedMotion::begin() {
    motion_.reset();
    file_changes_ = de_file_changes();
    perturbers_->renew();
    double start[6];
    store(start_, start);
    force_ = std::make_unique<SmallBodyForce>(*perturbers_, days_since_j2000(epoch_), centre_,
                                              forces_, 1);
    force_->tell_apart(start);
    State sun{};
    force_->origin(0, sun);  // none: the integration finds no force either
    store(start_ + sun, start);
    motion_ = std::make_unique<Trajectory>(3, 2, *force_, kTolerance);
    const bool about_sun = centre_ == kTheSun;
    status_ = motion_->start(start, about_sun ? kFirstStep : kFirstStepAboutPlanet,
                             about_sun ? kOtherStep : kFirstStepAboutPlanet);
}

bool IntegratedMotion::state(Instant t, State& out, const Trajectory::Progress& progress) {
    if (stopped_) return false;
    double s[6];
    const double days = days_between(epoch_, t);
    status_ = answer_or(StepStatus::kNoMemory, [&] {
        if (!motion_ || file_changes_ != de_file_changes()) begin();
        return motion_->state_at(days, s, progress);
    });
    stopped_ = status_ == StepStatus::kStopped;
    State sun{};
    if (status_ == StepStatus::kOk && !force_->origin(days, sun))
        status_ = StepStatus::kNoForce;
    if (status_ != StepStatus::kOk) return false;
    out = load_state(s) - sun;
    return true;
}

}  // namespace solsys
