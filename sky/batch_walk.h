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

// Looks at a control between any two pieces of a batch, and tells it how far the batch is,
// never going back, twenty times a second.
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

// One of several equal parts of a batch.
struct PartOfBatch {
    std::size_t number = 0, count = 1;

    // Of the whole batch, where this part is done so far.
    [[nodiscard]] double of_whole(double fraction) const {
        return (static_cast<double>(number) + fraction) / static_cast<double>(count);
    }
};

// The instants one after another, with the model moved to each. The model comes back.
class Walk {
  public:
    Walk(Model& model, std::span<const Instant> instants, Pulse& pulse, PartOfBatch part = {})
        : keep_(model.classic()),
          model_(model),
          before_(model.instant()),
          instants_(instants),
          pulse_(pulse),
          part_(part) {}
    ~Walk() { model_.move_to(before_); }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    // `use` gets the instants that are wanted and can be reached, until it is stopped.
    template <class Wanted, class Use>
    void operator()(Wanted&& wanted, Use&& use) {
        for (std::size_t i = 0; i < instants_.size() && goes_on(i); ++i)
            if (wanted(i) && model_.move_to(instants_[i])) use(i);
    }
    // All of them.
    template <class Use>
    void operator()(Use&& use) {
        (*this)([](std::size_t) { return true; }, use);
    }
    // Whether to go on with instant i.
    bool goes_on(std::size_t i) {
        return pulse_.goes_on(
            part_.of_whole(static_cast<double>(i) / static_cast<double>(instants_.size())));
    }

  private:
    search::KeepModel keep_;  // the classic model, wherever its host had put it
    Model& model_;
    Instant before_;
    std::span<const Instant> instants_;
    Pulse& pulse_;
    PartOfBatch part_;
};

}  // namespace solsys::sky
