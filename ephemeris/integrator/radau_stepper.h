// Everhart's integrator of 15th order: one step after the other.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "ephemeris/integrator/radau_nodes.h"

namespace solsys {

// What is integrated: y'' = f(t, y, y') or, of first order, y' = f(t, y). Times are counted
// from an epoch of the user's choice.
class Force {
  public:
    Force() = default;
    Force(const Force&) = delete;
    Force& operator=(const Force&) = delete;
    virtual ~Force() = default;

    // The eight instants of the step to come, t + offset: whatever depends on time alone is
    // made here, once for all iterations. (Sums would lose digits that a close approach needs.)
    // False: there is no force at one of them.
    virtual bool prepare(double t, std::span<const double> offsets) = 0;
    // The force at instant `node` (0 to 7) of those. `v` is null for first order. False: the
    // force is not defined there (a collision).
    virtual bool evaluate(int node, const double* x, const double* v, double* f) = 0;
};

enum class StepStatus {
    kOk,
    kNoForce,       // the force cannot be computed at some instant of the step
    kCollision,     // or not at the place that the motion comes to
    kTooSmall,      // the step shrank to nothing: a singularity
    kNotFinite,     // the start or the step is not a number, or the step is zero
    kTooManySteps,  // the bound on steps is reached
    kStopped,       // by the progress function
    kNoMemory       // for the steps
};

// A step as polynomials: times t0 + s T, s from 0 to 1. The numbers are x, v (of second order),
// f, b_1 ... b_7, each for all coordinates.
struct StepPolynomial {
    double t0 = 0;
    double T = 0;
    const double* numbers = nullptr;
};

// x and, of second order, v at the fraction s of a step into `state` (x first).
void evaluate_step(const StepPolynomial& step, int coordinates, int order, double s,
                   double* state);

class RadauStepper {
  public:
    // 1 <= coordinates, order 1 or 2 (not tested). `tolerance` is the largest b_7 in units of
    // the force that a step may have; coordinates in threes are bodies, judged one by one.
    RadauStepper(int coordinates, int order, Force& force, double tolerance);

    // Puts the start: x and, of second order, v. The first step tried is `step`, whose sign is
    // the direction.
    StepStatus start(double t, const double* state, double step);
    // One step. On failure the stepper stays where it is.
    StepStatus advance();

    [[nodiscard]] double time() const { return t_; }
    // The step made last; valid until the next.
    [[nodiscard]] StepPolynomial last() const { return {t0_, done_, numbers_.data()}; }
    // Numbers of a StepPolynomial.
    [[nodiscard]] std::size_t numbers() const { return numbers_.size(); }
    [[nodiscard]] const double* state() const { return state_.data(); }
    [[nodiscard]] const double* low() const { return low_.data(); }

  private:
    using Rows = std::vector<double>;  // kTerms rows of one number per coordinate

    StepStatus attempt(double T, double& error);
    bool iterate(double T, double& change);
    void integrate(const std::array<double, radau::kTerms + 1>& weights, double* sum) const;
    void whole(const std::array<radau::Split, radau::kTerms + 1>& weights, double* sum) const;
    void place(double T, int node, double* x, double* v);
    void improve(int j, const double* f);
    void newton_from_powers();
    double last_term_ratio(const double* row) const;
    void accept(double T);
    void predict(double ratio);

    double* row(Rows& rows, int k) { return rows.data() + static_cast<std::size_t>(k) * n_; }
    const double* row(const Rows& rows, int k) const {
        return rows.data() + static_cast<std::size_t>(k) * n_;
    }

    std::size_t n_;
    int order_;
    Force& force_;
    double tolerance_, converged_;

    double t_ = 0, t_low_ = 0;         // time, and what rounding took from it
    std::vector<double> state_, low_;  // x, v; and what rounding took from them
    double step_ = 0;                  // to be tried next
    double t0_ = 0, done_ = 0;         // the step made last
    std::vector<double> numbers_;      // its polynomial
    std::vector<double> f0_, x_, v_, change_, sum_;
    std::vector<double> f_;  // at the eight nodes, one row each
    Rows b_, g_;             // of the step being iterated
    Rows carried_;           // b as the step before carries on
    Rows kept_, lacked_;     // of the step made last: b, and what carrying on had lacked
    bool has_last_ = false;
    double noise_ = 0;        // the last term that the rounding of the force alone makes
    double comfortable_ = 0;  // length of the steps of late
};

}  // namespace solsys
