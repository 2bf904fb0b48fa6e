#include "apps/solsys/long_search.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <string>

#include "apps/solsys/console.h"

namespace app {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);  // before a bar is worth showing
constexpr int kBar = 30;

using Clock = std::chrono::steady_clock;

constexpr auto kDeaf = std::chrono::milliseconds(1000);  // without a look at `caught`

volatile std::sig_atomic_t caught = 0;
// When a search last looked; 0: none is under way.
std::atomic<Clock::rep> last_look{0};

// The search ends at its next step. Where nothing looks, or at the second time, all ends.
void interrupt(int) {
    const Clock::duration looked(last_look.load());
    if (caught != 0 || Clock::now().time_since_epoch() - looked > kDeaf)
        end_at_once("\nsolsys: stopped\n", 130);
    caught = 1;
    std::signal(SIGINT, interrupt);  // some systems forget it
}

void look() { last_look.store(Clock::now().time_since_epoch().count()); }

}  // namespace

LongSearch::LongSearch()
    : control_([this](double done) {
          if (!go_on(done)) control_.stop();
      }),
      on_terminal_(error_is_terminal()) {}

void LongSearch::catch_interrupts() { std::signal(SIGINT, interrupt); }

LongSearch::~LongSearch() {
    last_look.store(0);
    if (shown_percent_ >= 0)
        std::fputs(("\r" + std::string(kBar + 8, ' ') + "\r").c_str(), stderr);
}

std::function<bool(double)> LongSearch::progress() {
    return [this](double done) { return go_on(done); };
}

bool LongSearch::go_on(double done) {
    look();
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
