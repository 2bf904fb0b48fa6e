// The motion of one body as far as it has been asked for.
#pragma once

#include <memory>

#include "ephemeris/integrator/small_body_force.h"

namespace solsys {

class IntegratedMotion {
  public:
    // `start` is the state at `epoch` about `centre` (the Sun, a planet or the Moon), J2000
    // equator. Nothing is integrated yet.
    IntegratedMotion(std::shared_ptr<Perturbers> perturbers, MassiveBody centre, Instant epoch,
                     const State& start, const SmallForces& forces);

    // The state about the centre. False, and `out` left alone, where the integration does not
    // come, and from the moment that `progress` has ended it until `take_up`.
    bool state(Instant t, State& out, const Trajectory::Progress& progress);
    void take_up() { stopped_ = false; }
    // Whether the state asked for last could be given.
    [[nodiscard]] bool serves() const { return !stopped_ && status_ == StepStatus::kOk; }
    [[nodiscard]] std::size_t steps() const { return motion_ ? motion_->steps() : 0; }
    // Whether another one would be the same motion.
    [[nodiscard]] bool starts_as(MassiveBody centre, Instant epoch, const State& start,
                                 const SmallForces& forces) const;

  private:
    void begin();

    std::shared_ptr<Perturbers> perturbers_;
    MassiveBody centre_;
    Instant epoch_;
    State start_;
    SmallForces forces_;
    std::unique_ptr<SmallBodyForce> force_;
    std::unique_ptr<Trajectory> motion_;
    std::uint32_t file_changes_ = 0;  // when it began: another DE file has other perturbers
    bool stopped_ = false;
    StepStatus status_ = StepStatus::kOk;
};

}  // namespace solsys
