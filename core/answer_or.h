// The end of memory at the library's edge: no std::bad_alloc leaves a member; it refuses.
#pragma once

#include <new>
#include <utility>

namespace solsys {

// How often this thread was refused something for lack of memory. What is built on members, and
// may throw, tells such a refusal from an ordinary one by it.
unsigned refusals_of_memory();
void count_refusal_of_memory();

// What `work` answers, or `refusal` where memory ends.
template <class Answer, class Work>
Answer answer_or(Answer refusal, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const std::bad_alloc&) {
        count_refusal_of_memory();
        return refusal;
    }
}

// Throws std::bad_alloc when a member has refused for lack of memory since this was made.
class MemoryWatch {
  public:
    void check() const {
        if (refusals_of_memory() != before_) throw std::bad_alloc();
    }

  private:
    unsigned before_ = refusals_of_memory();
};

// Room for one more in a vector: adding it then takes no memory.
template <class Vector>
void make_room(Vector& values) {
    if (values.size() == values.capacity()) values.reserve(2 * values.size() + 8);
}

}  // namespace solsys
