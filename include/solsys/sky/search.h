/// \file
/// Watching and stopping a search.
#pragma once

#include <atomic>
#include <functional>

#include "solsys/export.h"

namespace solsys::sky {

/// Handed to a search by its caller: any thread may stop the search, and the searching one is
/// told how far it is. A search that was stopped answers what it had found till then.
class SearchControl {
  public:
    /// `progress` gets the fraction done, 0 to 1 and never going back, in the searching thread:
    /// a search tells it step by step, a batch now and then.
    explicit SearchControl(std::function<void(double)> progress = {})
        : progress_(std::move(progress)) {}
    /// Asks the search to end at its next step; from any thread.
    void stop() { stopped_.store(true, std::memory_order_relaxed); }
    /// Whether `stop` was called.
    [[nodiscard]] bool stopped() const { return stopped_.load(std::memory_order_relaxed); }
    /// Called by the search: hands the fraction done to `progress`.
    void tell(double fraction) const {
        if (progress_) progress_(fraction);
    }

  private:
    std::atomic<bool> stopped_{false};
    std::function<void(double)> progress_;
};

}  // namespace solsys::sky
