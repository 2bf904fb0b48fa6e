// How a host stops a search and watches it.
#pragma once

#include <atomic>

#include "events/search/span.h"

namespace solsys::search {

// `stop` may be called from any thread; everything else belongs to the searching one. What a
// handler does never changes results, unless it stops the search.
class Control {
  public:
    // `fraction` done, 0 to 1.
    using Progress = void (*)(double fraction, void* context);

    void stop() { stopped_.store(true, std::memory_order_relaxed); }
    void reset() { stopped_.store(false, std::memory_order_relaxed); }
    [[nodiscard]] bool stopped() const { return stopped_.load(std::memory_order_relaxed); }

    // Null: nobody is told.
    void on_progress(Progress progress, void* context) {
        progress_ = progress;
        context_ = context;
    }

    // Once a step: tells the host how far the search is and answers whether it is to go on.
    [[nodiscard]] bool go_on(const Span& span) const {
        if (stopped()) return false;
        if (progress_ != nullptr) progress_(span.done(), context_);
        return !stopped();
    }

  private:
    std::atomic<bool> stopped_{false};
    Progress progress_ = nullptr;
    void* context_ = nullptr;
};

}  // namespace solsys::search
