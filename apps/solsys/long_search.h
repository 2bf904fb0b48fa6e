// A search that may take long: how far it is stands on standard error when that is a terminal,
// and Ctrl-C ends it, so that what was found till then is still printed.
#pragma once

#include <chrono>
#include <functional>

#include "solsys/sky/search.h"

namespace app {

// One at a time.
class LongSearch {
  public:
    LongSearch();
    ~LongSearch();
    LongSearch(const LongSearch&) = delete;
    LongSearch& operator=(const LongSearch&) = delete;

    [[nodiscard]] solsys::sky::SearchControl* control() { return &control_; }
    // For searches that are told so: called with the part done, answers whether to go on.
    [[nodiscard]] std::function<bool(double)> progress();
    // The same for loops of the command itself.
    bool go_on(double done);

    // From here on Ctrl-C ends a search that steps along with what it found, all else at once.
    static void catch_interrupts();
    // Whether any search of this run was ended early.
    static bool interrupted();

  private:
    void show(double done);

    solsys::sky::SearchControl control_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    bool on_terminal_;
    int shown_percent_ = -1;
};

}  // namespace app
