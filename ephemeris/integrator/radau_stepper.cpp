#include "ephemeris/integrator/radau_stepper.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace solsys {
namespace {

using radau::kConstants;
using radau::kTerms;

constexpr double kMostGrowth = 4.0;
constexpr double kWorstShrink = 0.25;
constexpr int kMostIterations = 12;
constexpr int kMostAttempts = 200;
// An iteration ends at this change of b_7 in units of the force, or of the tolerance if more.
constexpr double kConverged = 1e-13;
constexpr double kConvergedPart = 1e-5;
constexpr double kStillGood = 1e-11;      // at which an iteration that wanders may end
constexpr double kLeastStep = 1e-10;      // day
constexpr double kLeastRelative = 1e-15;  // of the time
constexpr double kLeastFactor = 0.7;      // a step that should have been this short passes
// A step whose last term does not get this much smaller in so many attempts, each half as long
// as the one before or shorter, suffers from the rounding of the force, not from its length.
constexpr double kClearlyBetter = 0.5;
constexpr int kFruitless = 3;
constexpr double kMostNoise = 1e-3;
// A force with a kink (an ephemeris in pieces) lets steps shrink towards it without end; one so
// much shorter than those before is taken across it.
constexpr double kKinkStep = 1e-3;
constexpr double kMostKink = 1e-2;
constexpr double kComfortKept = 0.85;  // from step to step: a true approach shortens them less

// sum + low, exactly, after adding x (Knuth's two-sum).
void add(double x, double& sum, double& low) {
    const double y = x + low;
    const double total = sum + y;
    const double back = total - sum;
    low = (sum - (total - back)) + (y - back);
    sum = total;
}

// sum + low, after adding T y: the product exactly, as long as T is short (see `shortened`).
void add_product(double T, double y, double& sum, double& low) {
    const double high = static_cast<float>(y);
    add(T * (y - high), sum, low);
    add(T * high, sum, low);
}

// A step rounded to 24 bits, so that its product with as short a number is exact.
double shortened(double T) {
    const double rounded = static_cast<float>(T);
    return std::isfinite(rounded) ? rounded : T;
}

// Calls the function with the number of coordinates, as a constant for one body and for three:
// its loops are then unrolled.
template <class Function>
void with_size(std::size_t n, Function&& function) {
    if (n == 3)
        function(std::integral_constant<std::size_t, 3>{});
    else if (n == 9)
        function(std::integral_constant<std::size_t, 9>{});
    else
        function(n);
}

bool all_finite(std::span<const double> values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

// NaN if any is.
double largest(const double* values, std::size_t count) {
    double most = 0;
    for (std::size_t i = 0; i < count; ++i)
        if (!(std::fabs(values[i]) <= most)) most = std::fabs(values[i]) + 0 * most;
    return most;
}

constexpr auto kReciprocals = [] {
    std::array<double, kTerms + 3> r{};
    for (std::size_t k = 1; k < r.size(); ++k) r[k] = 1.0 / static_cast<double>(k);
    return r;
}();

}  // namespace

void evaluate_step(const StepPolynomial& step, int coordinates, int order, double s,
                   double* state) {
    const auto n = static_cast<std::size_t>(coordinates);
    const double* x = step.numbers;
    const double* v = x + n;
    const double* f = x + static_cast<std::size_t>(order) * n;
    const double* b = f + n;
    for (std::size_t i = 0; i < n; ++i) {
        // The integrals s (f + b1 s/2 + ...) and s^2 (f/2 + b1 s/6 + ...).
        double once = 0, twice = 0;
        for (std::size_t k = kTerms; k >= 1; --k) {
            const double term = b[(k - 1) * n + i] * kReciprocals[k + 1];
            once = (once + term) * s;
            twice = (twice + term * kReciprocals[k + 2]) * s;
        }
        once = (once + f[i]) * s;
        twice = (twice + 0.5 * f[i]) * s * s;
        if (order == 1) {
            state[i] = x[i] + step.T * once;
        } else {
            state[i] = x[i] + step.T * (s * v[i] + step.T * twice);
            state[n + i] = v[i] + step.T * once;
        }
    }
}

RadauStepper::RadauStepper(int coordinates, int order, Force& force, double tolerance)
    : n_(static_cast<std::size_t>(coordinates)),
      order_(order),
      force_(force),
      tolerance_(tolerance),
      converged_(std::max(kConverged, kConvergedPart * tolerance)),
      state_(n_ * static_cast<std::size_t>(order)),
      low_(state_.size()),
      numbers_(state_.size() + n_ * (kTerms + 1)),
      f0_(n_),
      x_(n_),
      v_(n_),
      change_(n_),
      sum_(n_),
      f_(n_ * (kTerms + 1)),
      b_(n_ * kTerms),
      g_(n_ * kTerms),
      carried_(n_ * kTerms),
      kept_(n_ * kTerms),
      lacked_(n_ * kTerms) {}

StepStatus RadauStepper::start(double t, const double* state, double step) {
    std::copy_n(state, state_.size(), state_.begin());
    std::fill(low_.begin(), low_.end(), 0.0);
    t_ = t;
    t_low_ = 0;
    step_ = step;
    has_last_ = false;
    noise_ = comfortable_ = 0;
    const bool sound = std::isfinite(t) && std::isfinite(step) && step != 0;
    return sound && all_finite(state_) ? StepStatus::kOk : StepStatus::kNotFinite;
}

// The force's powers summed with weights: its integral, once or twice.
void RadauStepper::integrate(const std::array<double, kTerms + 1>& weights, double* sum) const {
    with_size(n_, [&](auto n) {
        for (std::size_t i = 0; i < n; ++i) sum[i] = weights[kTerms] * b_[(kTerms - 1) * n + i];
        for (std::size_t k = kTerms - 1; k >= 1; --k)
            for (std::size_t i = 0; i < n; ++i) sum[i] += weights[k] * b_[(k - 1) * n + i];
        for (std::size_t i = 0; i < n; ++i) sum[i] += weights[0] * f0_[i];
    });
}

// The integral over the whole step by the forces at the nodes: their differences from the first
// one, which are smaller than they are.
void RadauStepper::whole(const std::array<radau::Split, kTerms + 1>& weights,
                         double* sum) const {
    for (std::size_t i = 0; i < n_; ++i) {
        double high = 0, low = 0;
        for (std::size_t j = 1; j <= kTerms; ++j) {
            const double difference = f_[j * n_ + i] - f0_[i];
            high += weights[j].high * difference;
            low += weights[j].low * difference;
        }
        sum[i] = high + low;
    }
}

// x and v at a node of the step.
void RadauStepper::place(double T, int node, double* x, double* v) {
    const auto j = static_cast<std::size_t>(node);
    const double s = kConstants.node[j];
    integrate(kConstants.once[j], sum_.data());
    double* slope = order_ == 2 ? v : x;
    const std::size_t at = order_ == 2 ? n_ : 0;
    for (std::size_t i = 0; i < n_; ++i)
        slope[i] = state_[at + i] + (low_[at + i] + T * sum_[i]);
    if (order_ == 1) return;
    integrate(kConstants.twice[j], sum_.data());
    for (std::size_t i = 0; i < n_; ++i)
        x[i] = state_[i] + (low_[i] + T * (s * state_[n_ + i] + T * sum_[i]));
}

void RadauStepper::newton_from_powers() {
    std::fill(g_.begin(), g_.end(), 0.0);
    for (int k = 0; k < kTerms; ++k) {
        const double* b = row(b_, k);
        for (int j = 0; j <= k; ++j) {
            const double factor =
                kConstants.newton[static_cast<std::size_t>(k)][static_cast<std::size_t>(j)];
            double* g = row(g_, j);
            for (std::size_t i = 0; i < n_; ++i) g[i] += factor * b[i];
        }
    }
}

// Takes the force at node j + 1 into Newton's term j and from there into the powers. change_ is
// that of the term.
void RadauStepper::improve(int j, const double* f) {
    const auto at = static_cast<std::size_t>(j);
    const auto& per_gap = kConstants.per_gap[at];
    const auto& power = kConstants.power[at];
    with_size(n_, [&](auto n) {
        double* g = g_.data();
        double* change = change_.data();
        for (std::size_t i = 0; i < n; ++i) change[i] = (f[i] - f0_[i]) * per_gap[0];
        for (std::size_t k = 0; k < at; ++k)
            for (std::size_t i = 0; i < n; ++i)
                change[i] = (change[i] - g[k * n + i]) * per_gap[k + 1];
        for (std::size_t i = 0; i < n; ++i) {
            const double term = change[i];
            change[i] = term - g[at * n + i];
            g[at * n + i] = term;
        }
        double* b = b_.data();
        for (std::size_t k = 0; k <= at; ++k)
            for (std::size_t i = 0; i < n; ++i) b[k * n + i] += power[k] * change[i];
    });
}

// The largest of a row in units of the force of the same body.
double RadauStepper::last_term_ratio(const double* values) const {
    const std::size_t width = n_ % 3 == 0 ? 3 : n_;
    double worst = 0;
    for (std::size_t body = 0; body < n_; body += width) {
        const double force =
            std::max(largest(f0_.data() + body, width), largest(row(f_, kTerms) + body, width));
        const double value = largest(values + body, width);
        if (!std::isfinite(value)) return HUGE_VAL;
        if (value > 0) worst = std::max(worst, value / force);
    }
    return worst;
}

// One pass over the nodes; `change` is that of the last power in units of the force.
bool RadauStepper::iterate(double T, double& change) {
    for (int j = 0; j < kTerms; ++j) {
        place(T, j + 1, x_.data(), v_.data());
        double* f = row(f_, j + 1);
        if (!force_.evaluate(j + 1, x_.data(), order_ == 2 ? v_.data() : nullptr, f))
            return false;
        improve(j, f);
    }
    change = last_term_ratio(change_.data());
    return true;
}

// Iterates a step of length T from the powers that stand in b_. `error` is the last power in
// units of the force.
StepStatus RadauStepper::attempt(double T, double& error) {
    double offsets[kTerms + 1];
    for (int j = 0; j <= kTerms; ++j)
        offsets[j] = t_low_ + kConstants.node[static_cast<std::size_t>(j)] * T;
    if (!force_.prepare(t_, offsets)) return StepStatus::kNoForce;
    if (!force_.evaluate(0, state_.data(), order_ == 2 ? state_.data() + n_ : nullptr,
                         f0_.data()))
        return StepStatus::kCollision;
    std::copy(f0_.begin(), f0_.end(), row(f_, kTerms));
    newton_from_powers();

    double before = HUGE_VAL;
    error = HUGE_VAL;
    for (int pass = 0; pass < kMostIterations; ++pass) {
        double change = 0;
        if (!iterate(T, change)) return StepStatus::kCollision;
        if (change <= converged_ || (pass > 1 && change >= before)) {
            before = change;
            break;
        }
        before = change;
    }
    if (before <= kStillGood || before <= 1e-3 * tolerance_)
        error = last_term_ratio(row(b_, kTerms - 1));
    return StepStatus::kOk;
}

void RadauStepper::accept(double T) {
    double* out = numbers_.data();
    out = std::copy(state_.begin(), state_.end(), out);
    out = std::copy(f0_.begin(), f0_.end(), out);
    std::copy(b_.begin(), b_.end(), out);
    t0_ = t_;
    done_ = T;

    if (order_ == 2) {
        whole(kConstants.sum_twice, sum_.data());
        for (std::size_t i = 0; i < n_; ++i) {
            add(T * (T * (0.5 * f0_[i] + sum_[i]) + low_[n_ + i]), state_[i], low_[i]);
            add_product(T, state_[n_ + i], state_[i], low_[i]);
        }
    }
    const std::size_t at = order_ == 2 ? n_ : 0;
    whole(kConstants.sum_once, sum_.data());
    for (std::size_t i = 0; i < n_; ++i) {
        add(T * sum_[i], state_[at + i], low_[at + i]);
        add_product(T, f0_[i], state_[at + i], low_[at + i]);
    }
    add(T, t_, t_low_);
    for (std::size_t i = 0; i < b_.size(); ++i)
        lacked_[i] = has_last_ ? b_[i] - carried_[i] : 0;
    kept_ = b_;
    has_last_ = true;
}

// The powers of a step `ratio` times as long as the one made last, which it follows: its
// polynomial carried on, and what the last prediction lacked.
void RadauStepper::predict(double ratio) {
    if (!has_last_) {
        std::fill(b_.begin(), b_.end(), 0.0);
        return;
    }
    static constexpr auto kBinomial = [] {
        std::array<std::array<double, kTerms + 1>, kTerms + 1> c{};
        for (std::size_t i = 0; i <= kTerms; ++i) {
            c[i][0] = c[i][i] = 1;
            for (std::size_t k = 1; k < i; ++k) c[i][k] = c[i - 1][k - 1] + c[i - 1][k];
        }
        return c;
    }();
    double power = 1;
    for (int k = 1; k <= kTerms; ++k) {
        power *= ratio;
        double* b = row(b_, k - 1);
        for (std::size_t i = 0; i < n_; ++i) {
            double carried = 0;
            for (int j = k; j <= kTerms; ++j)
                carried += kBinomial[static_cast<std::size_t>(j)][static_cast<std::size_t>(k)] *
                           row(kept_, j - 1)[i];
            row(carried_, k - 1)[i] = power * carried;
            b[i] = power * carried + row(lacked_, k - 1)[i];
        }
    }
}

StepStatus RadauStepper::advance() {
    double T = step_;
    double best_T = 0, best = HUGE_VAL;  // of the attempts refused for their error
    int fruitless = 0;  // of those, in a row, that were no better for being shorter
    StepStatus refused = StepStatus::kTooSmall;
    for (int i = 0; i < kMostAttempts; ++i) {
        if (std::fabs(T) < kLeastStep || std::fabs(T) < kLeastRelative * std::fabs(t_))
            return refused;
        T = shortened(T);
        predict(has_last_ ? T / done_ : 0);

        double error = 0;
        const StepStatus status = attempt(T, error);
        if (status == StepStatus::kNoForce) return status;
        if (status != StepStatus::kOk) {
            refused = status;
            T *= kWorstShrink;
            continue;
        }
        const double factor =
            error > 0 ? std::pow(tolerance_ / error, 1.0 / kTerms) : kMostGrowth;
        const bool at_a_kink = std::fabs(T) < kKinkStep * comfortable_ && error < kMostKink;
        if (factor >= kLeastFactor || error <= 2 * noise_ || at_a_kink) {
            accept(T);
            comfortable_ = std::max(std::fabs(T), kComfortKept * comfortable_);
            step_ = T * (factor >= kLeastFactor ? std::min(factor, kMostGrowth)
                         : at_a_kink            ? kMostGrowth
                                                : 1.0);
            noise_ *= 0.9;
            return StepStatus::kOk;
        }
        fruitless = error > kClearlyBetter * best ? fruitless + 1 : 0;
        if (fruitless == kFruitless && best < kMostNoise) {  // the longest is as good as any
            noise_ = best;
            T = best_T;
            continue;
        }
        if (fruitless == 0) best = error, best_T = T;
        T *= std::clamp(factor, kWorstShrink, 0.5);
    }
    return refused;
}

}  // namespace solsys
