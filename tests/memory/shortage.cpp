#include "tests/memory/shortage.h"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> left{-1};  // allocations that succeed yet; negative: all
std::atomic<long> live{0};

void* allocate(std::size_t size, std::size_t alignment) {
    if (left == 0) return nullptr;
    if (left > 0) --left;
    const std::size_t whole = (size + alignment) / alignment * alignment;
    void* p = alignment > alignof(std::max_align_t) ? std::aligned_alloc(alignment, whole)
                                                    : std::malloc(size);
    if (p != nullptr) ++live;
    return p;
}
void* allocate_or_throw(std::size_t size, std::size_t alignment) {
    if (void* p = allocate(size, alignment)) return p;
    throw std::bad_alloc();
}
void release(void* p) {
    if (p != nullptr) --live;
    std::free(p);
}

}  // namespace

void* operator new(std::size_t size) { return allocate_or_throw(size, 1); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* p) noexcept { release(p); }
void operator delete(void* p, std::size_t) noexcept { release(p); }
void operator delete(void* p, std::align_val_t) noexcept { release(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { release(p); }

namespace memory {
namespace {

enum Outcome { kSurvived, kUntouched, kThrew, kWrongAnswer, kBroken, kLeaked, kCrashed };
constexpr const char* kOutcomes[] = {"survived",
                                     "untouched",
                                     "an exception left",
                                     "neither full nor refused",
                                     "does not work afterwards",
                                     "leaks",
                                     "crashed"};

bool same(const Answer& a, const Answer& b) { return !a.refused && a.value == b.value; }

// One failing call and one with memory.
Outcome fail_once(Answer (*call)(void*), void* world, long n, const Answer& full,
                  bool may_throw) {
    Outcome outcome = kSurvived;
    left = n;
    try {
        const Answer answer = call(world);
        if (left > 0) outcome = kUntouched;
        left = -1;
        if (!answer.refused && !same(answer, full)) outcome = kWrongAnswer;
    } catch (const std::bad_alloc&) {
        left = -1;
        if (!may_throw) return kThrew;
    }
    if (outcome == kSurvived && !same(call(world), full)) outcome = kBroken;
    return outcome;
}

// The first failure meets what the library makes once for a process, the second shows leaks.
[[noreturn]] void child(Answer (*call)(void*), void* world, long n, const Answer& full,
                        bool may_throw) {
    Outcome outcome = fail_once(call, world, n, full, may_throw);
    const long before = live;
    if (outcome == kSurvived) {
        outcome = fail_once(call, world, n, full, may_throw);
        if (outcome == kUntouched) outcome = kSurvived;  // the first call made what it needs
        if (outcome == kSurvived && live > before) outcome = kLeaked;
    }
    _exit(outcome);
}

int wait_for(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : kCrashed;
}

// What it answers with memory, found out in a process of its own: the world stays as it is.
bool full_answer(Answer (*call)(void*), void* world, Answer& full) {
    int ends[2];
    if (pipe(ends) != 0) return false;
    const pid_t process = fork();
    if (process == 0) {
        full = call(world);
        _exit(write(ends[1], &full, sizeof full) == sizeof full ? 0 : 1);
    }
    close(ends[1]);
    const bool came = read(ends[0], &full, sizeof full) == sizeof full;
    close(ends[0]);
    return wait_for(process) == 0 && came && !full.refused && std::isfinite(full.value);
}

}  // namespace

int survives(const char* name, Answer (*call)(void*), void* world, bool may_throw) {
    constexpr long kEach = 24;  // from here on in steps of a half
    Answer full{};
    if (!full_answer(call, world, full)) return std::printf("%s: refused\n", name), 1;
    int seen[kCrashed + 1] = {};
    long first_of[kCrashed + 1] = {};
    for (long n = 0; n < 10'000'000; n += n < kEach ? 1 : n / 2) {
        const pid_t process = fork();
        if (process == 0) child(call, world, n, full, may_throw);
        const int outcome = wait_for(process);
        if (outcome == kUntouched) break;
        if (seen[outcome]++ == 0) first_of[outcome] = n;
    }
    int bad = 0;
    for (int outcome = kThrew; outcome <= kCrashed; ++outcome) {
        if (seen[outcome] == 0) continue;
        std::printf("%s: %s, %d times, first at allocation %ld\n", name, kOutcomes[outcome],
                    seen[outcome], first_of[outcome]);
        bad += seen[outcome];
    }
    return bad;
}

}  // namespace memory
