#include "apps/solsys/long_search.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <string>

#include "apps/solsys/console.h"

namespace app {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);  // before a bar is worth showing
constexpr int kBar = 30;

volatile std::sig_atomic_t caught = 0;

void interrupt(int) { caught = 1; }

}  // namespace

LongSearch::LongSearch()
    : control_([this](double done) {
          if (!go_on(done)) control_.stop();
      }),
      on_terminal_(error_is_terminal()) {
    std::signal(SIGINT, interrupt);
}

LongSearch::~LongSearch() {
    std::signal(SIGINT, SIG_DFL);
    if (shown_percent_ >= 0)
        std::fputs(("\r" + std::string(kBar + 8, ' ') + "\r").c_str(), stderr);
}

std::function<bool(double)> LongSearch::progress() {
    return [this](double done) { return go_on(done); };
}

bool LongSearch::go_on(double done) {
    if (on_terminal_) show(done);
    return caught == 0;
}

bool LongSearch::interrupted() { return caught != 0; }

void LongSearch::show(double done) {
    if (!(done >= 0 && done <= 1)) return;
    const int percent = static_cast<int>(done * 100);
    if (percent == shown_percent_ || std::chrono::steady_clock::now() - start_ < kPatience)
        return;
    shown_percent_ = percent;
    const int full = percent * kBar / 100;
    std::fprintf(stderr, "\r[%s%s] %3d %%",
                 std::string(static_cast<std::size_t>(full), '#').c_str(),
                 std::string(static_cast<std::size_t>(kBar - full), '.').c_str(), percent);
    std::fflush(stderr);
}

}  // namespace app
