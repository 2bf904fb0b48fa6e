// Memory that ends: for every allocation that a call makes, the call once with that allocation
// and all after it refused.
#pragma once

namespace memory {

// What a call answered. `refused`: nothing came of it, and it said so.
struct Answer {
    double value;
    bool refused;
};

// Calls with memory enough (`Answer` as it should be), then in a process of its own for each n
// with the n-th allocation failing: no exception may leave unless `may_throw`, the answer is
// the full one or a refusal, the next call with memory answers in full, and nothing leaks.
// Answers how many of these failed, and prints them.
int survives(const char* name, Answer (*call)(void* world), void* world, bool may_throw);

}  // namespace memory
