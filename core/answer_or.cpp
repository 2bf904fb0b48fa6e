#include "core/answer_or.h"

namespace solsys {
namespace {

thread_local unsigned refused = 0;

}  // namespace

unsigned refusals_of_memory() { return refused; }
void count_refusal_of_memory() { ++refused; }

}  // namespace solsys
