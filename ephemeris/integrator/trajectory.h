// A motion integrated as far as it is asked for, kept as polynomials: a state at an instant
// once reached costs an evaluation.
#pragma once

#include <functional>
#include <vector>

#include "ephemeris/integrator/radau_stepper.h"

namespace solsys {

class Trajectory {
  public:
    // False ends the integration; the argument is the part done of the span asked for, 0 to 1.
    using Progress = std::function<bool(double)>;

    // As RadauStepper; the force must outlive this.
    Trajectory(int coordinates, int order, Force& force, double tolerance);

    // Puts the state at time 0. `step` is the first to be tried in the direction first asked
    // for, `other_step` in the other one.
    StepStatus start(const double* state, double step, double other_step);
    // The state (x and, of second order, v) at t, on either side of the start. On failure `out`
    // is left alone and the motion stays known as far as it was; where memory ends
    // (std::bad_alloc) that side is begun anew the next time.
    StepStatus state_at(double t, double* out, const Progress& progress = {});
    // The times between which states are known.
    [[nodiscard]] double first() const { return before_.end; }
    [[nodiscard]] double last() const { return after_.end; }
    // Steps made so far.
    [[nodiscard]] std::size_t steps() const { return before_.t0.size() + after_.t0.size(); }

  private:
    // The steps on one side of the start, in the order they were made.
    struct Side {
        Side(int coordinates, int order, Force& force, double tolerance)
            : stepper(coordinates, order, force, tolerance) {}
        RadauStepper stepper;
        std::vector<double> t0, numbers;
        double end = 0;
        std::size_t recent = 0;  // the step asked for last
        bool started = false;

        void forget();
    };

    StepStatus extend(Side& side, double t, const Progress& progress);
    void evaluate(Side& side, double t, double* out) const;

    int coordinates_, order_;
    Side after_, before_;
    std::vector<double> start_;
    double step_ = 1, other_step_ = 1;
    bool sound_ = false;
};

}  // namespace solsys
