// How a batch goes from instant to instant, watched and stopped by its caller.
#pragma once

#include <algorithm>
#include <chrono>
#include <span>

#include "events/search/keep_model.h"
#include "solsys/sky/instant.h"
#include "solsys/sky/model.h"
#include "solsys/sky/search.h"

namespace solsys::sky {

// Looks at a control between any two pieces of work, and tells it how far the work is twenty
// times a second.
class Pulse {
  public:
    explicit Pulse(SearchControl* control) : control_(control) {}

    // False once the work is to end.
    bool goes_on(double fraction) {
        if (control_ == nullptr) return true;
        if (control_->stopped()) return false;
        const auto now = std::chrono::steady_clock::now();
        if (now - told_at_ >= kBetween) {
            told_at_ = now;
            told_ = std::max(told_, fraction);
            control_->tell(told_);
        }
        return !control_->stopped();
    }

  private:
    static constexpr std::chrono::milliseconds kBetween{50};

    SearchControl* control_;
    std::chrono::steady_clock::time_point told_at_{};
    double told_ = 0;
};

// One of several passes over the same work.
struct Pass {
    std::size_t number = 0, count = 1;
};

// The instants one after another, with the model moved to each. The model comes back.
class Walk {
  public:
    Walk(Model& model, std::span<const Instant> instants, SearchControl* control)
        : keep_(model.classic()),
          model_(model),
          before_(model.instant()),
          instants_(instants),
          pulse_(control) {}
    ~Walk() { model_.move_to(before_); }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    // `use` gets the instants that are wanted and can be reached, until it is stopped.
    template <class Wanted, class Use>
    void operator()(Pass pass, Wanted&& wanted, Use&& use) {
        const auto all = static_cast<double>(instants_.size());
        for (std::size_t i = 0; i < instants_.size(); ++i) {
            const double done = static_cast<double>(pass.number) + static_cast<double>(i) / all;
            if (!goes_on(done / static_cast<double>(pass.count))) return;
            if (wanted(i) && model_.move_to(instants_[i])) use(i);
        }
    }
    // All of them.
    template <class Use>
    void operator()(Use&& use) {
        (*this)(
            {}, [](std::size_t) { return true; }, use);
    }
    bool goes_on(double fraction) { return pulse_.goes_on(fraction); }

  private:
    search::KeepModel keep_;  // the classic model, wherever its host had put it
    Model& model_;
    Instant before_;
    std::span<const Instant> instants_;
    Pulse pulse_;
};

}  // namespace solsys::sky
